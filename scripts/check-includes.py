#!/usr/bin/env python3
"""Holds every #include against the one-way arrows between the folders. Prints each edge that is not in the table."""
import pathlib
import re
import sys

PLATFORM = {"platform/core", "platform/database", "platform/registry", "platform/undo", "platform/gdi", "platform/window",
            "platform/dialog", "platform/opengl"}

# folder -> the folders it may include besides itself
ARROWS = {
    "platform/core": set(),
    "platform/database": set(),
    "platform/registry": {"platform/core", "platform/database"},
    "platform/undo": {"platform/core"},
    "platform/gdi": {"platform/core"},
    "platform/window": {"platform/core", "platform/registry", "platform/gdi"},
    "platform/dialog": {"platform/core", "platform/registry", "platform/gdi", "platform/window"},
    "platform/feeds": {"platform/core"},
    "platform/opengl": {"platform/core", "platform/gdi", "platform/window"},
    "sources": {"platform/core"},
    "settings": {"platform/core", "platform/registry"},
    "editing": {"sources", "platform/core", "platform/undo", "platform/gdi"},
    "selections": {"editing", "sources", "platform/core"},
    "pages": {"editing", "settings", "sources"} | PLATFORM,
    "views": {"pages", "editing", "settings", "sources"} | PLATFORM,
    "tavin": {"views", "pages", "selections", "editing", "settings", "sources"} | PLATFORM,
    "app/table": {"tavin"},
    "app/live": {"app/table", "platform/feeds", "tavin"},
    "app/workbench": {"app/table", "app/live", "platform/feeds", "tavin"},
    "app/batch": {"app/table", "app/live", "app/workbench", "platform/feeds", "tavin"},
    "app": {"app/batch"},
}
# Libraries that only some folders may show: the rest of the house goes through these.
LIBRARIES = {
    r"Q[A-Z]\w*|Qt\w*/.*": {"platform/gdi", "platform/window", "platform/dialog", "platform/feeds",
                               "platform/opengl"},
    r"mosquitto\.h": {"platform/feeds"},
    r"sqlite3\.h": {"platform/database"},
    r"utf8proc\.h": {"platform/registry"},
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]')


def folder_of(path: str) -> str:
    parts = path.split("/")
    inner = parts[0] == "platform" or (parts[0] == "app" and len(parts) > 2)
    return "/".join(parts[:2]) if inner else parts[0]


def faults_of(root: pathlib.Path, source: pathlib.Path):
    name = source.relative_to(root).as_posix()
    home = folder_of(name)
    if home not in ARROWS:
        return
    for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match.group(2)
        if match.group(1) == '"':
            room = folder_of(target)
            if room != home and room not in ARROWS[home]:
                yield f"{name}:{number}: {home} may not include {target}"
            continue
        for pattern, homes in LIBRARIES.items():
            if not re.fullmatch(pattern, target):
                continue
            if home not in homes:
                yield f"{name}:{number}: {home} may not include <{target}>"
            elif name.endswith(".h"):
                yield f"{name}:{number}: a header may not show <{target}>; keep it in the source"


def main() -> int:
    root = pathlib.Path(__file__).resolve().parent.parent
    sources = sorted(p for folder in {a.split("/")[0] for a in ARROWS} for p in (root / folder).rglob("*")
                     if p.suffix in {".h", ".cpp"})
    faults = [fault for source in sources for fault in faults_of(root, source)]
    print("\n".join(faults) if faults else f"includes: {len(sources)} files follow the arrows")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
