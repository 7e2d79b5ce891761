#!/usr/bin/env python3
"""The samples through the program: samples/README.md tells what they hold, and what export writes
encode takes back.

    samples_test.py PROGRAM
"""

import collections
import re
import subprocess
import sys
import unittest
from pathlib import Path

SAMPLES = Path(__file__).resolve().parent.parent / "samples"
PROGRAM = None


def run(*arguments, data=None, status=0):
    """Standard output and the lines of standard error."""
    done = subprocess.run([PROGRAM, *map(str, arguments)], input=data, capture_output=True,
                          check=False)
    if done.returncode != status:
        raise AssertionError(f"{arguments} ended with {done.returncode}: {done.stderr.decode()}")
    return done.stdout, done.stderr.decode().splitlines()


def documented():
    """From samples/README.md: file name to its row of cells."""
    rows = {}
    for line in (SAMPLES / "README.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if len(cells) == 5 and cells[0].startswith("`"):
            rows[cells[0].strip("`")] = cells[1:]
    return rows


def counts(text):
    """'1 x 45, 3 x 3' as a mapping."""
    return {number: int(count) for number, count in re.findall(r"(\d+) x (\d+)", text)}


class Samples(unittest.TestCase):
    def test_samples_hold_what_is_documented(self):
        files = {path.name for path in SAMPLES.iterdir() if path.is_file()}
        self.assertEqual(set(documented()), files - {"README.md", ".gitattributes"})
        for name, (size, messages, types, trouble) in documented().items():
            with self.subTest(name):
                self.assertEqual((SAMPLES / name).stat().st_size, int(size.replace(",", "")))
                listed, complaints = run("list", "--fields", "Message Type", SAMPLES / name)
                seen = [line.split(";")[-1] for line in listed.decode().splitlines()[1:]]
                self.assertEqual(dict(collections.Counter(seen)), counts(types))
                self.assertEqual(len(seen), int(messages))
                kinds = collections.Counter(re.split(r" \(|,", line.split(": ")[3])[0] for line in complaints)
                expected = dict(re.findall(r"([a-z ]+) x (\d+)", trouble))
                self.assertEqual({kind: str(count) for kind, count in kinds.items()},
                                 {kind.strip(): count for kind, count in expected.items()})

    def test_encode_gives_the_bits_of_the_capture(self):
        """hex tells how the messages stood in the capture, and encode does not look at it. One that
        declares more words than came cannot be encoded."""
        for name in [name for name, cells in documented().items() if "shorter" not in cells[3]]:
            with self.subTest(name):
                exported, _ = run("export", "--texts", "--format", "json", "--hex", SAMPLES / name)
                hexes = re.findall(r'"hex":"([0-9a-f]+)"', exported.decode())
                spoilt = re.sub(rb'("fields".*"hex":")[0-9a-f]+"', rb'\1spoilt"', exported)
                encoded, _ = run("encode", "-", "--to", "hex", data=spoilt)
                self.assertEqual(encoded.decode().split(), hexes)


class Refusals(unittest.TestCase):
    GOOD = b'{"kind":"Message Type 9","fields":{"Reference_Station_Id":1,"Modified_Z_Count":2,' \
           b'"Sequence_No":3,"Station_Health":0,"Corrections":[]}}\n'
    BAD = b'{"kind":"Message Type 3","fields":{}}\n{"kind":\n'

    def test_statuses(self):
        for arguments, data, status, complaints in [
                (["--on-error", "skip"], self.BAD + self.GOOD, 6, 0),
                (["--quiet"], self.BAD + self.GOOD, 6, 0),
                (["--on-error", "stop"], self.BAD + self.GOOD, 5, 1),
                (["--max", "1"], self.GOOD + self.BAD, 0, 0),
                ([], b"", 1, 1),
                ([], b"\x00\xff\x00", 6, 1),
                (["nowhere.json"], self.GOOD, 3, 1)]:
            with self.subTest(arguments):
                _, lines = run("encode", "-", *arguments, data=data, status=status)
                self.assertEqual(len(lines), complaints, lines)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
