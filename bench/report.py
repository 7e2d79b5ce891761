#!/usr/bin/env python3
"""Prints the table of scripts/bench: what the benchmarks measured, as ratios inside one run.

    report.py RESULT.json BUILD_DIRECTORY BUILD_SECONDS BUILD_CPU_SECONDS
"""

import json
import os
import platform
import re
import sys
from collections import defaultdict
from pathlib import Path

# Which benchmark is measured against which reference, and what the ratio must reach: at most so
# many times the reference's time, or so many times faster. Without a reference: at most so many
# nanoseconds for one value.
CHECKS = [
    ("decode", "straight_line", "at most", 1.25),
    ("decode", "bit_by_bit", "faster", 8),
    ("encode", "bit_by_bit", "faster", 6),
    ("object", "decode and signals", "at most", 1.25),
    ("object", "decode", "at most", 2.6),
    ("field", "field_alone", "at most", 1.5),
    ("table", None, "at most", 5),
    ("framing", "bit_by_bit", "faster", 15),
    ("stats", "framing", "at most", 2),
    ("print", "framing", "at most", 6),
    ("print", "json_writer", "faster", 2),
    ("scaled", "raw", "at most", 2),
    ("database", "insert", "at most", 1.3),
]


def load(path):
    """The fastest repetition of every benchmark, by group, subject and way, in nanoseconds: what
    else the machine does can only slow one down."""
    units = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    runs = defaultdict(list)
    failed = []
    for run in json.loads(Path(path).read_text())["benchmarks"]:
        if run.get("run_type") != "iteration":
            continue
        if run.get("error_occurred"):
            failed.append(f"{run['name']}: {run['error_message']}")
            continue
        group, subject, way = run["name"].removesuffix("/real_time").split("/")
        clock = "real_time" if run["name"].endswith("/real_time") else "cpu_time"
        # All times per item: a message, or the whole stream.
        items = run.get("items_per_second")
        run["ns"] = 1e9 / items if items else run[clock] * units[run["time_unit"]]
        runs[group, subject, way].append(run)
    if failed:
        sys.exit("\n".join(sorted(set(failed))))
    fastest = {key: min(each, key=lambda run: run["ns"]) for key, each in runs.items()}
    # The repetitions are mixed; the order here is that of the checks.
    groups = list(dict.fromkeys(group for group, *_ in CHECKS))
    return dict(sorted(fastest.items(),
                       key=lambda item: (groups.index(item[0][0]), in_numbers(item[0][1]))))


def in_numbers(text):
    """A key by which `type 9` stands before `type 16`."""
    return [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", text)]


def processor():
    try:
        found = re.search(r"^model name\s*:\s*(.*)$", Path("/proc/cpuinfo").read_text(), re.M)
        return found.group(1) if found else platform.machine()
    except OSError:
        return platform.machine()


def print_ratios(results):
    """Returns whether all ratios are as they must be."""
    rows = []
    for group, reference, sense, wanted in CHECKS:
        for (g, subject, way), run in results.items():
            # What a decoder object is measured against is the codec itself.
            others = {"decode": [("decode", subject, "rtcm2")],
                      "decode and signals": [("decode", subject, "rtcm2"), (group, subject, "signals")],
                      "framing": [("stats", "100 MB stream", "framing")],
                      "raw": [("print", subject, "rtcm2")],
                      }.get(reference, [(group, subject, reference)])
            if g != group or way != "rtcm2":
                continue
            if reference is None:
                rows.append((group, subject, "-", run["ns"], 1, "ns a value", wanted))
            elif all(other in results for other in others):
                rows.append((group, subject, reference, run["ns"],
                             sum(results[other]["ns"] for other in others), sense, wanted))

    print("| What | Against | Ratio | Must be |")
    print("|---|---|---|---|")
    good = True
    for group, subject, reference, ns, against, sense, wanted in rows:
        reached = against / ns if sense == "faster" else ns / against
        fits = reached >= wanted if sense == "faster" else reached <= wanted
        good &= fits
        text = {"faster": f"{reached:.1f} x faster", "at most": f"{reached:.2f} x its time",
                "ns a value": f"{reached:.1f} ns a value"}[sense]
        limit = f"at {'least' if sense == 'faster' else 'most'} {wanted}"
        print(f"| {group}, {subject} | {reference.replace('_', ' ')} | {text} "
              f"| {limit}{'' if fits else ' (missed)'} |")
    return good


def print_messages(results):
    print("\n| One message | ns | ns per word | allocations |")
    print("|---|---|---|---|")
    for (group, subject, way), run in results.items():
        if way == "rtcm2" and group in ("decode", "encode", "object"):
            print(f"| {group}, {subject} | {run['ns']:.1f} | {run['ns'] / run['words']:.2f} "
                  f"| {run['allocations']:.0f} |")


def print_streams(results):
    print("\n| Stream | MB/s | of text | rows/s |")
    print("|---|---|---|---|")
    for (group, subject, way), run in results.items():
        if way == "rtcm2" and group == "database":
            print(f"| {group}, {subject} | | | {1e9 / run['ns']:,.0f} |")
        if way == "rtcm2" and "bytes_per_second" in run:
            # The reference knows how much text there is.
            written = results.get((group, subject, "copy"), {}).get("text_bytes")
            rate = f"{1e3 * written / run['ns']:.0f}" if written else ""
            print(f"| {group}, {subject} | {run['bytes_per_second'] / 1e6:.0f} | {rate} | |")


def print_sizes(build, seconds, cpu_seconds):
    print("\n| Built | |")
    print("|---|---|")
    for library in ("codec/librtcm2_codec.so", "plugin/libvorlo_rtcm2.so"):
        print(f"| size of {Path(library).name} | {os.stat(Path(build) / library).st_size // 1024} KB |")
    print(f"| time to build everything but the tests, {os.cpu_count()} processors | {seconds} s |")
    print(f"| of all processors for that | {cpu_seconds} s |")


def main():
    result, build, seconds, cpu_seconds = sys.argv[1:]
    results = load(result)
    print(f"{processor()}, {os.cpu_count()} processors, "
          f"{platform.system()} {platform.release()}\n")
    good = print_ratios(results)
    print_messages(results)
    print_streams(results)
    print_sizes(build, seconds, cpu_seconds)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
