"""The shared library, called by ctypes: its records, the types of its functions, and what must be done around calls.

ctypes lets other threads run during a call. The library's state of a decode belongs to the calling thread, so a call
and the copying of its lines happen in one go, in `lines_of`: no pointer of the library's leaves this module.
"""

import ctypes
import os
import struct
import threading
from ctypes import POINTER, c_char_p, c_int32, c_uint8, c_uint16, c_uint32, c_void_p
from pathlib import Path
from typing import Any, Callable, List, Tuple

_SONAME = "libwirelines.so.0"


class LineList(ctypes.Structure):
    _fields_ = [
        ("data", POINTER(c_void_p)),
        ("count", c_int32),
        ("capacity", c_int32),
        ("growBy", c_int32),
    ]


class PacketSummary(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("frameKind", c_uint32),
        ("dsap", c_uint8),
        ("ssap", c_uint8),
        ("etherType", c_uint16),
        ("networkCode", c_uint32),
        ("ipProtocol", c_uint8),
        ("dstIp", c_uint8 * 4),
        ("dstIp6", c_uint8 * 16),
        ("reserved1", c_uint8),
        ("dstPort", c_uint16),
        ("srcPort", c_uint16),
        ("srcIp", c_uint8 * 4),
        ("srcIp6", c_uint8 * 16),
        ("ipxDstNet", c_uint8 * 4),
        ("ipxDstNode", c_uint8 * 6),
        ("ipxDstSocket", c_uint16),
        ("ipxSrcNet", c_uint8 * 4),
        ("ipxSrcNode", c_uint8 * 6),
        ("ipxSrcSocket", c_uint16),
        ("typeCode", c_uint8),
        ("reserved2", c_uint8),
        ("networkOffset", c_uint16),
        ("transportOffset", c_uint16),
        ("reserved3", c_uint8),
        ("errorFlags", c_uint8),
    ]


# text, protocolCode, level, startOffset, endOffset, styleIndex, styleGroup
LineRecord = Tuple[bytes, int, int, int, int, int, int]
_LINE = struct.Struct("@P6I")

_MAX_LENGTH = 2**31 - 1

ErrMessageHandler = ctypes.CFUNCTYPE(None, c_int32, c_char_p, c_void_p)
NickNameProblem = ctypes.CFUNCTYPE(None, c_char_p, c_int32, c_char_p, c_void_p)
NickNameVisit = ctypes.CFUNCTYPE(c_int32, c_int32, c_char_p, c_char_p, c_void_p)

# The two modules come with the library, and their functions are found through it.
_FUNCTIONS = {
    "AnalyzeOutput": (c_uint32, [POINTER(LineList), c_char_p, c_int32, c_uint32, c_uint32, c_uint32]),
    "HexOutput": (c_uint32, [POINTER(LineList), c_char_p, c_int32, c_uint32]),
    "DelDspBuffer": (None, [POINTER(LineList)]),
    "CheckPacket": (None, [c_char_p, c_int32, POINTER(PacketSummary)]),
    "ErrMessage": (None, [c_int32]),
    "SetErrMessageHandler": (None, [ErrMessageHandler, c_void_p]),
    "NickNameLoad": (c_int32, [c_char_p, c_int32, NickNameProblem, c_void_p]),
    "NickNameAdd": (c_char_p, [c_int32, c_char_p, c_char_p]),
    "NickNameRemove": (c_int32, [c_int32, c_char_p]),
    "NickNameClear": (None, []),
    "NickNameEach": (c_int32, [NickNameVisit, c_void_p]),
}


def _find() -> ctypes.CDLL:
    named = os.environ.get("WIRELINES_LIBRARY")
    if named:
        return ctypes.CDLL(named)
    try:
        return ctypes.CDLL(_SONAME)
    except OSError as error:
        reason = str(error)
    project = Path(__file__).resolve().parents[2]
    for preset in ("release", "debug"):
        built = project / "build" / preset / "src" / _SONAME
        if built.exists():
            return ctypes.CDLL(str(built))
    raise OSError(reason)


def _load() -> ctypes.CDLL:
    try:
        found = _find()
        for name, (result, arguments) in _FUNCTIONS.items():
            function = getattr(found, name)
            function.restype = result
            function.argtypes = arguments
    except (OSError, AttributeError) as error:
        raise ImportError(
            f"the wirelines library cannot be used: {error}; install {_SONAME}, or name its file in WIRELINES_LIBRARY"
        ) from None
    return found


_messages = threading.local()


def _keep_message(_code: int, text: bytes, _context: object) -> None:
    _messages.text = text.decode("ascii", "replace")


_handler = ErrMessageHandler(_keep_message)  # kept as long as the library may call it
library: Any = _load()
library.SetErrMessageHandler(_handler, None)


def check_length(data: bytes) -> int:
    if len(data) > _MAX_LENGTH:
        raise ValueError(f"{len(data)} bytes are too many for a frame")
    return len(data)


def lines_of(fill: Callable[[Any], Any]) -> Tuple[int, List[LineRecord]]:
    """What `fill` returns, and the lines that it put into the list it is given. MemoryError when memory ran out."""
    line_list = LineList()
    _messages.text = None
    try:
        result = fill(ctypes.byref(line_list))
        if _messages.text is not None:
            raise MemoryError(_messages.text)
        string_at, unpack, size = ctypes.string_at, _LINE.unpack, _LINE.size
        lines: List[LineRecord] = []
        for i in range(line_list.count):
            text, code, level, start, end, style_index, style_group = unpack(string_at(line_list.data[i], size))
            lines.append((string_at(text), code, level, start, end, style_index, style_group))
        return result, lines
    finally:
        library.DelDspBuffer(ctypes.byref(line_list))
