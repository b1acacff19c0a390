#!/usr/bin/env python3
"""Starts the program itself, on a virtual display and folders of its own; SONDREL_PROGRAM names it."""
import os
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT))

from demo import display, program, project  # noqa: E402

TITLE = "Marovia Sondrel V4"
MAIN = f"^Demo - Omega - {TITLE}"
PATIENCE = 120  # seconds


class ProgramTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="sondrel-display-")
        cls.addClassCleanup(folder.cleanup)
        screen = display.Display(folder.name)
        cls.screen = screen.__enter__()
        cls.addClassCleanup(screen.__exit__)

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="sondrel-program-")
        self.addCleanup(folder.cleanup)
        self.places = program.Places(Path(folder.name).resolve())
        project.write_project(self.places.app, [("shop.example", False)])
        project.write_engine_data(self.places.system, "http://127.0.0.1:9")
        self.executable = program.install(Path(os.environ["SONDREL_PROGRAM"]), self.places)

    def start(self):
        process = subprocess.Popen([self.executable], env=self.places.environment(self.screen.environment),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(display.end, process)
        return process

    def wait_for(self, condition):
        deadline = time.monotonic() + PATIENCE
        while True:
            answer = condition()
            if answer:
                return answer
            self.assertLess(time.monotonic(), deadline)
            time.sleep(.05)

    def window(self, title):
        found = self.wait_for(lambda: self.screen.find(title))
        self.screen.focus(found)
        return found

    def close(self, process):
        self.window(MAIN)
        self.screen.keys("ctrl+q")
        self.window("^Exit Sondrel$")
        self.screen.keys("alt+y")
        self.assertEqual(process.wait(PATIENCE), 0)

    def starts(self):
        return self.places.log.read_bytes().count(b" - Version: ")


class Program(ProgramTest):
    def test_comes_up_and_ends(self):
        process = self.start()
        self.close(process)
        self.assertEqual(self.starts(), 1)

    def test_goes_on_when_ending_is_refused(self):
        process = self.start()
        self.window(MAIN)
        self.screen.keys("ctrl+q")
        self.window("^Exit Sondrel$")
        self.screen.keys("alt+n")
        self.wait_for(lambda: not self.screen.find("^Exit Sondrel$"))
        self.assertIsNone(process.poll())
        self.close(process)

    def test_runs_once_on_its_folder(self):
        first = self.start()
        self.window(MAIN)
        self.assertEqual(self.start().wait(PATIENCE), 0)
        self.assertIsNone(first.poll())
        self.assertEqual(self.starts(), 1)
        self.close(first)

    def test_starts_again_after_a_crash(self):
        first = self.start()
        self.window(MAIN)
        first.kill()
        first.wait()
        second = self.start()
        self.close(second)
        self.assertEqual(self.starts(), 2)

    def test_one_of_two_starts_at_once_comes_up(self):
        both = [self.start(), self.start()]
        ended = self.wait_for(lambda: [process for process in both if process.poll() is not None])
        self.assertEqual([process.returncode for process in ended], [0])
        both.remove(ended[0])
        self.close(both[0])
        self.assertEqual(self.starts(), 1)

    def test_keeps_damaged_settings(self):
        self.places.settings.write_bytes(b"\0\1\2 no settings")
        process = self.start()
        self.window(f"^{TITLE}$")
        self.screen.keys("Return")
        # Without settings this is the first start of a version, which offers newer engine data.
        self.window("^Update Engine Data$")
        self.screen.keys("Escape")
        self.window(MAIN)
        kept = self.places.settings.with_name(self.places.settings.name + ".damaged")
        self.assertEqual(kept.read_bytes(), b"\0\1\2 no settings")
        self.assertIn(b"is damaged: ", self.places.log.read_bytes())
        self.close(process)
        self.assertIn(b"\nMainFormPos=", self.places.settings.read_bytes())

    def test_keeps_a_damaged_project_list(self):
        (self.places.app / "project.dat").write_bytes(b"[Accounts]\r\n1=Demo\r\nLa")
        process = self.start()
        self.window(f"^{TITLE}$")
        self.screen.keys("Return")
        self.close(process)
        self.assertEqual((self.places.app / "project.dat.damaged").read_bytes(), b"[Accounts]\r\n1=Demo\r\nLa")
        self.assertEqual((self.places.app / "project.dat").read_bytes(), b"[Accounts]\r\n1=Demo\r\nLast=1\r\n")

    def test_ends_though_its_folders_have_gone(self):
        process = self.start()
        self.window(MAIN)
        for folder in (self.places.app, self.places.data, self.places.config):
            folder.rename(folder.with_name(folder.name + "-gone"))
        self.screen.keys("shift+F5")
        self.screen.wait_until_still()
        self.close(process)


class NotificationArea(ProgramTest):
    """On a desktop with a window manager and a panel whose last place is that of the icon."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.run_beside("openbox")
        cls.panel = cls.run_panel()

    @classmethod
    def run_beside(cls, *command):
        process = subprocess.Popen(command, env=cls.screen.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        cls.addClassCleanup(display.end, process)
        return process

    @classmethod
    def run_panel(cls):
        return cls.run_beside("trayer", "--edge", "top", "--align", "right", "--widthtype", "pixel", "--width", "100",
                              "--height", "28", "--expand", "false", "--SetDockType", "true")

    def setUp(self):
        super().setUp()
        self.wait_for(lambda: self.screen.find("^panel$"))
        self.process = self.start()
        self.main = self.window(MAIN)
        self.screen.wait_until_still()

    def minimise(self):
        self.screen.do("windowminimize", self.main)
        self.wait_for(lambda: not self.screen.find(MAIN))
        self.screen.wait_until_still()

    def click_icon(self, button=1, times=1):
        self.screen.do("mousemove", self.screen.width - 14, 14, "click", "--repeat", times, "--delay", 60, button)

    def test_takes_the_minimised_window_and_gives_it_back(self):
        self.minimise()
        self.click_icon()
        self.screen.wait_until_still()
        self.assertIsNone(self.screen.find(MAIN))
        time.sleep(1)  # or the desktop takes the next click for the second half of a double click
        self.click_icon(times=2)
        self.wait_for(lambda: self.screen.find(MAIN))
        self.close(self.process)

    def test_gives_the_window_back_when_the_program_is_started_again(self):
        self.minimise()
        self.assertEqual(self.start().wait(PATIENCE), 0)
        self.wait_for(lambda: self.screen.find(MAIN))
        self.close(self.process)

    def test_ends_the_program_from_its_menu(self):
        self.minimise()
        before = self.screen.picture()
        self.click_icon(button=3)
        self.wait_for(lambda: self.screen.picture() != before)
        self.screen.wait_until_still()
        self.screen.keys("Up", "Return")  # the last entry
        self.window("^Exit Sondrel$")
        self.screen.keys("alt+y")
        self.assertEqual(self.process.wait(PATIENCE), 0)


if __name__ == "__main__":
    unittest.main()
