"""Trace files: pcap in its four variants and pcapng, plain or compressed by gzip, one frame after another."""

import builtins
import gzip
import os
import struct
import zlib
from types import TracebackType
from typing import BinaryIO, Iterator, List, NamedTuple, Optional, Protocol, Tuple, Type, Union, cast

from ._frame import Charset, Frame

_ETHERNET = 1
_MAX_FRAME = 262144  # what capture programs keep of a frame at most
_MAX_BLOCK = 16 * 1024 * 1024
_BILLION = 1_000_000_000

# First bytes of a file: byte order, and nanoseconds in a unit of its fractions.
_PCAP = {
    b"\xd4\xc3\xb2\xa1": ("<", 1000),
    b"\xa1\xb2\xc3\xd4": (">", 1000),
    b"\x4d\x3c\xb2\xa1": ("<", 1),
    b"\xa1\xb2\x3c\x4d": (">", 1),
}
_GZIP = b"\x1f\x8b"
_ZSTD = b"\x28\xb5\x2f\xfd"

_SECTION = b"\x0a\x0d\x0d\x0a"  # the same in both byte orders
_BYTE_ORDERS = {b"\x4d\x3c\x2b\x1a": "<", b"\x1a\x2b\x3c\x4d": ">"}
_INTERFACE, _PACKET, _SIMPLE_PACKET, _ENHANCED_PACKET = 1, 2, 3, 6
_END_OF_OPTIONS, _TIME_RESOLUTION, _TIME_OFFSET = 0, 9, 14


class TraceError(Exception):
    """A trace that cannot be read, or not further: every frame before was given."""

    def __init__(self, file: str, frame: int, offset: int, reason: str) -> None:
        super().__init__(file, frame, offset, reason)
        self.file = file
        self.frame = frame
        """Number of the frame that could not be read."""
        self.offset = offset
        """Where its record begins in the file, or in what the file decompresses to."""
        self.reason = reason

    def __str__(self) -> str:
        return f"{self.file}: broken at frame {self.frame}, offset {self.offset}: {self.reason}"


class _Readable(Protocol):
    def read(self, size: int, /) -> bytes: ...


class _Damage(Exception):
    def __init__(self, offset: int, reason: str) -> None:
        self.offset = offset
        self.reason = reason


class _Source:
    """The bytes of a file. Its first four can be looked at before they are read."""

    def __init__(self, file: _Readable) -> None:
        self._file = file
        self.offset = 0
        self._ahead = b""
        self.magic = self._ahead = self._take(4)

    def read(self, size: int, /) -> bytes:
        """As many bytes as are left, `size` at most."""
        data, self._ahead = self._ahead[:size], self._ahead[size:]
        if len(data) < size:
            data += self._take(size - len(data))
        self.offset += len(data)
        return data

    def _take(self, size: int) -> bytes:
        data = b""
        try:
            while len(data) < size and (more := self._file.read(size - len(data))):
                data += more
        except (EOFError, zlib.error, gzip.BadGzipFile) as error:
            raise _Damage(self.offset, f"the gzip data are damaged: {error}") from None
        return data


class _Record(NamedTuple):
    offset: int
    seconds: int
    nanoseconds: int
    original_length: int
    data: bytes


def _check_link_type(link_type: int, offset: int) -> None:
    if link_type != _ETHERNET:
        raise _Damage(offset, f"frames of link type {link_type} cannot be decoded, only Ethernet (1)")


def _check_length(length: int, offset: int) -> None:
    if length > _MAX_FRAME:
        raise _Damage(offset, f"a frame of {length} bytes is longer than any")


def _pcap(source: _Source, order: str, unit: int) -> Iterator[_Record]:
    header = source.read(24)
    if len(header) < 24:
        raise _Damage(0, "the file ends within its header")
    major, minor, snap_length, link_type = struct.unpack(order + "4xHH8xII", header)
    if (major, minor) != (2, 4):
        raise _Damage(0, f"version {major}.{minor} of the pcap format is not known, only 2.4")
    _check_link_type(link_type & 0x03FFFFFF, 0)  # the bits above tell of the FCS
    return _pcap_records(source, struct.Struct(order + "4I"), unit, snap_length)


def _pcap_records(source: _Source, header: struct.Struct, unit: int, snap_length: int) -> Iterator[_Record]:
    while True:
        offset = source.offset
        head = source.read(header.size)
        if not head:
            return
        if len(head) < header.size:
            raise _Damage(offset, "the file ends within the header of a frame")
        seconds, fraction, length, original_length = header.unpack(head)
        _check_length(length, offset)
        data = source.read(length)
        if len(data) < length:
            raise _Damage(offset, f"the file ends after {len(data)} of the {length} bytes of a frame")
        # Some programs write more than the header of the trace promises; the usual readers drop that.
        data = data[: snap_length or None]
        yield _Record(offset, seconds, fraction * unit, original_length, data)


class _Interface(NamedTuple):
    link_type: int
    snap_length: int
    units: int  # in a second
    time_offset: int  # in seconds

    def time(self, ticks: int) -> Tuple[int, int]:
        seconds, rest = divmod(ticks, self.units)
        return seconds + self.time_offset, rest * _BILLION // self.units


def _read_interface(body: bytes, order: str, offset: int) -> _Interface:
    if len(body) < 8:
        raise _Damage(offset, "the description of an interface is too short")
    link_type, snap_length = struct.unpack_from(order + "HxxI", body)
    units, time_offset = 1_000_000, 0
    place = 8
    while place + 4 <= len(body):
        code, length = struct.unpack_from(order + "HH", body, place)
        value = body[place + 4 : place + 4 + length]
        if code == _END_OF_OPTIONS or len(value) < length:
            break
        if code == _TIME_RESOLUTION and length == 1:
            units = 2 ** (value[0] & 0x7F) if value[0] & 0x80 else 10 ** value[0]
        elif code == _TIME_OFFSET and length == 8:
            (time_offset,) = struct.unpack(order + "q", value)
        place += 4 + (length + 3) // 4 * 4
    return _Interface(link_type, snap_length, units, time_offset)


