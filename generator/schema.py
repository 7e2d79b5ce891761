"""Checks the schema and turns it into the model.

Every complaint names the file and the line of the row that it is about.
"""

from pathlib import Path

import quantities
from model import STORAGE_CLASSES, Format, Kind, Member, upper_name
from rows import (CONDITION, Form, IDENTIFIER, INTEGER, LIST, MAPPING, NATURAL, POSITIVE, TEXT, Row,
                  SchemaError, check_row, flatten, is_integer, is_number, is_text, read)

BEFORE_ARRAY = Form("'before array'", lambda v: v == "before array")
FORMS = {
    "format": MAPPING, "preamble": NATURAL, "header": LIST, "order": LIST, "later": LIST,
    "family": TEXT, "kinds": MAPPING, "shared": MAPPING, "nested_length": BEFORE_ARRAY,
    "member": IDENTIFIER, "name": TEXT, "text": TEXT, "unit": TEXT, "type": IDENTIFIER,
    "bits": POSITIVE, "width": POSITIVE, "initial": INTEGER, "do_not_use": INTEGER,
    "texts": MAPPING, "alarms": MAPPING, "when": CONDITION, "members": LIST,
    "slice": MAPPING, "count": MAPPING, "lookup": MAPPING, "values": MAPPING,
    "of": IDENTIFIER, "low": NATURAL, "times": POSITIVE, "minus": NATURAL, "over": POSITIVE,
    "elements": IDENTIFIER, "length": IDENTIFIER, "limit": POSITIVE,
    "means": quantities.MEANING, "quantity": MAPPING, "quantities": quantities.UNSETTLED,
    "system": TEXT, "systems": LIST, "points": LIST,
}
KIND_FORMS = FORMS | {"type": NATURAL, "system": quantities.PATH}
MEANING_KEYS = {"means", "quantity", "system"}
# Of each role: the keys that it needs, and those that it may have.
MEMBER_KEYS = {
    "wire": ({"type", "bits"}, {"initial", "when", "texts", "alarms", "unit", "do_not_use"} | MEANING_KEYS),
    "slice": ({"type", "slice"}, {"texts"} | MEANING_KEYS),
    "count": ({"type", "count"}, {"texts"}),
    "lookup": ({"type", "lookup"}, set()),
    "constant": ({"type", "width", "initial"}, {"texts"}),
    "inline": ({"type", "bits", "length", "limit"}, {"when", "texts", "means"}),
    "records": ({"elements", "length"}, set()),
}
RULE_KEYS = {
    "slice": ({"of", "low", "bits"}, set()),
    "count": ({"of", "times", "width"}, {"minus", "over"}),
    "lookup": ({"of", "values"}, set()),
}
TYPES = {
    "wire": {"byte", "u", "i"}, "slice": {"byte", "u"}, "count": {"u"}, "lookup": {"f64"},
    "constant": {"byte", "u", "i"}, "inline": {"byte", "ch"}, "records": {""},
}
# Roles that a member may refer to: rules run when a member has been read from the wire.
REFERENCES = {"of": {"wire"}, "length": {"wire", "count"}, "when": {"wire", "slice", "count"}}
RECORD_HEAD = {"kind", "bit_count", "parent"}
# What the codec relies on: two header words that start so, and room for the flags of the kinds.
HEADER_BITS = 48
HEADER_START = [("Preamble", 8), ("Message_Type", 6)]
HEADER_MEANINGS = {"preamble": (0, 8), "type": (8, 6), "words": (40, 5)}  # place and width
MOST_KINDS = 46
# What a row of the table has room for.
LONGEST_TEXT = 255
LARGEST_FACTOR = 65535
# The union of all records, which later kinds must not make larger.
UNION_BYTES = 256


def _complaint(where, subject):
    def fail(text):
        raise SchemaError(f"{where}: {subject}: {text}")
    return fail


def _role(row):
    if "elements" in row:
        return "records"
    if "limit" in row:
        return "inline"
    for role in RULE_KEYS:
        if role in row:
            return role
    return "wire" if "bits" in row else "constant"


