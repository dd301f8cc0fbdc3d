"""Decodes captured LAN frames into display lines, through libwirelines.

    import wirelines

    for frame in wirelines.open("trace.pcap"):
        for line in frame.lines:
            print(line.text)

See docs/python.md for more.
"""

from . import names
from ._frame import Charset, Frame, Line, Style, decode, dump
from ._summary import BadChecksum, Framing, Network, Summary
from ._trace import Trace, TraceError
from ._trace import open_trace as open

__all__ = [
    "BadChecksum",
    "Charset",
    "Frame",
    "Framing",
    "Line",
    "Network",
    "Style",
    "Summary",
    "Trace",
    "TraceError",
    "decode",
    "dump",
    "names",
    "open",
]
