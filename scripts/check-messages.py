#!/usr/bin/env python3
"""Holds docs/ERRORS.md against the sources: every text of an error, of a stop of the process or of the log stands in it.

The check reads string literals in statements that throw, log, stop the process or print an error, and the descriptions of
enumerations of problems, and what is put into a text variable that such a statement in the same file names. Where a
message is put together, each piece has to be found. It does not see what a function hands to such a statement.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BEGINS = re.compile(r"\b(throw\b|printError\(|fatalError\(|require\w*\(|log(Error|Info|Debug)?\(|fail\w*\(|check\(|\w+Error\()")
TABLE = re.compile(r"caseTable<\w*(Problem|ErrorCase)>")
VARIABLE = re.compile(r"\b(?:string|string_view|char ?\*(?: const)?) (\w+)\b")
LITERAL = re.compile(r'"((?:\\.|[^"\\\n])*)"')
# What is no message: statements of SQL, names, file names, formats.
NONE_OF = re.compile(r"PRAGMA |SELECT |\+?\w*$|\.part$|file:$|\.config/|corvex: $|CVX_PLF_FATAL-%s|-\w+ ?'?$|-ac_omit_$")


def statement(text, start):
    """From `start` to the semicolon, or to the bracket that closes around it."""
    depth = 0
    at = start
    while at < len(text):
        character = text[at]
        if character == '"':
            at = LITERAL.match(text, at).end() if LITERAL.match(text, at) else at + 1
            continue
        if character in "({[":
            depth += 1
        elif character in ")}]":
            depth -= 1
        if depth < 0 or (character == ";" and depth == 0):
            return text[start:at]
        at += 1
    return text[start:]


def statements(text):
    found = [statement(text, begin.start()) for begin in [*BEGINS.finditer(text), *TABLE.finditer(text)]]
    words = set(re.findall(r"\w+", LITERAL.sub("", " ".join(found))))
    for name in words.intersection(VARIABLE.findall(text)):
        found += [statement(text, begin.start()) for begin in re.finditer(rf"\b{name}(\[\w*\])? ?(\+?= |\{{)", text)]
    return found


def pieces(text):
    text = re.sub(r"(?m)^\s*//.*$|  //.*$", "", text)
    text = re.sub(r'"\n\s*"', "", text)  # literals over several lines
    for piece_of in statements(text):
        for literal in LITERAL.findall(piece_of):
            for piece in re.split(r"\{[^}]*\}|%\S*", literal.replace('\\"', '"')):  # format fields
                if len(re.findall(r"[A-Za-z]", piece)) >= 4 and not NONE_OF.match(piece) and " " in piece.strip():
                    yield piece.strip()


def main():
    listed = " ".join((ROOT / "docs" / "ERRORS.md").read_text(encoding="utf-8").split())
    sources = subprocess.run(["git", "ls-files", *(f"{top}/*.{kind}" for top in ("Corvex", "proto", "tools")
                                                   for kind in ("cpp", "h", "ipp"))],
                             cwd=ROOT, check=True, text=True, capture_output=True).stdout.split()
    found = missing = 0
    for source in sources:
        for piece in dict.fromkeys(pieces((ROOT / source).read_text(encoding="utf-8"))):
            found += 1
            if " ".join(piece.split()) not in listed:
                print(f"{source}: not in docs/ERRORS.md: {piece}")
                missing += 1
    print(f"{found} texts, {missing} missing")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
