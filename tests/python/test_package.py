"""The package against the program, which decodes with the same library and shares none of this code."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor
from datetime import datetime, timedelta, timezone
from ipaddress import IPv6Address
from pathlib import Path
from unittest import mock

import support
import wirelines
from wirelines import names

CHARSETS = ["ascii", "sjis", "jis", "utf16", "euc", "ebcdic"]  # as the program calls them, in the order of Charset


def resident_bytes():
    return int(Path("/proc/self/statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE")


class AgainstTheProgram(support.Case):
    def test_lines(self):
        for trace in support.traces():
            with self.subTest(trace=trace.name):
                self.same_lines(support.raw(wirelines.open(trace)), support.program_raw(trace))

    def test_lines_in_every_charset(self):
        for charset, name in zip(wirelines.Charset, CHARSETS):
            for sample in support.SAMPLES:
                with self.subTest(charset=name, trace=sample.name):
                    found = support.raw(wirelines.open(sample, charset=charset))
                    self.same_lines(found, support.program_raw("--charset", name, sample))

    def test_texts(self):
        for trace in support.traces():
            for name, charset in (("sjis", wirelines.Charset.SJIS), ("raw", 6)):
                with self.subTest(trace=trace.name, charset=name):
                    found = []
                    for frame in wirelines.open(trace, charset=charset):
                        found.append("Frame")
                        for line in frame.lines:
                            found.append("  " * (line.level if line.text and line.level <= 2 else 0) + line.text)
                        found.append("")
                    output, _ = support.program("show", "-n", "--no-lift", "--charset", name, trace)
                    wanted = ["Frame" if row.startswith("Frame ") else row for row in output.split("\n")]
                    self.same_lines(found, wanted)

    def test_summaries(self):
        for trace in support.traces():
            output, _ = support.program("classify", "-T", "jsonl", "--no-lift", trace)
            rows = [json.loads(row) for row in output.splitlines()]
            frames = list(wirelines.open(trace))
            self.assertEqual(len(frames), len(rows))
            for frame, row in zip(frames, rows):
                found = {"frame": frame.number, "offset": frame.offset, "length": frame.length}
                found["originalLength"] = frame.original_length
                time = frame.time if frame.time.year < 2106 else datetime.fromtimestamp(0, timezone.utc)
                found["time"] = time.strftime("%Y-%m-%d %H:%M:%S")
                found["nanoseconds"] = frame.time_ns % 1_000_000_000
                for name, value in vars(frame.summary).items():
                    if value is not None:
                        found[name] = value if isinstance(value, int) else self.as_text(value)
                del row["file"]
                for name in ("network", "dstStation", "srcStation", "wrongChecksums"):
                    row.pop(name, None)
                for name in {"srcIp6", "dstIp6"} & row.keys():  # the program writes the end of some as an IPv4 address
                    row[name] = str(IPv6Address(row[name]))
                with self.subTest(trace=trace.name, frame=frame.number):
                    self.assertEqual(found, row)

    @staticmethod
    def as_text(value):
        return value.hex() if isinstance(value, bytes) else str(value)


class Frames(unittest.TestCase):
    def test_a_line_and_its_bytes(self):
        with wirelines.open(support.LAN) as trace:
            frame = next(trace)
        line = next(line for line in frame.lines if line.text.startswith("[Source Address]"))
        self.assertEqual((line.start, line.end, line.bytes.hex()), (6, 11, "020000000002"))
        self.assertEqual((line.level, line.style, line.blank), (1, wirelines.Style(2, 9), False))
        blank = frame.lines[frame.lines.index(line) + 1]
        self.assertEqual((blank.text, blank.start, blank.bytes, blank.blank), ("", None, b"", True))

    def test_bytes_of_a_cut_frame(self):
        frame = wirelines.decode(bytes(range(8)))
        line = next(line for line in frame.lines if line.text.startswith("[Source Address]"))
        self.assertEqual((line.start, line.end, line.bytes), (6, 11, b"\x06\x07"))

    def test_a_text_controls_no_terminal(self):
        line = wirelines.Line(b"a\x1b[m\x7f\x80\x82\xa0\x82\xff\xfd", 0, 0, None, None, wirelines.Style(0, 0), b"")
        self.assertEqual(line.text, "a\u241b[m\u2421\ufffd\u3042\ufffd\ufffd\ufffd")

    def test_decode(self):
        moment = datetime(2024, 5, 1, 12, 0, 0, 123456, timezone(timedelta(hours=2)))
        data = bytearray(60)
        by_time = wirelines.decode(data, time=moment)
        by_number = wirelines.decode(data, time=1714557600_123456789)
        self.assertEqual(by_time.time, moment)
        self.assertEqual((by_number.time, by_number.time_ns), (moment, 1714557600_123456789))
        self.assertEqual(by_time.lines, by_number.lines)
        self.assertIn(".123456", by_time.lines[1].text)
        self.assertEqual(by_time.summary.frameKind, wirelines.Framing.LLC)
        with self.assertRaisesRegex(ValueError, "no time zone"):
            wirelines.decode(data, time=datetime(2024, 5, 1))

    def test_any_length(self):
        data = support.LAN.read_bytes()[40:400]
        for length in range(len(data)):
            frame = wirelines.decode(data[:length])
            self.assertGreater(len(frame.lines), 5)
            self.assertEqual(frame.summary.frameKind is None, length < 17)

    def test_dump(self):
        lines = wirelines.dump(b"\x82\xa0ABCDEFGHIJKLMNO", wirelines.Charset.SJIS)
        self.assertEqual([line.text.split()[0] for line in lines], ["0000", "0010"])
        self.assertTrue(lines[0].text.endswith("\u3042ABCDEFGHIJKLMN"), lines[0].text)
        self.assertEqual(wirelines.dump(b""), [])

    def test_threads_decode_as_one_does(self):
        frames = [frame.data for sample in support.SAMPLES for frame in wirelines.open(sample)]

        def lines(charset):
            return [wirelines.decode(data, charset=charset).lines for data in frames]

        serial = [lines(charset) for charset in wirelines.Charset]
        with ThreadPoolExecutor(len(serial)) as pool:
            self.assertEqual(list(pool.map(lines, wirelines.Charset)), serial)

    def test_memory_does_not_grow(self):
        data = max((frame.data for frame in wirelines.open(support.LAN)), key=len)

        def work():
            for _ in range(3000):
                self.assertTrue(wirelines.decode(data).lines)
                self.assertTrue(wirelines.dump(data))

        work()
        before = resident_bytes()
        work()
        self.assertLess(resident_bytes() - before, 1 << 20)  # a lost list a frame would be 40 MB

    def test_exhausted_memory_is_told(self):
        library = wirelines._native.library

        def exhausted(*_arguments):
            library.ErrMessage(101)
            return 0

        with mock.patch.object(library, "AnalyzeOutput", exhausted):
            with self.assertRaisesRegex(MemoryError, "emory"):
                wirelines.decode(bytes(60)).lines
        self.assertTrue(wirelines.decode(bytes(60)).lines)


class Library(unittest.TestCase):
    def test_missing_or_another(self):
        for file in ("/nowhere/libwirelines.so.0", "libc.so.6"):
            environment = {**os.environ, "WIRELINES_LIBRARY": file}
            done = subprocess.run([sys.executable, "-c", "import wirelines"], env=environment, capture_output=True)
            self.assertIn(b"ImportError: the wirelines library cannot be used", done.stderr, file)


class Names(unittest.TestCase):
    def setUp(self):
        self.addCleanup(names.clear)

    @staticmethod
    def sources():
        return [line.text for line in wirelines.decode(bytes.fromhex("ffffffffffff0123456789ab0000")).lines][4]

    def test_lines_show_them(self):
        names.add(names.Kind.STATION, "01:23:45:67:89:ab", "front desk")
        self.assertEqual(self.sources(), "[Source Address] 0123456789AB (front desk)")
        names.add(names.Kind.STATION, "0123456789AB", "\u53d7\u4ed8")
        self.assertEqual(self.sources(), "[Source Address] 0123456789AB (\u53d7\u4ed8)")
        self.assertEqual(names.items(), [(names.Kind.STATION, "0123456789AB", "\u53d7\u4ed8")])
        self.assertTrue(names.remove(names.Kind.STATION, "0123456789ab"))
        self.assertFalse(names.remove(names.Kind.STATION, "0123456789ab"))
        self.assertEqual(self.sources(), "[Source Address] 0123456789AB ")

    def test_what_cannot_be_one(self):
        for kind, key, name in (
            (names.Kind.IP, "300.1.1.1", "x"),
            (names.Kind.PORT, "80\x001", "x"),
            (names.Kind.PORT, "80", "web\0"),
            (names.Kind.PORT, "80", "x" * 36),
            (99, "80", "x"),
        ):
            with self.assertRaises(ValueError, msg=(kind, key, name)):
                names.add(kind, key, name)
        self.assertEqual(names.items(), [])

    def test_load(self):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "names")
            file.write_text("station 0123456789AB \u53d7\u4ed8\nport eighty web\nip 192.0.2.1 server\n", "utf-8")
            self.assertEqual([problem.line for problem in names.load(file)], [2])
            file.write_text("192.0.2.2 client\n")
            self.assertEqual(names.load(file, names.Format.HOSTS), [])
            with self.assertRaisesRegex(OSError, "none"):
                names.load(Path(folder, "none"))
        self.assertEqual(self.sources(), "[Source Address] 0123456789AB (\u53d7\u4ed8)")
        self.assertEqual([name for _, _, name in names.items()], ["\u53d7\u4ed8", "server", "client"])


if __name__ == "__main__":
    unittest.main()