def _member(row, place):
    """`place` is that of the list around the row."""
    if not isinstance(row, Row) or "member" not in row:
        place = row.where if isinstance(row, Row) else place
        raise SchemaError(f"{place}: a row of members needs 'member'")
    role = _role(row)
    required, optional = MEMBER_KEYS[role]
    what = f"{role} member {row['member']}"
    check_row(row, FORMS, required | {"member"}, optional | {"name"}, what)
    facts = {key: value for key, value in row.items()
             if key not in ("member", "name", "means", "quantity", role)}
    facts["meaning"] = row.get("means", "")
    if "quantity" in row:
        facts["quantity"] = quantities.quantity(row["member"], row["quantity"])
    if role in RULE_KEYS:
        check_row(row[role], FORMS, *RULE_KEYS[role], f"{role} of {row['member']}")
        facts |= row[role]
    if "when" in row:
        ((name, values),) = row["when"].items()
        facts["when"] = (name, tuple(values))
    if role == "slice":
        facts["width"] = facts.pop("bits")
    if role in ("wire", "inline"):
        facts["width"] = row["bits"]
    if role in RULE_KEYS:
        facts["initial"] = 0
    return Member(name=row["member"], display=row.get("name", ""), role=role, where=row.where,
                  **facts)


def _check_names(member, kind, seen, fail):
    earlier = seen.values()
    if member.name in RECORD_HEAD:
        fail("every record has a member of this name already")
    if upper_name(member.name) in [upper_name(m.name) for m in earlier]:
        fail("stands twice in the kind")
    if kind.is_described != bool(member.display):
        fail("needs a name" if kind.is_described else "has a name but its kind is not described")
    if member.display and member.display in [m.display for m in earlier]:
        fail(f"the name '{member.display}' stands twice in the kind")


def _check_type(member, fail):
    if member.type not in TYPES[member.role]:
        fail(f"type '{member.type}' is not one of {', '.join(sorted(TYPES[member.role]))}")
    if member.role in ("lookup", "records"):
        return
    if member.role == "inline" and member.width != 8:
        fail(f"an element has 8 bits, not {member.width}")
    if member.role == "count" and member.width not in STORAGE_CLASSES[:3]:
        fail(f"a count is stored in 8, 16 or 32 bits, not {member.width}")
    most = 8 if member.type == "byte" else 64
    if member.width > most:
        fail(f"type {member.type} has at most {most} bits, not {member.width}")


def _range(member):
    signed = member.type == "i"
    return range(-(1 << member.width - 1) if signed else 0, 1 << member.width - signed)


def _check_fits(value, member, fail):
    if not is_integer(value) or value not in _range(member):
        fail(f"{value!r} does not fit {member.name} with {member.width} bits of type {member.type}")


def _check_values(member, fail):
    if member.role in ("lookup", "records"):
        return
    facts = [v for v in (member.do_not_use, member.initial) if v is not None]
    for value in [*member.texts, *member.alarms, *facts]:
        _check_fits(value, member, fail)
    for value, text in member.texts.items():
        if not is_text(text):
            fail(f"the text of {value} is {text!r}, not a text of one line; put it in quotes")
        if len(text.encode()) > LONGEST_TEXT:
            fail(f"the text of {value} has more than {LONGEST_TEXT} bytes")
    for value, level in member.alarms.items():
        if level not in ("warning", "failure"):
            fail(f"the alarm of {value} is {level!r}, neither warning nor failure")
    if member.texts and member.type == "ch":
        fail("characters have no texts")
    if member.do_not_use is not None and (member.type == "byte" or member.when):
        fail("a value not to use is for numbers that are always present")


def _check_references(member, seen, fail):
    """Returns the members referred to, by key."""
    names = {"of": member.of, "length": member.length, "when": member.when and member.when[0]}
    found = {}
    for key, name in names.items():
        if not name:
            continue
        if name not in seen:
            fail(f"'{key}' names {name}, which does not stand before it")
        found[key] = seen[name]
        if found[key].role not in REFERENCES[key]:
            fail(f"'{key}' names {name}, a {found[key].role} member")
        if found[key].when and found[key].when != member.when:
            fail(f"'{key}' names {name}, which is not always present")
    return found


