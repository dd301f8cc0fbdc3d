"""The user's own names for stations, addresses, ports, SAPs and EtherTypes, which lines then show.

They belong to the process: every thread's decodes show them. Lines that were decoded before keep their text.
"""

import os
from enum import IntEnum
from typing import List, NamedTuple, Union

from . import _native

# Names are put into lines as they are, and lines are code page 932.
_ENCODING = "cp932"


class Kind(IntEnum):
    """What has a name, and the form of its key."""

    STATION = 0
    """MAC address: "0123456789AB", "01:23:45:67:89:ab" """
    IP = 1
    """ "192.0.2.1" """
    IP6 = 2
    """ "2001:db8::1" """
    PORT = 3
    """ "80" """
    SAP = 4
    """DSAP and SSAP: "E0E0", "E0/E0" """
    TYPE = 5
    """EtherType: "0800" """


class Format(IntEnum):
    """Formats of files of names, a name a line."""

    OWN = 0
    """ "kind key name", the kinds being station, ip, ip6, port, sap and type"""
    HOSTS = 1
    ETHERS = 2
    SERVICES = 3


class Name(NamedTuple):
    kind: Kind
    key: str
    name: str


class Problem(NamedTuple):
    """A line of a file that could not be used."""

    line: int
    reason: str


def add(kind: int, key: str, name: str) -> None:
    """Gives `key` a name; an earlier one is replaced. ValueError says why it cannot be."""
    reason = _native.library.NickNameAdd(kind, _text(key), _text(name))
    if reason is not None:
        raise ValueError(f"{key!r}, {name!r}: {reason.decode('ascii', 'replace')}")


def remove(kind: int, key: str) -> bool:
    """Forgets the name of `key`; False when it had none."""
    return bool(_native.library.NickNameRemove(kind, _text(key)))


def clear() -> None:
    """Forgets all names."""
    _native.library.NickNameClear()


def load(file: Union[str, "os.PathLike[str]"], format: int = Format.OWN) -> List[Problem]:
    """Reads a file of names, in UTF-8. Returns the lines that could not be used; the others are taken."""
    problems: List[Problem] = []

    def tell(_file: bytes, line: int, reason: bytes, _context: object) -> None:
        problems.append(Problem(line, reason.decode("utf-8", "replace")))

    before = {(kind, key): name for kind, key, name in _each()}
    if _native.library.NickNameLoad(os.fsencode(file), format, _native.NickNameProblem(tell), None) < 0:
        raise OSError(f"{os.fspath(file)}: {problems[-1].reason if problems else 'out of memory'}")
    for kind, key, name in _each():
        if not name.isascii() and before.get((kind, key)) != name:
            try:
                text = name.decode("utf-8")
            except UnicodeDecodeError:
                continue  # it is in code page 932 already
            _native.library.NickNameAdd(kind, key, _text(text))
    return problems


def items() -> List[Name]:
    """All names, by kind and key."""
    return [Name(Kind(kind), key.decode("ascii"), name.decode(_ENCODING, "replace")) for kind, key, name in _each()]


class _Entry(NamedTuple):
    kind: int
    key: bytes
    name: bytes


def _each() -> List[_Entry]:
    found: List[_Entry] = []

    def visit(kind: int, key: bytes, name: bytes, _context: object) -> int:
        found.append(_Entry(kind, key, name))
        return 1

    if not _native.library.NickNameEach(_native.NickNameVisit(visit), None):
        raise MemoryError("the names cannot be listed")
    return found


def _text(text: str) -> bytes:
    if "\0" in text:
        raise ValueError(f"{text!r}: a name or key cannot hold a zero character")
    return text.encode(_ENCODING, "replace")
