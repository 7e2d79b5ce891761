#!/usr/bin/env python3
"""Databases that the program writes: all values are those of its JSON, and an older database stays what it was
unless a run succeeds."""

import json
import re
import resource
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PROGRAM = Path(sys.argv.pop(1)).resolve()
SAMPLES = ROOT / "samples"
DEMO = SAMPLES / "demo.rtcm2"
EXPORT = [PROGRAM, "export", "--quiet", "--format", "sqlite", "-o"]


def ask(database, sql, *values):
    connection = sqlite3.connect(database)
    connection.row_factory = sqlite3.Row
    try:
        return [dict(row) for row in connection.execute(sql, values)]
    finally:
        connection.close()


def shown(value):
    """A value of JSON as the database has it."""
    if isinstance(value, str):
        return value.replace("\0", "\u2400")
    return bytes(value) if isinstance(value, list) else value


class Sqlite(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="sqlite-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.old = self.folder / "old.db"
        self.run_export(self.old, DEMO)
        self.before = self.old.read_bytes()

    def run_export(self, database, *arguments, status=0, said="", **how):
        done = subprocess.run([*EXPORT, database, *arguments], stderr=subprocess.PIPE, text=True, **how)
        self.assertEqual(done.returncode, status, done.stderr)
        self.assertIn(said, done.stderr)

    def count(self, database):
        return ask(database, "SELECT count(*) AS n FROM messages")[0]["n"]

    def same_record(self, record, row):
        parts = {name: value for name, value in record.items() if name not in row}
        for name, value in row.items():
            if name not in ("message_id", "position"):
                self.assertEqual(shown(record.get(name)), value, name)
        return parts

    def test_values(self):
        for sample in ("all-types.hex", "wide-area.rtcm2", "damaged.rtcm2"):
            new = self.folder / f"{sample}.db"
            self.run_export(new, "--hex", SAMPLES / sample)
            lines = subprocess.check_output([PROGRAM, "export", "--quiet", "--scaled", "--raw", "--hex", SAMPLES / sample])
            objects = [json.loads(line) for line in lines.decode().strip("\n").split("\n")]
            messages = ask(new, "SELECT * FROM messages JOIN inputs ON inputs.id = input_id ORDER BY messages.rowid")
            self.assertEqual(len(messages), len(objects))
            for number, (message, told) in enumerate(zip(messages, objects), 1):
                fields = told.get("fields", told.get("header"))
                self.assertEqual(
                    [message[name] for name in ("number", "byte", "fill", "type", "station", "name")],
                    [told["number"], told["byte"], told.get("fill"), fields["Message_Type"],
                     fields["Reference_Station_Id"], str(SAMPLES / sample)])
                self.assertEqual(message["packed"].hex(), told["hex"])
                table = message["kind"].replace(" ", "_")
                row, = ask(new, f"SELECT * FROM {table}_table WHERE message_id = ?", number)
                for name, elements in self.same_record(fields, row).items():
                    rows = ask(new, f"SELECT * FROM {table}_{name}_table WHERE message_id = ? ORDER BY position", number)
                    self.assertEqual(len(rows), len(elements))
                    for element, part in zip(elements, rows):
                        self.assertEqual(self.same_record(element, part), {})

    def test_what_people_ask(self):
        queries = re.findall(r"```sql\n(.*?)```", (ROOT / "docs" / "sqlite.md").read_text(), re.DOTALL)
        answers = [ask(self.old, query) for query in queries]
        self.assertEqual([len(answer) for answer in answers], [45, 7, 7, 2, 0, 1])
        self.assertEqual(answers[0][1], {"time_s": 1803.6, "station": 417, "PRC_m": 5.44, "RRC_m_per_s": 0.002})
        self.assertEqual(answers[3][0]["UDRE_text"][-2:], " m")

    def test_choice_and_names(self):
        new = self.folder / "new.db"
        self.run_export(new, "--type", "1", "--fields", "Corrections.PRC_m", "--max", "2", DEMO, DEMO)
        row = ask(new, "SELECT * FROM Message_Type_1_Corrections_table")[-1]
        self.assertEqual(list(row), ["message_id", "position", "PRC_m"])
        self.assertEqual(self.count(new), 2)
        self.assertEqual(ask(new, "SELECT name FROM sqlite_master WHERE type = 'view' ORDER BY 1"),
                         [{"name": "Message_Type_1"}, {"name": "Message_Type_1_Corrections"}])

    def test_adding(self):
        self.run_export(self.old, SAMPLES / "all-types.rtcm2", DEMO)
        self.assertEqual(ask(self.old, "SELECT input_id AS i, count(*) AS n FROM messages GROUP BY 1"),
                         [{"i": 1, "n": 105}, {"i": 2, "n": 29}, {"i": 3, "n": 105}])
        self.assertEqual(ask(self.old, "PRAGMA integrity_check"), [{"integrity_check": "ok"}])

    def test_refusals(self):
        text, other, newer = (self.folder / name for name in ("text", "other", "newer"))
        text.write_text("no database, but as long as the header of one " * 4)
        for path, version in ((other, 0), (newer, 0x52544332)):
            connection = sqlite3.connect(path)
            connection.executescript(f"CREATE TABLE t(a); PRAGMA application_id = {version}; PRAGMA user_version = 2")
            connection.close()
        (self.folder / "gone-wal").touch()
        for path, arguments, status, said in (
                (text, [], 4, "it is no SQLite database"), (other, [], 4, "of another program"),
                (newer, [], 4, "those of version 2"), (self.old, ["--raw"], 4, "has other columns"),
                (self.old, ["--rows", "Corrections"], 2, "tables of their own"), ("-", [], 2, "name its file"),
                (self.folder, [], 2, "is a directory"), ("/dev/full", [], 2, "is a pipe or another device"),
                (self.folder / "gone", [], 4, "is left from another"), (self.folder / "no" / "x", [], 4, " cannot write")):
            before = path.read_bytes() if Path(path).is_file() else None
            for source in (DEMO, "-"):
                self.run_export(path, *arguments, source, status=status, said=said, stdin=subprocess.PIPE)
            self.assertEqual(before, path.read_bytes() if Path(path).is_file() else None, said)
        self.run_export(self.old, "missing", DEMO, status=3, said="nothing was written")
        self.assertEqual(self.old.read_bytes(), self.before)
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["gone-wal", "newer", "old.db", "other", "text"])

    def long_input(self):
        long = self.folder / "long"
        long.write_bytes(DEMO.read_bytes() * 3000)
        return long

    def test_no_room_and_locked(self):
        room = len(self.before) + 200_000
        limit = {"preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (room, room))}
        for path in (self.old, self.folder / "new.db"):
            self.run_export(path, self.long_input(), status=4, said="disk I/O error", **limit)
        self.assertEqual(self.old.read_bytes(), self.before)
        self.assertFalse((self.folder / "new.db").exists())
        self.assertEqual(list(self.folder.glob(".rtcm2-*")), [])
        connection = sqlite3.connect(self.old, isolation_level=None)
        connection.execute("BEGIN IMMEDIATE")
        self.run_export(self.old, DEMO, status=4, said="another program has locked it")
        connection.close()

    def wait_for(self, what):
        deadline = time.monotonic() + 30
        while not what():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.05)

    def holds(self, path, messages):
        return path.exists() and ask(path, "SELECT 1 FROM sqlite_master") and self.count(path) == messages

    def interrupt(self, program):
        program.send_signal(signal.SIGINT)
        self.assertEqual(program.wait(), 130)

    def test_interrupted(self):
        for path, begun in ((self.old, "old.db-journal"), (self.folder / "new.db", ".rtcm2-*")):
            program = subprocess.Popen([*EXPORT, path, self.long_input()], stderr=subprocess.DEVNULL)
            self.wait_for(lambda begun=begun: list(self.folder.glob(begun)))
            self.interrupt(program)
        self.assertEqual(self.old.read_bytes(), self.before)
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["long", "old.db"])

    def test_live(self):
        new = self.folder / "new.db"
        for path, messages in ((new, 105), (self.old, 210)):
            program = subprocess.Popen([*EXPORT, path], stdin=subprocess.PIPE)
            program.stdin.write(DEMO.read_bytes())
            program.stdin.flush()
            self.wait_for(lambda path=path, messages=messages: self.holds(path, messages))
            self.interrupt(program)
            program.stdin.close()
            self.assertEqual(self.count(path), messages)
            self.assertFalse(Path(f"{path}-wal").exists())
        received = ask(new, "SELECT received FROM Message_Type_1")[0]["received"]
        self.assertRegex(received, r"^20\d\d-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z$")


if __name__ == "__main__":
    unittest.main()
