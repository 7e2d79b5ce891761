"""Words of the message reference for what the model says in numbers and names."""


def escaped(text):
    """A text in a cell of a Markdown table."""
    return text.replace("\\", "\\\\").replace("|", "\\|").replace("<", "&lt;")


def label(member):
    """What a reader calls the member: its display name, or its own where it has none."""
    return member.display or member.name


def heading(kind):
    return kind.display or kind.name.replace("_", " ")


def label_of(kind, name):
    return label(kind.member(name))


def _span(start, bits):
    return str(start) if bits == 1 else f"{start} to {start + bits - 1}"


def positions(kind):
    """From member name to its place in the message. After a part of varying length there is only
    an order, no number."""
    places = {}
    for m in kind.members:
        first = kind.first_bits[m.name]
        if m.role == "slice":
            places[m.name] = f"in {label_of(kind, m.of)}"
        elif not (m.on_wire or m.role == "records"):
            places[m.name] = "-"
        elif first is None:
            places[m.name] = "next"
        else:
            places[m.name] = _span(first, m.bits) if m.role == "wire" else f"from {first}"
    return places


def width(member):
    if member.role == "records":
        return "-"
    if member.role == "inline":
        return "8 each"
    return "64" if member.type == "f64" else str(member.width)


def type_words(member):
    words = {"byte": "byte", "u": "unsigned", "i": "signed", "f64": "real number"}
    if member.role == "records":
        return f"[{member.elements}](#{member.elements.lower()}) sub-records"
    if member.role == "inline":
        return "characters" if member.type == "ch" else "bytes"
    return words[member.type]


def _count_rule(member, source):
    rule = source if member.times == 1 else f"{member.times} × {source}"
    if member.minus:
        rule += f" − {member.minus}"
    if member.over != 1:
        rule = f"({rule}) ÷ {member.over}, rounded down"
    if member.minus:
        rule += f"; a negative difference wraps round in {member.width} bits"
    return rule


def origin(kind, member):
    """How the value comes about, where it is not simply read."""
    m = member
    if m.role == "slice":
        bits = f"bit {m.low}" if m.width == 1 else f"bits {m.low} to {m.low + m.width - 1}"
        return f"{bits} of {label_of(kind, m.of)}, counted from the least significant"
    if m.role == "count":
        return _count_rule(m, label_of(kind, m.of))
    if m.role == "lookup":
        choices = ", ".join(f"{number} for {value}" for value, number in m.values.items())
        return f"follows from {label_of(kind, m.of)}: {choices}"
    if m.role == "constant":
        return f"not on the wire, always {m.initial}"
    if m.role == "inline":
        return f"as many as {label_of(kind, m.length)} says, at most {m.limit}"
    if m.role == "records":
        return f"as many as {label_of(kind, m.length)} says"
    return ""


def presence(kind, member):
    if not member.when:
        return ""
    name, values = member.when
    return f"only when {label_of(kind, name)} is {' or '.join(map(str, values))}"


def _decimal(factor, decimals):
    digits = str(factor).rjust(decimals + 1, "0")
    return f"{digits[:-decimals]}.{digits[-decimals:]}" if decimals else digits


def quantity(member, kind):
    """What the integer means, in words."""
    q = member.quantity
    if q is None:
        return []
    if q.is_satellite:
        return [f"`{q.name}`: the system's letter and the number; 0 is satellite {q.zero}"]
    choices = [f"× {_decimal(factor, decimals)} {q.unit}"
               + (f" when {label_of(kind, q.by)} is {value}" if q.by else "")
               for value, factor, decimals in q.factors]
    words = [f"`{q.name}`: {', '.join(choices)}"]
    words += [f"no quantity: {', '.join(map(str, q.none))}"] if q.none else []
    return words + ([f"out of range above {q.highest}"] if q.highest is not None else [])


def system_words(kind):
    """The system that the kind's messages belong to."""
    words = []
    if kind.is_main and kind.system_member:
        holder, member = kind.system_member
        words.append(f"as {label(member)} of {'its first element' if holder is not kind else 'the message'} says")
    if kind.system:
        words.append(f"{kind.system.name}, whose messages count in {kind.system.time} time")
    return ", else ".join(words)


def notes(member, kind):
    """Everything about a member that has no column of its own."""
    parts = [presence(kind, member), origin(kind, member)]
    if member.unit:
        parts.append(f"unit: {member.unit}")
    if member.do_not_use is not None:
        parts.append(f"{member.do_not_use} stands for no value")
    parts += quantity(member, kind)
    if member.system:
        parts.append(f"means something with {member.system} only")
    parts += [f"{value}: {text}" for value, text in member.texts.items()]
    return "<br>".join(escaped(part) for part in parts if part)


def own_members(kind, fmt):
    return kind.members[len(fmt.header):] if kind.is_main else kind.members


def families(fmt):
    """The families in the order of their lowest type number, each with its main kinds by type and
    its sub-records."""
    mains = sorted(fmt.main_kinds, key=lambda k: k.type)
    names = list(dict.fromkeys([k.family for k in mains] + [k.family for k in fmt.sub_kinds]))
    return [(name, [k for k in mains if k.family == name],
             [k for k in fmt.sub_kinds if k.family == name]) for name in names]


def users(kind, fmt):
    """The main kinds that carry the sub-record."""
    return [k for k in fmt.main_kinds
            if k.records_member and k.records_member.elements == kind.name]


def link(kind):
    """A link to the kind's section."""
    return f"[{heading(kind)}](#{kind.name.lower()})"


FILTERS = {f.__name__: f for f in (escaped, families, heading, label, link, notes, own_members,
                                   positions, system_words, type_words, users, width)}
