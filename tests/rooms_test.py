#!/usr/bin/env python3
"""The rooms of the program: their includes carry their folder and point down, and no files include
each other in a circle. Which rooms there are, and in which order, docs/architecture.md says."""

import re
import sys
from collections import defaultdict
from graphlib import CycleError, TopologicalSorter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
TEXT = (ROOT / "docs" / "architecture.md").read_text().split("## Rooms of the program")[1]
ROOMS = re.findall(r"^\| `(\w+)` \|", TEXT.split("\n## ")[0], re.MULTILINE)


def sources():
    """File name with its room, as includes have it, to the file."""
    for room in ROOMS:
        folder = next(f for f in (ROOT / "engine" / room, ROOT / "app" / room, ROOT / room) if f.is_dir())
        for path in folder.rglob("*.[hc]*"):
            yield path.relative_to(folder.parent).as_posix(), path


files = dict(sources())
bare = {Path(name).name for name in files}
problems = [] if len(ROOMS) == 13 else [f"docs/architecture.md lists {len(ROOMS)} rooms"]
graph = defaultdict(set)
for name, path in files.items():
    for included in re.findall(r'^#include "([^"]+)"', path.read_text(), re.MULTILINE):
        if included in bare:
            problems.append(f"{name} includes {included} without its folder")
        if included not in files:
            continue
        if ROOMS.index(included.split("/")[0]) > ROOMS.index(name.split("/")[0]):
            problems.append(f"{name} includes {included}, which stands above it")
        units = [each.rsplit(".", 1)[0] for each in (name, included)]
        if units[0] != units[1]:
            graph[units[0]].add(units[1])
try:
    TopologicalSorter(graph).prepare()
except CycleError as error:
    problems.append("a circle: " + " < ".join(error.args[1]))
sys.exit("\n".join(problems) or 0)
