#!/usr/bin/env python3
"""Sends mail through a real server and reads it back with other programs. SONDREL_PROBE names the probe."""
import contextlib
import email
import json
import os
import subprocess
import sys
import tempfile
import unittest
from email import policy
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent))
sys.path.insert(0, str(HERE.parent / "vectors"))

import check_message  # noqa: E402
from demo.probe import Probe  # noqa: E402
from tests.mail.mail_server import PASSWORD, USER, MailServer, make_certificate, tls_context  # noqa: E402

FORMS = json.loads((HERE.parent / "vectors" / "messages.json").read_text(encoding="utf-8"))
PLAIN = FORMS[0]["properties"]


class Mail(unittest.TestCase):
    """A probe that trusts the test's certificate, unless told otherwise."""

    maxDiff = None
    trusts = True

    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.stack = stack
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-mail-"))).resolve()
        self.certificate, self.key = make_certificate(self.folder)
        self.tls = tls_context(self.certificate, self.key)

    def start(self, **server):
        self.server = self.stack.enter_context(MailServer(**server))
        options = ["--ca", str(self.certificate)] if self.trusts else []
        if "implicit" in server:
            options += ["--smtps-port", str(self.server.port)]
        self.probe = self.stack.enter_context(Probe(
            os.environ["SONDREL_PROBE"], self.folder / "app", self.folder / "system", self.folder / "settings.ini",
            check_message.TODAY, options))

    def send(self, properties, **more):
        return self.probe.ask("SendMail", {**properties, "Host": "127.0.0.1", "Port": str(self.server.port), **more})

    def log(self):
        file = self.folder / "app" / "sendmail.log"
        return file.read_text("latin-1") if file.exists() else ""

    def assert_no_secret(self):
        for name in ("sendmail.log", "Error.log"):
            file = self.folder / "app" / name
            text = file.read_text("latin-1") if file.exists() else ""
            self.assertNotIn(PASSWORD, text)
            self.assertNotIn("Y29ycmVjdCBob3JzZSBiYXR0ZXJ5", text)

    def assert_sent(self, answer):
        self.assertEqual(answer["result"], [["Completed", 0, ""]], self.log())
        self.assertEqual(len(self.server.messages), 1)


class Ways(Mail):
    def test_plain(self):
        self.start()
        self.assert_sent(self.send(PLAIN, CC="Boss <boss@site.example>"))
        message = self.server.messages[0]
        self.assertEqual(message.mail_from, "reports@sender.example")
        self.assertEqual(message.rcpt_tos, ["client@site.example", "boss@site.example"])
        self.assertIn("\nQUIT\n", self.log().replace("\r", ""))

    def test_login(self):
        self.start(login=True)
        self.assert_sent(self.send(PLAIN, Authentication=True, SMTPUsername=USER, SMTPPassword=PASSWORD))
        self.assert_no_secret()

    def test_wrong_login(self):
        self.start(login=True)
        answer = self.send(PLAIN, Authentication=True, SMTPUsername=USER, SMTPPassword=PASSWORD + "!")
        self.assertEqual([answer["result"][0][:2]], [["Completed", 535]])
        self.assertRegex(answer["result"][0][2], r"^Error on Connect: 535 .* server: 127\.0\.0\.1$")
        self.assertEqual(self.server.messages, [])
        self.assert_no_secret()

    def test_starttls(self):
        self.start(starttls=self.tls)
        self.assert_sent(self.send(PLAIN))
        self.assertTrue(self.server.messages[0].through_tls)

    def test_login_behind_starttls(self):
        self.start(login=True, starttls=self.tls)
        self.assert_sent(self.send(PLAIN, Authentication=True, SMTPUsername=USER, SMTPPassword=PASSWORD))
        self.assertTrue(self.server.messages[0].through_tls)
        self.assert_no_secret()

    def test_implicit_tls(self):
        self.start(implicit=self.tls)
        self.assert_sent(self.send(PLAIN))


class Untrusted(Mail):
    trusts = False

    def test_starttls(self):
        self.start(starttls=self.tls)
        answer = self.send(PLAIN)
        self.assertEqual([answer["result"][0][:2]], [["Completed", 60]])
        self.assertIn("certificate", answer["result"][0][2])
        self.assertEqual(self.server.messages, [])


