"""Reads the schema files and checks them.

Every complaint names the file and the line of the row that it is about.
"""

from pathlib import Path

import yaml

from model import Format, Kind, Member

INTEGER_TYPES = {"byte", "u", "i", "ch"}
MEMBER_KEYS = {
    "wire": {"type", "bits", "initial", "when", "texts", "unit", "do_not_use"},
    "slice": {"type", "slice", "texts"},
    "count": {"type", "count", "texts"},
    "lookup": {"type", "lookup"},
    "constant": {"type", "width", "initial", "texts"},
    "inline": {"type", "bits", "length", "limit", "when", "texts"},
    "records": {"elements", "length"},
}
RULE_KEYS = {
    "slice": ({"of", "low", "bits"}, set()),
    "count": ({"of", "times", "width"}, {"minus", "over"}),
    "lookup": ({"of", "values"}, set()),
}
RECORD_HEAD = {"kind", "bit_count", "parent"}


class SchemaError(Exception):
    """The schema is wrong; the text says where and how."""


class Row(dict):
    """A YAML mapping that knows where it stands."""

    where = "?"


class _Loader(yaml.SafeLoader):
    """Builds Rows and refuses a key that stands twice in one mapping."""

    def construct_row(self, node):
        row = Row()
        yield row
        row.where = f"{Path(node.start_mark.name).name}:{node.start_mark.line + 1}"
        for key_node, value_node in node.value:
            key = self.construct_object(key_node, deep=True)
            if key in row:
                raise SchemaError(f"{row.where}: '{key}' stands twice")
            row[key] = self.construct_object(value_node, deep=True)


_Loader.add_constructor(yaml.resolver.BaseResolver.DEFAULT_MAPPING_TAG, _Loader.construct_row)


def _load(path):
    try:
        with open(path, encoding="utf-8") as stream:
            loader = _Loader(stream)
            loader.name = str(path)
            content = loader.get_single_data()
    except yaml.YAMLError as error:
        raise SchemaError(f"{path.name}: {error}") from error
    if not isinstance(content, Row):
        raise SchemaError(f"{path.name}: holds no mapping")
    return content


def _check_keys(row, required, allowed, what):
    missing = sorted(required - row.keys())
    if missing:
        raise SchemaError(f"{row.where}: {what} lacks '{missing[0]}'")
    unknown = sorted(str(key) for key in row.keys() - required - allowed)
    if unknown:
        raise SchemaError(f"{row.where}: {what} does not know '{unknown[0]}'")


def _flatten(rows):
    """Rows may be lists of rows, so that shared runs can be spliced in by an alias."""
    for row in rows:
        if isinstance(row, list):
            yield from _flatten(row)
        else:
            yield row


def _role(row):
    if "elements" in row:
        return "records"
    if "limit" in row:
        return "inline"
    for role in RULE_KEYS:
        if role in row:
            return role
    return "wire" if "bits" in row else "constant"


def _member(row):
    if not isinstance(row, Row) or "member" not in row:
        raise SchemaError(f"{getattr(row, 'where', '?')}: a row of members needs 'member'")
    role = _role(row)
    what = f"{role} member {row['member']}"
    required = MEMBER_KEYS[role] - {"initial", "when", "texts", "unit", "do_not_use"}
    _check_keys(row, required | {"member"}, MEMBER_KEYS[role] | {"name"}, what)
    member = Member(name=row["member"], role=role, where=row.where)
    member.display = row.get("name", "")
    for key in ("type", "bits", "width", "initial", "texts", "unit", "do_not_use", "length",
                "limit", "elements"):
        if key in row:
            setattr(member, key, row[key])
    if "when" in row:
        ((name, values),) = row["when"].items()
        member.when = (name, tuple(values))
    if role in RULE_KEYS:
        rule = row[role]
        required, optional = RULE_KEYS[role]
        _check_keys(rule, required, optional, f"{role} of {member.name}")
        for key, value in rule.items():
            setattr(member, key, value)
    if role == "slice":
        member.width, member.bits = member.bits, 0
    if role in ("wire", "inline"):
        member.width = member.bits
    if role == "inline":
        member.width = 8
    if role in ("slice", "count", "lookup") and member.initial is None:
        member.initial = 0
    return member


def _check_member(member, kind, seen):
    def fail(text):
        raise SchemaError(f"{member.where}: {kind.name}.{member.name}: {text}")

    if member.name in seen or member.name in RECORD_HEAD:
        fail("stands twice in the kind")
    if kind.is_described != bool(member.display):
        fail("needs a name" if kind.is_described else "has a name but its kind is not described")
    for reference in (member.of, member.length, member.when[0] if member.when else ""):
        if reference and reference not in seen:
            fail(f"refers to '{reference}', which does not stand before it")
    if member.role == "records":
        return
    if member.type not in INTEGER_TYPES | {"f64"}:
        fail(f"unknown type '{member.type}'")
    if (member.type == "f64") != (member.role == "lookup"):
        fail("type f64 and a lookup go together")
    if member.type == "ch" and member.role != "inline":
        fail("type ch is for inline arrays")
    if member.role == "inline" and (member.type not in ("ch", "byte") or member.bits != 8):
        fail("an inline array holds 8-bit characters or bytes")
    if member.role != "lookup" and not 1 <= member.width <= 64:
        fail(f"a width of {member.width} bits")
    if member.type == "byte" and member.width > 8:
        fail(f"type byte cannot hold {member.width} bits")
    _check_values(member, fail)


