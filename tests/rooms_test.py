#!/usr/bin/env python3
"""The rooms of the program: their includes carry their folder and point down, and no files include
each other in a circle. Which rooms there are, and in which order, docs/architecture.md says."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)


def rooms():
    text = (ROOT / "docs" / "architecture.md").read_text()
    table = text[text.index("## Rooms of the program"):].split("\n\n## ")[0]
    return re.findall(r"^\| `(\w+)` \|", table, re.MULTILINE)


def sources(names):
    """File name with its room, as includes have it, to the file."""
    found = {}
    for name in names:
        folder = next(f for f in (ROOT / "app" / name, ROOT / name) if f.is_dir())
        for path in sorted(folder.rglob("*")):
            if path.suffix in (".h", ".cpp"):
                found[path.relative_to(folder.parent).as_posix()] = path
    return found


def circle(graph):
    """Units of a circle, or nothing."""
    seen, way = set(), []

    def visit(unit):
        if unit in way:
            return way[way.index(unit):]
        if unit in seen:
            return []
        seen.add(unit)
        way.append(unit)
        for below in graph.get(unit, ()):
            if found := visit(below):
                return found
        way.pop()
        return []

    return next((found for unit in graph if (found := visit(unit))), [])


def main():
    order = rooms()
    files = sources(order)
    problems = [] if len(order) == 8 else [f"docs/architecture.md lists {len(order)} rooms"]
    headers_without_folder = {Path(name).name for name in files}
    graph = {}
    for name, path in files.items():
        unit = name.rsplit(".", 1)[0]
        for included in INCLUDE.findall(path.read_text()):
            if included in files:
                if order.index(included.split("/")[0]) > order.index(name.split("/")[0]):
                    problems.append(f"{name} includes {included}, which stands above it")
                if included.rsplit(".", 1)[0] != unit:
                    graph.setdefault(unit, set()).add(included.rsplit(".", 1)[0])
            elif included in headers_without_folder:
                problems.append(f"{name} includes {included} without its folder")
    if found := circle(graph):
        problems.append("a circle: " + " > ".join([*found, found[0]]))
    print("\n".join(problems) or f"ok: {len(files)} files in {len(order)} rooms")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
