"""Frames and their lines."""

from __future__ import annotations  # Line has a property of the name bytes

from dataclasses import dataclass
from datetime import datetime, timedelta, timezone
from enum import IntEnum
from functools import lru_cache
from typing import List, NamedTuple, Optional, Tuple, Union

from . import _native
from ._summary import Summary, summarize

_BLANK = 65535
_NO_BYTES = 0xFFFFFFFF
_EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)
_BILLION = 1_000_000_000

# What would reach a terminal as a control byte: shown by the pictures of Unicode, or as no character, as the program
# does. The last four are how Python decodes the bytes that code page 932 leaves free.
_SAFE = {
    **{control: 0x2400 + control for control in range(0x20)},
    0x7F: 0x2421,
    **{control: 0xFFFD for control in range(0x80, 0xA0)},
    **{private: 0xFFFD for private in range(0xF8F0, 0xF8F4)},
}


class Charset(IntEnum):
    """Character sets in which data blocks show bytes as text."""

    ASCII = 0
    SJIS = 1
    JIS = 2
    UNICODE = 3
    EUC = 4
    EBCDIC = 5


@dataclass(frozen=True)
class Style:
    """How a line is to look: the style of its layer within the layer's family, and the family."""

    index: int
    group: int


_style = lru_cache(maxsize=None)(Style)  # there are few


class Line(NamedTuple):
    """One display line, as wirelines.h describes it."""

    raw: bytes
    """Its text as the library gives it: code page 932, or bytes of the frame."""
    protocol: int
    level: int
    """0 title, 1 field, 2 detail below a field; `blank` lines have another."""
    start: Optional[int]
    """First byte of the frame that the line describes; None when it describes none."""
    end: Optional[int]
    """Last byte, inclusive. It can lie past the end of a frame that was cut, or before the start."""
    style: Style
    frame_data: bytes

    @property
    def text(self) -> str:
        """The text for people: no character of it controls a terminal, and bytes that are none become U+FFFD."""
        if self.raw.isascii() and (text := self.raw.decode("ascii")).isprintable():
            return text
        return self.raw.decode("cp932", "replace").translate(_SAFE)

    @property
    def bytes(self) -> bytes:
        """The bytes that the line describes, as far as they were captured."""
        if self.start is None or self.end is None:
            return b""
        return self.frame_data[self.start : self.end + 1]

    @property
    def blank(self) -> bool:
        return self.protocol == _BLANK

    def __repr__(self) -> str:
        where = "" if self.start is None else f" [{self.start}-{self.end}]"
        return f"<Line {self.text!r}{where}>"


class Frame:
    """One captured frame. It is decoded when its lines are first asked for, on the thread that asks."""

    __slots__ = ("number", "data", "original_length", "offset", "charset", "_seconds", "_nanoseconds", "_decoded")

    def __init__(
        self,
        data: bytes,
        seconds: int,
        nanoseconds: int,
        *,
        number: int = 1,
        original_length: Optional[int] = None,
        offset: int = 0,
        charset: int = Charset.ASCII,
    ) -> None:
        self.number = number
        self.data = data
        self.original_length = len(data) if original_length is None else original_length
        self.offset = offset
        self.charset = charset
        self._seconds = seconds
        self._nanoseconds = nanoseconds
        self._decoded: Optional[Tuple[int, List[Line]]] = None

    @property
    def length(self) -> int:
        """Bytes captured; `original_length` is what the frame had on the wire."""
        return len(self.data)

    @property
    def time_ns(self) -> int:
        """Time of the capture in nanoseconds since 1 January 1970 UTC."""
        return self._seconds * _BILLION + self._nanoseconds

    @property
    def time(self) -> datetime:
        """Time of the capture, in UTC, to the microsecond. OverflowError where a damaged trace has a year past 9999."""
        return _EPOCH + timedelta(microseconds=self.time_ns // 1000)

    @property
    def lines(self) -> List[Line]:
        return self._decode()[1]

    @property
    def top(self) -> int:
        """Index of the title of the innermost layer in `lines`: where a view begins. It can be that of the line after
        the last."""
        return self._decode()[0]

    @property
    def summary(self) -> Summary:
        """What the classifier finds, without decoding."""
        return summarize(self.data)

    def _decode(self) -> Tuple[int, List[Line]]:
        if self._decoded is None:
            seconds, microseconds = self._seconds & 0xFFFFFFFF, self._nanoseconds // 1000
            top, records = _native.lines_of(
                lambda lines: _native.library.AnalyzeOutput(
                    lines, self.data, _native.check_length(self.data), seconds, microseconds, self.charset
                )
            )
            self._decoded = top, _lines(records, self.data)
        return self._decoded

    def __repr__(self) -> str:
        return f"<Frame {self.number}, {self.length} bytes>"


def _lines(records: List[_native.LineRecord], data: bytes) -> List[Line]:
    lines = []
    for raw, protocol, level, first, last, style_index, style_group in records:
        start: Optional[int] = first
        end: Optional[int] = last
        if first == last and first in (0, _NO_BYTES):
            start = end = None
        lines.append(Line(raw, protocol, level, start, end, _style(style_index, style_group), data))
    return lines


def decode(data: bytes, *, time: Union[datetime, int] = 0, charset: int = Charset.ASCII) -> Frame:
    """One Ethernet frame, from its destination address on and without its FCS, as a Frame. `time` is a datetime with a
    time zone, or nanoseconds since 1 January 1970 UTC."""
    if isinstance(time, datetime):
        if time.utcoffset() is None:
            raise ValueError("the time has no time zone")
        time = (time - _EPOCH) // timedelta(microseconds=1) * 1000
    return Frame(bytes(data), *divmod(time, _BILLION), charset=charset)


def dump(data: bytes, charset: int = Charset.ASCII) -> List[Line]:
    """Hex lines of 16 bytes each, undecoded."""
    data = bytes(data)
    _, records = _native.lines_of(
        lambda lines: _native.library.HexOutput(lines, data, _native.check_length(data), charset)
    )
    return _lines(records, data)
