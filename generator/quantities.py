"""Reads what values mean: quantities, systems of satellites, meanings of members, and points."""

from decimal import Decimal

from model import MEANINGS, Point, Quantity, System
from rows import (Form, IDENTIFIER, INTEGER, LIST, MAPPING, NATURAL, TEXT, Row, SchemaError, check_row,
                  is_identifier, is_integer, is_number)


def _is_path(value):
    return isinstance(value, str) and all(map(is_identifier, value.split(".")))


LETTER = Form("one letter", lambda v: isinstance(v, str) and len(v) == 1 and v.isalpha() and v.isascii())
MEANING = Form(f"one of {', '.join(MEANINGS)}", lambda v: v in MEANINGS)
FACTOR = Form("a number above 0", lambda v: is_number(v) and v > 0)
UNSETTLED = Form("'unsettled'", lambda v: v == "unsettled")
INTEGERS = Form("a list of integers", lambda v: isinstance(v, list) and v and all(map(is_integer, v)))
FACTORS = Form("one member with a factor for each of its values",
               lambda v: isinstance(v, Row) and len(v) == 1 and all(map(is_identifier, v))
               and all(isinstance(f, Row) and f and all(map(is_integer, f))
                       and all(map(FACTOR.accepts, f.values())) for f in v.values()))
MEMBERS_OF_POINT = Form("a list of three members",
                        lambda v: isinstance(v, list) and len(v) == 3 and all(map(is_identifier, v)))
PATH = Form("a system, a member or, after a dot, a member of the elements, or a list of a member and a system",
            lambda v: _is_path(v) or (isinstance(v, list) and len(v) == 2 and all(map(_is_path, v))))
FORMS = {
    "name": TEXT, "unit": TEXT, "factor": FACTOR, "by": FACTORS, "none": INTEGERS, "highest": NATURAL,
    "satellite": MAPPING, "zero": NATURAL,
    "letter": LETTER, "time": TEXT, "value": INTEGER,
    "frame": TEXT, "of": MEMBERS_OF_POINT, "from": TEXT,
}
NUMBER_KEYS = ({"unit"}, {"name", "factor", "by", "none", "highest"})
SATELLITE_KEYS = ({"name", "satellite"}, set())
# What values times factors have to fit.
LARGEST = 2**63 - 1


def systems(head):
    """The systems of satellites that the format knows."""
    found = []
    for row in head.get("systems", []):
        check_row(row, FORMS, {"name", "letter", "time", "frame", "value"}, set(), "a system", head.at("systems"))
        found.append(System(row["name"], row["letter"], row["time"], row["frame"], row["value"]))
    for key in ("name", "letter", "value"):
        if len({getattr(system, key) for system in found}) != len(found):
            raise SchemaError(f"{head.at('systems')}: two systems have the same {key}")
    return found


def _scaled(factor):
    """A factor as an integer and the decimals that it has."""
    sign, digits, exponent = Decimal(str(factor)).normalize().as_tuple()
    number = int("".join(map(str, digits)))
    return (number * 10**exponent, 0) if exponent >= 0 else (number, -exponent)


def _default_name(member, unit):
    return f"{member.rstrip('_')}_{unit.replace('/', '_per_')}"


def quantity(member_name, row):
    """The Quantity that a member's row tells; its references are not checked yet."""
    what = f"quantity of {member_name}"
    if "satellite" in row:
        check_row(row, FORMS, *SATELLITE_KEYS, what)
        check_row(row["satellite"], FORMS, {"zero"}, set(), what)
        return Quantity(name=row["name"], is_satellite=True, zero=row["satellite"]["zero"],
                        factors=[(0, 1, 0)])
    check_row(row, FORMS, *NUMBER_KEYS, what)
    if "factor" in row and "by" in row:
        raise SchemaError(f"{row.at('by')}: {what} has a factor already")
    by, factors = "", {0: row.get("factor", 1)}
    if "by" in row:
        ((by, factors),) = row["by"].items()
    return Quantity(name=row.get("name", _default_name(member_name, row["unit"])), unit=row["unit"], by=by,
                    factors=[(value, *_scaled(factor)) for value, factor in factors.items()],
                    none=tuple(row.get("none", ())), highest=row.get("highest"))


