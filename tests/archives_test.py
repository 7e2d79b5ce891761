#!/usr/bin/env python3
"""Runs the commands of docs/archives.md and the scripts that it names, and looks at what they made.
Usage: archives_test.py <rtcm2>"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EXAMPLES = ROOT / "docs" / "examples"
PAGE = (ROOT / "docs" / "archives.md").read_text()
program = Path(sys.argv[1]).resolve()
problems = []


def run(*arguments, **options):
    return subprocess.run([program, *arguments], check=True, capture_output=True, **options).stdout


def messages(text):
    """Without their numbers, which count in the piece."""
    objects = [json.loads(line) for line in text.splitlines()]
    return [{name: value for name, value in each.items() if name != "number"} for each in objects]


def expect(holds, what):
    if not holds:
        problems.append(what)


with tempfile.TemporaryDirectory() as name:
    work = Path(name)
    (work / "bin").mkdir()
    (work / "bin" / "rtcm2").symlink_to(program)
    (work / "bin" / "merge-databases").symlink_to(EXAMPLES / "merge-databases")
    (work / "archive").mkdir()
    samples = [ROOT / "samples" / f"{each}.rtcm2" for each in ("all-types", "demo", "wide-area")]
    for sample in samples:
        shutil.copy(sample, work / "archive" / f"a-{sample.name}")
    run("convert", "--to", "stream", "-o", work / "big.rtcm2", *[samples[1]] * 80)
    environment = {**os.environ, "PATH": f"{work / 'bin'}:{os.environ['PATH']}", "HOME": name}

    for kind, block in re.findall(r"^```(sh.*)\n([\s\S]*?)^```$", PAGE, re.MULTILINE):
        has_sqlite = b"sqlite" in run("export", "--help")
        if kind == "sh" or has_sqlite:
            functions = PAGE[PAGE.index("pieces() {"):].split("\n}\n")[0] + "\n}\n"
            ended = subprocess.run(["bash", "-euo", "pipefail", "-c", functions + block], cwd=work, env=environment,
                                   capture_output=True, text=True)
            expect(ended.returncode == 0, f"status {ended.returncode}: {block}{ended.stderr}")

    whole = messages(run("export", "-q", work / "big.rtcm2"))
    expect(len(whole) > 8000, "big.rtcm2 is small")
    for made in ("big", "together"):
        expect(messages((work / f"{made}.ndjson").read_bytes()) == whole, f"{made}.ndjson differs from the whole")
    single = [each for sample in samples for each in messages(run("export", "-q", sample))]
    expect(messages((work / "archive.ndjson").read_bytes()) == single, "archive.ndjson differs")
    expect(sorted(each.name for each in (work / "converted").iterdir()) == [f"a-{each.stem}.hex" for each in samples],
           "other files were converted")
    if has_sqlite:
        rows = subprocess.run(["sqlite3", work / "all.db", "SELECT count(*), count(DISTINCT input_id) FROM messages"],
                              check=True, capture_output=True, text=True).stdout
        expect(rows.split("|")[1] == "3\n", f"all.db has other inputs: {rows}")

    # As Slurm would run it.
    script = EXAMPLES / "archive.sbatch"
    for task in range(5):
        subprocess.run(["bash", script, work / "big.rtcm2", work / "slurm"], check=True, env={
            **environment, "SLURM_ARRAY_TASK_ID": str(task), "SLURM_ARRAY_TASK_MAX": "4"})
    tasks = b"".join(each.read_bytes() for each in sorted((work / "slurm").iterdir()))
    expect(messages(tasks) == whole, "the tasks of the job array differ from the whole")
    options = re.findall(r"^#SBATCH --([a-z-]+)=\S+$", script.read_text().split("\n\n")[0], re.MULTILINE)
    expect("array" in options and len(options) == 6, f"options of Slurm: {options}")

sys.exit("\n".join(problems) or 0)