def as_stored(content):
    """Readers give texts the line ends of their system."""
    return content.replace(b"\r\n", b"\n")


class Readers(Mail):
    """Every form of a message, as it has arrived."""

    def arrived(self, entry):
        """The properties and the bytes of one form that has been sent."""
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        properties = check_message.prepare(entry, str(folder))
        self.server.messages.clear()
        self.assert_sent(self.send(properties))
        return properties, self.server.messages[0].content

    def read_all(self, reader):
        self.start()
        for entry in FORMS + OWN_FORMS:
            with self.subTest(entry["name"]):
                properties, raw = self.arrived(entry)
                self.assertLessEqual(max(len(line) for line in raw.split(b"\r\n")), 998)
                self.assertTrue(all(byte < 128 for byte in raw))
                reader(properties, raw)

    def files(self, properties):
        """Name to content of what is attached."""
        paths = [Path(path.strip(" ")) for path in properties.get("Attachment") or []]
        return {path.name: path.read_bytes() for path in paths if path.is_file()}

    def python(self, properties, raw):
        self.assertEqual(check_message.check(properties, raw), [])
        message = email.message_from_bytes(raw, policy=policy.default)
        found = {part.get_filename(): part.get_payload(decode=True) for part in message.iter_attachments()} \
            if message.get_content_type() == "multipart/mixed" else {}
        self.assertEqual({name: data for name, data in found.items() if name}, self.files(properties))

    def test_python(self):
        self.read_all(self.python)

    def munpack(self, properties, raw):
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        subprocess.run(["munpack", "-q", "-f", "-t", "-C", str(folder)], input=raw, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        stored = [as_stored(path.read_bytes()) for path in folder.iterdir()]
        for content in self.files(properties).values():
            self.assertIn(as_stored(content), stored)

    def test_munpack(self):
        self.read_all(self.munpack)

    def nmh(self, properties, raw):
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        (folder / "profile").write_text(f"Path: {folder}\n", encoding="ascii")
        (folder / "message").write_bytes(raw.replace(b"\r\n", b"\n"))
        out = folder / "out"
        out.mkdir()
        environment = dict(os.environ, HOME=str(folder), MH=str(folder / "profile"), LC_ALL="C.UTF-8")
        for command in (["mhlist", "-file", folder / "message"],
                        ["mhstore", "-auto", "-file", folder / "message"]):
            run = subprocess.run(["/usr/bin/mh/" + command[0], *command[1:]], cwd=out, env=environment,
                                 stdin=subprocess.DEVNULL, capture_output=True, check=False)
            self.assertEqual(run.returncode, 0, run.stderr)
        stored = {path.name: path.read_bytes() for path in out.iterdir()}
        for name, content in self.files(properties).items():
            self.assertEqual(as_stored(stored.get(name, b"no such file")), as_stored(content), name)

    def test_nmh(self):
        self.read_all(self.nmh)


def own_form(name, files=None, **properties):
    return {"name": name, "files": files or {},
            "properties": {"From": "reports@sender.example", "ToRecipient": "client@site.example",
                           "Subject": "Ranking report", "BodyTEXT": "Hello.\r\n", **properties}}


OWN_FORMS = [
    own_form("names and subject above ASCII", From="\"Jörg Müller\" <jm@sender.example>",
             Subject="Ranglisten für „Schuhe“ – " + "sehr lang " * 20),
    own_form("dots", BodyTEXT=".\r\n..\r\n.a\r\n"),
    own_form("long subject", Subject="word " * 300 + "end"),
    own_form("attached report", files={"menu.html": "PGE+"}, Attachment=["{dir}/menu.html"]),
    own_form("attachment with a blank and quotation marks", files={"a \"b\".html": "PGE+"},
             Attachment=["{dir}/a \"b\".html"]),
    own_form("empty attachment", files={"a.txt": ""}, Attachment=["{dir}/a.txt"]),
]


class LongLine(Mail):
    def test_travels_whole(self):
        self.start()
        line = "word " * 1000
        self.assert_sent(self.send(PLAIN, BodyTEXT=line))
        message = email.message_from_bytes(self.server.messages[0].content, policy=policy.default)
        self.assertEqual(message["Content-Transfer-Encoding"], "quoted-printable")
        self.assertEqual(message.get_payload(decode=True).decode("ascii").rstrip("\r\n"), line)


if __name__ == "__main__":
    unittest.main()
