#!/usr/bin/env python3
"""Renders a small schema through every template and compares the result with golden/, so that a
change of a template can be seen; and compares docs/messages.md with what it is rendered from.

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
# Which kind a template is shown with; together the two have members of every role.
SHOWN_KIND = {"Message.h.j2": "Harbour", "Message.cpp.j2": "Harbour", "MessageInfo.h.j2": "Harbour",
              "MessageInfo.cpp.j2": "Buoy"}


def expected_files():
    """Path, template and text of every file that is kept in the repository."""
    env = render.environment()
    small = schema.load(HERE / "schema")
    for name, template, kind in render.units(small):
        if kind is None or kind.name == SHOWN_KIND[template]:
            yield HERE / "golden" / name, template, render.render_unit(env, small, template, kind)
    full = schema.load(ROOT / "schema")
    yield ROOT / "docs" / "messages.md", REFERENCE, render.render_unit(env, full, REFERENCE, None)


class Golden(unittest.TestCase):
    maxDiff = None

    def test_files_are_current(self):
        for path, _, text in expected_files():
            with self.subTest(path.name):
                kept = path.read_text(encoding="utf-8") if path.exists() else "(no such file)"
                self.assertMultiLineEqual(kept, text, f"\n{path} is not current. If the change is meant, "
                                          "run: python3 tests/generator/golden_test.py --update")

    def test_every_template_has_a_golden(self):
        templates = {path.name for path in render.TEMPLATES.glob("*.j2")}
        self.assertEqual(templates, {template for _, template, _ in expected_files()})

    def test_no_golden_is_left_over(self):
        kept = set((HERE / "golden").iterdir())
        self.assertEqual(kept, {path for path, _, _ in expected_files() if path.parent.name == "golden"})


if __name__ == "__main__":
    if sys.argv[1:] == ["--update"]:
        for target, _, content in expected_files():
            render.write_if_changed(target, content)
    else:
        unittest.main()
