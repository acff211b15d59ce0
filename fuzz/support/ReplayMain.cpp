#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "Fuzzer.h"

/// Runs the fuzzer once on every file of a directory. Fails when a file cannot be read or when nothing was run.
int main(int count, char** arguments) {
    bool isRun = false;
    if (count != 2) return 1;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[1])) {
        if (!entry.is_regular_file()) continue;
        std::printf("%s\n", entry.path().c_str());  // before the run: a crash names its input
        std::fflush(stdout);
        std::ifstream stream(entry.path(), std::ios::binary);
        if (!stream) return 1;
        corvex::fuzz(std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()));
        isRun = true;
    }
    return isRun ? 0 : 1;
}
