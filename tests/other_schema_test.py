#!/usr/bin/env python3
"""The program is built with the schema in tests/small_schema, which has two kinds of message of its own,
and has to answer as it does with the real one: what it knows of a format stands in the schema."""

import json
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from adding_a_kind_test import CHEAP, ROOT, run

PROGRAM = None


def packed(kind, tick, turn, state, body):
    bits = f"{0x66:08b}{kind:06b}{77:010b}{tick:013b}{turn:03b}{len(body) // 24:05b}{state:03b}{body}"
    return f"{int(bits, 2):0{len(bits) // 4}x}\n"


def buoys(*drifts):
    return "".join(f"01{number:06b}{drift & 0xffff:016b}" for number, drift in enumerate(drifts))


def pier(*millimetres):
    return "".join(f"{value:040b}" for value in millimetres)


# Every second through the end of the hour, which has 7200 ticks; two messages are missing.
HEAD = pier(3875000123, 332000456, 5028000789)
SENT = [packed(5, (7180 + 2 * n) % 7200, n % 8, 0, buoys(-1000 + n, 40, -32768)) for n in range(60)]
SENT[20] = packed(6, 20, 4, 0, HEAD)
STREAM = "".join(SENT[:25] + SENT[27:])


class OtherSchema(unittest.TestCase):
    def ask(self, *arguments, text=STREAM, status=0):
        done = subprocess.run([PROGRAM, *arguments], input=text, text=True, capture_output=True)
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stdout

    def test_lines(self):
        lines = self.ask("list").splitlines()
        self.assertEqual(lines[1].split(None, 4)[1:], ["59:50.0", "77", "5", "N64 -250 m, N01 10 m, N02 do not use"])
        self.assertTrue(lines[21].endswith("Pier head 3875000.123 332000.456 5028000.789 m"), lines[21])

    def test_quantities(self):
        fields = json.loads(self.ask("export", "--scaled", "--max", "1"))["fields"]
        self.assertEqual(fields["Tick_s"], 3590)
        self.assertEqual(fields["Buoys"], [{"Side": 1, "Mark": "N64", "Drift_m": -250},
                                           {"Side": 1, "Mark": "N01", "Drift_m": 10},
                                           {"Side": 1, "Mark": "N02", "Drift_m": None}])
        rows = self.ask("export", "--format", "csv", "--rows", "Buoys", "--fields", "Tick_s,Buoys.Drift_m",
                        "--where", "Buoys[Mark == N64 and Drift_m > -240.5]")
        self.assertEqual(rows.splitlines()[1], "38,1159,29,-240.25")

    def test_database(self):
        with tempfile.TemporaryDirectory() as folder:
            self.ask("export", "--format", "sqlite", "-o", f"{folder}/x.db")
            connection = sqlite3.connect(f"{folder}/x.db")
            drifts = connection.execute("SELECT time_s, station, number_, Drift_m FROM Harbour_Buoys WHERE Mark = 'N64'")
            self.assertEqual(drifts.fetchone(), (3590, 77, 1, -250))
            connection.close()

    def test_watching(self):
        checked = json.loads(self.ask("check", "--json", "-", status=1))["inputs"][0]
        self.assertEqual((checked["lost"], checked["gaps"][0]["missing"]), (2, 2))
        closed = STREAM + packed(5, 80, 0, 7, buoys(1, 2, 3))
        self.assertIn("critical: message 59, ", self.ask("check", text=closed, status=2))

    def test_places_and_differences(self):
        point, = json.loads(self.ask("position", "--json"))["points"]
        self.assertEqual((point["station"], point["system"], point["frame"]), (77, "South", "Old"))
        self.assertAlmostEqual(point["positions"][0]["latitude"], 52.464104893, 8)
        with tempfile.NamedTemporaryFile("w", suffix=".hex") as other:
            other.write("".join(SENT))
            other.flush()
            self.assertIn("2 are only in B", self.ask("compare", "-", other.name, status=1))

    def test_report(self):
        page = self.ask("report", "--quiet")
        for text in ("<title>N64: -250.00 to -235.25 m</title>", ">type 5 North<", "Drift by satellite, in m", ">Pier head<",
                     "station 77: 2 messages missing before message 26"):
            self.assertTrue(text in page, text)

    def test_viewer(self):
        test = [PROGRAM.parent.parent / "tests" / "viewer_test", "--gtest_filter=*ListsWhatTheProgramLists"]
        done = subprocess.run(test, env={**os.environ, "RTCM2_TEST_WHERE": "Buoys.Drift_m < -240"},
                              text=True, capture_output=True)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_back(self):
        self.assertEqual(self.ask("encode", "--to", "hex", text=self.ask("export")), STREAM)
        self.ask("encode", "--to", "hex", text=self.ask("encode", "--template", "5,6", text=""))


def main():
    global PROGRAM
    with tempfile.TemporaryDirectory(prefix="other-schema-") as folder:
        tree = Path(folder) / "rtcm2"
        ignored = shutil.ignore_patterns("build*", ".git", ".cache", "__pycache__", "schema")
        shutil.copytree(ROOT, tree, ignore=ignored, symlinks=True)
        shutil.copytree(ROOT / "tests" / "small_schema", tree / "schema")
        shutil.rmtree(tree / "samples")
        (tree / "samples").mkdir()
        (tree / "samples" / "buoys.hex").write_text(STREAM)
        run(["cmake", "-G", "Ninja", "-S", ".", "-B", "build", *CHEAP, "-DBUILD_TESTING=ON"], tree)
        targets = ["rtcm2", "viewer_test"]
        run(["cmake", "--build", "build", "--parallel", str(os.cpu_count()), "--target", *targets], tree)
        PROGRAM = tree / "build" / "app" / "rtcm2"
        return unittest.main(exit=False).result.wasSuccessful()


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
