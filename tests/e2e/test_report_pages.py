#!/usr/bin/env python3
"""Follows every link of a project's report in a real browser, from its index down to the saved result pages.
SONDREL_PROBE names the probe. With the argument --table it prints what became of each keyword.

    tests/e2e/test_report_pages.py [--table]
"""
import contextlib
import http.server
import os
import re
import shutil
import sys
import tempfile
import threading
import unittest
import urllib.parse
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(ROOT))

from demo import project  # noqa: E402
from demo.probe import Probe  # noqa: E402
from tests.e2e import servers  # noqa: E402
from tests.e2e.browser import Browser  # noqa: E402

PREFERENCE = "Software\\Kestrune\\Marovia Sondrel V4\\Preference"
NAME = "Tea's & Sons (2026)"
ENGINES = ("Finder (US)", "Zhao")
KEYWORDS = (
    "tea", "green tea", "children's tea", 'say "tea"', "caf\u00e9 cr\u00e8me", "na\u00efve", "tea (loose)", "tea(2005)",
    "tea [green]", "50% off tea", "tea%20bags", "tea/coffee", "tea\\coffee", "tea & milk", "c#", "what is tea?", "a+b",
    "<tea>", "tea: black", "tea, black", "tea|milk", "*", "tea = good", "tea_time", "T\u00c9 VERDE", "a.html",
    "o\u00f9", "gr\u00f6\u00dfe",
)
# A page does not say how its text is encoded: with such titles a browser takes it for UTF-8.
SHARP_S = "%C3%9F"
TITLE_WITH_SHARP_S = "Gr\u00f6\u00dfen f\u00fcr Tee"
WIDE_KEYWORDS = ("\u7eff\u8336", "\u7eff\u8336 caf\u00e9's", "\u10e9\u10d0\u10d8", "tea \U0001f375")

DATA = """[Markets]
1=Local
2=Other
[Local]
1=Finder (US)
[Other]
1=Zhao
"""
ENGINE = """[{name}]
EngineKey=nowhere
EngineURL={base}/find
QueryKeyword1=?q=
SubmitMethod=GET
ResultStartString=<ol>
ResultEndString=</ol>
Sectionstart=<li>
SectionEnd=</li>
beginTitle=<b>
endTitle=</b>
beginURL=href="
endURL="
beginMatches=Results
endMatches=</p>
NextPage1=Next page
"""


class Results(http.server.BaseHTTPRequestHandler):
    """Two result pages for every query, the first full of other people's listings."""

    def do_GET(self):
        address = urllib.parse.urlsplit(self.path)
        second = "&page=2" in address.query
        listings = ["http://own.example/tea"] if second else [f"http://other{i}.example/" for i in range(10)]
        title = TITLE_WITH_SHARP_S if SHARP_S in address.query.upper() else "Listing"
        items = "".join(f'<li><b>{title}</b> <a href="{url}">go</a></li>' for url in listings)
        following = "" if second else f'<a href="/find?{address.query}&page=2">Next page</a>'
        body = f"<html><p>Results 1 of 11</p><ol>{items}</ol>{following}<i>page {2 if second else 1}</i></html>".encode()
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


@contextlib.contextmanager
def search_engine():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", servers.free_port()), Results)
    thread = threading.Thread(target=server.serve_forever)
    thread.start()
    try:
        yield f"http://127.0.0.1:{server.server_port}"
    finally:
        server.shutdown()
        server.server_close()
        thread.join()


class Report:
    """The report of a project whose engines have been looked up."""

    def __init__(self, folder, keywords, code_page=None):
        self.app = folder / "app"
        self.keywords = keywords
        with search_engine() as base, Probe(os.environ["SONDREL_PROBE"], self.app, folder / "system",
                                            folder / "settings.ini", "2026-11-15T10:00:00") as probe:
            data = DATA + "".join(ENGINE.format(name=name, base=base) for name in ENGINES)
            (folder / "system").mkdir()
            (folder / "system" / "qlteng4.dat").write_text(data.replace("\n", "\r\n"), encoding="ascii", newline="")
            project.write_project(self.app, [("own.example", False), ("rival.example", True)], (), name=NAME,
                                  engines=ENGINES, links=11)
            terms = "".join(f"{keyword};-1\r\n" for keyword in keywords)
            (self.app / "Projects" / NAME / "Keywords.dat").write_bytes(
                terms.encode("utf-8" if code_page == "65001" else "cp1252"))
            shutil.copy(ROOT / "data" / "menutemplate.html", self.app)
            if code_page:
                probe.ask("SetRegistryValue", PREFERENCE, "CodePage", code_page)
            for engine in ENGINES:
                answer = probe.ask("Lookup", NAME, engine, "all")
                assert answer["result"] == "completed", answer
            self.index = Path(probe.ask("WriteReportSet", NAME)["result"])
        self.folder = self.index.parent


