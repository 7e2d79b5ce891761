"""The checked schema as objects: kinds, members, and the facts that follow from them.

Everything that can be counted or derived is derived here and nowhere else: kind values, error
codes, storage types, wire positions, capacities.
"""

from dataclasses import dataclass, field

STORAGE_CLASSES = (8, 16, 32, 64)
# What a member is to those who use messages, in the order of its numbers in the table, from 1.
MEANINGS = ("preamble", "type", "station", "time", "sequence", "words", "health", "system", "satellite",
            "correction", "rate", "issue", "accuracy", "height", "text")
RECORD_HEAD_BYTES = 16  # kind, bit_count, parent


def storage_bits(width):
    """The narrowest storage class that holds `width` bits."""
    return next(bits for bits in STORAGE_CLASSES if width <= bits)


def rounded_up(size, unit):
    return -(-size // unit) * unit


def upper_name(member):
    return member.rstrip("_").upper()


@dataclass
class System:
    """A system of satellites: its name, the letter before a satellite's number, the time that its
    messages are in, the frame of their positions, and the value by which members name it."""

    name: str
    letter: str
    time: str
    frame: str
    value: int


@dataclass
class Quantity:
    """What an integer means: it times a factor, in a unit; or a satellite, whose number it is."""

    name: str
    unit: str = ""
    by: str = ""  # the member that chooses the factor
    factors: list = field(default_factory=list)  # (value of `by`, factor, decimals of the factor)
    none: tuple = ()
    highest: int | None = None
    is_satellite: bool = False
    zero: int = 0  # the satellite that 0 means


@dataclass
class Point:
    """Three members that are the coordinates of a point, or its distance from the point `origin`."""

    name: str
    members: tuple
    origin: str
    where: str


@dataclass
class Member:
    """One member of a record. `role` says how its value comes about:

    wire      read from `bits` bits of the message
    slice     some bits of another member, `of`
    count     computed from another member in the arithmetic of its stored width
    lookup    a number chosen by another member
    constant  never on the wire, holds its initial value
    inline    a run of characters or bytes held in the record, `length` of them, at most `limit`
    records   an array of sub-records of kind `elements`, `length` of them
    """

    name: str
    role: str
    where: str
    type: str = ""
    display: str = ""
    bits: int = 0
    width: int = 0
    of: str = ""
    low: int = 0
    times: int = 1
    minus: int = 0
    over: int = 1
    values: dict = field(default_factory=dict)
    initial: int | None = None
    when: tuple | None = None  # (member name, tuple of values)
    texts: dict = field(default_factory=dict)
    alarms: dict = field(default_factory=dict)
    unit: str = ""
    do_not_use: int | None = None
    length: str = ""
    limit: int = 0
    elements: str = ""
    meaning: str = ""
    quantity: Quantity | None = None
    system: str = ""  # the only system with which it means something
    kind: "Kind | None" = None

    @property
    def on_wire(self):
        return self.role in ("wire", "inline")

    @property
    def field_name(self):
        """The member's part of its descriptor's class name."""
        return self.name.rstrip("_")

    @property
    def storage(self):
        """The C type of the member (of one element, for arrays)."""
        if self.role == "records":
            return f"RTCM2_{self.elements}_s"
        if self.type == "f64":
            return "double"
        if self.type == "ch":
            return "RTCM2_char"
        bits = 8 if self.type == "byte" else storage_bits(self.width)
        return f"{'' if self.type == 'i' else 'u'}int{bits}_t"

    @property
    def accessor_type(self):
        """The C++ type that the message object's accessor returns."""
        return {"int8_t": "RTCM2_char", "int64_t": "long long"}.get(self.storage, self.storage)

    @property
    def capacity(self):
        """Elements of an inline array; texts keep room for their terminating NUL."""
        return self.limit + (1 if self.type == "ch" else 0)

    @property
    def bytes_each(self):
        """Bytes of the member, or of one element of an inline array, where pointers have 64 bits."""
        if self.role == "records" or self.type == "f64":
            return 8
        return 1 if self.type in ("ch", "byte") else storage_bits(self.width) // 8

    @property
    def ext_error(self):
        return f"RTCM2_ERR_{self.kind.upper}_{upper_name(self.name)}_EXT_BUFFER_OVERFLOW"

    @property
    def int_error(self):
        return f"RTCM2_ERR_{self.kind.upper}_{upper_name(self.name)}_INT_BUFFER_OVERFLOW"

    @property
    def slices(self):
        return [m for m in self.kind.members if m.role == "slice" and m.of == self.name]

    @property
    def dependents(self):
        """Members computed as soon as this one has been read."""
        return [m for m in self.kind.members if m.of == self.name]


def _covers(earlier, later):
    """Whether a member present under `later` implies one present under `earlier`."""
    return earlier is None or (later is not None and earlier[0] == later[0]
                               and set(later[1]) <= set(earlier[1]))


@dataclass
class Run:
    """Members of fixed width that stand or fall together, with their bit positions in the run."""

    when: tuple | None
    members: list = field(default_factory=list)  # (position, member)
    bits: int = 0

    def add(self, member):
        self.members.append((self.bits, member))
        self.bits += member.bits


@dataclass
class Kind:
    name: str
    where: str
    family: str
    type: int | None
    display: str
    text: str
    members: list
    value: int = 0
    is_later: bool = False  # has its numbers behind those of the first kinds
    nested_length: bool = False  # a declared length of a record with a parent ends before the array
    is_unsettled: bool = False  # no reference settles what its values without a quantity mean
    points: list = field(default_factory=list)
    system: System | None = None  # that the kind's messages belong to
    system_member: tuple | None = None  # or what tells it: a kind, this or its elements', and a member

    @property
    def is_main(self):
        return self.type is not None

    @property
    def is_described(self):
        return bool(self.display)

    @property
    def upper(self):
        return self.name.upper()

    @property
    def enumerator(self):
        return f"RTCM2_{self.upper}"

    @property
    def record(self):
        return f"RTCM2_{self.name}_s"

    @property
    def message_class(self):
        return f"RTCM2_{self.name}_Message"

    @property
    def info_class(self):
        return f"RTCM2_{self.name}_MessageInfo"

    def member(self, name):
        return next(m for m in self.members if m.name == name)

    def field_class(self, member):
        return f"RTCM2_{self.name}_{member.field_name}_FieldInfo"

    @property
    def records_member(self):
        return next((m for m in self.members if m.role == "records"), None)

    @property
    def inline_members(self):
        return [m for m in self.members if m.role == "inline"]

    @property
    def underflow_error(self):
        last = [m for m in self.members if m.on_wire or m.role == "records"][-1]
        return f"RTCM2_ERR_{self.upper}_{upper_name(last.name)}_SIZE_UNDERFLOW"

    @property
    def internal_error(self):
        return f"RTCM2_ERR_{self.upper}_INTERNAL"

    @property
    def disabled_error(self):
        return f"RTCM2_ERR_{self.upper}_DISABLED"

    @property
    def errors(self):
        """The kind's block of error names, in the order of their numbers."""
        names = []
        for m in self.members:
            if m.on_wire:
                names.append(m.ext_error)
            if m.role == "inline":
                names.append(m.int_error)
        return names + [self.underflow_error, self.internal_error]

    @property
    def first_bits(self):
        """From member name to its first bit in the message, from the start of the record; None where
        that depends on other members, and for what is not in the message."""
        places = {}
        offset, conditions, known = 0, [], True
        for m in self.members:
            if m.role == "slice":
                whole = self.member(m.of)
                first = places[m.of]
                places[m.name] = None if first is None else first + whole.bits - m.low - m.width
            elif m.on_wire or m.role == "records":
                known = known and all(_covers(condition, m.when) for condition in conditions)
                places[m.name] = offset if known else None
                offset += m.bits
                conditions.append(m.when)
                known = known and m.role == "wire"
            else:
                places[m.name] = None
        return places

    @property
    def bits(self):
        """The record's length in the message where it is fixed, else None."""
        fixed = all(m.role not in ("inline", "records") and not m.when for m in self.members)
        return sum(m.bits for m in self.members) if fixed else None

    @property
    def size(self):
        """Bytes of the record where pointers have 64 bits; nowhere has it more."""
        end = RECORD_HEAD_BYTES
        for m in self.members:
            end = rounded_up(end, m.bytes_each) + m.bytes_each * (m.capacity if m.role == "inline" else 1)
        return rounded_up(end, 8)

    @property
    def only_run(self):
        """The Run that is all that the record has on the wire, or None."""
        parts = self.segments
        return parts[0] if len(parts) == 1 and isinstance(parts[0], Run) and not parts[0].when else None

    @property
    def segments(self):
        """The wire in order: Runs of fixed-width members, inline arrays and arrays of records."""
        parts = []
        for m in self.members:
            if m.role == "wire":
                if not parts or not isinstance(parts[-1], Run) or parts[-1].when != m.when:
                    parts.append(Run(m.when))
                parts[-1].add(m)
            elif m.role in ("inline", "records"):
                parts.append(m)
        return parts


@dataclass
class Format:
    preamble: int
    header: list  # the members that all main kinds start with
    kinds: list
    systems: list = field(default_factory=list)

    @property
    def sub_kinds(self):
        return [k for k in self.kinds if not k.is_main]

    @property
    def main_kinds(self):
        return [k for k in self.kinds if k.is_main]

    @property
    def described_kinds(self):
        """Kinds known to the host, in the order of registration: sub-records, then main kinds by
        type; then those that came later, likewise."""
        described = [k for k in self.kinds if k.is_described]
        return sorted(described, key=lambda k: (k.is_later, k.is_main, k.type if k.is_main else k.value))

    def kind(self, name):
        return next(k for k in self.kinds if k.name == name)

    @property
    def errors(self):
        """All error names; the code of the n-th is -(n + 1)."""
        first = [k for k in self.kinds if not k.is_later]
        names = ["RTCM2_ERR_INVALID_CRC"]
        for kind in first:
            names += kind.errors
        names += [k.disabled_error for k in first if k.is_main]
        names += ["RTCM2_ERR_INVALID_MESSAGE", "RTCM2_ERR_EOF"]
        for kind in self.kinds[len(first):]:
            names += kind.errors + ([kind.disabled_error] if kind.is_main else [])
        return names
