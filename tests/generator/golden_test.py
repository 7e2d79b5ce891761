#!/usr/bin/env python3
"""Renders a small schema and compares the table of its format and one message class with golden/, so
that a change of what is rendered can be seen; and compares docs/messages.md with what it is rendered
from.

    golden_test.py --update     writes golden/ and docs/messages.md anew
"""

import sys
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(ROOT / "generator"))

import render  # noqa: E402
import schema  # noqa: E402

REFERENCE = "messages.md.j2"
KEPT = {"codec/RTCM2_table.cpp", "plugin/RTCM2_Harbour_Message.h"}


def expected_files():
    """Path and text of every file that is kept in the repository. All templates are rendered."""
    env = render.environment()
    small = schema.load(HERE / "schema")
    for name, template, kind in render.units(small):
        text = render.render_unit(env, small, template, kind)
        if name in KEPT:
            yield HERE / "golden" / Path(name).name, text
    full = schema.load(ROOT / "schema")
    yield ROOT / "docs" / "messages.md", render.render_unit(env, full, REFERENCE, None)


class Golden(unittest.TestCase):
    maxDiff = None

    def test_files_are_current(self):
        for path, text in expected_files():
            with self.subTest(path.name):
                kept = path.read_text(encoding="utf-8") if path.exists() else "(no such file)"
                self.assertMultiLineEqual(kept, text, f"\n{path} is not current. If the change is meant, "
                                          "run: python3 tests/generator/golden_test.py --update")

    def test_no_golden_is_left_over(self):
        kept = set((HERE / "golden").iterdir())
        self.assertEqual(kept, {path for path, _ in expected_files() if path.parent.name == "golden"})


if __name__ == "__main__":
    if sys.argv[1:] == ["--update"]:
        for target, content in expected_files():
            render.write_if_changed(target, content)
    else:
        unittest.main()
