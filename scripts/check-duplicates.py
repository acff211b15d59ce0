#!/usr/bin/env python3
"""Looks for code that stands in the tree twice: more than 20 lines in a row that say the same.

White space, comments, blank lines and lone punctuation do not count, nor do includes, which only look alike. Prints each
pair of places once, with the lines that it takes there.
"""
import re
import subprocess
import sys

LONGEST_ALLOWED = 20
KINDS = ("*.h", "*.cpp", "*.ipp", "*.py", "*.sh", "*.cmake", "*CMakeLists.txt", ".ci/run", "*.proto")
COMMENT = re.compile(r"^\s*(//|#(?!\s*(define|if|else|endif|pragma))|/\*|\*)")
TRAILING = re.compile(r"\s//.*$")
THIN = re.compile(r"^(\W*|.*\binclude\b.*|#pragma once|namespace .*|using namespace .*)$")


def meaning(lines):
    """What counts of a file: its number and text for each line that says something."""
    for number, line in enumerate(lines, 1):
        text = " ".join(TRAILING.sub("", line).split())
        if not COMMENT.match(line) and not THIN.match(text):
            yield number, text


def duplicates(files):
    """(place, place, count) of the runs that are too long; a place is (name, first line, last line)."""
    meant = {name: list(meaning(lines)) for name, lines in files.items()}
    window = LONGEST_ALLOWED + 1
    first_at, found = {}, []
    for name, lines in meant.items():
        covered = 0
        for start in range(len(lines) - window + 1):
            key = tuple(text for _, text in lines[start : start + window])
            other, at = first_at.setdefault(key, (name, start))
            if start < covered or (other, at) == (name, start) or (other == name and at + window > start):
                continue
            count, twin = window, meant[other]
            while (start + count < len(lines) and at + count < len(twin)
                   and lines[start + count][1] == twin[at + count][1]):
                count += 1
            covered = start + count
            found.append(((other, twin[at][0], twin[at + count - 1][0]),
                          (name, lines[start][0], lines[start + count - 1][0]), count))
    return found


def self_test():
    same = [f"    call({number});" for number in range(30)]
    noisy = [line for text in same for line in ("", "// why", "\t" + text + "  // note", "}")]
    short = same[:LONGEST_ALLOWED] + ["something(else);"]
    return len(duplicates({"a": same, "b": noisy})) == 1 and len(duplicates({"a": same + same})) == 1 \
        and not duplicates({"a": same, "b": short})


def main():
    if not self_test():
        print("the check itself is wrong")
        return 1
    listed = subprocess.run(["git", "ls-files", "-z", "--", *KINDS], capture_output=True, check=True, text=True)
    files = {}
    for name in filter(None, listed.stdout.split("\0")):
        with open(name, encoding="utf-8") as file:
            files[name] = file.read().splitlines()
    found = duplicates(files)
    for (name, first, last), (twin, start, end), count in found:
        print(f"{twin}:{start}-{end}: the same {count} lines of code as {name}:{first}-{last}")
    print(f"{len(files)} files, {len(found)} violations")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
