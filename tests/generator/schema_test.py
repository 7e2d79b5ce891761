#!/usr/bin/env python3
"""Wrong schemas: each differs in one place from the small good one and must be refused with the
file, the line and the fault."""

import shutil
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(ROOT / "generator"))

import schema  # noqa: E402
from rows import SchemaError  # noqa: E402

FORMAT = "format.yaml"
HARBOURS = "harbours.yaml"
LEVEL = "{member: Level, type: i, bits: 40}"
LOOK = "{0: \"Dark \\\"D\\\"\", 1: Red}"

# File, text in it, what stands there instead, and the complaint that must follow; @ is the place of
# the change. A complaint about another row stands without its place.
WRONG = [
    # YAML itself
    (HARBOURS, "kinds:", "kinds: [", "expected ',' or ']', but got ':'"),
    (HARBOURS, "family: Harbours", "family: 2001-99-99", "harbours.yaml: month must be in 1..12"),
    (HARBOURS, "Harbours", "!!python/name:os.system Harbours", "@could not determine a constructor"),
    (HARBOURS, None, "- a list", "harbours.yaml: holds no mapping"),
    (FORMAT, None, None, "schema: no format.yaml"),
    # keys, and the forms of their values
    (FORMAT, "format:", "formats:", "@the file lacks 'format'"),
    (FORMAT, "preamble: 0x66", "preamble: 0x166", "@format: 358 does not fit Preamble"),
    (FORMAT, "[Buoy, Harbour, Tide]", "Buoy", "@format: 'order' is 'Buoy', not a list"),
    (HARBOURS, "shared:", "sharde:", "@a family does not know 'sharde'"),
    (HARBOURS, "    type: 6\n", "    type: 6\n    type: 7\n", "'type' stands twice"),
    (HARBOURS, "  Tide:\n", "  No:\n", "@False cannot be a key"),
    (HARBOURS, "  Tide:\n", "  7:\n", "@kind 7 is not an identifier"),
    (HARBOURS, "    type: 6\n    members:\n", "", "kind Tide is [["),
    (HARBOURS, "    type: 6\n", "    type: six\n", "@kind Tide: 'type' is 'six', not an integer of 0 or more"),
    (HARBOURS, LEVEL, "Level", "a row of members needs 'member'"),
    (HARBOURS, LEVEL, "{member: Le-vel, type: i, bits: 4}", "'member' is 'Le-vel', not an identifier"),
    (HARBOURS, LEVEL, "{member: Level, bits: 40}", "@wire member Level lacks 'type'"),
    (HARBOURS, "bits: 40", "bits: yes", "'bits' is True, not an integer above 0"),
    (HARBOURS, "bits: 40", "bits: 0", "'bits' is 0, not an integer above 0"),
    (HARBOURS, "bits: 40", "bits: 40, unit: ''", "'unit' is '', not a text of one line"),
    (HARBOURS, "{of: Look, low: 2, bits: 4}", "4", "@slice member Colour: 'slice' is 4, not a mapping"),
    (HARBOURS, "low: 2, ", "", "@slice of Colour lacks 'low'"),
    (HARBOURS, "{Pilot: [1, 2]}", "{Pilot: 1}", "'when' is {'Pilot': 1}, not one member with a list"),
    (HARBOURS, "{Pilot: [1, 2]}", "{Pilot: []}", "'when' is {'Pilot': []}, not one member with a list"),
    (HARBOURS, "{Pilot: [1, 2]}", "{Pilot: [1], Reach: [1]}", "not one member with a list of its values"),
    # names
    (HARBOURS, "member: Level", "member: station", "@Tide.station: stands twice in the kind"),
    (HARBOURS, "member: Level", "member: parent", "Tide.parent: every record has a member of this name"),
    (HARBOURS, "name: Height", "name: Look", "Buoy.Height: the name 'Look' stands twice"),
    (HARBOURS, "Chart, name: Chart", "Chart", "@Buoy.Chart: needs a name"),
    (HARBOURS, "member: Level", "member: Level, name: Level", "Tide.Level: has a name but its kind is not described"),
    (HARBOURS, "    text: Harbour and its buoys\n", "", "kind Harbour: name and text go together"),
    (HARBOURS, "    name: Buoy\n", "    name: Buoy\n    text: Buoy\n", "kind Buoy: without 'type' it is a sub-record, which has a name and no text"),
    (HARBOURS, "    name: Harbour\n", "    name: Buoy\n", "kind Harbour: the name 'Buoy' is taken by Buoy"),
    # types, widths and values
    (HARBOURS, "Level, type: i", "Level, type: int", "@Tide.Level: type 'int' is not one of byte, i, u"),
    (HARBOURS, "bits: 40", "bits: 65", "Tide.Level: type i has at most 64 bits, not 65"),
    (HARBOURS, "Look, type: byte, bits: 7", "Look, type: byte, bits: 9", "@Buoy.Look: type byte has at most 8 bits"),
    (HARBOURS, "type: ch, bits: 8", "type: ch, bits: 7", "Harbour.Title: an element has 8 bits, not 7"),
    (HARBOURS, "width: 16", "width: 12", "Harbour.Nb: a count is stored in 8, 16 or 32 bits, not 12"),
    (HARBOURS, LOOK, "{128: Red}", "@Buoy.Look: 128 does not fit Look with 7 bits of type byte"),
    (HARBOURS, LOOK, "{1: No}", "Buoy.Look: the text of 1 is False, not a text of one line; put it in quotes"),
    (HARBOURS, "texts: {-256: Unknown}", "texts: {256: Unknown}", "Buoy.Height: 256 does not fit"),
    (HARBOURS, "do_not_use: -256", "do_not_use: -257", "Buoy.Height: -257 does not fit"),
    (HARBOURS, "width: 8, initial: 0", "width: 8, initial: -1", "Buoy.Chart: -1 does not fit"),
    (HARBOURS, "bits: 3}", "bits: 3, do_not_use: 1}", "Harbour.Pilot: a value not to use is for numbers"),
    (HARBOURS, "unit: MHz", "do_not_use: 1", "Harbour.Channel: a value not to use is for numbers"),
    (HARBOURS, "texts: {-256: Unknown}", "alarms: {1: sad}", "the alarm of 1 is 'sad'"),
    (HARBOURS, "limit: 31", "limit: 31, texts: {1: a}", "Harbour.Title: characters have no texts"),
    # references
    (HARBOURS, "of: Look", "of: Height", "@Buoy.Colour: 'of' names Height, which does not stand before"),
    (HARBOURS, "{Pilot: [1, 2]}", "{Reach: [1, 2]}", "'when' names Reach, a lookup member"),
    (HARBOURS, "{Pilot: [1, 2]}", "{Pilot: [8]}", "Harbour.Channel: 8 does not fit Pilot with 3 bits"),
    (HARBOURS, "length: Nb", "length: Channel", "'length' names Channel, which is not always present"),
    (HARBOURS, "elements: Buoy", "elements: Tide", "@Harbour.Buoys: no sub-record kind 'Tide'"),
    (HARBOURS, "low: 2, bits: 4", "low: 4, bits: 4", "@Buoy.Colour: the slice lies outside Look with 7 bits"),
    (HARBOURS, "bits: 4}}\n", "bits: 4}}\n      - {member: C2, name: C2, type: u, slice: {of: Look, low: 3, bits: 1}}\n", "Buoy.C2: the slice overlaps Colour"),
    (HARBOURS, "Look, type: byte, bits: 7", "Look, type: u, bits: 9", "Buoy.Colour: 'of' names Look, which has more than 8 bits"),
    (HARBOURS, "times: 24", "times: 70000", "@Harbour.Nb: a number of its rule is above 65535"),
    (HARBOURS, "1: Red}", f"1: {'R' * 256}}}", "Buoy.Look: the text of 1 has more than 255 bytes"),
    (HARBOURS, "{0: 0.5, 1: 2}", "{8: 0.5}", "@Harbour.Reach: 8 does not fit Pilot"),
    (HARBOURS, "{0: 0.5, 1: 2}", "{0: .nan}", "Harbour.Reach: the value for 0 is nan, not a number"),
    # arrays
    (HARBOURS, "limit: 31", "limit: 32", "@Harbour.Title: a limit of 32 is more than Length of 5 bits"),
    (HARBOURS, "limit: 9", "limit: 256", "Harbour.Note: a limit of 256 is above 255"),
    (HARBOURS, "bits: 5, initial: 0", "bits: 5", "Harbour.Title: its length Length needs 'initial: 0'"),
    (HARBOURS, "Length, type: u", "Length, type: i", "Harbour.Title: its length Length is not of type u"),
    (HARBOURS, "length: Nb}\n", "length: Nb}\n      - {member: Z, name: Z, type: u, bits: 1}\n", "kind Harbour: an array of records stands last"),
    (HARBOURS, "{member: Chart, name: Chart, type: u, width: 8, initial: 0}", "{member: Chart, name: Chart, elements: Buoy, length: Colour}", "'length' names Colour, a slice member"),
    # kinds
    (HARBOURS, "Tide:\n    type: 6", "Tide:\n    type: 5", "@kind Tide: type 5 is taken by Harbour"),
    (HARBOURS, "Tide:\n    type: 6", "Tide:\n    type: 64", "@kind Tide: type 64 does not fit 6 bits"),
    (FORMAT, ", Tide]", "]", "kind Tide is neither in 'order' nor in 'later'"),
    (FORMAT, ", Tide]", ", Tide, Tide]", "@order: names Tide twice"),
    (FORMAT, ", Tide]", ", Tide]\n  later: [Buoy]", "later: names Buoy twice"),
    (FORMAT, ", Tide]", ", Tide, Ebb]", "@order: names 'Ebb', which is no kind"),
    (FORMAT, "[Buoy, Harbour, Tide]", "[Harbour, Buoy, Tide]", "@order: sub-records stand before main kinds"),
    (HARBOURS, "    members:\n      - *levels", "    members: [" + ", ".join(
        f"{{member: M{n}, type: i, bits: 33}}" for n in range(30)) + "]",
     "harbours.yaml:43: kind Tide: its record has 264 bytes, and RTCM2_message_s has 256"),
    (FORMAT, "[Buoy, Harbour, Tide]", "[Harbour, Tide]\n  later: [Buoy]", "Harbour.Buoys: its elements Buoy have to be listed before Harbour"),
    # what numbers mean
    (HARBOURS, "{0: 0.25, 3: 2}", "{0: 0, 3: 2}", "'by' is {'Colour': {0: 0, 3: 2}}, not one member with a factor"),
    (HARBOURS, "{Colour: {0: 0.25, 3: 2}}", "{Chart: {0: 1}}", "'by' names Chart, which does not stand before it"),
    (HARBOURS, "{0: 0.25, 3: 2}", "{16: 2}", "Buoy.Height: 16 does not fit Colour with 4 bits"),
    (HARBOURS, "none: [-256]", "none: [256]", "Buoy.Height: 256 does not fit Height"),
    (HARBOURS, "none: [-256]", "factor: 2", "@quantity of Height has a factor already"),
    (HARBOURS, "unit: m, by", "by", "quantity of Height lacks 'unit'"),
    (HARBOURS, "factor: 1.0e+6", "factor: 1.0e-20", "Harbour.Channel: values times the factor have too many digits"),
    (HARBOURS, "name: Frequency", "name: Pilot", "the quantity's name 'Pilot' stands twice in the kind"),
    (HARBOURS, "name: Frequency, unit: Hz", "unit: k Hz", "the quantity's name 'Channel_k Hz' is no identifier"),
    (HARBOURS, LEVEL, LEVEL[:-1] + ", means: depth}", "'means' is 'depth', not one of preamble, type"),
    (HARBOURS, LEVEL, LEVEL[:-1] + ", system: South}", "@Tide.Level: 'South' is no system"),
    (HARBOURS, "    type: 6\n", "    type: 6\n    system: Level\n", "kind Tide: 'Level' is no system and no member that means one"),
    (HARBOURS, "    type: 6\n", "    type: 6\n    points: [{name: Top, of: [Level, Level, Level]}]\n", "Level of Tide is no length in metres"),
    (HARBOURS, "    members:\n      - {member: Look", "    points: [{name: Top, of: [Height, Height, Height], from: Quay}]\n    members:\n      - {member: Look", "@no kind tells the coordinates of the point 'Quay'"),
    (FORMAT, "value: 1}]", "value: 1}, {name: South, letter: N, time: UTC, frame: Local, value: 0}]", "@two systems have the same letter"),
    # the header
    (FORMAT, "bits: 16", "bits: 17", "header: has 49 bits, not 48"),
    (FORMAT, "bits: 16", "bits: 16, when: {Message_Type: [5]}", "header: Station_ is not always on the wire"),
    (FORMAT, "Message_Type", "Type", "header: starts with Preamble of 8 bits and Message_Type of 6 bits"),
    (FORMAT, "name: Station, ", "", "header: Station_ needs a name"),
    (FORMAT, ", means: words", "", "header: needs a member that means 'words' at bit 40, 5 bits wide"),
]


