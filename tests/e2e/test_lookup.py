#!/usr/bin/env python3
"""Looks keywords up on a real search engine, and compares every position, page, address and count with the engine's
own order. Each class is one way to the engine; SONDREL_PROBE names the probe.

    tests/e2e/test_lookup.py [Direct|ThroughTinyproxy|ThroughSquid|DeadProxy]
"""
import contextlib
import os
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent))

from demo import engine, project, sites  # noqa: E402
from demo.probe import Probe  # noqa: E402
from tests.e2e import expected, servers  # noqa: E402

PROJECT = "Shops"
LINKS = 25
TODAY = "2026-11-15T10:00:00"
STATUS = "11/15/2026"
PREFERENCE = "Software\\Kestrune\\Marovia Sondrel V4\\Preference"
KEYWORDS = (HERE / "keywords.txt").read_text(encoding="ascii").split("\n")[:-1]

TEMPLATE = expected.Definition("Omega", per_page=10, paged=True)
DEFINITIONS = (
    TEMPLATE,
    expected.Definition("Omega Any", per_page=10, paged=True, any_word=True),
    expected.Definition("Omega Stock", per_page=50, paged=False, stock=True),
    expected.Definition("Omega Post", per_page=50, paged=False),
    expected.Definition("Omega (CN)", per_page=10, paged=True),
    expected.Definition("Omega Hex (CN)", per_page=10, paged=True),
)


def tracked_addresses(shops):
    """Own addresses and competitors, bare hosts and folders; the second one's listings belong to the first too."""
    own, second, third, fourth = (shops[number].host for number in (0, 7, 14, 21))
    return [(own, False), (f"http://{own}/products/", False), (second.upper(), True), (f"{third}/guides", True),
            (f"https://{fourth}", True)]


class Lookups(unittest.TestCase):
    """A world of its own: web sites, their index, the engine, and a program that has looked nothing up yet."""

    maxDiff = None

    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-e2e-"))).resolve()
        shops = sites.write(self.folder / "sites", pages=900)
        engine.index(self.folder / "sites", self.folder / "index")
        self.order = expected.Order(self.folder / "index")
        self.omega = stack.enter_context(servers.Omega(self.folder / "index"))
        self.urls = tracked_addresses(shops)
        self.tracked = [address for address, _ in self.urls]

        definitions = (HERE / "engines.dat").read_text(encoding="ascii").replace("{BASE}", self.omega.base)
        (self.folder / "system").mkdir()
        (self.folder / "system" / "qlteng4.dat").write_text(definitions, encoding="ascii", newline="\r\n")
        project.write_project(self.folder / "app", self.urls, KEYWORDS, name=PROJECT, links=LINKS,
                              engines=[definition.name for definition in DEFINITIONS])
        self.probe = stack.enter_context(Probe(os.environ["SONDREL_PROBE"], self.folder / "app",
                                               self.folder / "system", self.folder / "settings.ini", TODAY))
        self.stack = stack

    def use_proxy(self, port, user=servers.Proxy.user, password=servers.Proxy.password):
        for name, value in (("AccessType", "2"), ("Proxy", "127.0.0.1"), ("Port", str(port)),
                            ("Auth_Username", user), ("Auth_Password", password)):
            self.probe.ask("SetRegistryValue", PREFERENCE, name, value)

    def expected_listings(self, definition):
        """keyword: (count, listings)"""
        result = {}
        for keyword in KEYWORDS:
            urls = self.order.ask(keyword, definition)
            result[keyword] = definition.count_text(len(urls)), expected.walk(urls, definition, LINKS)
        return result

    def look_up(self, definition):
        answer = self.probe.ask("Lookup", PROJECT, definition.name, "all")
        self.assertEqual(answer["result"], "completed", answer.get("log"))
        self.assertEqual(answer["progress"], len(KEYWORDS) + 1)
        return answer["rows"]

    def check_first_lookup(self, definition):
        listings = self.expected_listings(definition)
        wanted = {row["Keyword"]: row for keyword in KEYWORDS
                  for row in expected.rows(keyword, *listings[keyword], self.tracked, STATUS)}
        self.assert_telling(wanted, definition)
        rows = self.look_up(definition)
        self.assertEqual([row["Keyword"] for row in rows][:len(KEYWORDS)], KEYWORDS)
        self.assert_rows(rows, wanted)
        self.check_results_file(definition, rows)
        for keyword, (_, walked) in listings.items():
            self.check_listing_file(definition, keyword, walked)
        return wanted

    def assert_telling(self, wanted, definition):
        """The expectation itself holds what the test is about."""
        found = [row for row in wanted.values() if row["CurPos"]]
        self.assertGreaterEqual(len([row for row in wanted.values() if not row["CurPos"]]), 1)
        self.assertGreaterEqual(len([row for row in found if row["Keyword"] in KEYWORDS]), 15)
        self.assertGreaterEqual(len([row for row in found if row["Keyword"] not in KEYWORDS]), 10)
        if definition.paged:
            self.assertGreaterEqual(len([row for row in found if int(row["Page"]) > 1]), 5)

    def assert_rows(self, rows, wanted):
        """Compares by keyword, since keywords finish in any order; shows only what differs."""
        found = {row["Keyword"]: self.without_flag(row) for row in rows}
        self.assertEqual(len(found), len(rows))
        differing = {keyword for keyword in found.keys() | wanted.keys() if found.get(keyword) != wanted.get(keyword)}
        self.assertEqual({keyword: found.get(keyword) for keyword in differing},
                         {keyword: wanted.get(keyword) for keyword in differing})

    @staticmethod
    def without_flag(row):
        return {name: value for name, value in row.items() if name != "Optimize"}

    def check_results_file(self, definition, rows):
        name = definition.name.translate(str.maketrans("", "", "(),."))
        text = (self.folder / "app" / "Projects" / PROJECT / f"{name}.dat").read_bytes().decode("cp1252")
        fields = ("Keyword", "Count", "CurPos", "Page", "LastPosition", "Change", "URL", "Status")
        self.assertEqual([line for line in text.split("\r\n") if line],
                         [";".join(row[field] for field in fields) for row in rows])

    def check_listing_file(self, definition, keyword, walked):
        name = self.probe.ask("EncodedString", keyword)["result"]
        file = self.folder / "app" / "Results" / definition.name / f"{name}.dat"
        lines = [line.split(";#") for line in file.read_bytes().decode("cp1252").split("\r\n") if line]
        self.assertEqual([(url, int(page)) for url, _, page in lines], walked, keyword)

    def check_all_definitions(self):
        """Also that not one page more was asked for. Returns how many there were."""
        pages = 0
        for definition in DEFINITIONS:
            with self.subTest(definition.name):
                self.check_first_lookup(definition)
            pages += sum(walked[-1][1] if walked else 1 for _, walked in self.expected_listings(definition).values())
        self.assertEqual(len(self.queries(self.omega)), pages)
        return pages

    def queries(self, server):
        return [line for line in server.log_lines() if "/cgi-bin/omega?" in line]

    def check_wrong_password(self, proxy):
        self.use_proxy(proxy.port, password="wrong")
        rows = self.look_up(TEMPLATE)
        self.assertEqual({row["CurPos"] for row in rows}, {""})
        self.assertEqual({row["Count"] for row in rows}, {""})
        # A page that tells of an error is a page like any other.
        self.assertEqual({row["Status"] for row in rows}, {STATUS})
        self.assertEqual(len(self.queries(proxy)), len(KEYWORDS))
        self.assertEqual(self.queries(self.omega), [])


