#!/usr/bin/env python3
"""Looks for closures with captures, and braced values, made inside a co_await expression.

g++ 12 destroys such a temporary twice when it has members that are not trivial. A name for it first is the cure:

    auto operation = [path] { return read(path); };
    co_await withTimeout(30, log, operation);

The check reads one statement at a time, from co_await to the semicolon or brace that ends it, without comments and
literals. It does not see a closure that a macro makes, nor an aggregate made with parentheses.
"""
import re
import subprocess
import sys

CAPTURING = re.compile(r"(?<![\w\])])\[\s*[&=\w*][^\[\]]*\]\s*(?:mutable\b|\([^()]*\)|<|\{)")
BRACED = re.compile(r"(?:\b[A-Z]\w*(?:<[^;{}]*>)?|[(,]\s*)\{")
NOISE = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.S)


def blank(match):
    """As much white space, so that line numbers stay."""
    return re.sub(r"[^\n]", " ", match.group())


def operand(code, start):
    """The text from `start` to the end of the statement that it is in."""
    depth = 0
    for i in range(start, len(code)):
        if code[i] in "([{":
            depth += 1
        elif code[i] in ")]}":
            depth -= 1
            if depth < 0:
                return code[start:i]
        elif code[i] == ";" and depth == 0:
            return code[start:i]
    return code[start:]


def violations(text):
    code = NOISE.sub(blank, text)
    for found in re.finditer(r"\bco_await\b", code):
        expression = operand(code, found.end())
        if CAPTURING.search(expression):
            yield code.count("\n", 0, found.start()) + 1, "a capturing closure inside a co_await expression"
        elif BRACED.search(expression):
            yield code.count("\n", 0, found.start()) + 1, "a braced value inside a co_await expression"


def self_test():
    good = ("co_await run(operation);", "co_await run([] { return 1; });", "values[i] += co_await next(items[i]);",
            "if (co_await next()) { total = Sum{1}; }", 'co_await say("[x]() {");')
    bad = ("co_await run([x] { return x; });", "co_await run(\n  [&](int a) { return a + x; });", "co_await run([=]() {});",
           "co_await add(Item{1, name});", "co_await add({1, name});", "co_await run([own = f()]() mutable { own(); });",
           "f(co_await a, [x] { return x; });")
    return [case for case in good if any(violations(case))] + [case for case in bad if not any(violations(case))]


def main():
    wrong = self_test()
    if wrong:
        print("the check itself is wrong about:", *wrong, sep="\n")
        return 1
    listed = subprocess.run(["git", "ls-files", "-z", "--", "*.h", "*.cpp"], capture_output=True, check=True, text=True)
    files, count = [name for name in listed.stdout.split("\0") if name], 0
    for name in files:
        with open(name, encoding="utf-8") as file:
            text = file.read()
        for line, problem in violations(text) if "co_await" in text else ():
            print(f"{name}:{line}: {problem}: name it first (g++ 12 destroys it twice)")
            count += 1
    print(f"{len(files)} files, {count} violations")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
