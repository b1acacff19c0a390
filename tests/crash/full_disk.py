#!/usr/bin/env python3
"""Takes the disk away from the program while it is to write: it tells, loses nothing, and goes on.

Runs as root or where an ordinary user may mount in a namespace of his own. SONDREL_STORES names sondrel-stores.
"""
import contextlib
import os
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import kill_runs  # noqa: E402
from running_stores import MIXED, Stores, failures, lead_log_out, lost, worse_positions  # noqa: E402

SIZE = 64 << 20
OPERATIONS = ("save", "small", "update", "report", "lookup")
IN_NAMESPACE = "SONDREL_IN_NAMESPACE"


def may_mount():
    with tempfile.TemporaryDirectory() as folder:
        if subprocess.run(["mount", "-t", "tmpfs", "tmpfs", folder], stderr=subprocess.DEVNULL, check=False).returncode:
            return False
        subprocess.run(["umount", folder], check=True)
        return True


class LostDisk(unittest.TestCase):
    """Each way to lose the disk, for each operation."""

    references = {}

    @classmethod
    def setUpClass(cls):
        cls.whole = Path(tempfile.mkdtemp(prefix="sondrel-disk-whole-")).resolve()
        cls.addClassCleanup(shutil.rmtree, cls.whole)

    def reference(self, operation):
        if operation not in self.references:
            self.references[operation] = kill_runs.Reference(self.program, operation, self.whole)
        return self.references[operation]

    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.outside = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-disk-"))).resolve()
        self.disk = self.outside / "disk"
        self.disk.mkdir()
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={SIZE}", "tmpfs", self.disk], check=True)
        stack.callback(subprocess.run, ["umount", "-l", self.disk], check=True)
        self.program = os.environ["SONDREL_STORES"]
        self.stores = None
        self.told = []

    def mount(self, options):
        subprocess.run(["mount", "-o", f"remount,{options}", self.disk], check=True)

    def check_each(self, take, give, only=OPERATIONS):
        for operation in only:
            with self.subTest(operation):
                self.check_one(operation, take, give)

    def check_one(self, operation, take, give):
        folder = self.disk / operation
        reference = self.reference(operation)
        kill_runs.run(self.program, operation, folder, "0")
        log = self.outside / f"{operation}.log"
        lead_log_out(folder, log)
        with Stores(self.program, operation, folder) as self.stores:
            self.assert_silent(self.stores.write(0))
            take()
            said = self.stores.write(1)
            give()
            after = kill_runs.check(self.program, operation, folder, reference, MIXED)
            self.assertEqual(worse_positions(folder), [])
            self.told += failures(said)
            self.assertEqual(lost(after, folder, reference, said), [], "not written, and nothing is said")
            lead_log_out(folder, log)  # loading has put a new one there
            self.assert_silent(self.stores.write(0))
            self.assert_silent(self.stores.write(1))
        self.assertEqual(kill_runs.check(self.program, operation, folder, reference), reference.stores[1])
        shutil.rmtree(folder)

    def assert_silent(self, said):
        self.assertEqual(failures(said), [])

    def fill(self, left):
        (self.disk / "filler").unlink(missing_ok=True)
        status = os.statvfs(self.disk)
        with open(self.disk / "filler", "wb") as file:
            file.write(b"x" * max(0, status.f_bavail * status.f_frsize - left))

    def empty(self):
        (self.disk / "filler").unlink()

    def test_full(self):
        self.check_each(lambda: self.fill(0), self.empty)

    def test_nearly_full(self):
        for left in (40 << 10, 160 << 10):
            self.check_each(lambda: self.fill(left), self.empty)

    def test_read_only(self):
        self.check_each(lambda: self.mount("ro"), lambda: self.mount("rw"))

    def test_vanished(self):
        def move(source, target):
            for operation in OPERATIONS:
                for name in ("app", "system"):
                    if (self.disk / operation / (name + source)).exists():
                        (self.disk / operation / (name + source)).rename(self.disk / operation / (name + target))
        self.check_each(lambda: move("", ".away"), lambda: move(".away", ""))

    def test_used_up_quota(self):
        """A file system that rations each of its parts; where none can be made, the failing calls stand in for it."""
        image = self.outside / "image"
        with open(image, "wb") as file:
            file.truncate(200 << 20)
        subvolume = self.disk / "rationed"
        for command in (["mkfs.btrfs", "-q", image], ["mount", "-o", "loop", image, self.disk],
                        ["btrfs", "-q", "quota", "enable", self.disk],
                        ["btrfs", "-q", "subvolume", "create", subvolume]):
            if not shutil.which(command[0]) or subprocess.run(
                    command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode:
                self.skipTest("no file system with quotas can be made and mounted here")
            if command[0] == "mount":
                self.addCleanup(subprocess.run, ["umount", "-l", self.disk], check=True)
        self.disk = subvolume

        def limit(size):
            # What has not reached the disk is not counted; in the part itself not even this could be changed.
            subprocess.run(["btrfs", "-q", "filesystem", "sync", subvolume], check=True)
            subprocess.run(["btrfs", "-q", "qgroup", "limit", size, "0/256", subvolume.parent], check=True)
        self.check_each(lambda: limit("20k"), lambda: limit("none"))
        self.assertTrue(any(line.endswith("Disk quota exceeded") for line in self.told), self.told)

    def test_limited_files(self):
        """No file may grow larger than that, the log included."""
        def limit(size):
            resource.prlimit(self.stores.process.pid, resource.RLIMIT_FSIZE, (size, resource.RLIM_INFINITY))
        self.check_each(lambda: limit(20_000), lambda: limit(resource.RLIM_INFINITY))


def main():
    if not may_mount():
        if IN_NAMESPACE not in os.environ and not subprocess.run(
                ["unshare", "-rm", "true"], stderr=subprocess.DEVNULL, check=False).returncode:
            os.environ[IN_NAMESPACE] = "1"
            os.execvp("unshare", ["unshare", "-rm", sys.executable, *sys.argv])
        print("skipped: neither root nor a namespace of one's own may mount a small disk here")
        return 77
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    unittest.main()
    return 0


if __name__ == "__main__":
    sys.exit(main())
