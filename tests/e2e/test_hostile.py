#!/usr/bin/env python3
"""Looks keywords up on an engine that means ill (hostile_engine.py): the lookup ends, the keywords with ordinary pages
get what they should, memory stays within bounds, and what is on disk can be used afterwards. SONDREL_PROBE names the
probe; SONDREL_PEAK_MB the most memory that it may use, none when it watches over its memory itself.

    tests/e2e/test_hostile.py
"""
import os
import re
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent))

from demo import project  # noqa: E402
from demo.probe import Probe  # noqa: E402
from tests.e2e.hostile_engine import ENGINE, OWN, HostileEngine  # noqa: E402

PROJECT = "Shops"
LINKS = 30
TODAY = "2026-11-15T10:00:00"
STATUS = "11/15/2026"
PREFERENCE = "Software\\Kestrune\\Marovia Sondrel V4\\Preference"

GOOD = [f"good{number}" for number in range(1, 10)]
# keyword: the position that it is to have, and how many pages are asked for; "" and None where that is open
HOSTILE = {
    "drip": ("1", 2),
    "body": ("1", 2),
    "listings": ("1", None),
    "bomb": ("1", 2),
    "headers_": ("", 1),
    "redirects": ("", 21),
    "pages": ("", LINKS),
    "loop": ("", LINKS),
    "barren": ("", 1),
    "many": ("9999", 1),
    "too_many": ("7", 1),
    "title": ("1", 2),
    "huge_title": ("1", 2),
    "blanks": ("1", 2),
    "brackets": ("1", 2),
    "entities": ("1", 2),
    "escapes": ("1", 2),
    "nuls": ("1", 2),
    "broken": ("1", 2),
    "script": ("1", 2),
}
FAILED = {"headers_", "redirects"}


def mixed(hostile, good):
    """The drip first, then ill and good in turn, so that both are under way all the time."""
    keywords = []
    good = list(good)
    for keyword in hostile:
        keywords.append(keyword)
        keywords += [good.pop(0)] if good else []
    return keywords + good


class HostileEngineTest(unittest.TestCase):
    maxDiff = None
    probe = None

    def tearDown(self):
        if self.probe:
            self.probe.__exit__()

    def start(self, keywords, good=()):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="sondrel-e2e-"))).resolve()
        self.engine = self.enterContext(HostileEngine(good))
        (self.folder / "system").mkdir()
        (self.folder / "system" / "qlteng4.dat").write_text(ENGINE.format(port=self.engine.port), newline="")
        project.write_project(self.folder / "app", [(OWN, False), ("other.site.example", True)], keywords,
                              name=PROJECT, links=LINKS, engines=["Hostile"])
        self.restart()

    def restart(self):
        """What the program has not put on disk is gone."""
        if self.probe:
            self.probe.__exit__()
        self.probe = Probe(os.environ["SONDREL_PROBE"], self.folder / "app", self.folder / "system",
                           self.folder / "settings.ini", TODAY)

    def enterContext(self, context):
        value = context.__enter__()
        self.addCleanup(context.__exit__, None, None, None)
        return value

    def set_preference(self, name, value):
        self.probe.ask("SetRegistryValue", PREFERENCE, name, value)

    def look_up(self):
        answer = self.probe.ask("Lookup", PROJECT, "Hostile", "all")
        self.assertEqual(answer["result"], "completed", answer.get("log"))
        return {row["Keyword"]: row for row in answer["rows"]}

    def check_good(self, rows):
        wanted = {keyword: (f"{10 + 4}", "2", f"http://{OWN}/{keyword}/2", STATUS) for keyword in GOOD}
        self.assertEqual({keyword: tuple(rows[keyword][field] for field in ("CurPos", "Page", "URL", "Status"))
                          for keyword in GOOD}, wanted)

    def check_hostile(self, rows):
        self.assertEqual({keyword: rows[keyword]["Status"] for keyword in HOSTILE},
                         {keyword: "Failed" if keyword in FAILED else STATUS for keyword in HOSTILE})
        self.assertEqual({keyword: rows[keyword]["CurPos"] for keyword in HOSTILE},
                         {keyword: position for keyword, (position, _) in HOSTILE.items()})
        told = {keyword: count for keyword, (_, count) in HOSTILE.items() if count is not None}
        self.assertEqual({keyword: self.engine.count(keyword) for keyword in told}, told)

    def check_peak(self):
        most = os.environ.get("SONDREL_PEAK_MB")
        if most:
            self.assertLess(self.probe.peak_memory() / 1e6, float(most))

    def check_files(self):
        """Nothing lies where it should not, and no page has written on another one's."""
        names = [str(path.relative_to(self.folder / "app")) for path in (self.folder / "app").rglob("*")]
        form = r"project\.dat|Error\.log|(Projects|Results|Reports|reports)(/(Shops|Hostile)(/[\w.+%-]+)?)?"
        self.assertEqual([name for name in names if not re.fullmatch(form, name)], [])

    def test_ill_pages_do_not_hold_the_others_up(self):
        self.start(mixed(HOSTILE, GOOD), GOOD)
        # None, however slow the machine is: the drip ends when the others are done, and only then.
        self.set_preference("TimeOut", "0")
        rows = self.look_up()
        self.check_peak()
        self.check_good(rows)
        self.check_hostile(rows)
        self.check_files()

    def test_a_drip_ends_with_its_time(self):
        self.start(["drip_forever"])
        self.set_preference("TimeOut", "1")
        row = self.look_up()["drip_forever"]
        self.assertEqual((row["CurPos"], row["Status"]), ("1", STATUS))

    def test_what_is_no_text_can_be_read_again(self):
        keywords = ["nuls", "broken", "script", "title"]
        for page in ("1252", "65001", "936"):
            with self.subTest(page):
                self.start(keywords)
                self.set_preference("CodePage", page)
                self.restart()
                self.look_up()
                self.restart()
                rows = self.look_up()
                self.assertEqual({keyword: (rows[keyword]["CurPos"], rows[keyword]["LastPosition"])
                                  for keyword in keywords}, {keyword: ("1", "1") for keyword in keywords})
                self.check_files()


if __name__ == "__main__":
    unittest.main()
