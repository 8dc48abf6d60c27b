"""Fails when the declarations for the type check hold an interface that no file uses.

declarations_are_used.py PROJECT
"""

import pathlib
import re
import sys

COMMENT = re.compile(r"//[^\n]*")
FORWARD = re.compile(r"@class[^;]*;")
CLASS = re.compile(r"@interface (\w+)")
MEMBERS = (
    re.compile(r"^[-+] \((?:[^()]|\([^()]*\))*\)\s*(\w+)", re.MULTILINE),  # methods, first part
    re.compile(r"^@property\b[^;]*?(\w+);", re.MULTILINE),
    re.compile(r"\b(\w+)\([^()]*\)\s*(?:CF_RETURNS_RETAINED)?;"),  # functions
    re.compile(r"\b(\w+) = -?\d"),  # constants with a value
    re.compile(r'extern (?:"C" )?const \w+ (\w+);'),
)

# What the compiler asks for where the language has literals, subscripts and loops.
LANGUAGE = {
    "arrayWithObjects",
    "countByEnumeratingWithState",
    "dictionaryWithObjects",
    "numberWithBool",
    "numberWithInteger",
    "objectAtIndexedSubscript",
    "objectForKeyedSubscript",
    "setObject",
}


def words(text: str) -> list[str]:
    return re.findall(r"\w+", COMMENT.sub("", text))


def setter(name: str) -> str:
    return "set" + name[0].upper() + name[1:]


def unused_in(text: str, used: set[str], declarations: list[str]) -> tuple[int, list[str]]:
    members = {name for pattern in MEMBERS for name in pattern.findall(text)} - LANGUAGE
    classes = set(CLASS.findall(text))
    missing = {name for name in members if name not in used and setter(name) not in used}
    missing |= {name for name in classes if name not in used and declarations.count(name) < 2}
    return len(members) + len(classes), sorted(missing)


def main() -> int:
    project = pathlib.Path(sys.argv[1])
    folders = [project / "platform/macos", project / "tests/macos"]
    sources = [
        source
        for folder in folders
        for source in folder.rglob("*.[hm]*")
        if not {"declarations", "faults"} & set(source.parts)
    ]
    used = {word for source in sources for word in words(source.read_text())}
    headers = sorted((project / "tests/macos/declarations").rglob("*.h"))
    texts = [FORWARD.sub("", COMMENT.sub("", header.read_text())) for header in headers]
    declarations = [word for text in texts for word in words(text)]
    checked = 0
    failed = False
    for header, text in zip(headers, texts):
        count, missing = unused_in(text, used, declarations)
        checked += count
        for name in missing:
            failed = True
            print(f"{header.relative_to(project)}: {name} is used nowhere")
    print(f"{checked} declarations checked")
    return 1 if failed or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