def _check_quantity(member, kind, check_fits, fail):
    quantity = member.quantity
    seen = {m.name: m for m in kind.members[: kind.members.index(member)]}
    if member.role not in ("wire", "slice") or member.type == "byte":
        fail("a quantity is for single numbers in the message")
    if quantity.by:
        target = seen.get(quantity.by)
        if target is None or target.role not in ("wire", "slice"):
            fail(f"'by' names {quantity.by}, which does not stand before it")
        if target.when and target.when != member.when:
            fail(f"'by' names {quantity.by}, which is not always present")
        for value, _, _ in quantity.factors:
            check_fits(value, target, fail)
    for value in [*quantity.none, *([] if quantity.highest is None else [quantity.highest])]:
        check_fits(value, member, fail)
    for _, factor, decimals in quantity.factors:
        if factor << member.width > LARGEST or decimals > 18:
            fail("values times the factor have too many digits")
    if not is_identifier(quantity.name):
        fail(f"the quantity's name {quantity.name!r} is no identifier; give it one with 'name'")


def _points(rows, kind, place):
    """The points whose coordinates a kind tells."""
    found = []
    for row in rows:
        check_row(row, FORMS, {"name", "of"}, {"from"}, f"a point of {kind.name}", place)
        for name in row["of"]:
            member = next((m for m in kind.members if m.name == name), None)
            if member is None or member.quantity is None or member.quantity.unit != "m":
                raise SchemaError(f"{row.at('of')}: {name} of {kind.name} is no length in metres")
        found.append(Point(row["name"], tuple(row["of"]), row.get("from", ""), row.at("from")))
    return found


def check_points(kinds):
    """Distances are from points whose coordinates are told, and can be added to these exactly."""
    told = [(kind, point) for kind in kinds for point in kind.points]
    for kind, point in told:
        origins = [(k, p) for k, p in told if p.name == point.origin and not p.origin]
        if point.origin and not origins:
            raise SchemaError(f"{point.where}: no kind tells the coordinates of the point '{point.origin}'")
        for origin in origins:
            parts = [(k.member(name), factor, decimals) for k, p in [(kind, point), origin]
                     for name in p.members for _, factor, decimals in k.member(name).quantity.factors]
            most = max(decimals for _, _, decimals in parts)
            if 2 * max(f * 10 ** (most - d) << m.width for m, f, d in parts) > LARGEST:
                raise SchemaError(f"{point.where}: '{point.name}' and '{point.origin}' have too many digits")


def _set_system(kind, row, fmt):
    """What tells the system that the kind's messages belong to."""
    if "system" not in row:
        own = [m for m in kind.members if m.meaning == "system"]
        kind.system_member = None if kind.is_main or not own else (kind, own[0])
        return
    named = row["system"] if isinstance(row["system"], list) else [row["system"]]
    kind.system = next((system for system in fmt.systems if system.name == named[-1]), None)
    paths = [path for path in named if kind.system is None or path != kind.system.name]
    if paths:
        kind.system_member = _member_of_system(kind, paths[0], fmt)
    if len(paths) > 1 or (paths and kind.system_member is None):
        raise SchemaError(f"{row.at('system')}: kind {kind.name}: '{paths[-1]}' is no system and no "
                          "member that means one")


def _member_of_system(kind, path, fmt):
    names = path.split(".")
    holder = kind
    if len(names) == 2 and kind.records_member and kind.records_member.name == names[0]:
        holder = fmt.kind(kind.records_member.elements)
    found = [m for m in holder.members if m.name == names[-1] and m.meaning == "system"]
    return (holder, found[0]) if found and len(names) <= 2 else None


def attach(kind, row, fmt, check_fits):
    """Checks what the kind's members mean, and gives the kind what its `row` says of it.
    `check_fits` complains of values that a member cannot have."""
    names = [m.name for m in kind.members]
    for member in kind.members:
        def fail(text, member=member):
            raise SchemaError(f"{member.where}: {kind.name}.{member.name}: {text}")
        if member.system and member.system not in [s.name for s in fmt.systems]:
            fail(f"'{member.system}' is no system")
        if member.quantity:
            _check_quantity(member, kind, check_fits, fail)
            if member.quantity.name in names:
                fail(f"the quantity's name '{member.quantity.name}' stands twice in the kind")
            names.append(member.quantity.name)
    kind.points = _points(row.get("points", []), kind, row.at("points"))
    _set_system(kind, row, fmt)
