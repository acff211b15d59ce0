#!/usr/bin/env python3
"""Looks for words that do not belong into the tree: of work left for later, of how the work is organised, of a merge gone
wrong, and places of one machine.

Every file under version control is read, and its path. tests/data holds other people's files, LICENSE is the licence's.
"""
import re
import subprocess
import sys

# What is wrong with a line that the pattern finds. The patterns do not find themselves.
RULES = [
    (r"\b(TO[D]O|FIX[M]E|X[X]X|HA[C]K|TB[D]|WI[P])\b", "work left for later: do it, or file an issue"),
    (r"\b[Nn]ot (yet )?implement[e]d|\b[Uu]nimplement[e]d|\b[Ss]tub[b]?(ed|s)?\b|\b[Pp]lacehold[e]r", "something is missing"),
    (r"\b[Ff]or the tim[e] being|\b[Tt]emporary (fix|workaroun[d])|\b[Ll]orem ips[u]m", "something is missing"),
    (r"\b([Tt]he|[Oo]ur) ([Ss]pe[c]s?\b|[Ss]pecificatio[n]s?\b)", "name the source itself, as \"ITU-R BT.709\""),
    (r"\b[Pp]arts? \d+\.\d|\bof [Pp]art \d|\b[Ss]pecificatio[n],? [Pp]art", "name the source itself, as \"ITU-R BT.709\""),
    (r"\b[Ii]ssue #?\d|\b[Mm]ileston[e]|\b[Ff]ounde[r]\b|\b[Tt]he brie[f]\b", "how the work is organised is told elsewhere"),
    (r"^(<{7}|>{7}|\|{7}) |^={7}$", "a merge that was not finished"),
    (r"(?<![\w.])/wor[k]/|/tmp/w[t]\b|(?<![\w.])/roo[t]/", "a place of one machine"),
    (r"\b(fixup|squash)[!]", "a commit that was not put in its place"),
    (r"[ \t]+$", "white space at the end of the line"),
]
RULES = [(re.compile(pattern), problem) for pattern, problem in RULES]
NOT_OURS = re.compile(r"^(tests/data/|fuzz/corpus/|LICENSE$)")


def violations(text):
    for number, line in enumerate(text.splitlines(), 1):
        for pattern, problem in RULES:
            found = pattern.search(line)
            if found:
                yield number, found.group(), problem


def self_test():
    """One line for each rule that it must find, and lines that only look alike."""
    bad = ("// TO" "DO: later", "throw Error(\"not imple" "mented\");", "// for the time " "being", "as the spe" "c asks",
           "see Part " "3.2", "// iss" "ue 12", "<<<<<<" "< HEAD", "open(\"/wor" "k/main\")", "squash" "! more", "int a; ")
    good = ("MPEG-4 Part 2 allows", "XDG Base Directory Specification", "an issue of taste", "======== title",
            "<key>TODO_LIST</key>")
    return [line for line in bad if not any(violations(line))] + [line for line in good if any(violations(line))]


def main():
    wrong = self_test()
    if wrong:
        print("the check itself is wrong about:", *wrong, sep="\n")
        return 1
    listed = subprocess.run(["git", "ls-files", "-z"], capture_output=True, check=True, text=True)
    names, count = [name for name in listed.stdout.split("\0") if name and not NOT_OURS.match(name)], 0
    for name in names:
        with open(name, "rb") as file:
            content = file.read()
        text = "" if b"\0" in content else content.decode("utf-8")
        for place, inside in ((f"{name}: its path", name.replace("/", "\n")), (name, text)):
            for number, words, problem in violations(inside):
                print(f"{place}:{number}: '{words}': {problem}")
                count += 1
    print(f"{len(names)} files, {count} violations")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
