#!/usr/bin/env python3
"""Does what docs/adding-a-kind.md says, with the kind that it shows, in a copy of the sources: the
copy is built without optimisation, and its program is asked for what the page promises. No number
that programs know may move, and the new kind takes every way that the old ones take."""

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
sys.path.insert(0, str(ROOT / "tests" / "abi"))

from public_numbers import header_folders, public_numbers  # noqa: E402

PAGE = (ROOT / "docs" / "adding-a-kind.md").read_text(encoding="utf-8")
CHEAP = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DBUILD_TESTING=OFF", "-DRTCM2_WERROR=ON",
         "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=16"]
VALGRIND = ["valgrind", "--quiet", "--leak-check=full", "--error-exitcode=9"]
HEADER = {"Preamble": 0x66, "Message_Type": 17, "Reference_Station_Id": 321, "Modified_Z_Count": 5999,
          "Sequence_No": 6, "No_Of_Data_Words": 3, "Station_Health": 2}
BODY = {"Version": 9, "Ns": 2, "Spare": 51234,
        "Weeks": [{"Satellite_Id": 7, "Health": 6}, {"Satellite_Id": 31, "Health": 0, "Week": 2345}]}
# The same message, bit by bit, with what fills the last word.
PACKED = "".join(f"{value:0{bits}b}" for value, bits in [
    (0x66, 8), (17, 6), (321, 10), (5999, 13), (6, 3), (3, 5), (2, 3), (9, 4), (2, 4), (51234, 16),
    (7, 5), (6, 3), (31, 5), (0, 3), (2345, 16), (0xAAAA, 16)])
PACKED = bytes(int(PACKED[i:i + 8], 2) for i in range(0, len(PACKED), 8)).hex()
# Without its last word, in which the week of the second satellite ends.
CUT = f"{int(PACKED[:24], 16) - (1 << 51):024x}"
CUT_ERROR = "RTCM2_ERR_WEEK_17_WEEK_EXT_BUFFER_OVERFLOW"


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
    targets = ["rtcm2", "rtcm2_framing", "rtcm2_forms"]    # and what they link: all that is installed
    run(["cmake", "--build", "build/dev", "--parallel", str(os.cpu_count()), "--target", *targets], tree)
    return tree / "build" / "dev"


def compare_numbers(before, after):
    """Nothing that exists moves: neither a constant nor a size or a place in a structure."""
    moved = [f"{owner}: {name} was {number}, is {after.get(owner, {}).get(name)}" for owner in before
             for name, number in before[owner].items() if after.get(owner, {}).get(name) != number]
    demand(not moved, "no public number moves" + "".join(f"\n  {line}" for line in moved))
    kinds, errors = (after[enum].items() - before[enum].items() for enum in ("RTCM2_message_enum", "RTCM2_error_enum"))
    demand(dict(kinds) == {"RTCM2_WEEK_17": 42, "RTCM2_MESSAGE_TYPE_17": 43}, "the new kinds are 42 and 43")
    last = min(before["RTCM2_error_enum"].values())
    codes = sorted(code for _, code in errors)
    demand(codes == list(range(last - len(errors), last)), "the new codes stand behind the old ones")


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
    demand('"Satellite":"G07"' in rtcm2("export", "--scaled"), "export knows the satellite")
    listed = rtcm2("list", "--line", "--where", "Weeks.Week == 2345")
    demand("17;321;5999;6;3;" in listed, "list shows it and filters by a field")
    described = json.loads(run([build / "app" / "rtcm2", "describe", "--json"], tree))["kinds"]
    names = {kind["main"]: {other["name"] for other in described if other["main"] == kind["main"]} for kind in described}
    demand("Message Type 17" in names[True] and "Week 17" in names[False], "describe lists it")


def fail(build, tree):
    """A message that does not decode: an event, and its array is released."""
    rtcm2 = [build / "app" / "rtcm2", "list", "-"]
    told = subprocess.run(rtcm2, input=CUT + "\n", text=True, capture_output=True)
    demand("type 17: its content ends early (Week does not fit)" in told.stderr and told.stdout.count("\n") <= 1,
           "a truncated message is told in words")
    run([*VALGRIND, *rtcm2], tree, CUT + "\n")
    demand(True, "what a failed decode leaves is released")


def use_generic(build, tree):
    """An example that knows the table and no kind."""
    codec = build / "codec"
    run(["cc", "-std=c99", "-g", *(f"-I{folder}" for folder in header_folders(build, tree)),
         "docs/examples/json.c", "-o", "json", f"-L{codec}", f"-Wl,-rpath,{codec}", "-lrtcm2_codec"], tree)
    told = subprocess.run([*VALGRIND, tree / "json", PACKED, CUT], text=True, capture_output=True)
    demand(told.returncode == 1 and CUT_ERROR in told.stderr, "generic functions refuse the truncated message")
    last = json.loads(told.stdout)["Weeks"][-1]
    demand(last["Week"] == {"value": 2345, "unit": "week"}, "generic functions read the other one")


def bring_up_to_date(tree):
    """Section 5, as far as commands do it."""
    command = re.search(r"`(python3 \S+ --update)`", section(5)).group(1)
    run(shlex.split(command), tree)
    reference = (tree / "docs" / "messages.md").read_text(encoding="utf-8")
    demand("Satellite Weeks" in reference, "the reference has it")
    check = [sys.executable, "scripts/check-abi", "build/dev"]
    printed = subprocess.run(check, cwd=tree, text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    differences = printed.stdout.splitlines()
    demand(differences and all(line.startswith("  + ") for line in differences), "check-abi prints what is new alone")
    run([check[0], check[1], "--update", check[2]], tree)
    run(check, tree)


def main():
    with tempfile.TemporaryDirectory(prefix="adding-a-kind-") as folder:
        tree = Path(folder) / "rtcm2"
        ignored = shutil.ignore_patterns("build*", ".git", ".cache", "__pycache__")
        shutil.copytree(ROOT, tree, ignore=ignored, symlinks=True)
        run(shlex.split("python3 generator/render.py --schema schema --out before"), tree)
        give_numbers(tree, *write_rows(tree))
        build = check_and_build(tree)
        after = public_numbers(header_folders(build, tree))
        compare_numbers(public_numbers(header_folders(build, tree, tree / "before")), after)
        look(build)
        use(build, tree)
        fail(build, tree)
        use_generic(build, tree)
        bring_up_to_date(tree)


if __name__ == "__main__":
    main()
