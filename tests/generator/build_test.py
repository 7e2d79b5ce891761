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
LIGHTS = """
family: Lights
kinds:
  Light:
    type: 7
    name: Light
    text: One light
    members: [{member: Period, name: Period, type: u, bits: 8}]
"""


def files_of(kind):
    return {f"RTCM2_{kind}_{unit}" for unit in ("Message.h", "Message.cpp", "MessageInfo.h", "MessageInfo.cpp")}


class Project(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "small"
        for part in (ROOT / "generator", ROOT / "cmake", HERE / "schema"):
            shutil.copytree(part, self.source / part.name)
        (self.source / "CMakeLists.txt").write_text(PROJECT)
        # Long ago, so that a change made right after the build counts as newer than its outputs.
        for path in self.source.rglob("*"):
            os.utime(path, (1e9, 1e9))
        # The first Python that is found cannot render.
        self.fake = self.source / "fake" / "python3"
        self.fake.parent.mkdir()
        self.fake.write_text("#!/bin/sh\nexit 1\n")
        self.fake.chmod(0o755)

    def cmake(self, *arguments, succeeds=True):
        environment = os.environ | {"PATH": f"{self.fake.parent}:{os.environ['PATH']}"}
        environment.pop("RENDER_PYTHON", None)
        done = subprocess.run([CMAKE, *arguments], cwd=self.source, env=environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120)
        self.assertEqual(done.returncode == 0, succeeds, done.stdout)
        return done.stdout

    def times(self):
        return {p.name: p.stat().st_mtime_ns for p in self.source.glob("build/rendered/*/*")}

    def edit(self, name, old, new):
        path = self.source / name
        text = path.read_text()
        self.assertIn(old, text)
        path.write_text(text.replace(old, new, 1))

    def test_changes(self):
        """One project through one change after the other, each with the files that it writes."""
        output = self.cmake("-S", ".", "-B", "build", "-G", "Ninja")
        self.assertIn("Python for the generator: ", output)
        self.assertNotIn(str(self.fake), output)
        self.cmake("--build", "build")
        whole = set(self.times()) - files_of("Harbour") - files_of("Buoy")
        harbours = "schema/harbours.yaml"
        changes = [
            ([], set()),
            # An edit that changes nothing touches the file.
            ([("generator/templates/RTCM2.h.j2", "#", "#")], set()),
            ([(harbours, "bits: 9", "bits: 9")], set()),
            ([("generator/model.py", "Kind", "Kind")], set()),
            # Of the files about all kinds: those that know widths.
            ([(harbours, "bits: 9", "bits: 10")], {"RTCM2.h", "RTCM2.cpp", "RTCM2_table.cpp"}),
            ([("generator/templates/Message.h.j2", "once", "once\n")],
             {"RTCM2_Harbour_Message.h", "RTCM2_Buoy_Message.h"}),
            ([("schema/format.yaml", "Tide]", "Tide, Light]")],
             files_of("Light") | whole),
        ]
        for edits, expected in changes:
            with self.subTest(edits):
                before = self.times()
                for edit in edits:
                    self.edit(*edit)
                if expected > whole:
                    (self.source / "schema" / "lights.yaml").write_text(LIGHTS)
                output = self.cmake("--build", "build")
                self.assertEqual({n for n, time in self.times().items() if before.get(n) != time}, expected)
                self.assertEqual("Rendering" in output, edits != [], output)
                self.assertEqual("Compiling" in output, "RTCM2.h" in expected, output)

        self.edit(harbours, "bits: 10", "bits: ten")
        output = self.cmake("--build", "build", succeeds=False)
        self.assertIn("schema error: harbours.yaml:16: wire member Height", output)
        self.assertNotIn("Traceback", output)


if __name__ == "__main__":
    CMAKE = sys.argv.pop(1) if len(sys.argv) > 1 else CMAKE
    unittest.main()