def _read_packet(kind: int, body: bytes, order: str, interfaces: List[_Interface], offset: int) -> _Record:
    layout = struct.Struct(order + {_PACKET: "HxxIIII", _SIMPLE_PACKET: "I", _ENHANCED_PACKET: "5I"}[kind])
    if len(body) < layout.size:
        raise _Damage(offset, "the block of a frame is too short")
    fields = layout.unpack_from(body)
    number = 0 if kind == _SIMPLE_PACKET else fields[0]
    if number >= len(interfaces):
        raise _Damage(offset, f"a frame is of interface {number}, which was not described")
    interface = interfaces[number]
    _check_link_type(interface.link_type, offset)

    seconds = nanoseconds = 0
    if kind == _SIMPLE_PACKET:
        original_length = fields[0]
        length = min(original_length, interface.snap_length or original_length)
    else:
        _, high, low, length, original_length = fields
        seconds, nanoseconds = interface.time(high << 32 | low)
    _check_length(length, offset)
    data = body[layout.size : layout.size + length]
    if len(data) < length:
        raise _Damage(offset, f"a frame of {length} bytes does not fit into its block")
    return _Record(offset, seconds, nanoseconds, original_length, data)


def _pcapng(source: _Source) -> Iterator[_Record]:
    order = "<"
    interfaces: List[_Interface] = []
    while True:
        offset = source.offset
        head = source.read(8)
        if not head:
            return
        section = head[:4] == _SECTION
        if section:
            magic = source.read(4)
            if magic not in _BYTE_ORDERS:
                raise _Damage(offset, "the byte order of a section is not known")
            order = _BYTE_ORDERS[magic]
            interfaces = []
        if len(head) < 8:
            raise _Damage(offset, "the file ends within the header of a block")
        kind, total = struct.unpack(order + "II", head)
        taken = source.offset - offset
        if total < taken + 4 or total % 4 != 0 or total > _MAX_BLOCK:
            raise _Damage(offset, f"a block cannot be {total} bytes long")
        body = source.read(total - taken)
        if len(body) < total - taken:
            raise _Damage(offset, "the file ends within a block")
        if body[-4:] != head[4:]:
            raise _Damage(offset, "a block has two lengths that differ")
        body = body[:-4]
        if section:
            if len(body) < 4 or struct.unpack_from(order + "H", body)[0] != 1:
                raise _Damage(offset, "the version of a section is not known, only 1")
        elif kind == _INTERFACE:
            interfaces.append(_read_interface(body, order, offset))
        elif kind in (_PACKET, _SIMPLE_PACKET, _ENHANCED_PACKET):
            yield _read_packet(kind, body, order, interfaces, offset)


def _records(source: _Source) -> Iterator[_Record]:
    if source.magic in _PCAP:
        return _pcap(source, *_PCAP[source.magic])
    if source.magic == _SECTION:
        return _pcapng(source)
    if source.magic == _ZSTD:
        raise _Damage(0, "it is compressed by zstd; decompress it first, for instance with zstd -d")
    raise _Damage(0, "it is not a pcap or pcapng trace" if source.magic else "it is empty")


class Trace(Iterator[Frame]):
    """The frames of a trace, in their order, each read when it is asked for. `with` closes the file early; otherwise it
    is closed when the frames end."""

    def __init__(self, file: Union[str, "os.PathLike[str]", BinaryIO], charset: int = Charset.ASCII) -> None:
        self.charset = charset
        self._number = 0
        self._own: Optional[BinaryIO] = None
        stream: _Readable
        if isinstance(file, (str, os.PathLike)):
            self.name = os.fspath(file)
            stream = self._own = builtins.open(file, "rb")
        else:
            self.name = str(getattr(file, "name", "(stream)"))
            stream = file
        try:
            source = _Source(stream)
            if source.magic[:2] == _GZIP:
                source = _Source(gzip.GzipFile(fileobj=cast(BinaryIO, source)))  # which it only reads
            self._records = _records(source)
        except BaseException as error:
            self.close()
            if isinstance(error, _Damage):
                raise self._broken(error) from None
            raise

    def __next__(self) -> Frame:
        try:
            record = next(self._records)
        except StopIteration:
            self.close()
            raise
        except _Damage as damage:
            self.close()
            raise self._broken(damage) from None
        self._number += 1
        return Frame(
            record.data,
            record.seconds,
            record.nanoseconds,
            number=self._number,
            original_length=record.original_length,
            offset=record.offset,
            charset=self.charset,
        )

    def close(self) -> None:
        """Ends the frames and closes the file, unless the caller opened it."""
        self._records = iter(())
        if self._own is not None:
            self._own.close()

    def __enter__(self) -> "Trace":
        return self

    def __exit__(
        self, kind: Optional[Type[BaseException]], error: Optional[BaseException], where: Optional[TracebackType]
    ) -> None:
        self.close()

    def _broken(self, damage: _Damage) -> TraceError:
        return TraceError(self.name, self._number + 1, damage.offset, damage.reason)


def open_trace(file: Union[str, "os.PathLike[str]", BinaryIO], *, charset: int = Charset.ASCII) -> Trace:
    """Opens a trace for reading: the path of a file, or a binary file object such as sys.stdin.buffer. `charset` is
    that of the data blocks in its frames' lines. TraceError tells of what is no trace, or of other frames than
    Ethernet."""
    return Trace(file, charset)