def _check_rule(member, target, others, fail):
    """A member that follows from another one, `target`."""
    if member.role == "lookup":
        for value, number in member.values.items():
            _check_fits(value, target, fail)
            if not is_number(number):
                fail(f"the value for {value} is {number!r}, not a number")
    elif target.type == "i" or target.width > 32:
        fail(f"'of' names {target.name}, which is signed or has more than 32 bits")
    if max(member.times, member.minus, member.over) > LARGEST_FACTOR:
        fail(f"a number of its rule is above {LARGEST_FACTOR}")
    if member.role != "slice":
        return
    if target.width > 8:
        fail(f"'of' names {target.name}, which has more than 8 bits")
    if member.low + member.width > target.bits:
        fail(f"the slice lies outside {target.name} with {target.bits} bits")
    for other in others:
        if other.low < member.low + member.width and member.low < other.low + other.width:
            fail(f"the slice overlaps {other.name}")


def _check_array(member, length, fail):
    if length.type != "u":
        fail(f"its length {length.name} is not of type u")
    if length.initial != 0:
        fail(f"its length {length.name} needs 'initial: 0'")
    if member.role == "inline" and member.limit not in range(256):
        fail(f"a limit of {member.limit} is above 255")
    if member.role == "inline" and member.limit not in _range(length):
        fail(f"a limit of {member.limit} is more than {length.name} of {length.width} bits can tell")


def _check_member(member, kind, seen):
    fail = _complaint(member.where, f"{kind.name}.{member.name}")
    _check_names(member, kind, seen, fail)
    _check_type(member, fail)
    _check_values(member, fail)
    found = _check_references(member, seen, fail)
    if "of" in found:
        others = [m for m in seen.values() if m.role == member.role and m.of == member.of]
        _check_rule(member, found["of"], others, fail)
    if "length" in found:
        _check_array(member, found["length"], fail)
    if "when" in found:
        for value in member.when[1]:
            _check_fits(value, found["when"], fail)


def _check_kind(kind, type_bits):
    fail = _complaint(kind.where, f"kind {kind.name}")
    arrays = [m for m in kind.members if m.role in ("inline", "records")]
    if kind.is_main:
        if bool(kind.text) != kind.is_described:
            fail("name and text go together")
        if kind.type >= 1 << type_bits:
            fail(f"type {kind.type} does not fit {type_bits} bits")
        if kind.size > UNION_BYTES:
            fail(f"its record has {kind.size} bytes, and RTCM2_message_s has {UNION_BYTES}")
    else:
        if not kind.is_described or kind.text:
            fail("without 'type' it is a sub-record, which has a name and no text")
        if arrays or not kind.segments:
            fail("a sub-record has members on the wire and no arrays")
    if "records" in [m.role for m in kind.members[:-1]]:
        fail("an array of records stands last")


def _kind(name, row, place, content, head):
    """Reads one kind of a family. Main kinds start with the members of the header."""
    if not IDENTIFIER.accepts(name):
        raise SchemaError(f"{place}: kind {name!r} is not {IDENTIFIER.words}")
    check_row(row, KIND_FORMS, {"members"},
              {"type", "name", "text", "system", "points", "quantities"}, f"kind {name}", place)
    kind = Kind(name=name, where=place, family=content["family"], type=row.get("type"),
                display=row.get("name", ""), text=row.get("text", ""), members=[])
    kind.is_unsettled = "quantities" in row or "quantities" in content
    kind.nested_length = kind.is_main and "nested_length" in content
    header = list(flatten(head["header"])) if kind.is_main else []
    kind.members = [_member(r, head.at("header")) for r in header]
    kind.members += [_member(r, row.at("members")) for r in flatten(row["members"])]
    if not kind.is_described:
        for member in kind.members[: len(header)]:
            member.display = ""
    seen = {}
    for member in kind.members:
        member.kind = kind
        _check_member(member, kind, seen)
        seen[member.name] = member
    _check_kind(kind, dict(HEADER_START)["Message_Type"])
    if kind.is_main:
        kind.members[0].initial, kind.members[1].initial = head["preamble"], kind.type
    return kind


def _header(head):
    place = head.at("header")
    members = [_member(row, place) for row in flatten(head["header"])]
    fail = _complaint(place, "header")
    if [(m.name, m.bits) for m in members[: len(HEADER_START)]] != HEADER_START:
        fail("starts with " + " and ".join(f"{name} of {bits} bits" for name, bits in HEADER_START))
    for member in members:
        if member.role != "wire" or member.when:
            fail(f"{member.name} is not always on the wire")
        if not member.display:
            fail(f"{member.name} needs a name")
    if sum(m.bits for m in members) != HEADER_BITS:
        fail(f"has {sum(m.bits for m in members)} bits, not {HEADER_BITS}")
    starts = [sum(m.bits for m in members[:n]) for n in range(len(members))]
    meant = {m.meaning: (start, m.bits) for start, m in zip(starts, members)}
    for meaning, (start, bits) in HEADER_MEANINGS.items():
        if meant.get(meaning) != (start, bits):
            fail(f"needs a member that means '{meaning}' at bit {start}, {bits} bits wide")
    _check_fits(head["preamble"], members[0], _complaint(head.at("preamble"), "format"))
    return members


