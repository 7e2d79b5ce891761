#!/usr/bin/env python3
"""Fails when docs/messages.md is not what the schema renders to.

    reference_test.py --update     writes it anew
"""

import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "generator"))

import render  # noqa: E402
import schema  # noqa: E402

REFERENCE = ROOT / "docs" / "messages.md"

if __name__ == "__main__":
    text = render.render_unit(render.environment(), schema.load(ROOT / "schema"), "messages.md.j2", None)
    if sys.argv[1:] == ["--update"]:
        render.write_if_changed(REFERENCE, text)
    elif text != REFERENCE.read_text(encoding="utf-8"):
        sys.exit(f"{REFERENCE} is not current. If the change is meant, run: "
                 "python3 tests/generator/reference_test.py --update")
