#!/usr/bin/env python3
"""Renders the code that follows from the message description.

    render.py --schema DIR --out DIR            render everything that the build compiles
    render.py --schema DIR --list               print the names of those files
    render.py --schema DIR --docs FILE          render the message reference
    render.py --schema DIR --check              only check the schema

A file is written only when its text changes. Needs Jinja2 and PyYAML.
"""

import argparse
import sys
from pathlib import Path

import jinja2

import reference
import schema
from model import Run

TEMPLATES = Path(__file__).parent / "templates"
CODEC_UNITS = ["RTCM2.h", "RTCM2.cpp", "RTCM2_layouts.h", "RTCM2_table.cpp"]
PLUGIN_UNITS = ["PluginKinds.cpp"]
KIND_UNITS = ["Message.h", "Message.cpp", "MessageInfo.h", "MessageInfo.cpp"]


def wire_comment(member):
    """What a reader of the record wants to know of a member."""
    if member.role == "wire":
        text = f"{member.bits} bit{'s' if member.bits > 1 else ''}"
    elif member.role == "slice":
        text = f"part of {member.of}"
    elif member.role == "inline":
        what = "characters" if member.type == "ch" else "bytes"
        text = f"{member.length} {what}, at most {member.limit}"
    elif member.role == "records":
        text = f"{member.length} elements"
    elif member.role == "constant":
        text = "not on the wire"
    else:
        text = f"follows from {member.of}"
    if member.when:
        name, values = member.when
        text += f", present when {name} is {' or '.join(map(str, values))}"
    return text


def summary(kind):
    """One line about a kind."""
    if not kind.is_main:
        return f"Sub-record {kind.display}."
    return f"Type {kind.type}{': ' + kind.text if kind.text else ''}."


def literal(text):
    """A C++ string literal."""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def constants(fmt, kind_of_list):
    """The lists of values that rows point to: each once, with the name that it has."""
    names = {}
    for kind in fmt.kinds:
        for m in kind.members:
            values = {"texts": m.texts.items(), "choices": m.values.items(),
                      "presence": m.when[1] if m.when else (),
                      "factors": m.quantity.factors if m.quantity else (),
                      "alarms": m.alarms.items(),
                      "none": m.quantity.none if m.quantity else ()}[kind_of_list]
            if values:
                names.setdefault(tuple(values), f"{kind_of_list}_{kind.name}_{m.name}")
    return names


def name_of(names, values):
    """The name of a list among those of constants()."""
    return names[tuple(values)]


def environment():
    env = jinja2.Environment(loader=jinja2.FileSystemLoader(TEMPLATES), undefined=jinja2.StrictUndefined,
                             trim_blocks=True, lstrip_blocks=True, keep_trailing_newline=True)
    env.filters.update(wire_comment=wire_comment, summary=summary, literal=literal, constants=constants, name_of=name_of,
                       **reference.FILTERS)
    env.tests["run"] = lambda part: isinstance(part, Run)
    return env


def _render(env, template, **context):
    kind = context.get("kind")
    source = f"schema/{kind.where.split(':')[0]}" if kind else "schema"
    note = f"Rendered by generator/render.py from {source} through {template}. Do not edit."
    return env.get_template(template).render(rendered_by=note, **context)


def units(fmt):
    """The files that the build compiles: name, template and the kind they are about."""
    for name in CODEC_UNITS:
        yield f"codec/{name}", f"{name}.j2", None
    for name in PLUGIN_UNITS:
        yield f"plugin/{name}", f"{name}.j2", None
    for kind in fmt.described_kinds:
        for unit in KIND_UNITS:
            yield f"plugin/RTCM2_{kind.name}_{unit}", f"{unit}.j2", kind


def write_if_changed(path, text):
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def render_unit(env, fmt, template, kind):
    if kind is None:
        return _render(env, template, format=fmt, header=fmt.header)
    return _render(env, template, format=fmt, header=fmt.header, kind=kind)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--schema", type=Path, required=True)
    what = parser.add_mutually_exclusive_group(required=True)
    what.add_argument("--out", type=Path)
    what.add_argument("--list", action="store_true")
    what.add_argument("--docs", type=Path)
    what.add_argument("--check", action="store_true")
    options = parser.parse_args()
    try:
        fmt = schema.load(options.schema)
    except schema.SchemaError as error:
        sys.exit(f"schema error: {error}")
    env = environment()
    if options.list:
        print("\n".join(name for name, _, _ in units(fmt)))
    elif options.docs:
        write_if_changed(options.docs, render_unit(env, fmt, "messages.md.j2", None))
    elif options.out:
        for name, template, kind in units(fmt):
            write_if_changed(options.out / name, render_unit(env, fmt, template, kind))


if __name__ == "__main__":
    main()
