"""What the tests share: where things are, the program, and how its output looks when the package writes it."""

import os
import subprocess
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
PROGRAM = os.environ.get("WIRELINES_PROGRAM", str(PROJECT / "build/release/host/wirelines"))
SAMPLES = sorted((PROJECT / "examples").glob("*.pcap"))
LAN = PROJECT / "examples/lan.pcap"


def traces():
    """The samples, and an optional folder of more traces beside the project."""
    return SAMPLES + sorted((PROJECT / "../shared/captures").glob("*.pcap"))


def program(*arguments, exit_code=0):
    done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True)
    assert done.returncode == exit_code, done.stderr.decode()
    return done.stdout.decode(), done.stderr.decode()


def raw_text(raw):
    return "".join(chr(b) if 0x20 <= b < 0x7F and b != 0x5C else f"\\x{b:02X}" for b in raw)


def raw(frames):
    """As `wirelines show --raw` writes them; both forms of "no bytes" are made one."""
    for frame in frames:
        yield f"# frame {frame.number} length {frame.length} top {frame.top}"
        for line in frame.lines:
            where = "-" if line.start is None else f"{line.start}-{line.end}"
            style = f"{line.style.index},{line.style.group}"
            yield f"{line.protocol} {line.level} {where} {style} |{raw_text(line.raw)}|"


def program_raw(*arguments, exit_code=0):
    output, _ = program("show", "--raw", "-n", *arguments, exit_code=exit_code)
    for none in (" 0-0 ", " 4294967295-4294967295 "):
        output = output.replace(none, " - ")  # no text of the samples holds them
    return output.splitlines()


class Case(unittest.TestCase):
    def same_lines(self, found, wanted):
        found, wanted = list(found), list(wanted)
        for i, (a, b) in enumerate(zip(found, wanted)):
            self.assertEqual(a, b, f"line {i + 1}")
        self.assertEqual(len(found), len(wanted))
