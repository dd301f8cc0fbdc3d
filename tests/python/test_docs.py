"""What the manual and the examples show is what they do."""

import os
import shutil
import subprocess
import sys
import unittest

import support


def run(*command):
    environment = {**os.environ, "TZ": "UTC0", "PYTHONIOENCODING": "utf-8"}
    done = subprocess.run([sys.executable, *command], cwd=support.PROJECT, env=environment, capture_output=True)
    return done.returncode, done.stdout.decode() + done.stderr.decode()


class Docs(unittest.TestCase):
    maxDiff = None

    def check(self, page):
        self.assertEqual(run("docs/refresh", "--check", page), (0, ""))

    def test_python(self):
        self.check("docs/python.md")

    def test_protocols(self):
        self.check("docs/protocols.md")

    @unittest.skipUnless(shutil.which("jq"), "jq is not installed")
    def test_jq(self):
        self.check("docs/jq.md")

    def test_host(self):
        wanted = (support.PROJECT / "tests/python/python_host.txt").read_text("utf-8")
        self.assertEqual(run("examples/python_host.py"), (0, wanted))


if __name__ == "__main__":
    unittest.main()
