"""Reads YAML into rows that know where they stand, and checks the form of what they hold."""

import math
import re
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path

import yaml


class SchemaError(Exception):
    """The schema is wrong; the text says where and how."""


class Row(dict):
    """A YAML mapping that knows where it stands, and each of its keys, as file:line."""

    def __init__(self, where):
        super().__init__()
        self.where = where
        self.places = {}

    def at(self, key):
        return self.places.get(key, self.where)


class _Loader(yaml.SafeLoader):
    """Builds Rows and refuses a key that stands twice in one mapping."""

    def construct_row(self, node):
        row = Row(self.place(node))
        yield row
        for key_node, value_node in node.value:
            key = self.construct_object(key_node, deep=True)
            if type(key) not in (str, int):
                raise SchemaError(f"{self.place(key_node)}: {key!r} cannot be a key")
            if key in row:
                raise SchemaError(f"{self.place(key_node)}: '{key}' stands twice")
            row[key] = self.construct_object(value_node, deep=True)
            row.places[key] = self.place(key_node)

    def place(self, node):
        return f"{Path(self.name).name}:{node.start_mark.line + 1}"


_Loader.add_constructor(yaml.resolver.BaseResolver.DEFAULT_MAPPING_TAG, _Loader.construct_row)


def read(path):
    """The one mapping that a file holds."""
    try:
        with open(path, encoding="utf-8") as stream:
            loader = _Loader(stream)
            loader.name = str(path)
            content = loader.get_single_data()
    except yaml.MarkedYAMLError as error:
        place = f"{path.name}:{error.problem_mark.line + 1}"
        what = ", ".join(filter(None, (error.context, error.problem)))
        raise SchemaError(f"{place}: {what}") from error
    except (OSError, ValueError, yaml.YAMLError) as error:
        raise SchemaError(f"{path.name}: {error}") from error
    if not isinstance(content, Row):
        raise SchemaError(f"{path.name}: holds no mapping")
    return content


@dataclass(frozen=True)
class Form:
    """What the value of a key must be, in words and as a test."""

    words: str
    accepts: Callable


def is_integer(value):
    return type(value) is int


def is_number(value):
    return type(value) in (int, float) and math.isfinite(value)


def is_text(value):
    return isinstance(value, str) and value.strip() != "" and value.isprintable()


def is_identifier(value):
    return isinstance(value, str) and re.fullmatch("[A-Za-z][A-Za-z0-9_]*", value) is not None


INTEGER = Form("an integer", is_integer)
NATURAL = Form("an integer of 0 or more", lambda v: is_integer(v) and v >= 0)
POSITIVE = Form("an integer above 0", lambda v: is_integer(v) and v > 0)
TEXT = Form("a text of one line", is_text)
IDENTIFIER = Form("an identifier", is_identifier)
LIST = Form("a list", lambda v: isinstance(v, list))
MAPPING = Form("a mapping", lambda v: isinstance(v, Row) and len(v) > 0)
CONDITION = Form("one member with a list of its values",
                 lambda v: isinstance(v, Row) and len(v) == 1 and all(map(is_identifier, v))
                 and all(isinstance(c, list) and c and all(map(is_integer, c)) for c in v.values()))


def check_row(row, forms, required, optional, what, place=None):
    """Refuses a row with a missing or unknown key, or a value of another form than `forms` tells.
    `place` is for the complaint that it is no row at all."""
    if not isinstance(row, Row):
        raise SchemaError(f"{place}: {what} is {row!r}, not a mapping")
    for key in sorted(required - row.keys()):
        raise SchemaError(f"{row.where}: {what} lacks '{key}'")
    for key in row.keys() - required - optional:
        raise SchemaError(f"{row.at(key)}: {what} does not know '{key}'")
    for key, value in row.items():
        if not forms[key].accepts(value):
            raise SchemaError(f"{row.at(key)}: {what}: '{key}' is {value!r}, not {forms[key].words}")


def flatten(rows):
    """Rows may be lists of rows, so that shared runs can be spliced in by an alias."""
    for row in rows:
        if isinstance(row, list):
            yield from flatten(row)
        else:
            yield row
