#!/usr/bin/env python3
"""commands.py TOOL DOCUMENT...: runs the commands of the documents' blocks that begin with "$ corvex", and compares what
they print with what stands there. A line of "…" stands for any lines."""
import pathlib
import re
import subprocess
import sys

BLOCK = re.compile(r"^```\n(\$ corvex .*?)^```$", re.M | re.S)


def matches(expected, printed):
    pattern = "".join(r"(?:.*\n)*?" if line == "…" else re.escape(line) + r"\n" for line in expected)
    return re.fullmatch(pattern, printed)


def main():
    tool, *documents = sys.argv[1:]
    count = wrong = 0
    for document in documents:
        for block in BLOCK.findall(pathlib.Path(document).read_text(encoding="utf-8")):
            for example in re.split(r"^\$ corvex ", block, flags=re.M)[1:]:
                command, *expected = example.rstrip("\n").split("\n")
                run = subprocess.run(["sh", "-c", f'"$0" {command}', tool], text=True, capture_output=True)
                count += 1
                if not matches(expected, run.stdout):
                    wrong += 1
                    print(f"{document}: corvex {command}\nprints\n{run.stdout}{run.stderr}and not\n" + "\n".join(expected))
    print(f"{count} commands, {wrong} wrong")
    return 1 if wrong or not count else 0


sys.exit(main())