class Schema(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name) / "schema"
        shutil.copytree(HERE / "schema", self.folder)

    def complaint(self):
        with self.assertRaises(SchemaError) as caught:
            schema.load(self.folder)
        return str(caught.exception)

    def replace(self, name, old, new):
        """Returns the place of the change as file:line."""
        path = self.folder / name
        text = path.read_text(encoding="utf-8")
        if new is None:
            path.unlink()
            return name
        if old is not None:
            self.assertIn(old, text, "the place to change is not in the good schema")
            new = text.replace(old, new, 1)
        path.write_text(new, encoding="utf-8", errors="surrogateescape")
        return f"{name}:{text[:text.find(old or '')].count(chr(10)) + 1}"

    def test_good(self):
        fmt = schema.load(self.folder)
        self.assertEqual([k.name for k in fmt.kinds], ["Buoy", "Harbour", "Tide"])

    def test_wrong(self):
        good = {p: p.read_bytes() for p in self.folder.iterdir()}
        for name, old, new, expected in WRONG:
            with self.subTest(expected):
                place = self.replace(name, old, new)
                complaint = self.complaint()
                self.assertIn(expected.lstrip("@"), complaint)
                if expected.startswith("@"):
                    self.assertEqual(complaint.split(": ")[0], place)
            for path, content in good.items():
                path.write_bytes(content)

    def test_kind_described_in_two_files(self):
        shutil.copy(self.folder / HARBOURS, self.folder / "ports.yaml")
        self.assertEqual(self.complaint(), "ports.yaml:8: kind Buoy is described twice")

    def test_more_kinds_than_flags(self):
        names = [f"K{n}" for n in range(44)]
        rows = "".join(f"  {n}: {{type: {i + 10}, members: []}}\n" for i, n in enumerate(names))
        (self.folder / "many.yaml").write_text("family: Many\nkinds:\n" + rows)
        for row, place in (f", Tide, {', '.join(names)}]", "12: order"), (f", Tide]\n  later: {names}", "13: later"):
            good = (self.folder / FORMAT).read_bytes()
            self.replace(FORMAT, ", Tide]", row)
            self.assertEqual(self.complaint(), f"format.yaml:{place}: there are 47 kinds, and flags for 46")
            (self.folder / FORMAT).write_bytes(good)


if __name__ == "__main__":
    unittest.main()
