"""A whole host in Python: frame bytes in, lines out, with names of one's own and the bytes that a line describes.

From the project's folder: PYTHONPATH=python python3 examples/python_host.py
"""

import sys

import wirelines
from wirelines import names

# A DNS question, as a network card or any other program might hand it over.
FRAME = bytes.fromhex(
    "02 00 00 00 00 01  02 00 00 00 00 02  08 00"  # Ethernet II
    "45 00 00 39 00 01 00 00 40 11 f6 af c0 00 02 02 c0 00 02 01"  # IPv4, to 192.0.2.1
    "c0 00 00 35 00 25 00 00"  # UDP, to port 53
    "12 34 01 00 00 01 00 00 00 00 00 00"  # DNS, one question:
    "03 77 77 77 07 65 78 61 6d 70 6c 65 03 63 6f 6d 00 00 01 00 01"  # www.example.com A
)


def show(frame: wirelines.Frame) -> None:
    for line in frame.lines:
        indented = "  " * line.level + line.text if not line.blank else ""
        where = f"{line.start}-{line.end}" if line.start is not None else ""
        print(f"{where:>7}  {line.bytes[:6].hex():<12}  {indented}".rstrip())


def main() -> int:
    names.add(names.Kind.STATION, "02:00:00:00:00:01", "name server")
    names.add(names.Kind.IP, "192.0.2.2", "reception")
    frame = wirelines.decode(FRAME, time=1714557600_000000000)
    show(frame)

    found = frame.summary
    print(f"\n{found.srcIp} port {found.srcPort} asks {found.dstIp} port {found.dstPort}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
