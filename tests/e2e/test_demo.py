#!/usr/bin/env python3
"""Runs the demo as a person would; SONDREL_PROGRAM and SONDREL_PROBE name the program and the probe."""
import fcntl
import json
import os
import re
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT))

from demo import display, program, project, run, sites  # noqa: E402
from tests.e2e import expected  # noqa: E402

ENGINE = expected.Definition(project.ENGINE, per_page=10, paged=True)


def processes_with(text):
    """Command lines of all processes that name the text."""
    found = []
    for file in Path("/proc").glob("[0-9]*/cmdline"):
        try:
            line = file.read_bytes().replace(b"\0", b" ").decode("utf-8", "replace")
        except OSError:
            continue  # it has just ended
        if text in line:
            found.append(line)
    return found


class Demo(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="sondrel-demo-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()

    def start(self, *arguments, display=None, **members):
        command = [sys.executable, "-m", "demo.run", "--program", os.environ["SONDREL_PROGRAM"], "--probe",
                   os.environ["SONDREL_PROBE"], "--folder", str(self.folder), *arguments]
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "QT_QPA_PLATFORM", "WAYLAND_DISPLAY")}
        environment.update(display.environment if display else {}, PYTHONIOENCODING="utf-8")
        return subprocess.Popen(command, cwd=ROOT, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                encoding="utf-8", **members)

    def run_demo(self):
        with self.start() as process:
            output, errors = process.communicate(timeout=300)
        self.assertEqual((process.returncode, errors), (0, ""), output)
        return output

    def table(self, output):
        """keyword: cells of its line"""
        lines = output.splitlines()
        rule = next(number for number, line in enumerate(lines) if re.fullmatch("-+(  -+)+", line))
        spans = [match.span() for match in re.finditer("-+", lines[rule])]
        rows = [[line[start:end].strip() for start, end in spans] for line in lines[rule + 1:rule + 1 + len(
            project.KEYWORDS)]]
        return {row[0]: row[1:] for row in rows}

    def engine_positions(self):
        """keyword: (position, page, count, addresses at all positions) by the engine's own order"""
        order = expected.Order(self.folder / "engine")
        shops = sites.plan()
        tracked = [shops[number].host for number in run.OWN + run.COMPETITORS]
        result = {}
        for keyword in project.KEYWORDS:
            urls = order.ask(keyword, ENGINE)
            first, *further = expected.rows(keyword, ENGINE.count_text(len(urls)),
                                            expected.walk(urls, ENGINE, project.LINKS), tracked, "")
            also = ", ".join(row["CurPos"] for row in further[:3]) + (f" +{len(further) - 3}" if further[3:] else "")
            result[keyword] = (first["CurPos"], first["Page"], first["Count"], first["URL"], also)
        return result

    def test_shows_positions_and_then_changes(self):
        first = self.table(self.run_demo())
        wanted = self.engine_positions()
        self.assertEqual(self.without_changes(first), wanted)
        second = self.table(self.run_demo())
        self.assertEqual(self.without_changes(second), self.engine_positions())
        self.assertEqual({keyword: cells[2] for keyword, cells in second.items()},
                         {keyword: self.change(first[keyword][0], second[keyword][0]) for keyword in first})
        self.assertEqual({re.sub(r"[^\w+-]|\d", "", cells[2]) for cells in second.values()},
                         {"+", "-", "", "+new", "-lost", "notfound"})
        self.assertEqual(processes_with(str(self.folder)), [])

    def test_writes_the_report(self):
        self.check_report(self.run_demo())

    def check_report(self, output):
        index = Path(re.search("Report +(.+), for a browser", output).group(1))
        self.assertIn(f"<h1>{project.NAME}</h1>", index.read_text(encoding="cp1252"))
        for link in re.findall('href="([^"#]+)"', index.read_text(encoding="cp1252")):
            if ":" not in link:
                self.assertTrue((index.parent / link).is_file(), link)

    def test_writes_the_advice_on_a_page(self):
        output = self.run_demo()
        advice = Path(re.search("Advice +(.+), on", output).group(1)).read_text(encoding="cp1252")
        self.assertTrue(advice.startswith("<html><head>"))
        self.assertIn("Web Site Optimizer Report", advice)
        keywords = re.search('CONTENT=&quot;</font><font [^>]*>(.+?)</font>', advice).group(1)
        rows = re.findall('<tr bgcolor=#FFFFFF><td><font [^>]*>(.+?)</font></td><td align=center>', advice)
        self.assertEqual(rows, 2 * keywords.split(","))

    @unittest.skipUnless(Path(os.environ["SONDREL_PROGRAM"]).with_name("sondrel-calc.so").exists(),
                         "built without the spreadsheet plug-in")
    def test_leaves_a_program_that_makes_workbooks(self):
        self.run_demo()
        places = program.Places(self.folder)
        workbook = places.menu.with_name(f"{project.ENGINE}.xls")
        with display.Display(self.folder / "display") as screen, \
                program.Driven(places.app / "marovia-sondrel", places, screen) as driven:
            driven.open()
            screen.keys("alt+r", "e")
            self.wait_for(workbook.exists)
            driven.close()
        seen = json.loads(subprocess.run(["/usr/bin/python3", ROOT / "tests/calc/read_workbook.py", workbook],
                                         check=True, stdout=subprocess.PIPE).stdout)
        self.assertEqual(seen["sheets"], ["Keyword Summary", "Keyword URL", "Engine Summary"])
        terms = [cell["value"] for place, cell in seen["content"]["Keyword Summary"]["cells"].items() if place[0] == "B"]
        self.assertEqual([term for term in terms if term in project.KEYWORDS], list(project.KEYWORDS))

    def test_saves_a_screenshot(self):
        file = Path(re.search("Screenshot +(.+)", self.run_demo()).group(1))
        picture = file.read_bytes()
        self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(struct.unpack(">2I", picture[16:24]), (1280, 860))
        pixels = zlib.decompress(picture[picture.index(b"IDAT") + 4:])
        self.assertGreater(len(set(pixels[number:number + 3] for number in range(1, len(pixels) - 3, 997))), 5)

    def test_opens_the_program_where_there_is_a_display(self):
        with display.Display(self.folder / "display") as screen, self.start(display=screen) as process:
            self.assertIn("is open on", process.stdout.readline())
            self.wait_for(lambda: screen.find("^Demo - Omega - "))
            screen.focus(screen.find("^Demo - Omega - "))
            screen.keys("shift+F5")
            results = self.folder / "app" / "Projects" / project.NAME / f"{project.ENGINE}.dat"
            self.wait_for(results.exists)
            screen.keys("ctrl+q")
            self.wait_for(lambda: screen.find("^Exit Sondrel$"))
            screen.focus(screen.find("^Exit Sondrel$"))
            screen.keys("alt+y")
            output, errors = process.communicate(timeout=300)
        self.assertEqual(process.returncode, 0, errors)
        self.assertEqual(self.without_changes(self.table(output)), self.engine_positions())
        self.check_report(output)

    def wait_for(self, condition):
        deadline = time.monotonic() + 120
        while not condition():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(.1)

    @staticmethod
    def without_changes(table):
        return {keyword: (position, page, count, url, further)
                for keyword, (position, page, _, count, further, _, url) in table.items()}

    @staticmethod
    def change(before, now):
        if not now:
            return f"\N{DOWNWARDS ARROW} -{before} lost" if before else "not found"
        if not before:
            return f"\N{UPWARDS ARROW} {now}+ new"
        rise = int(before) - int(now)
        return f"\N{UPWARDS ARROW} +{rise}" if rise > 0 else f"\N{DOWNWARDS ARROW} {rise}" if rise else "= 0"

    def test_stops_what_it_started_when_interrupted(self):
        for number, status in ((signal.SIGINT, 130), (signal.SIGTERM, 143)):
            with self.subTest(number), self.start("--stay", start_new_session=True) as process:
                self.assertIn("Looking up", process.stdout.readline())
                os.killpg(process.pid, number)
                process.communicate(timeout=300)
                self.assertEqual(process.returncode, status)
                self.assertEqual(processes_with(str(self.folder)), [])

    def test_refuses_a_folder_in_use(self):
        self.folder.mkdir(parents=True, exist_ok=True)
        with open(self.folder / "lock", "w", encoding="ascii") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)  # as another run holds it
            with self.start() as second:
                _, errors = second.communicate(timeout=300)
        self.assertEqual((second.returncode, errors), (1, f"script/run: another run uses {self.folder}\n"))


if __name__ == "__main__":
    unittest.main()
