#!/usr/bin/env python3
"""Does what docs/adding-a-kind.md says, with the kind that it shows, in a copy of the sources: the
copy is built without optimisation, and its program is asked for what the page promises."""

import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import yaml

ROOT = Path(__file__).resolve().parent.parent
PAGE = (ROOT / "docs" / "adding-a-kind.md").read_text(encoding="utf-8")
CHEAP = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DBUILD_TESTING=OFF", "-DRTCM2_WERROR=ON",
         "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=16"]
HEADER = {"Preamble": 0x66, "Message_Type": 17, "Reference_Station_Id": 321, "Modified_Z_Count": 5999,
          "Sequence_No": 6, "No_Of_Data_Words": 3, "Station_Health": 2}
BODY = {"Version": 9, "Ns": 2, "Spare": 51234,
        "Weeks": [{"Satellite_Id": 7, "Health": 6}, {"Satellite_Id": 31, "Health": 0, "Week": 2345}]}
# The same message, bit by bit, with what fills the last word.
PACKED = "".join(f"{value:0{bits}b}" for value, bits in [
    (0x66, 8), (17, 6), (321, 10), (5999, 13), (6, 3), (3, 5), (2, 3), (9, 4), (2, 4), (51234, 16),
    (7, 5), (6, 3), (31, 5), (0, 3), (2345, 16), (0xAAAA, 16)])
PACKED = bytes(int(PACKED[i:i + 8], 2) for i in range(0, len(PACKED), 8)).hex()


def section(number):
    return re.search(rf"^## {number}\. .*?(?=^## |\Z)", PAGE, re.M | re.S).group()


def block(text, language=""):
    return re.search(rf"^```{language}\n(.*?)^```", text, re.M | re.S).group(1)


def run(command, cwd, text=None):
    if command[0] == "python3":
        command = [sys.executable, *command[1:]]
    done = subprocess.run(command, cwd=cwd, input=text, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{shlex.join(map(str, command))} failed:\n{done.stdout[-8000:]}")
    return done.stdout


def demand(met, what):
    if not met:
        sys.exit(f"not as docs/adding-a-kind.md says: {what}")
    print(f"ok: {what}", flush=True)


def write_rows(tree):
    """Section 1. Returns the names of the new sub-records and of the new main kinds."""
    rows = block(section(1), "yaml")
    (tree / re.search(r"schema/\w+\.yaml", section(1)).group()).write_text(rows, encoding="utf-8")
    kinds = yaml.safe_load(rows)["kinds"]
    return [k for k in kinds if "type" not in kinds[k]], [k for k in kinds if "type" in kinds[k]]


def give_numbers(tree, subs, mains):
    """Section 2: behind all others."""
    path = tree / "schema" / "format.yaml"
    line = block(section(2), "yaml")
    demand(yaml.safe_load(line)["later"] == subs + mains, "the line lists the new kinds")
    path.write_text(path.read_text(encoding="utf-8") + line, encoding="utf-8")


def check_and_build(tree):
    """Section 3. The build that it names, without optimisation and without tests."""
    check, build = block(section(3)).strip().split("\n")
    run(shlex.split(check), tree)
    demand(build == "scripts/build dev", "the rows pass the check")
    run(["cmake", "-G", "Ninja", "-S", ".", "-B", "build/dev", *CHEAP], tree)
    run(["cmake", "--build", "build/dev", "--parallel", str(os.cpu_count()), "--target", "rtcm2"], tree)
    return tree / "build" / "dev"


def look(build):
    """Section 4: the files that appeared."""
    places = re.findall(r"^\| (`.*?) \|", section(4), re.M)
    for name in re.findall(r"`([^`]+)`", " ".join(places)):
        stem, _, endings = Path(name).name.partition(".")
        for ending in re.findall(r"\w+", endings):
            (file,) = (build / "rendered").glob(f"*/{stem}.{ending}")
            demand("Message_Type_17" in file.read_text(), f"{file.name} has the kind")


def use(build, tree):
    def rtcm2(*arguments, text=PACKED + "\n"):
        return run([build / "app" / "rtcm2", *arguments, "-"], tree, text)

    exported = json.loads(rtcm2("export"))
    demand(exported["kind"] == "Message Type 17" and exported["fields"] == HEADER | BODY, "export gives the values")
    given = {name: value for name, value in (HEADER | BODY).items() if name not in ("Preamble", "Ns")}
    encoded = rtcm2("encode", "--to", "hex", text=json.dumps({"kind": "Message Type 17", "fields": given}))
    demand(encoded.strip() == PACKED, "encode gives the bits")
    shown = rtcm2("show")
    demand(all(text in shown for text in ("Satellite Weeks", "Healthy", "2345 week")), "show has texts and units")
    listed = rtcm2("list", "--where", "Weeks.Week == 2345")
    demand("17;321;5999;6;3;" in listed, "list shows it and filters by a field")


def bring_up_to_date(tree):
    """Section 5, as far as commands do it."""
    command = re.search(r"`(python3 \S+ --update)`", section(5)).group(1)
    run(shlex.split(command), tree)
    reference = (tree / "docs" / "messages.md").read_text(encoding="utf-8")
    demand("Satellite Weeks" in reference, "the reference has it")


def main():
    with tempfile.TemporaryDirectory(prefix="adding-a-kind-") as folder:
        tree = Path(folder) / "rtcm2"
        ignored = shutil.ignore_patterns("build*", ".git", ".cache", "__pycache__")
        shutil.copytree(ROOT, tree, ignore=ignored, symlinks=True)
        give_numbers(tree, *write_rows(tree))
        build = check_and_build(tree)
        look(build)
        use(build, tree)
        bring_up_to_date(tree)


if __name__ == "__main__":
    main()
