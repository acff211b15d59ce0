#!/usr/bin/env python3
"""extract.py OUTPUT DOCUMENT...: makes one program of the C++ examples of documents, which runs each as a function.

What a block includes comes first; the rest of it is the body of a function, with nothing that another block declares. It
runs in a folder that holds `look.cube`, a small look-up table. An example states what it promises with assert().
"""
import pathlib
import re
import sys

BLOCK = re.compile(r"^```cpp\n(.*?)^```$", re.M | re.S)
BEGINNING = """// Made of the examples in the documentation.
#undef NDEBUG
#include <array>
#include <cassert>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>
"""
MAIN = """
int main() {
    std::string folder = (std::filesystem::temp_directory_path() / "corvex-examples-XXXXXX").string();
    if (!mkdtemp(folder.data())) return 1;
    std::filesystem::current_path(folder);
    std::ofstream("look.cube") << "LUT_3D_SIZE 2\\n0 0 0\\n1 0 0\\n0 1 0\\n1 1 0\\n0 0 1\\n1 0 1\\n0 1 1\\n1 1 1\\n";
%s
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
}
"""


def main():
    output, *documents = map(pathlib.Path, sys.argv[1:])
    includes, functions, calls = set(), [], []
    for document in documents:
        text = document.read_text(encoding="utf-8")
        for found in BLOCK.finditer(text):
            line = text.count("\n", 0, found.start()) + 2
            code = found.group(1)
            includes.update(re.findall(r"^#include .*$", code, re.M))
            body = re.sub(r"^#include .*$", "", code, flags=re.M)
            name = re.sub(r"\W", "_", document.stem) + "_" + str(line)
            functions.append(f'void {name}() {{\n#line {line} "{document}"\n{body}}}\n')
            calls.append(f'    std::puts("{document.name}:{line}");\n    {name}();')
    output.write_text(BEGINNING + "\n".join(sorted(includes)) + "\n\nnamespace {\n\n" + "\n".join(functions) +
                      "\n}  // namespace\n" + MAIN % "\n".join(calls), encoding="utf-8")


main()
