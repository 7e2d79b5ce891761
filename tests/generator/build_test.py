#!/usr/bin/env python3
"""Builds a small project around cmake/RenderSchema.cmake and watches what a change renders anew.

    build_test.py CMAKE         CMAKE is the command to run
"""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
CMAKE = "cmake"
PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES NONE)
list(APPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake)
include(RenderSchema)
# Stands for the compilation of a rendered file.
add_custom_command(OUTPUT compiled DEPENDS ${RENDERED_DIR}/codec/RTCM2.h
                   COMMAND ${CMAKE_COMMAND} -E touch compiled COMMENT "Compiling")
add_custom_target(small ALL DEPENDS compiled)
add_dependencies(small rtcm2_render)
"""
NEW_KIND = """
family: Lights
kinds:
  Light:
    type: 7
    name: Light
    text: One light
    members: [{member: Period, name: Period, type: u, bits: 8}]
"""


class Project(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "small"
        self.rendered = self.source / "build" / "rendered"
        shutil.copytree(ROOT / "generator", self.source / "generator")
        shutil.copytree(ROOT / "cmake", self.source / "cmake")
        shutil.copytree(HERE / "schema", self.source / "schema")
        (self.source / "CMakeLists.txt").write_text(PROJECT)
        # Long ago, so that a change made right after the build counts as newer than its outputs.
        for path in self.source.rglob("*"):
            os.utime(path, (1e9, 1e9))

    def run_cmake(self, *arguments, path=""):
        environment = os.environ | {"PATH": path + os.environ["PATH"]}
        environment.pop("RENDER_PYTHON", None)
        done = subprocess.run([CMAKE, *arguments], cwd=self.source, env=environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120)
        return done.returncode, done.stdout

    def configure(self, path=""):
        status, output = self.run_cmake("-S", ".", "-B", "build", "-G", "Ninja", path=path)
        self.assertEqual(status, 0, output)
        return output

    def build(self):
        status, output = self.run_cmake("--build", "build")
        self.assertEqual(status, 0, output)
        return output

    def times(self):
        return {p.name: p.stat().st_mtime_ns for p in self.rendered.glob("*/*")}

    def edit(self, name, old, new):
        path = self.source / name
        text = path.read_text()
        self.assertIn(old, text)
        path.write_text(text.replace(old, new, 1))

    def test_changes(self):
        """One project through one change after the other, each with the files that it writes."""
        self.configure()
        self.build()
        harbour = [f"RTCM2_Harbour_{unit}" for unit in
                   ("Message.h", "Message.cpp", "MessageInfo.h", "MessageInfo.cpp")]
        light = [name.replace("Harbour", "Light") for name in harbour]
        buoy = [name.replace("Harbour", "Buoy") for name in harbour]
        whole = sorted(set(self.times()) - set(harbour + buoy))
        # Of the files about all kinds: those that know widths.
        with_widths = {"RTCM2.h", "RTCM2.cpp", "RTCM2_table.cpp"}

        def kind():
            (self.source / "schema" / "lights.yaml").write_text(NEW_KIND)
            self.edit("schema/format.yaml", "Tide]", "Tide, Light]")

        # An edit that changes nothing touches the file.
        changes = [
            (None, []),
            (("generator/templates/RTCM2.h.j2", "#", "#"), []),
            (("schema/harbours.yaml", "bits: 9", "bits: 9"), []),
            (("generator/model.py", "Kind", "Kind"), []),
            (("schema/harbours.yaml", "bits: 9", "bits: 10"), with_widths),
            (("generator/templates/Message.h.j2", "once", "once\n"), [harbour[0], buoy[0]]),
            (kind, [*light, *whole]),
        ]
        for change, expected in changes:
            with self.subTest(change):
                before = self.times()
                if callable(change):
                    change()
                elif change:
                    self.edit(*change)
                output = self.build()
                written = {n for n, time in self.times().items() if before.get(n) != time}
                self.assertEqual(written, set(expected))
                self.assertEqual("Rendering" in output, change is not None, output)
                self.assertEqual("Compiling" in output, "RTCM2.h" in expected, output)

        self.edit("schema/harbours.yaml", "bits: 10", "bits: ten")
        status, output = self.run_cmake("--build", "build")
        self.assertNotEqual(status, 0)
        self.assertIn("schema error: harbours.yaml:16: wire member Height", output)
        self.assertNotIn("Traceback", output)

    def test_python_without_the_modules_comes_first(self):
        fake = self.source / "fake" / "python3"
        fake.parent.mkdir()
        fake.write_text("#!/bin/sh\nexit 1\n")
        fake.chmod(0o755)
        output = self.configure(path=f"{fake.parent}:")
        self.assertIn("Python for the generator: ", output)
        self.assertNotIn(str(fake), output)
        self.build()


if __name__ == "__main__":
    CMAKE = sys.argv.pop(1) if len(sys.argv) > 1 else CMAKE
    unittest.main()
