"""What the classifier finds in a frame."""

import ctypes
from dataclasses import dataclass
from enum import IntEnum
from ipaddress import IPv4Address, IPv6Address
from typing import Any, Dict, Optional

from . import _native


class Framing(IntEnum):
    """Values of Summary.frameKind."""

    RAW_802_3 = 1
    LLC = 2
    SNAP = 3
    ETHERNET_II = 4
    LLC_S_U = 5


class Network(IntEnum):
    """Values of Summary.networkCode."""

    IP = 0x1001
    IP_FRAGMENT = 0x1002
    ARP = 0x1003
    RARP = 0x1004
    IPX = 0x1005
    NETBIOS = 0x1006
    XNS = 0x1007
    APPLETALK = 0x1008
    AARP = 0x1009
    IP6 = 0x100A
    PPPOE = 0x1201
    LCP = 0x1202
    CHAP = 0x1203
    PAP = 0x1204
    IPCP = 0x1205


class BadChecksum(IntEnum):
    """Bits of Summary.errorFlags; 0x80 is set with each of them."""

    IP = 0x01
    ICMP = 0x02
    TCP = 0x04
    UDP = 0x08


@dataclass(frozen=True)
class Summary:
    """The record of the classifier, by the names of wirelines.h. A field that the frame does not have is None."""

    frameKind: Optional[int] = None
    dsap: Optional[int] = None
    ssap: Optional[int] = None
    etherType: Optional[int] = None
    networkCode: Optional[int] = None
    ipProtocol: Optional[int] = None
    dstIp: Optional[IPv4Address] = None
    dstIp6: Optional[IPv6Address] = None
    dstPort: Optional[int] = None
    srcPort: Optional[int] = None
    srcIp: Optional[IPv4Address] = None
    srcIp6: Optional[IPv6Address] = None
    ipxDstNet: Optional[bytes] = None
    ipxDstNode: Optional[bytes] = None
    ipxDstSocket: Optional[int] = None
    ipxSrcNet: Optional[bytes] = None
    ipxSrcNode: Optional[bytes] = None
    ipxSrcSocket: Optional[int] = None
    typeCode: Optional[int] = None
    networkOffset: Optional[int] = None
    transportOffset: Optional[int] = None
    errorFlags: Optional[int] = None


_ADDRESSES = {"dstIp": IPv4Address, "srcIp": IPv4Address, "dstIp6": IPv6Address, "srcIp6": IPv6Address}
# Set to 0 before anything is looked at, so that 0 says nothing; the protocol has a rule of its own below.
_ZEROED = ("frameKind", "networkCode", "ipProtocol", "networkOffset", "transportOffset", "errorFlags")
# Where each field lies in the record.
_PLACES = {
    name: slice(place.offset, place.offset + place.size)
    for name in Summary.__dataclass_fields__
    for place in (getattr(_native.PacketSummary, name),)
}


def _classify(data: bytes, fill: int) -> _native.PacketSummary:
    record = _native.PacketSummary()
    ctypes.memset(ctypes.byref(record), fill, ctypes.sizeof(record))
    record.errorFlags = 0
    _native.library.CheckPacket(data, _native.check_length(data), ctypes.byref(record))
    return record


def summarize(data: bytes) -> Summary:
    """A field that the classifier does not write keeps what it held: it differs between two records that were filled
    with different bytes, and a written one cannot."""
    record = _classify(data, 0x00)
    first, second = bytes(record), bytes(_classify(data, 0xFF))
    fields: Dict[str, Any] = {}
    for name, place in _PLACES.items():
        if first[place] != second[place] or (name in _ZEROED and not any(first[place])):
            continue
        value = getattr(record, name)
        if name in _ADDRESSES:
            value = _ADDRESSES[name](first[place])
        elif isinstance(value, ctypes.Array):
            value = first[place]
        fields[name] = value

    # An address comes with a protocol, which may be 0, except in ARP and RARP.
    arp = record.networkCode in (Network.ARP, Network.RARP)
    if not arp and any(name in fields for name in ("dstIp", "dstIp6", "ipxDstNet")):
        fields["ipProtocol"] = record.ipProtocol
    else:
        fields.pop("ipProtocol", None)
    if record.transportOffset == record.networkOffset:  # not looked for
        fields.pop("transportOffset", None)
    return Summary(**fields)