def _read_kinds(contents, head):
    kinds = {}
    for content in contents:
        check_row(content, FORMS, {"family", "kinds"}, {"shared", "nested_length", "quantities"}, "a family")
        for name, row in content["kinds"].items():
            place = content["kinds"].at(name)
            if name in kinds:
                raise SchemaError(f"{place}: kind {name} is described twice")
            kinds[name] = _kind(name, row, place, content, head)
    return kinds


def _ordered(kinds, head):
    """The kinds in the order of their numbers: the first ones, then those that came later."""
    first = _listed(kinds, head, "order", [])
    later = _listed(kinds, head, "later", first)
    for name, kind in kinds.items():
        if name not in first + later:
            raise SchemaError(f"{kind.where}: kind {name} is neither in 'order' nor in 'later'")
    fail = _complaint(head.at("later" if later else "order"), "later" if later else "order")
    if len(first + later) > MOST_KINDS:
        fail(f"there are {len(first + later)} kinds, and flags for {MOST_KINDS}")
    fail = _complaint(head.at("order"), "order")
    if sorted(first, key=lambda name: kinds[name].is_main) != first:
        fail("sub-records stand before main kinds")
    if not any(kinds[name].is_main for name in first):
        fail("there is no main kind")
    for value, name in enumerate(first + later, start=1):
        kinds[name].value = value
        kinds[name].is_later = name in later
    return [kinds[name] for name in first + later]


def _listed(kinds, head, key, earlier):
    """The names in a list of kinds, each of which stands in one list once."""
    names = list(flatten(head.get(key, [])))
    fail = _complaint(head.at(key), key)
    for name in names:
        if not isinstance(name, str) or name not in kinds:
            fail(f"names {name!r}, which is no kind")
        if (earlier + names).count(name) != 1:
            fail(f"names {name} twice")
    return names


def _check_between_kinds(fmt):
    """What one kind cannot be told of alone."""
    taken = {}
    for kind in fmt.kinds:
        fail = _complaint(kind.where, f"kind {kind.name}")
        unique = [f"the spelling {kind.upper}"]
        if kind.is_main:
            unique.append(f"type {kind.type}")
        if kind.is_described:
            unique.append(f"the name '{kind.display}'")
        for what in unique:
            if taken.setdefault(what, kind) is not kind:
                fail(f"{what} is taken by {taken[what].name}")
        if kind.records_member:
            _check_elements(kind.records_member, kind, {k.name: k.value for k in fmt.sub_kinds})


def _check_elements(array, kind, values):
    """`values` are those of the sub-records."""
    fail = _complaint(array.where, f"{kind.name}.{array.name}")
    if array.elements not in values:
        fail(f"no sub-record kind '{array.elements}'")
    if values[array.elements] > kind.value:
        fail(f"its elements {array.elements} have to be listed before {kind.name}")


def load(folder):
    """The checked Format of the schema in `folder`. Raises SchemaError."""
    contents = {path.name: read(path) for path in sorted(Path(folder).glob("*.yaml"))}
    if "format.yaml" not in contents:
        raise SchemaError(f"{Path(folder).name}: no format.yaml")
    top = contents.pop("format.yaml")
    check_row(top, FORMS, {"format"}, set(), "the file")
    head = top["format"]
    check_row(head, FORMS, {"preamble", "header", "order"}, {"later", "systems"}, "format")
    header = _header(head)
    kinds = _ordered(_read_kinds(contents.values(), head), head)
    fmt = Format(head["preamble"], header, kinds, quantities.systems(head))
    _check_between_kinds(fmt)
    rows = {name: row for content in contents.values() for name, row in content["kinds"].items()}
    for kind in fmt.kinds:
        quantities.attach(kind, rows[kind.name], fmt, _check_fits)
    quantities.check_points(fmt.kinds)
    return fmt
