#!/usr/bin/env python3
"""Makes the seeds of the fuzz targets from the samples, and dictionaries from the format.

    seeds.py PROGRAM SAMPLES OUTPUT

PROGRAM is rtcm2. OUTPUT gets a directory for each target and <target>.dict for some.
"""

import re
import subprocess
import sys
from pathlib import Path

EXPRESSIONS = """\
"Reference Station Id" == 5 and not (Modified_Z_Count < 100 or present("Antenna Height"))
Corrections.PRC < -100 or "Station Health" == "Not Working" or Message ~ storm
Corrections.PRC < -420 and "Sequence No." == 0
!(Ns >= 0x1f) || Corrections.UDRE != 'LT 1 m' && Data.Carrier_Phase <= -1.5e3
present(Corrections.RRC)
Corrections[Satellite == G05 and PRC_m < -4.5 and not present(Time_Of_Day_s)] and Modified_Z_Count_s != 1.8e3
Satellite ~ "R0" or RRC_m_per_s >= -0.0020 and !(PRC_m == 0x1f)
Station_Health contains "udre" or ECEF_X = 12
""".splitlines()
OPERATORS = "( ) [ ] . == != <= >= < > ~ contains and or not present && || ! \" ' \\ 0x1f 1e3 -".split()
JSON_WORDS = ['"kind":', '"fields":', '"fill":', '"hex":', '{"', '":', '},{', '[', ']', '\\u0000',
              'null', 'true', '-1', '1e308', '18446744073709551615', '0.5', '\\n{']
CASTER = [b"ICY 200 OK\r\nServer: x\r\n\r\nfA", b"ERROR - Bad Password\r\n",
          b"SOURCETABLE 200 OK\r\nA: b\r\nSTR;M;\"a;b\";RTCM 2;;2;GPS\r\nENDSOURCETABLE\r\n",
          b"HTTP/1.1 307 Go\r\nTransfer-Encoding: chunked\r\nLocation: /x\r\nContent-Length: 7\r\n\r\nfA",
          b"Server: x\r\n\r\nfA", b"5;a=b\r\nfAfAf\r\n0\r\nA: b\r\n\r\n"]
FORMS = ["stream", "auto", "packed", "hex", "words", "aivdm"]    # in the order of forms.cpp


def run(program, *arguments):
    return subprocess.run([program, *arguments], stdout=subprocess.PIPE, check=True).stdout


def messages_of(packed):
    """Cuts packed messages by the number of words in their headers."""
    while packed:
        size = 6 + 3 * (packed[5] >> 3)
        yield packed[:size]
        packed = packed[size:]


def write(directory, seeds):
    directory.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(seeds):
        (directory / f"{number:03}").write_bytes(seed)


def dictionary(path, words):
    quoted = ("".join(f"\\x{byte:02x}" for byte in word.encode()) for word in words)
    path.write_text("".join(f'"{word}"\n' for word in quoted), encoding="ascii")


def main():
    program, samples, output = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    forms = {form: run(program, "convert", "--to", form, str(samples / "all-types.rtcm2"))
             for form in ("stream", "packed", "hex", "words")}
    wide = run(program, "convert", "--to", "packed", str(samples / "wide-area.rtcm2"))
    packed = list(messages_of(forms["packed"] + wide))
    for target in ("decode", "descriptors"):
        write(output / target, packed)
    write(output / "construct", [bytes([100, 7, kind]) + message[1:]
                                 for kind, message in enumerate(packed)])
    units = [b"".join((int.from_bytes(message[i:i + 3], "big") << 6).to_bytes(4, "little")
                      for i in range(0, len(message), 3)) for message in packed]
    write(output / "extractor", [bytes([mode]) + unit for mode in (0x03, 0xF0, 0x30)
                                 for unit in units])
    forms["aivdm"] = (samples / "broadcasts.nmea").read_bytes()
    damaged = (samples / "damaged.rtcm2").read_bytes()
    write(output / "forms",
          [bytes([FORMS.index(form), 1]) + content for form, content in forms.items()] +
          [bytes([FORMS.index("auto"), 2]) + content for content in forms.values()] +
          [bytes([0, 3]) + damaged])
    streams = [forms["stream"], damaged, (samples / "demo.rtcm2").read_bytes()[:900]]
    changes = [bytes([0])] + [bytes([3, kind, 1, 40, 35, kind, 0, 90, 200, 3, 0, 155, 0]) for kind in range(5)]
    write(output / "framer", [bytes([200]) + change + stream for change in changes for stream in streams])
    lines = (samples / "source" / "all-types.ndjson").read_bytes().splitlines(keepends=True)
    lines += run(program, "export", "--hex", str(samples / "all-types.rtcm2")).splitlines(True)[:3]
    write(output / "json", lines + [b"[" + b",\n".join(lines[:3]) + b"]\n"])
    write(output / "caster", [bytes([cut]) + text for text in CASTER for cut in (30, 150, 220)])
    write(output / "filter", [expression.encode() for expression in EXPRESSIONS])

    names = set(re.findall(r'"(?:name|identifier)":\s*"([^"\\]+)"',
                           run(program, "describe", "--json").decode()))
    dictionary(output / "filter.dict", OPERATORS + sorted(names))
    dictionary(output / "json.dict", JSON_WORDS + [f'"{name}":' for name in sorted(names)])


if __name__ == "__main__":
    main()
