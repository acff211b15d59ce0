#!/usr/bin/env python3
"""Checks the direction of includes between rooms, how headers are included, and where #ifdefs may stand.

Prints file:line and the rule for each violation; exits with 1 when there is any.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = {".h", ".cpp"}

# Lowest first: a room may include itself and the rooms on lower levels.
LEVELS = [
    ["Corvex/platform"],
    ["Corvex/collections", "Corvex/exported", "Corvex/timing", "Corvex/media"],
    ["Corvex/color", "Corvex/cli", "Corvex/filesystem", "Corvex/settings", "Corvex/lut", "Corvex/concurrency"],
    ["Corvex/cli/transcode", "Corvex/cli/analysis"],
    ["proto"],
    ["tools"],
]
LEVEL_OF = {room: level for level, rooms in enumerate(LEVELS) for room in rooms}
# Rooms on one level keep apart, but for these.
NEIGHBOURS = {("Corvex/media", "Corvex/exported")}

# What only the tool and the message component may use.
NOT_IN_LIBRARY = re.compile(r"(fmt/|CLI/|CLI\.hpp|libav|libsw|google/)")
# What a header of the library must not pull into its users' code.
NOT_IN_HEADERS = re.compile(r"(nlohmann/(?!json_fwd\.hpp)|utf8proc|hwy/|sqlite3|systemd/|libintl)")
# What takes longer to compile than most headers of the library, with those that need it: a member or a parameter is of
# such a type. Every other header does without: Atomic.h, ChronoCore.h, FunctionCore.h and FilesystemForward.h give what
# most declarations need, SharedText in Error.h keeps a text, or the source includes it.
HEAVY_IN_HEADERS = {
    "algorithm": [],
    "atomic": ["Corvex/platform/adapters/AsioExecutor.h", "Corvex/platform/adapters/TbbExecutor.h"],
    "chrono": ["Corvex/platform/ChronoCore.h"],
    "condition_variable": [],
    "filesystem": ["Corvex/filesystem/ApplicationIOTrackingDelegate.h", "Corvex/platform/FilesystemForward.h"],
    "fstream": [],
    "functional": ["Corvex/platform/FunctionCore.h"],
    "future": [],
    "iomanip": [],
    "iostream": [],
    "memory": ["Corvex/cli/transcode/GpuDevice.h", "Corvex/cli/transcode/TranscodeCliArguments.h",
               "Corvex/collections/BinarySearchTreeNode.h", "Corvex/color/OrvaneColorEncoding.h",
               "Corvex/color/definedSignals.h", "Corvex/concurrency/MultiFeedItemSequencer.h",
               "Corvex/lut/LutApplier.h", "Corvex/lut/LutReading.h", "Corvex/lut/ObjcLutDescriptor.h",
               "Corvex/lut/ParsedLutFactory.h", "Corvex/lut/ParsedLutFile.h",
               "Corvex/lut/ThreeDimensionalSampleConverter.h"],
    "mutex": [],
    "nlohmann/json_fwd.hpp": ["Corvex/platform/Json.h"],
    "random": [],
    "ranges": [],
    "regex": [],
    "sstream": [],
    "stdexcept": [],
    "thread": [],
    "Corvex/platform/Json.h": [],
}

# What hosts bring along: only the adapters to them include these, and nothing in the library includes an adapter.
ADAPTERS = "Corvex/platform/adapters/"
HOSTS_OWN = re.compile(r"(asio(/|\.hpp)|tbb/|oneapi/)")

# Headers that are not installed: sources of the library and its tests include them.
INTERNAL = "/internal/"

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
CONDITIONAL = re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b")


def room_of(path):
    """The room of a file or header path: its longest leading directory that is a room, else None."""
    parts = path.split("/")[:-1]
    for count in range(len(parts), 0, -1):
        if "/".join(parts[:count]) in LEVEL_OF:
            return "/".join(parts[:count])
    return None


def violations(path, text):
    room = room_of(path)
    top = path.split("/")[0]
    if top in ("Corvex", "tools", "proto") and room is None:
        yield 1, "the directory is in no room: give it a level in scripts/check-includes.py"
        return
    for number, line in enumerate(text.splitlines(), 1):
        if CONDITIONAL.match(line) and top != "bench" and room != "Corvex/platform":
            yield number, "conditional compilation belongs in Corvex/platform/"
        include = INCLUDE.match(line)
        if not include:
            continue
        quote, header = include.groups()
        if quote == '"' and (top == "Corvex" or "Corvex/" in header):
            yield number, f'"{header}": write the full path in angle brackets, <Corvex/...>'
            continue
        if quote == "<" and "Corvex/" + header.split("/")[0] in LEVEL_OF and "/" in header:
            yield number, f"<{header}>: headers are included as <Corvex/{header}>"
            continue
        if top == "Corvex" and NOT_IN_LIBRARY.match(header):
            yield number, f"<{header}>: the library does not use this dependency, the tool does"
        is_public = top == "Corvex" and path.endswith(".h") and INTERNAL not in path
        if is_public and NOT_IN_HEADERS.match(header):
            yield number, f"<{header}>: too heavy for a public header; include it in the .cpp"
        if is_public and path not in HEAVY_IN_HEADERS.get(header, [path]):
            yield number, f"<{header}>: too heavy for this header, unless HEAVY_IN_HEADERS of the check names it"
        if INTERNAL in header and (is_public or top not in ("Corvex", "tests")):
            yield number, f"<{header}>: internal to the library's sources; it is not installed"
        if top in ("Corvex", "tools") and not path.startswith(ADAPTERS):
            if HOSTS_OWN.match(header) or header.startswith(ADAPTERS):
                yield number, f"<{header}>: only {ADAPTERS} includes what a host brings along; only hosts include that"
        target = room_of(header)
        if room is None or target is None or target == room:
            if room is not None and header.startswith("Corvex/") and target is None:
                yield number, f"<{header}> is in no room"
            continue
        if LEVEL_OF[target] > LEVEL_OF[room]:
            yield number, f"<{header}>: {room} lies below {target} and must not include it"
        elif LEVEL_OF[target] == LEVEL_OF[room] and (room, target) not in NEIGHBOURS:
            yield number, f"<{header}>: {room} and {target} lie on one level and must not include each other"


def main():
    files = sorted(
        path
        for top in ("Corvex", "tools", "proto", "tests", "fuzz", "bench", "examples")
        for path in (ROOT / top).rglob("*")
        if path.suffix in SOURCES and path.is_file() and "data" not in path.relative_to(ROOT).parts
    )
    count = 0
    for path in files:
        name = path.relative_to(ROOT).as_posix()
        for line, rule in violations(name, path.read_text(encoding="utf-8")):
            print(f"{name}:{line}: {rule}")
            count += 1
    print(f"{len(files)} files, {count} violations")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
