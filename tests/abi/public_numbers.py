"""The numbers of the codec's public headers, as a C compiler sees them."""

import re
import subprocess
import tempfile
from pathlib import Path

HEADERS = ["RTCM2.h", "RTCM2_format.h", "RTCM2_framing.h", "RTCM2_forms.h", "quarn.h", "quarn_platform.h"]


def header_folders(build, root, rendered=None):
    """Where the headers lie: those that a build rendered and configured, and those of the sources."""
    return [Path(rendered or build / "rendered") / "codec", Path(build) / "codec", Path(root) / "codec",
            Path(root) / "framing", Path(root) / "forms",
            Path(root) / "fw/fw/gen/misc/quarn/src"]


def _read(folders):
    found = [next(f for f in (d / name for d in folders) if f.exists()) for name in HEADERS]
    return re.sub(r"/\*.*?\*/", "", "\n".join(f.read_text(encoding="utf-8") for f in found), flags=re.S)


def _expressions(text):
    """From the name of each public number to what a C compiler computes it from, by its owner: an
    enumeration, a structure, or "macros"."""
    owners = {"macros": {n: n for n in re.findall(r"^#define (\w+) +\(?-?\d", text, re.M)}}
    for owner, body in re.findall(r"typedef enum (\w+) \{(.*?)\}", text, re.S):
        owners[owner] = {name: name for name in re.findall(r"^ *(\w+)", body, re.M)}
    for owner, body in re.findall(r"typedef (?:struct|union) (\w+) \{(.*?)\n\}", text, re.S):
        owners[owner] = {"size": f"sizeof({owner})"}
        for member in re.findall(r"(\w+)(?:\[\w+\])?;", body):
            owners[owner][f"offset of {member}"] = f"offsetof({owner}, {member})"
            owners[owner][f"size of {member}"] = f"sizeof((({owner}*)0)->{member})"
    return owners


def public_numbers(folders):
    """The constants, sizes and offsets of the headers in `folders`: owner to name to number."""
    owners = _expressions(_read(folders))
    lines = [f'printf("%lld\\n", (long long)({e}));' for names in owners.values() for e in names.values()]
    program = "\n".join(['#include "quarn.h"', '#include "RTCM2_format.h"', '#include "RTCM2_framing.h"',
                         '#include "RTCM2_forms.h"', "#include <stddef.h>",
                         "#include <stdio.h>", "int main(void) {", *lines, "return 0; }"])
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "numbers"
        subprocess.run(["cc", "-x", "c", "-std=c99", *(f"-I{d}" for d in folders), "-o", path, "-"],
                       input=program, text=True, check=True)
        printed = iter(subprocess.run([path], text=True, check=True, stdout=subprocess.PIPE).stdout.split())
    return {owner: {name: int(next(printed)) for name in names} for owner, names in owners.items()}
