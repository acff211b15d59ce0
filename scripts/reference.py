#!/usr/bin/env python3
"""Builds the API reference, build/reference/html, of the public headers with Doxygen. A public declaration without a
comment, or any other warning, is an error.

Doxygen reads copies of the headers in which the obvious is said for them, line for line, so that they need not: what a
special member, a comparison, a container's or an awaiter's usual function does, and that a setter writes what its
getter reads. An enumerator, a field, an alias and an accessor of one statement are taken as documented by their names. Types,
and whatever does work, need words of their own.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "reference"
SOURCE = WORK / "source"

# Declarations of one line or the first line of one, and what is to be said of them where the header says nothing.
BY_NAME = "(by its name)"
QUALIFIERS = (r"^\s*(?:\[\[nodiscard\]\] |friend |template <[^>]*> |inline |static |constexpr |consteval |explicit |"
              r"virtual |mutable |CORVEX_EXPORT )*")
VALUE = r"( = [^;,]*|\{[^;]*\})?"
FIELD = r"(?!using|class|struct|enum|return|friend)[\w:<>, *&]+ \*?\w+" + VALUE + r"(, \*?\w+" + VALUE + ")*;"
OBVIOUS = [(re.compile(QUALIFIERS + form), said) for form, said in (
    (r"~?\w+\(.*\)[^;]*= (default|delete);", "As usual."),
    (r"[\w:]+& operator=\(.*(= (default|delete);|noexcept \{)", "As usual."),
    (r"\w+\(\w+&& other\) noexcept", "As usual."),
    (r"\w+\(const \w+& other\)", "As usual."),
    (r"[\w:<>]+ operator(==|<=>|<|!=|>|<=|>=)\(", "Compares by value."),
    (r"void (to_json|from_json)\(", "Coding to and from JSON."),
    (r"void swap\(", "Exchanges two values."),
    (r"std::size_t operator\(\)\(.*noexcept", "Hash of the value."),
    (r"([\w:<>& ]+ )?(await_ready|await_suspend|await_resume)\(", "As the language asks of an awaiter."),
    (r"[\w:<>]+ (begin|end|size|empty|hash)\(\) const( noexcept)?( override)?( = 0)?( \{|;)", "As of any such type."),
    (r"(const )?[\w:]+\*? what\(\) const noexcept override", "The message: what was wrong and with what."),
    (r"(const )?[\w:<>]+[&*]? \w+\([^()]*\)( const)?( noexcept)? (override|final)( \{|;)", "As the base class says."),
    (r"auto caseTable<", "The rows of the enumeration."),
    (r"std::array all\w+\{", "The known ones in their fixed order."),
    (r"extern template ", "Compiled once, in the library."),
    (r"using [\w:<>, ]+;", "As in the base class."),
    (r"using \w+ = .*;", "A name for the type."),
    (r"friend (class |struct )?[\w:<>, ]+;", "May see inside."),
    (r"\w+ \w+\{.*\};", "Stands for the text or number that it is set to."),
    (FIELD, BY_NAME),
    (r"[^(]*\b\w+\(\)( const)?( noexcept)? \{ return .*; \}", BY_NAME),
    (r"\w+\([^;{}]*\)( noexcept)?\s*:[^;]*\{\}", "Holds what it is given."),
    (r"[\w:<>*&]+ operator(->|\*)\(\) const", "As of a pointer."),
    (r"void\*? operator (new|delete)\(", "Memory of coroutine frames comes from a cache."),
    (r"([\w:<>]+ get_return_object|void (return_void|return_value|unhandled_exception))\(",
     "As the language asks of a promise."),
)]
FIELDS = re.compile(QUALIFIERS + FIELD)
LAST_NAME = re.compile(r"(\w+)(?= = |\{|,|;)")
SETTER = re.compile(r"^\s*(CORVEX_EXPORT )?(static )?void set([A-Z]\w*)\(")
GETTER = re.compile(r"^\s*\[\[nodiscard\]\].*?\b(\w+)\(")
NAME = re.compile(r"^[^(=;]*?([\w~]+|operator\W+)\(")
ENUMERATIONS = {"Case": "What went wrong.", "State": "Where it stands."}
ENUMERATION = re.compile(r"^\s*enum (class )?\w+( : [\w:]+)? \{")
ENUMERATOR = re.compile(r"\b([a-z]\w*)( = [^,}]+)?(?=\s*[,}]|\s*$)")


def declaration(lines, at):
    """The declaration that begins in a line, as one line: up to its end or the beginning of its body."""
    whole = lines[at]
    while not re.search(r"[;{}]\s*(//.*)?$", whole) and at + 1 < len(lines) and len(whole) < 600:
        at += 1
        whole += " " + lines[at].strip()
    if whole.endswith("{") and at + 2 < len(lines) and lines[at + 2].strip() == "}":
        whole += " " + lines[at + 1].strip() + " }"
    return whole


def comment(name):
    """The words of a name, as a comment: "largestValue" as "Largest value."."""
    words = re.sub(r"(?<=[a-z0-9])(?=[A-Z])", " ", name).lower().strip()
    return "/** " + words[:1].upper() + words[1:] + ". */ "


def documented_by_name(line):
    """The line with words before each but the first of the fields that it declares."""
    return re.sub(r"(?<=[\w}]), (?=\*?(\w+)( =|,|;|\{))", lambda found: ", " + comment(found.group(1)), line)


def with_the_obvious(text):
    lines = text.splitlines()
    is_documented = False  # by a comment above
    in_enumeration = False
    body_ends = ""  # the line that ends the body of a function
    template_at = None  # where the head of a template begins
    getters = set()
    name = ""  # of the function before
    for at, line in enumerate(lines):
        stripped = line.strip()
        if body_ends:
            body_ends = "" if line.startswith(body_ends) else body_ends
            continue
        if stripped.startswith("///"):
            is_documented = True
            continue
        if stripped.startswith("//") or stripped in ("", "public:", "protected:", "private:"):
            is_documented = is_documented and stripped.startswith("//")
            continue
        here = is_documented or "///<" in line
        if in_enumeration or ENUMERATION.match(line):
            head, brace, body = ("", "", line) if in_enumeration else line.partition("{")
            said = next((what for kind, what in ENUMERATIONS.items() if f"enum class {kind} " in head), "")
            if said and not here:
                head = "/** " + said + " */ " + head
            if in_enumeration and here:
                body = line.partition("///<")[0]
                lines[at] = line
            else:
                lines[at] = head + brace + ENUMERATOR.sub(lambda found: comment(found.group(1)) + found.group(0), body)
            in_enumeration = "}" not in body
            is_documented = False
            continue
        if stripped.startswith(("template", "requires")) and not stripped.endswith((";", "}")):
            template_at = at if template_at is None else template_at
            if not stripped.endswith("{"):
                continue
        whole = declaration(lines, at)
        setter = SETTER.match(line)
        found = NAME.match(line)
        said = ""
        if not here:
            if setter and setter.group(3).lower() in getters:
                said = "Writes what its getter reads."
            elif found and found.group(1) == name:
                said = "The same for other arguments."
            else:
                said = next((what for form, what in OBVIOUS if form.match(whole)), "")
        if said:
            where = at if template_at is None else template_at
            by_name = said == BY_NAME and (found or LAST_NAME.search(whole))
            lines[where] = (comment(by_name.group(1)) if by_name else "/** " + said + " */ ") + lines[where]
        if FIELDS.match(whole):
            fields = documented_by_name(lines[at])
            if fields != lines[at] and "///<" in fields:  # which is about the last of them
                fields = comment(LAST_NAME.search(whole).group(1)) + fields
            lines[at] = fields
        name = found.group(1) if found else name
        getter = GETTER.match(line)
        if getter:
            getters.add(getter.group(1).lower().removeprefix("is"))
        if found and re.search(r"\{( return .*; \})?$", whole) and not line.rstrip().endswith("}"):
            body_ends = line[:len(line) - len(line.lstrip())] + "}"
        is_documented = False
        template_at = None
    text = "\n".join(lines).replace("namespace corvex::inline v0 {", "/** The library. */ namespace corvex {")
    text = re.sub(r"^namespace detail \{", r"/** @cond */ \g<0>", text, flags=re.M)
    text = re.sub(r"^\}  // namespace detail", r"\g<0> /** @endcond */", text, flags=re.M)
    return re.sub(r"^(/\*\* .*? \*/ )?(template <.*>\nstruct std::hash|inline [\w ]+ detail::)(.|\n)*?\n\};?$",
                  lambda found: "\n" * found.group().count("\n"), text, flags=re.M) + "\n"


def main():
    headers = subprocess.run(["git", "ls-files", "Corvex/*.h", "proto/*.h", ":!*/internal/*"], cwd=ROOT, check=True, text=True,
                             capture_output=True).stdout.split()
    subprocess.run(["rm", "-rf", WORK], check=True)
    for header in headers:
        target = SOURCE / header
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(with_the_obvious((ROOT / header).read_text(encoding="utf-8")), encoding="utf-8")
    run = subprocess.run(["doxygen", ROOT / "docs" / "Doxyfile"], cwd=ROOT, text=True, capture_output=True)
    messages = sorted(set(run.stderr.replace(str(SOURCE) + "/", "").splitlines()))
    print("\n".join(messages) or "build/reference/html/index.html")
    return 1 if messages or run.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
