#!/usr/bin/env python3
"""Prints packed messages as JSON, one object a line, as json.c beside it does: through cffi, with
the declarations of the installed headers and nothing compiled.

    rtcm2_json.py 6604058CA3102CFF9C052A00      hexadecimal digits as arguments
    rtcm2_json.py < messages.hex                or as lines

RTCM2_LIBRARY names the library and RTCM2_INCLUDE the folders of the headers, like PATH; without
them pkg-config is asked.
"""
import json
import os
import re
import subprocess
import sys
from pathlib import Path

import cffi

UNKNOWN = 64    # no number of a type


def installed(variable):
    command = ["pkg-config", f"--variable={variable}", "rtcm2-codec"]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def declarations(name):
    """A header as cffi reads it: without preprocessor lines, but for numbers, and without C++."""
    folders = os.environ.get("RTCM2_INCLUDE") or installed("includedir")
    paths = (Path(folder) / name for folder in folders.split(os.pathsep))
    header = next(path.read_text("utf-8") for path in paths if path.exists())
    header = re.sub(r"#ifdef __cplusplus.*?#endif", "", header, flags=re.S)
    header = re.sub(r"^#(?!define \w+ \d+$).*", "", header, flags=re.M)
    return header.replace("RTCM2_API ", "")


ffi = cffi.FFI()
ffi.cdef("typedef signed char quarn_char;" + declarations("RTCM2.h"))
ffi.cdef(declarations("RTCM2_format.h"))
lib = ffi.dlopen(os.environ.get("RTCM2_LIBRARY") or installed("libdir") + "/librtcm2_codec.so")


def text(characters):
    return ffi.string(characters).decode()


def number(record, member, index):
    if member.type == lib.RTCM2_TYPE_REAL:
        digits = ffi.new("char[]", lib.RTCM2_TEXT_ROOM)
        lib.RTCM2_read_text(record, member, index, digits, len(digits))
        return json.loads(text(digits))
    value = ffi.new("int64_t*")
    lib.RTCM2_read_integer(record, member, index, value)
    return value[0] if member.type == lib.RTCM2_TYPE_SIGNED else value[0] % 2**64


def value_of(record, member, index):
    value = number(record, member, index)
    shown = {"value": value}
    if member.type != lib.RTCM2_TYPE_REAL and lib.RTCM2_text_of(member, value):
        shown["text"] = text(lib.RTCM2_text_of(member, value))
    if text(member.unit):
        shown["unit"] = text(member.unit)
    return shown if len(shown) > 1 else value


def members(record, kind):
    shown = {}
    for member in (ffi.addressof(kind.members[i]) for i in range(kind.member_count)):
        if not lib.RTCM2_is_present(record, member):
            continue
        indices = range(lib.RTCM2_count(record, member))
        if member.role == lib.RTCM2_ROLE_ARRAY:
            value = [members(lib.RTCM2_element(record, member, i), member.elements)
                     for i in indices]
        elif member.role != lib.RTCM2_ROLE_RUN:
            value = value_of(record, member, 0)
        elif member.type == lib.RTCM2_TYPE_CHARACTER:
            value = "".join(chr(number(record, member, i) & 0xFF) for i in indices)
        else:
            value = [value_of(record, member, i) for i in indices]
        shown[text(member.name)] = value
    return shown


def shown(data):
    """The message as a dictionary; ValueError says what is wrong with it."""
    context = ffi.new("RTCM2_context_s*")
    lib.RTCM2_init_context(context)
    context.unknown_type = UNKNOWN
    message = ffi.gc(ffi.new("RTCM2_message_s*"), lib.RTCM2_free_message)
    result = lib.RTCM2_decode(context, data, len(data), message)
    if context.unknown_type != UNKNOWN:
        raise ValueError(f"Unknown type {context.unknown_type}")
    if result < 0:
        raise ValueError(text(lib.RTCM2_error_to_string(result)))
    kind = lib.RTCM2_kind_of(message)
    return {"kind": text(kind.name), **members(message, kind)}


def bytes_of(digits):
    try:
        data = bytes.fromhex(digits)
    except ValueError:
        data = None
    if data is None or len(data) > lib.RTCM2_PACKED_ROOM:
        raise ValueError(f"No hexadecimal digits of up to {lib.RTCM2_PACKED_ROOM} bytes")
    return data


sys.stdin.reconfigure(encoding="latin-1")
sys.stdout.reconfigure(encoding="utf-8")
failed = False
for line in sys.argv[1:] or sys.stdin:
    try:
        print(json.dumps(shown(bytes_of(line)), ensure_ascii=False))
    except ValueError as error:
        print(f"{error}: {line.rstrip()}", file=sys.stderr)
        failed = True
sys.exit(failed)