# A stored result page is somebody else's; where its links lead is not ours to say.
STORED_PAGE = re.compile(r"_p\d+\.html$")


def links_below(browser, index):
    """address of each page reached: its text and its links, and the pages not reached. Only files are followed."""
    reached, missing, waiting = {}, {}, [(index.as_uri(), "")]
    while waiting:
        address, source = waiting.pop()
        page = address.partition("#")[0]
        if page in reached or page in missing:
            continue
        if not browser.open(page):
            missing[page] = source
            continue
        links = [] if STORED_PAGE.search(page) else [
            (link, text) for link, text in browser.links() if link.startswith("file:")]
        reached[page] = (browser.text(), links)
        waiting += [(link, page) for link, _ in links]
    return reached, missing


def name_of(address):
    return urllib.parse.unquote(address.rpartition("/")[2])


def path_of(address):
    return Path(urllib.parse.unquote(urllib.parse.urlsplit(address).path))


class ReportPages(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-pages-"))).resolve()
        self.browser = stack.enter_context(Browser())

    def check(self, report):
        reached, missing = links_below(self.browser, report.index)
        # No browser of this family asks for a file whose name holds a "/", however it is written.
        self.assertEqual([page for page in missing if "%2F" not in page], [])
        shown = {path_of(address).name.lower() for address in reached}
        for name in ("menu.html", "enginesummary.html", "keywordurl.html", "keywordsummary.html",
                     "rankingdetail.html"):
            self.assertIn(name, shown)
        folder = report.folder.resolve()
        self.assertEqual([page for page in reached if folder not in path_of(page).resolve().parents], [])
        rows = [self.row(report, reached, engine, keyword) for engine in ENGINES for keyword in report.keywords]
        for row in rows:
            self.assertEqual(row["page"], "/" not in row["keyword"], row)
            # A keyword's page links its results without quotation marks: a blank in the engine's name ends the link.
            self.assertEqual(row["results"], row["page"] and " " not in row["engine"], row)
        return rows

    def row(self, report, reached, engine, keyword):
        """What became of a keyword on an engine."""
        summary = next(links for address, (_, links) in reached.items()
                       if path_of(address).name == "keywordsummary.html")
        shown = keyword.replace("<tea>", "")  # a tag is a tag in a report
        places = [link for link, text in summary if text == shown and name_of(link).startswith(engine + "_")]
        self.assertEqual(len(places), 1, (engine, keyword))
        name = name_of(places[0])
        # Where a browser cannot go, the page still lies under its escaped name.
        link = report.folder / name.replace("/", "%2F")
        _, pages = reached.get(places[0], ("", []))
        results = [page for page, text in pages if text == "View full search results for this page on local PC"]
        first, second = ([reached.get(page, ("", []))[0] for page in results] + ["", ""])[:2]
        details = report.folder / f"{engine}Details.html"
        return {
            "engine": engine, "keyword": keyword, "file": link.resolve().name, "link": name,
            "alias": link.is_symlink(),
            "page": places[0] in reached,
            "results": len(results) == 2 and "page 1" in first and "page 2" in second,
            "pasted": link.resolve().read_bytes() in details.read_bytes(),
        }

    def test_every_link_leads_to_its_page(self):
        self.check(Report(self.folder, KEYWORDS))

    def test_every_link_leads_to_its_page_in_other_scripts(self):
        self.check(Report(self.folder, WIDE_KEYWORDS, code_page="65001"))


def print_table():
    print("| keyword | file | link as the browser decodes it | alias | page reached | results reached | pasted |")
    print("|---|---|---|---|---|---|---|")
    for keywords, code_page in ((KEYWORDS, None), (WIDE_KEYWORDS, "65001")):
        with tempfile.TemporaryDirectory(prefix="sondrel-pages-") as folder, Browser() as browser:
            test = ReportPages()
            test.browser = browser
            for row in test.check(Report(Path(folder).resolve(), keywords, code_page)):
                if row["engine"] == ENGINES[1]:
                    cells = [f"`{row[name]}`" for name in ("keyword", "file", "link")]
                    cells += ["yes" if row[name] else "no" for name in ("alias", "page", "results", "pasted")]
                    print(f"| {' | '.join(cell.replace('|', chr(92) + '|') for cell in cells)} |")


if __name__ == "__main__":
    if "--table" in sys.argv:
        print_table()
    else:
        unittest.main()
