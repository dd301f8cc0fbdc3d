"""Reading of traces: every form of a file, and every way in which one can be damaged."""

import gzip
import io
import random
import struct
import tempfile
import tracemalloc
import unittest
from pathlib import Path

import support
import wirelines

FRAMES = list(wirelines.open(support.LAN))[:12]


def pcap(frames=FRAMES, order="<", unit=1000, version=(2, 4), snap_length=262144, link_type=1):
    magic = 0xA1B2C3D4 if unit == 1000 else 0xA1B23C4D
    out = struct.pack(order + "IHHIIII", magic, *version, 0, 0, snap_length, link_type)
    for frame in frames:
        seconds, rest = divmod(frame.time_ns, 1_000_000_000)
        out += struct.pack(order + "IIII", seconds, rest // unit, frame.length, frame.original_length) + frame.data
    return out


def block(kind, body, order="<"):
    body += bytes(-len(body) % 4)
    total = struct.pack(order + "I", len(body) + 12)
    return struct.pack(order + "I", kind) + total + body + total


def section(order="<", major=1):
    return block(0x0A0D0D0A, struct.pack(order + "IHHq", 0x1A2B3C4D, major, 0, -1), order)


def interface(order="<", link_type=1, snap_length=0, options=b""):
    return block(1, struct.pack(order + "HHI", link_type, 0, snap_length) + options, order)


def enhanced(frame, ticks, order="<", number=0, length=None):
    length = frame.length if length is None else length
    head = struct.pack(order + "5I", number, ticks >> 32, ticks & 0xFFFFFFFF, length, frame.original_length)
    return block(6, head + frame.data, order)


def pcapng(order="<", resolution=None, units=1_000_000, time_offset=0, frames=FRAMES):
    options = b"" if resolution is None else struct.pack(order + "HHB3x", 9, 1, resolution)
    if time_offset:
        options += struct.pack(order + "HHq", 14, 8, time_offset)
    out = section(order) + interface(order, options=options + bytes(4)) + block(0xBAD, b"passed over", order)
    for frame in frames:
        seconds, rest = divmod(frame.time_ns, 1_000_000_000)
        out += enhanced(frame, (seconds - time_offset) * units + rest * units // 1_000_000_000, order)
    return out


def simple(frame):
    return block(3, struct.pack("<I", frame.original_length) + frame.data)


def old_packet(frame, number=0):
    return block(2, struct.pack("<HHIIII", number, 0, 0, 1, frame.length, frame.original_length) + frame.data)


def read(data):
    """The frames, and the error that ended them."""
    frames = []
    try:
        for frame in wirelines.open(io.BytesIO(data)):
            frames.append(frame)
    except wirelines.TraceError as error:
        return frames, error
    return frames, None


def contents(frames):
    return [(frame.number, frame.data, frame.original_length) for frame in frames]


FORMS = {
    "pcap": pcap(),
    "pcap, big-endian": pcap(order=">"),
    "pcap, nanoseconds": pcap(unit=1),
    "pcap, nanoseconds, big-endian": pcap(order=">", unit=1),
    "pcapng": pcapng(),
    "pcapng, big-endian": pcapng(">"),
    "pcapng, nanoseconds": pcapng(resolution=9, units=10**9),
    "pcapng, binary fractions": pcapng(">", resolution=0x80 | 30, units=2**30),
    "pcapng, time offset": pcapng(resolution=6, time_offset=1_000_000_000),
    "gzip": gzip.compress(pcap()),
    "gzip, two members": gzip.compress(pcap()[:700]) + gzip.compress(pcap()[700:]),
    "gzip, pcapng": gzip.compress(pcapng()),
}


class Forms(support.Case):
    def test_every_form_reads_the_same(self):
        for name, data in FORMS.items():
            with self.subTest(name):
                frames, error = read(data)
                self.assertIsNone(error)
                self.assertEqual(contents(frames), contents(FRAMES))
                slack = 1 if "binary" in name else 0  # 2**-30 s is no whole number of nanoseconds
                for frame, wanted in zip(frames, FRAMES):
                    self.assertAlmostEqual(frame.time_ns, wanted.time_ns, delta=slack)

    def test_the_program_reads_them_so(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "trace")
            for name, data in FORMS.items():
                with self.subTest(name):
                    file.write_bytes(data)
                    self.same_lines(support.raw(wirelines.open(file)), support.program_raw(file))

    def test_packets_of_other_blocks(self):
        frames, error = read(section() + interface(snap_length=64) + simple(FRAMES[0]) + old_packet(FRAMES[1]))
        self.assertIsNone(error)
        self.assertEqual([frame.time_ns for frame in frames], [0, 1000])
        self.assertEqual((frames[0].data, frames[0].original_length), (FRAMES[0].data[:64], FRAMES[0].length))
        self.assertEqual(frames[1].data, FRAMES[1].data)

    def test_a_section_of_another_byte_order(self):
        frames, error = read(pcapng() + pcapng(">"))
        self.assertIsNone(error)
        self.assertEqual([frame.data for frame in frames], [frame.data for frame in FRAMES] * 2)

    def test_bytes_past_the_length_promised_are_dropped(self):
        frames, _ = read(pcap(snap_length=50))
        self.assertEqual([frame.data for frame in frames], [frame.data[:50] for frame in FRAMES])

    def test_closing(self):
        with wirelines.open(support.LAN) as trace:
            next(trace)
            file = trace._own
        self.assertTrue(file.closed)
        self.assertEqual(list(trace), [])
        given = io.BytesIO(pcap())
        self.assertEqual(len(list(wirelines.open(given))), len(FRAMES))
        self.assertFalse(given.closed)

    def test_memory_is_flat(self):
        frame = wirelines.decode(bytes(1000))
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "trace.gz")
            with gzip.open(file, "wb", compresslevel=1) as out:
                out.write(pcap([]))
                for _ in range(20):
                    out.write(pcap([frame] * 1000)[24:])
            tracemalloc.reset_peak()
            before, _ = tracemalloc.get_traced_memory()
            self.assertEqual(sum(frame.length for frame in wirelines.open(file)), 20_000_000)
            self.assertLess(tracemalloc.get_traced_memory()[1] - before, 1_000_000)


GOOD = section() + interface()
TWO = GOOD + enhanced(FRAMES[0], 1) + enhanced(FRAMES[1], 2)
HEAD = struct.pack("<IIII", 1, 1, 262145, 262145)
SECOND = 24 + 16 + FRAMES[0].length  # where the second record of a pcap begins
# What it is, the file, the frame that is broken, its offset, and a word of the reason.
DAMAGED = [
    ("empty", b"", 1, 0, "empty"),
    ("text", b"no trace at all", 1, 0, "not a pcap"),
    ("shorter than a magic", b"\xd4\xc3", 1, 0, "not a pcap"),
    ("zstd", b"\x28\xb5\x2f\xfd" + bytes(9), 1, 0, "zstd -d"),
    ("cut header", pcap()[:23], 1, 0, "header"),
    ("old version", pcap(version=(2, 2)), 1, 0, "2.2"),
    ("raw IP", pcap(link_type=101), 1, 0, "link type 101"),
    ("cut record header", pcap()[: SECOND + 15], 2, SECOND, "header of a frame"),
    ("cut frame", pcap()[: SECOND + 20], 2, SECOND, "after 4 of the"),
    ("a frame too long", pcap(FRAMES[:1]) + HEAD + bytes(300000), 2, SECOND, "262145"),
    ("gzip, cut", gzip.compress(pcap())[:30], 1, None, "gzip"),
    ("gzip, not at all", b"\x1f\x8b" + bytes(30), 1, 0, "gzip"),
    ("gzip, wrong sum", gzip.compress(pcap())[:-8] + bytes(8), 13, len(pcap()), "gzip"),
    ("section of no byte order", section()[:8] + bytes(20), 1, 0, "byte order"),
    ("section of version 2", section(major=2), 1, 0, "version"),
    ("cut block header", TWO + b"\6\0\0", 3, len(TWO), "header of a block"),
    ("cut block", TWO[:-1], 2, len(GOOD + enhanced(FRAMES[0], 1)), "within a block"),
    ("block of no length", GOOD + struct.pack("<II", 6, 8), 1, len(GOOD), "8 bytes"),
    ("block of an odd length", GOOD + struct.pack("<II", 6, 33) + bytes(40), 1, len(GOOD), "33 bytes"),
    ("block of 2 GB", GOOD + struct.pack("<II", 6, 2**31) + bytes(40), 1, len(GOOD), "2147483648 bytes"),
    ("block of two lengths", TWO[:-4] + bytes(4), 2, len(GOOD + enhanced(FRAMES[0], 1)), "differ"),
    ("no interface", section() + enhanced(FRAMES[0], 1), 1, len(section()), "interface 0"),
    ("an interface too short", section() + block(1, bytes(4)), 1, len(section()), "too short"),
    ("a packet too short", GOOD + block(6, bytes(16)), 1, len(GOOD), "too short"),
    ("a packet too long", GOOD + enhanced(FRAMES[0], 1, length=1000), 1, len(GOOD), "does not fit"),
    ("raw IP in pcapng", section() + interface(link_type=101) + simple(FRAMES[0]), 1, 48, "link type 101"),
]


class Damaged(unittest.TestCase):
    def test_table(self):
        for name, data, frame, offset, reason in DAMAGED:
            with self.subTest(name):
                frames, error = read(data)
                self.assertIsNotNone(error)
                self.assertEqual(contents(frames), contents(FRAMES[: frame - 1]))
                self.assertEqual((error.file, error.frame), ("(stream)", frame))
                self.assertIn(reason, error.reason)
                if offset is not None:
                    self.assertEqual(error.offset, offset)

    def test_cut_anywhere(self):
        for whole, ends in (
            (pcap(FRAMES[:2]), [24, SECOND, SECOND + 16 + FRAMES[1].length]),
            (TWO, [len(section()), len(GOOD), len(GOOD + enhanced(FRAMES[0], 1)), len(TWO)]),
        ):
            for length in range(4, len(whole)):
                frames, error = read(whole[:length])
                complete = sum(end <= length for end in ends[-2:])
                self.assertEqual(contents(frames), contents(FRAMES[:complete]), length)
                self.assertEqual(error is None, length in ends, length)

    def test_the_program_tells_the_same_place(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "cut.pcap")
            file.write_bytes(pcap()[: SECOND + 20])
            with self.assertRaises(wirelines.TraceError) as raised:
                list(wirelines.open(file))
            _, complaint = support.program("list", file, exit_code=65)
            place = str(raised.exception).rpartition(": ")[0]
            self.assertTrue(place.endswith(f"cut.pcap: broken at frame 2, offset {SECOND}"), place)
            self.assertIn(place, complaint)

    def test_no_bytes_bring_it_out_of_order(self):
        numbers = random.Random(1)
        for data in (pcap(), TWO, FORMS["pcapng, binary fractions"], FORMS["gzip"]):
            for _ in range(300):
                changed = bytearray(data)
                for _ in range(3):
                    changed[numbers.randrange(len(changed))] = numbers.randrange(256)
                for frame in read(bytes(changed))[0]:
                    self.assertTrue(frame.lines)

    def test_a_missing_file(self):
        with self.assertRaises(FileNotFoundError):
            wirelines.open("/nowhere/trace.pcap")


if __name__ == "__main__":
    unittest.main()
