#!/usr/bin/env python3
"""check-symbols.py LIBRARY...: looks at what the shared libraries show to their users.

Names: only those of the namespace corvex::v0, with type information, thunks and guards; std::hash of such types; what the
generator of messages adds for ours; and statics of the standard library's inline functions, which must not be hidden: they
are state that the whole process shares. All carry the version of the library's binary interface, which is also that of
its soname: libcorvex.so.0.1 shows names at CORVEX_0.1, as CMakeLists.txt states the version.
"""
import os
import re
import subprocess
import sys

OURS = re.compile(
    # Names, type information, thunks, guards, statics of functions. Messages know no inline namespace: corvex::Cloud_*.
    r"_Z(T[VIST]|Th[n\d]+_|GV)?Z?N[KO]*6corvex(2v0|\d+_?Cloud_)"
    r"|_Z(GV)?ZNK?St"
    r"|_ZNK?St4hashIN6corvex2v0"
    r"|_ZN6google8protobuf5Arena18CreateMaybeMessageIN6corvex\d+Cloud_|\w*_proto_2fcorvex_")


def run(*words):
    return subprocess.run(words, capture_output=True, check=True, text=True, env=os.environ | {"LC_ALL": "C"}).stdout


def version():
    with open("CMakeLists.txt", encoding="utf-8") as file:
        return re.search(r"^project\(Corvex VERSION (\d+\.\d+)", file.read(), re.M).group(1)


def violations(library, interface):
    soname = re.search(r"SONAME.*\[(.*)\]", run("readelf", "-dW", library))
    wanted = f"{os.path.basename(library)}.{interface}"
    if not soname or soname.group(1) != wanted:
        yield f"its soname is {soname.group(1) if soname else 'missing'}, not {wanted}"
    for line in run("nm", library).splitlines():
        kind, name = line.split()[-2:]
        if kind in "bd" and re.match(r"_ZZNK?St", name):
            yield f"hides {run('c++filt', name).strip()}, which the process must share"
    node = f"CORVEX_{interface}"
    for line in run("nm", "-D", "--defined-only", "--with-symbol-versions", library).splitlines():
        kind, name = line.split()[-2:]
        name, _, label = name.partition("@")
        if kind == "A" and name == node:
            continue
        if not OURS.match(name):
            yield f"shows {run('c++filt', name).strip()} ({name})"
        elif label.lstrip("@") != node:
            yield f"shows {name} at '{label.lstrip('@')}', not at {node}"


def main():
    interface, count = version(), 0
    for library in sys.argv[1:]:
        for problem in violations(library, interface):
            print(f"{library}: {problem}")
            count += 1
    print(f"{len(sys.argv) - 1} libraries, {count} violations")
    return 1 if count or len(sys.argv) == 1 else 0


if __name__ == "__main__":
    sys.exit(main())