class Direct(Lookups):
    def test_finds_what_the_engine_finds(self):
        self.check_all_definitions()

    def test_tells_the_change_when_looked_up_again(self):
        first = self.check_first_lookup(TEMPLATE)
        wanted = {}
        for keyword, row in first.items():
            wanted[keyword] = row if keyword not in KEYWORDS else dict(
                row, LastPosition=row["CurPos"], Change="0" if row["CurPos"] else "")
        rows = self.look_up(TEMPLATE)
        self.assert_rows(rows, wanted)

    def test_keeps_only_the_top_position_when_told_so(self):
        project.write_project(self.folder / "app", self.urls, KEYWORDS, name=PROJECT, links=LINKS, top_only=True,
                              engines=[TEMPLATE.name])
        listings = self.expected_listings(TEMPLATE)
        wanted = [expected.rows(keyword, *listings[keyword], self.tracked, STATUS)[0] for keyword in KEYWORDS]
        self.assertEqual([self.without_flag(row) for row in self.look_up(TEMPLATE)], wanted)


class ThroughTinyproxy(Lookups):
    def test_finds_what_the_engine_finds(self):
        proxy = self.stack.enter_context(servers.Tinyproxy())
        self.use_proxy(proxy.port)
        pages = self.check_all_definitions()
        self.assertEqual(len(self.queries(proxy)), pages)

    def test_finds_nothing_with_a_wrong_password(self):
        self.check_wrong_password(self.stack.enter_context(servers.Tinyproxy()))


class ThroughSquid(Lookups):
    def test_finds_what_the_engine_finds(self):
        proxy = self.stack.enter_context(servers.Squid())
        self.use_proxy(proxy.port)
        pages = self.check_all_definitions()
        self.assertEqual(len(self.queries(proxy)), pages)

    def test_finds_nothing_with_a_wrong_password(self):
        self.check_wrong_password(self.stack.enter_context(servers.Squid()))


class DeadProxy(Lookups):
    def test_marks_every_keyword_as_failed(self):
        self.use_proxy(servers.free_port())
        rows = self.look_up(TEMPLATE)
        self.assertEqual({row["Status"] for row in rows}, {"Failed"})
        self.assertEqual(self.queries(self.omega), [])


if __name__ == "__main__":
    unittest.main()
