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
        self.processes = []
        folder = tempfile.TemporaryDirectory(prefix="sondrel-program-")
        self.addCleanup(folder.cleanup)
        self.places = program.Places(Path(folder.name).resolve())
        project.write_project(self.places.app, [("shop.example", False)])
        project.write_engine_data(self.places.system, "http://127.0.0.1:9")
        self.executable = program.install(Path(os.environ["SONDREL_PROGRAM"]), self.places)

    def start(self):
        output = self.places.app / f"output-{len(self.processes)}.log"
        with open(output, "wb") as log:
            process = subprocess.Popen([self.executable], env=self.places.environment(self.screen.environment),
                                       stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.addCleanup(display.end, process)
        self.processes.append((process, output))
        return process

    def wait_for(self, what, condition, process=None):
        """Waits until the condition gives an answer; a process that is to give it must not end before."""
        deadline = time.monotonic() + PATIENCE
        while True:
            answer = condition()
            if answer:
                return answer
            if process and process.poll() is not None:
                self.give_up(f"{what}: the program has ended")
            if time.monotonic() > deadline:
                self.give_up(f"waited in vain for {what}")
            time.sleep(.05)

    def give_up(self, problem):
        """Fails, and keeps what helps to find out why."""
        picture = Path(f"failed-{self.id()}.png").resolve()
        self.screen.save(picture)
        lines = [problem, f"what was seen: {picture}"]
        for process, output in self.processes:
            lines.append(f"process {process.pid}, status {process.poll()}: {output.read_text(errors='replace')[-4000:]}")
        if self.places.log.exists():
            lines.append(self.places.log.read_text(encoding="cp1252", errors="replace")[-2000:])
        self.fail("\n".join(lines))

    def window(self, title, process):
        """Waits for a window of the process and gives it the keyboard."""
        def focused():
            found = self.screen.find(title)
            return found if found and self.screen.focus(found) else None
        return self.wait_for(f"the window '{title}'", focused, process)

    def gone(self, title):
        self.wait_for(f"the end of the window '{title}'", lambda: not self.screen.find(title))

    def ended(self, process):
        self.wait_for("the end of the program", lambda: process.poll() is not None)
        if process.returncode:
            self.give_up("the program has failed")

    def close(self, process):
        self.window(MAIN, process)
        self.screen.keys("ctrl+q")
        self.window("^Exit Sondrel$", process)
        self.screen.keys("alt+y")
        self.ended(process)

    def starts(self):
        return self.places.log.read_bytes().count(b" - Version: ")


class Program(ProgramTest):
    def test_comes_up_and_ends(self):
        process = self.start()
        self.close(process)
        self.assertEqual(self.starts(), 1)

    def test_goes_on_when_ending_is_refused(self):
        process = self.start()
        self.window(MAIN, process)
        self.screen.keys("ctrl+q")
        self.window("^Exit Sondrel$", process)
        self.screen.keys("alt+n")
        self.gone("^Exit Sondrel$")
        self.assertIsNone(process.poll())
        self.close(process)

    def test_runs_once_on_its_folder(self):
        first = self.start()
        self.window(MAIN, first)
        self.ended(self.start())
        self.assertIsNone(first.poll())
        self.assertEqual(self.starts(), 1)
        self.close(first)

    def test_starts_again_after_a_crash(self):
        first = self.start()
        self.window(MAIN, first)
        first.kill()
        first.wait()
        self.gone(MAIN)  # the display takes a moment to notice
        second = self.start()
        self.close(second)
        self.assertEqual(self.starts(), 2)

    def test_one_of_two_starts_at_once_comes_up(self):
        both = [self.start(), self.start()]
        ended = self.wait_for("the end of one of them",
                              lambda: [process for process in both if process.poll() is not None])
        self.assertEqual([process.returncode for process in ended], [0])
        both.remove(ended[0])
        self.close(both[0])
        self.assertEqual(self.starts(), 1)

    def test_keeps_damaged_settings(self):
        self.places.settings.write_bytes(b"\0\1\2 no settings")
        process = self.start()
        self.window(f"^{TITLE}$", process)
        self.screen.keys("Return")
        # Without settings this is the first start of a version, which offers newer engine data.
        self.window("^Update Engine Data$", process)
        self.screen.keys("Escape")
        self.window(MAIN, process)
        kept = self.places.settings.with_name(self.places.settings.name + ".damaged")
        self.assertEqual(kept.read_bytes(), b"\0\1\2 no settings")
        self.assertIn(b"is damaged: ", self.places.log.read_bytes())
        self.close(process)
        self.assertIn(b"\nMainFormPos=", self.places.settings.read_bytes())

    def test_keeps_a_damaged_project_list(self):
        (self.places.app / "project.dat").write_bytes(b"[Accounts]\r\n1=Demo\r\nLa")
        process = self.start()
        self.window(f"^{TITLE}$", process)
        self.screen.keys("Return")
        self.close(process)
        self.assertEqual((self.places.app / "project.dat.damaged").read_bytes(), b"[Accounts]\r\n1=Demo\r\nLa")
        self.assertEqual((self.places.app / "project.dat").read_bytes(), b"[Accounts]\r\n1=Demo\r\nLast=1\r\n")

    def test_ends_though_its_folders_have_gone(self):
        process = self.start()
        self.window(MAIN, process)
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
        cls.run_beside(lambda: cls.screen.do("get_num_desktops"), "openbox")
        cls.run_beside(lambda: cls.screen.find("^panel$"), "trayer", "--edge", "top", "--align", "right", "--widthtype",
                       "pixel", "--width", "100", "--height", "28", "--expand", "false", "--SetDockType", "true")

    @classmethod
    def run_beside(cls, is_there, *command):
        """Runs a part of the desktop and waits until it is there; the panel sometimes ends at once or never shows
        itself, and then it is started anew."""
        for _ in range(8):
            process = subprocess.Popen(command, env=cls.screen.environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            cls.addClassCleanup(display.end, process)
            deadline = time.monotonic() + PATIENCE / 8
            while process.poll() is None and time.monotonic() < deadline:
                if is_there():
                    return
                time.sleep(.05)
            display.end(process)
        raise RuntimeError(f"{command[0]} does not come up")

    def setUp(self):
        super().setUp()
        self.process = self.start()
        self.main = self.window(MAIN, self.process)
        self.screen.wait_until_still()

    def minimise(self):
        self.screen.do("windowminimize", self.main)
        self.gone(MAIN)
        self.screen.wait_until_still()

    def click_icon(self, button=1, times=1):
        self.screen.do("mousemove", self.screen.width - 14, 14, "click", "--repeat", times, "--delay", 60, button)

    def double_click_icon(self):
        """Whether it brought the main window back: a busy machine makes two single clicks of one double click."""
        time.sleep(1)  # or the desktop takes the next click for the second half of a double click
        self.click_icon(times=2)
        self.screen.wait_until_still()
        return self.screen.find(MAIN)

    def test_takes_the_minimised_window_and_gives_it_back(self):
        self.minimise()
        self.click_icon()
        self.screen.wait_until_still()
        self.assertIsNone(self.screen.find(MAIN))
        self.wait_for("the main window", self.double_click_icon, self.process)
        self.window(MAIN, self.process)
        self.close(self.process)

    def test_gives_the_window_back_when_the_program_is_started_again(self):
        self.minimise()
        self.ended(self.start())
        self.window(MAIN, self.process)
        self.close(self.process)

    def test_ends_the_program_from_its_menu(self):
        self.minimise()
        before = self.screen.picture()
        self.click_icon(button=3)
        self.wait_for("the menu", lambda: self.screen.picture() != before, self.process)
        self.screen.wait_until_still()
        self.screen.keys("Up", "Return")  # the last entry
        self.window("^Exit Sondrel$", self.process)
        self.screen.keys("alt+y")
        self.ended(self.process)


if __name__ == "__main__":
    unittest.main()
