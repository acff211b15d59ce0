#!/usr/bin/env python3
"""header_cost.py [HEADER...]: the processor time that g++ takes to compile each public header alone, the least of three
turns, beside that of the standard headers which it and the headers of this library below it include. Without arguments
all public headers, then headers that peers of the field are used by. Reads what build/release or build/bench
generates. Times only count at rest, and beside each other."""
import glob
import os
import re
import resource
import statistics
import subprocess
import sys

os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
GENERATED = [f"-I{path}" for path in glob.glob("build/release/include") + glob.glob("build/bench/include")][:1]
COMPILE = ["g++", "-std=c++20", "-I.", *GENERATED, "-x", "c++", "-"]
PEERS = ["OpenColorIO/OpenColorIO.h", "oneapi/tbb/flow_graph.h", "oneapi/tbb/task_group.h", "asio/awaitable.hpp",
         "absl/flags/flag.h", "absl/strings/str_cat.h", "CLI/CLI.hpp", "boost/rational.hpp"]


def seconds(text):
    """Least processor time of three compilations of `text`, or None if it does not compile."""
    least = None
    for _ in range(3):
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        result = subprocess.run([*COMPILE, "-fsyntax-only"], input=text, text=True, stderr=subprocess.PIPE)
        if result.returncode != 0:
            return None
        took = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
        least = took if least is None else min(least, took)
    return least


def foreign_headers(header):
    """What `header` and the headers of this library below it include from elsewhere, each once."""
    listing = subprocess.run([*COMPILE, "-E", "-H"], input=f"#include <{header}>\n", text=True, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE).stderr
    above, found = [], {}
    for dots, path in re.findall(r"^(\.+) (.*)$", listing, re.MULTILINE):
        del above[len(dots) - 1:]
        if "Corvex/" not in path and all("Corvex/" in each for each in above):
            found[path] = None
        above.append(path)
    return found


def main():
    headers = sys.argv[1:] or subprocess.check_output(
        ["git", "ls-files", "Corvex/*.h", ":!Corvex/*/internal/*", ":!Corvex/*/adapters/*"], text=True).split()
    rows = []
    for header in headers:
        whole = seconds(f"#include <{header}>\n")
        if whole is None:
            sys.exit(f"{header} does not compile; build first: ./scripts/build.sh release")
        standard = seconds("".join(f'#include "{path}"\n' for path in foreign_headers(header)))
        rows.append((whole, standard, header))
    print("whole  standard  own")
    for whole, standard, header in sorted(rows, reverse=True):
        print(f"{whole:5.2f}  {standard:8.2f}  {max(whole - standard, 0):.2f}  {header}")
    print("median of", len(rows), *(f"{name} {statistics.median(values):.2f} s" for name, values in (
        ("whole", [row[0] for row in rows]), ("standard", [row[1] for row in rows]))))
    if len(sys.argv) > 1:
        return
    for peer in PEERS:
        whole = seconds(f"#include <{peer}>\n")
        print("  not installed  " + peer if whole is None else f"{whole:5.2f}                 {peer}")


main()