def _check_values(member, fail):
    if member.role == "lookup":
        return
    lowest = -(1 << (member.width - 1)) if member.type == "i" else 0
    highest = (1 << (member.width - (member.type == "i"))) - 1
    for value in list(member.texts) + [v for v in (member.do_not_use, member.initial) if v]:
        if not isinstance(value, int) or not lowest <= value <= highest:
            fail(f"{value!r} does not fit {member.width} bits of type {member.type}")
    for value, text in member.texts.items():
        if not isinstance(text, str) or not text:
            fail(f"the text of {value} is {text!r}, not a text")
    if member.role == "slice" and member.low + member.width > 64:
        fail("the slice lies outside its member")


def _check_slices(kind):
    for member in kind.members:
        if member.role == "slice" and member.low + member.width > kind.member(member.of).bits:
            raise SchemaError(f"{member.where}: {kind.name}.{member.name}: the slice lies outside "
                              f"{member.of}")


def _kind(name, row, family, header):
    _check_keys(row, {"members"}, {"type", "name", "text"}, f"kind {name}")
    kind = Kind(name=name, where=row.where, family=family, type=row.get("type"),
                display=row.get("name", ""), text=row.get("text", ""), members=[])
    if kind.is_main and bool(kind.text) != kind.is_described:
        raise SchemaError(f"{row.where}: kind {name}: name and text go together")
    rows = list(_flatten(row["members"]))
    kind.members = [_member(r) for r in header + rows] if kind.is_main else [_member(r) for r in rows]
    if not kind.is_described:
        for member in kind.members[: len(header)]:
            member.display = ""
    seen = {}
    for member in kind.members:
        member.kind = kind
        _check_member(member, kind, seen)
        seen[member.name] = member
    _check_slices(kind)
    return kind


def _check_kind_types(kind):
    if kind.is_main and not 0 <= kind.type <= 63:
        raise SchemaError(f"{kind.where}: kind {kind.name}: type {kind.type} does not fit 6 bits")
    if not kind.is_main and not kind.is_described:
        raise SchemaError(f"{kind.where}: kind {kind.name}: a sub-record needs a name")
    records = [m for m in kind.members if m.role == "records"]
    if len(records) > 1 or (records and records[0] is not kind.members[-1]):
        raise SchemaError(f"{kind.where}: kind {kind.name}: an array of records stands last, once")


def _check_format(fmt):
    types = {}
    for kind in fmt.kinds:
        _check_kind_types(kind)
        if kind.is_main and types.setdefault(kind.type, kind) is not kind:
            raise SchemaError(f"{kind.where}: kind {kind.name}: type {kind.type} is taken by "
                              f"{types[kind.type].name}")
        for member in kind.members:
            if member.role == "records":
                subs = [k for k in fmt.sub_kinds if k.name == member.elements]
                if not subs:
                    raise SchemaError(f"{member.where}: {kind.name}.{member.name}: no sub-record "
                                      f"kind '{member.elements}'")
    if sorted(fmt.kinds, key=lambda k: k.is_main) != fmt.kinds:
        raise SchemaError("format.yaml: sub-records stand before main kinds in 'order'")


def load(folder):
    """The checked Format of the schema in `folder`. Raises SchemaError."""
    files = sorted(Path(folder).glob("*.yaml"))
    contents = {path.name: _load(path) for path in files}
    if "format.yaml" not in contents:
        raise SchemaError(f"{Path(folder).name}: no format.yaml")
    head = contents.pop("format.yaml")["format"]
    _check_keys(head, {"name", "preamble", "header", "order"}, set(), "format")
    kinds = {}
    for content in contents.values():
        _check_keys(content, {"family", "kinds"}, {"shared"}, "a family")
        for name, row in content["kinds"].items():
            if name in kinds:
                raise SchemaError(f"{row.where}: kind {name} is described twice")
            kinds[name] = _kind(name, row, content["family"], head["header"])
    order = list(_flatten(head["order"]))
    for name in order:
        if name not in kinds or order.count(name) != 1:
            raise SchemaError(f"{head.where}: 'order' names {name}, which is not one kind")
    left_out = sorted(set(kinds) - set(order))
    if left_out:
        raise SchemaError(f"{kinds[left_out[0]].where}: kind {left_out[0]} is not in 'order'")
    fmt = Format(head["name"], head["preamble"], [kinds[name] for name in order])
    for value, kind in enumerate(fmt.kinds, start=1):
        kind.value = value
    _check_format(fmt)
    return fmt
