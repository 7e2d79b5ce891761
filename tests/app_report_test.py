#!/usr/bin/env python3
"""rtcm2 report: the numbers on the page are those of check and stats, and nothing on it comes from outside.

    app_report_test.py RTCM2 SAMPLES
"""

import html.parser
import json
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM, SAMPLES = sys.argv.pop(1), Path(sys.argv.pop(1))
HOSTILE = '<script>alert("1")</script><img src=x onerror=alert(2)>&\'\x07'


def run(*arguments, status=0, **how):
    done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, check=False, **how)
    if done.returncode != status:
        raise AssertionError(f"{arguments} ended with {done.returncode}: {done.stderr.decode()}")
    return done.stdout


class Page(html.parser.HTMLParser):
    """Tables by name, as rows of texts; other texts with a name; tags and attributes."""

    def __init__(self, text):
        super().__init__()
        self.tables, self.named, self.tags, self.attributes = {}, {}, [], []
        self.target = None
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        self.tags.append(tag)
        self.attributes += attributes
        name = dict(attributes).get("data-name")
        if tag == "table":
            self.rows = self.tables.setdefault(name, [])
        elif tag == "tr":
            self.rows.append([])
        elif tag == "td":
            self.rows[-1].append("")
            self.target = self.rows[-1]
        elif name:
            self.named[name] = [""]
            self.target = self.named[name]

    def handle_endtag(self, tag):
        self.target = None

    def handle_data(self, data):
        if self.target:
            self.target[-1] += data


class Report(unittest.TestCase):
    def report(self, *arguments, **how):
        text = run("report", "--quiet", *arguments, **how).decode()
        return Page(text), text

    def test_numbers_are_those_of_check_and_stats(self):
        for sample in ("demo.rtcm2", "damaged.rtcm2", "all-types.nmea", "wide-area.rtcm2"):
            with self.subTest(sample):
                page, _ = self.report(SAMPLES / sample)
                checked = subprocess.run([PROGRAM, "check", "--json", SAMPLES / sample], capture_output=True).stdout
                check, = json.loads(checked)["inputs"]
                stats, = json.loads(run("stats", "--quiet", "--json", SAMPLES / sample))["inputs"]
                self.assertEqual(page.named["verdict"], [check["verdict"]])
                for key in ("messages", "lost", "damaged", "misfit", "misplaced", "repeated", "unknown_type", "short"):
                    self.assertEqual(int(page.named.get(key, ["0"])[0]), check[key], key)
                self.same(page, "rates", check["types"], {0: "type", 3: "count", 4: "period", 7: "longest"})
                self.same(page, "satellites",
                          [s for station in check["stations"] for s in station["satellites"]],
                          {2: "name", 3: "count", 6: "returns", 8: "issue_changes"})
                self.same(page, "stations", check["stations"], {1: "count", 4: "health_changes"})
                self.same(page, "kinds", [station | {"type": kind["type"]} for kind in stats["kinds"]
                                          for station in kind["stations"]],
                          {0: "type", 4: "count", 5: "first_seconds", 7: "seconds", 8: "per_second"})
                self.same(page, "sightings", [s for kind in stats["kinds"] for s in kind["satellites"]],
                          {2: "name", 3: "count"})
                self.same(page, "texts", stats["texts"], {1: "text", 2: "count"})
                self.same(page, "unknown_types", stats["unknown_types"], {0: "count"})

    def same(self, page, table, told, columns):
        """The table has a row for each of what is told, in whatever order, with its numbers rounded."""
        def rounded(value):
            return "" if value in (None, "") else f"{value:.2f}" if isinstance(value, (int, float)) else value

        def number(text):
            return float(text) if re.fullmatch(r"-?[\d.]+", text) else text

        rows = [[rounded(number(row[column])) for column in columns] for row in page.tables.get(table, []) if row]
        self.assertEqual(len(rows), len(told), table)
        for row, expected in zip(sorted(rows), sorted([rounded(each.get(key)) for key in columns.values()] for each in told)):
            for have, want in zip(row, expected):
                if have != want:
                    self.assertAlmostEqual(float(have), float(want), delta=0.06, msg=(table, row, expected))

    def test_nothing_from_outside(self):
        for inputs in ([SAMPLES / "demo.rtcm2"], [SAMPLES / "damaged.rtcm2", SAMPLES / "broadcasts.nmea"]):
            page, text = self.report(*inputs)
            outside = [(name, value) for name, value in page.attributes
                       if name in ("src", "srcset", "action", "data", "xlink:href") or name.startswith("on") or name == "style"
                       or (name == "href" and not value.startswith("#"))]
            self.assertEqual(outside, [])
            self.assertFalse(set(page.tags) & {"link", "img", "iframe", "object", "embed", "base", "form", "use", "image"})
            self.assertNotRegex(text, r"https?:|url\(|@import|fetch\(|XMLHttp")
            self.assertIn("default-src 'none'", text)
            targets = {value for name, value in page.attributes if name == "id"}
            links = {value[1:] for name, value in page.attributes if name == "href"}
            self.assertLessEqual(links, targets)
            self.assertTrue(links)

    def test_hostile_texts(self):
        header = {"Reference_Station_Id": 1, "Modified_Z_Count": 2, "Sequence_No": 3, "Station_Health": 0}
        message = {"kind": "Message Type 16", "fields": header | {"Message": HOSTILE}}
        with tempfile.TemporaryDirectory() as folder:
            capture = Path(folder) / "<b onclick=alert(3)>.rtcm2"
            capture.write_bytes(run("encode", "-", "--to", "stream", input=json.dumps(message).encode()))
            page, text = self.report(capture)
        self.assertEqual(text.count("<script"), 1)
        self.assertEqual(text.count("<b "), 0)
        self.assertEqual(page.tables["texts"][1][1].rstrip("\u2400 "), HOSTILE.replace("\x07", "\u2407"))

    def test_output(self):
        with tempfile.TemporaryDirectory() as folder:
            target = Path(folder) / "report.html"
            run("report", "--quiet", "/dev/null", "-o", target, status=1)
            self.assertIn("UNKNOWN", target.read_text())
            run("report", "--quiet", SAMPLES / "missing", "-o", target, status=3)
            self.assertIn("UNKNOWN", target.read_text(), "the older file stays")
            run("report", "--quiet", SAMPLES / "demo.rtcm2", "--type", "1", "-o", target)
            page = Page(target.read_text())
            self.assertEqual([row[0] for row in page.tables["kinds"] if row], ["1"])
            self.assertEqual(page.named["messages"], ["105"])

    def test_place_of_a_point(self):
        page, _ = self.report(SAMPLES / "demo.rtcm2", "--position", "3705294.33,513572.04,5148760.99")
        self.assertEqual({row[-1] for row in page.tables["points"] if row and row[2] == "Reference point"}, {"5.000"})
        self.assertEqual(page.named["verdict"], ["CRITICAL"])


if __name__ == "__main__":
    unittest.main()
