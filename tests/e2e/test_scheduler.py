#!/usr/bin/env python3
"""A project that is due runs by itself on a real search engine; its reports are mailed through a real server, taken
out of the mail by another program's parser, and read in a browser. SONDREL_PROBE names the probe.

    tests/e2e/test_scheduler.py
"""
import contextlib
import email
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from email import policy
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent))

from demo import engine, project, sites  # noqa: E402
from demo.probe import Probe  # noqa: E402
from tests.e2e import servers  # noqa: E402
from tests.mail.mail_server import PASSWORD, USER, MailServer, make_certificate, tls_context  # noqa: E402

NAME = "Shops & more"
# The links of the reports have no quotation marks, so they lead nowhere when an engine's name has a blank.
ENGINES = ("Omega", "OmegaAny", "Omega(CN)")
KEYWORDS = ("blue shoes", "garden chairs", "salt & pepper mills")
TODAY = "2026-11-15T10:00:00"
PREFERENCE = "Software\\Kestrune\\Marovia Sondrel V4\\Preference"


def due(file):
    """Makes a project's settings those of one that is due and mails all of its reports."""
    text = file.read_bytes().decode("cp1252")
    for key, value in (("SchedlerEnable", "True"), ("StartTime", "09:00:00 AM"), ("NextLookup", "November,15 2026"),
                       ("SentReport", "True"), ("KeywordSummary", "True"), ("RankingDetail", "True"),
                       ("EngineSummary", "True"), ("KeywordURL", "True"), ("ReportTo", "client@site.example")):
        text = re.sub(rf"(?m)^{key}=.*?(?=\r$)", f"{key}={value}", text)
    file.write_bytes(text.encode("cp1252"))


class Browser:
    """A browser without a window."""

    def __init__(self, folder):
        self.program = shutil.which("chromium")
        self.folder = folder
        if not self.program:
            raise RuntimeError("chromium is not installed; script/bootstrap test installs it")

    def document(self, file):
        """The page as the browser understands it."""
        return subprocess.run([self.program, "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                               f"--user-data-dir={self.folder}", "--virtual-time-budget=1000", "--dump-dom",
                               file.as_uri()],
                              check=True, timeout=120, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, encoding="utf-8").stdout


def linked_files(document):
    """Files beside the page that it links to; a "#" leads to a place on the same page."""
    targets = re.findall(r'<a [^>]*href="([^"]*)"', document)
    return {target for target in targets if not re.match(r"(?i)[a-z]+:|#|$", target)}


class Scheduled(unittest.TestCase):
    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-e2e-"))).resolve()
        shops = sites.write(self.folder / "sites", pages=300)
        engine.index(self.folder / "sites", self.folder / "index")
        omega = stack.enter_context(servers.Omega(self.folder / "index"))
        certificate, key = make_certificate(self.folder)
        self.mail = stack.enter_context(MailServer(login=True, starttls=tls_context(certificate, key)))

        self.app = self.folder / "app"
        definitions = (HERE / "engines.dat").read_text(encoding="ascii").replace("{BASE}", omega.base)
        definitions = definitions.replace("Omega Any", ENGINES[1]).replace("Omega (CN)", ENGINES[2])
        (self.folder / "system").mkdir()
        (self.folder / "system" / "qlteng4.dat").write_text(definitions, encoding="ascii", newline="\r\n")
        project.write_project(self.app, [(shops[0].host, False), (shops[7].host, True)], KEYWORDS, name=NAME,
                              engines=ENGINES, links=20)
        due(self.app / "Projects" / NAME / f"{NAME}.dat")
        shutil.copy(HERE.parent.parent / "data" / "menutemplate.html", self.app)
        self.probe = stack.enter_context(Probe(
            os.environ["SONDREL_PROBE"], self.app, self.folder / "system", self.folder / "settings.ini", TODAY,
            ["--ca", str(certificate)]))
        for name, value in (("SMTPServer", "127.0.0.1"), ("SMTPPort", str(self.mail.port)), ("Authentication", "1"),
                            ("SMTPUsername", USER), ("SMTPPassword", PASSWORD), ("ReporterName", "Ann Reporter"),
                            ("Email", "ann@sender.example")):
            self.probe.ask("SetRegistryValue", PREFERENCE, name, value)

    def test_is_looked_up_reported_and_mailed(self):
        answer = self.probe.ask("DueLookups")
        self.assertEqual(answer["result"], NAME)
        # The catalogue always tells that it was empty before its first load.
        self.assertEqual([line for line in answer["log"].split("\r\n") if "rror" in line],
                         ["IsEngineExist_Error: The table of engines is empty"])
        self.assertNotIn("boxes", answer)
        for name in ENGINES:
            cleaned = name.translate(str.maketrans("", "", "(),."))
            rows = (self.app / "Projects" / NAME / f"{cleaned}.dat").read_text("cp1252").split("\n")
            self.assertTrue(any(re.search(r";\d+;\d+;", row) for row in rows), name)
        settings = (self.app / "Projects" / NAME / f"{NAME}.dat").read_text("cp1252")
        self.assertIn("NextLookup=November,22 2026", settings)
        self.assertIsNone(self.probe.ask("DueLookups")["result"])

        self.assertEqual(len(self.mail.messages), 1)
        message = self.read(self.mail.messages[0])
        pages = self.saved(message)
        self.follow(pages)
        for log in ("Error.log", "sendmail.log"):
            self.assertNotIn(PASSWORD, (self.app / log).read_text("latin-1"))

    def read(self, envelope):
        self.assertEqual(envelope.rcpt_tos, ["client@site.example"])
        self.assertTrue(envelope.through_tls)
        message = email.message_from_bytes(envelope.content, policy=policy.default)
        self.assertEqual(message["Subject"], f"Sondrel Report for {NAME}")
        self.assertEqual(str(message["From"]), "Ann Reporter <ann@sender.example>")
        return message

    def saved(self, message):
        """A folder with the attachments, saved as a person would."""
        folder = self.folder / "saved"
        folder.mkdir()
        names = []
        for part in message.iter_attachments():
            name = part.get_filename()
            if not name:
                continue
            names.append(name)
            content = part.get_payload(decode=True)
            (folder / name).write_bytes(content)
            on_disk = [file for file in (self.app / "reports" / NAME).iterdir() if file.name.lower() == name.lower()]
            self.assertEqual(content, on_disk[0].read_bytes(), name)
        self.assertEqual(names, ["menu.html", "enginesummary.html", "keywordurl.html", "keywordsummary.html",
                                 "rankingdetail.html"] + [f"{name}Details.html" for name in ENGINES])
        return folder

    def follow(self, folder):
        """From the index to every page that came with it."""
        browser = Browser(self.folder / "browser")
        seen, waiting = set(), ["menu.html"]
        while waiting:
            name = waiting.pop()
            seen.add(name)
            document = browser.document(folder / name)
            self.assertIn("</body>", document, name)
            # Pages of single keywords stay at home; the details hold what is on them.
            if name.endswith("Details.html"):
                self.assertIn("blue shoes", document)
                continue
            targets = linked_files(document)
            if name in ("menu.html", "rankingdetail.html"):
                for target in targets:
                    self.assertTrue((folder / target).is_file(), f"{name} links to {target}")
            waiting += [target for target in targets if (folder / target).is_file() and target not in seen]
        self.assertEqual(seen, {file.name for file in folder.iterdir()})


if __name__ == "__main__":
    unittest.main()
