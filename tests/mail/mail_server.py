"""A mail server on the loopback address for the time of a test: plain, with a login, with TLS."""
import ssl
import subprocess
import sys
from pathlib import Path

# Where Debian keeps modules, which another Python does not look into.
sys.path.append("/usr/lib/python3/dist-packages")

from aiosmtpd.controller import Controller  # noqa: E402
from aiosmtpd.smtp import AuthResult, LoginPassword  # noqa: E402

from tests.e2e.servers import free_port  # noqa: E402

USER = "ann"
PASSWORD = "correct horse battery"


class Keeper:
    """Takes every message, and keeps its envelope."""

    def __init__(self):
        self.messages = []

    async def handle_DATA(self, _server, session, envelope):
        self.messages.append(envelope)
        envelope.through_tls = session.ssl is not None
        return "250 OK"


def make_certificate(folder):
    """A certificate for this machine that signs itself, and its key."""
    folder = Path(folder)
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                    "-days", "2", "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1,DNS:localhost",
                    "-keyout", folder / "key.pem", "-out", folder / "certificate.pem"],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return folder / "certificate.pem", folder / "key.pem"


def tls_context(certificate, key):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    return context


def check_login(_server, _session, _envelope, _mechanism, data):
    good = LoginPassword(USER.encode(), PASSWORD.encode())
    return AuthResult(success=data == good, handled=False)


class MailServer:
    """Use as a context. starttls, implicit: a TLS context."""

    def __init__(self, *, login=False, starttls=None, implicit=None):
        self.keeper = Keeper()
        self.port = 0
        self._options = {"data_size_limit": None}
        if login:
            self._options.update(authenticator=check_login, auth_required=True, auth_require_tls=bool(starttls))
        if starttls:
            self._options.update(tls_context=starttls, require_starttls=True)
        if implicit:
            self._options.update(ssl_context=implicit)
        self._controller = None

    @property
    def messages(self):
        return self.keeper.messages

    def __enter__(self):
        # Between its choice and its use, a port may be taken by another test.
        for attempt in range(5):
            self.port = free_port()
            self._controller = Controller(self.keeper, hostname="127.0.0.1", port=self.port, **self._options)
            try:
                self._controller.start()
                return self
            except OSError:
                if attempt == 4:
                    raise
        return self

    def __exit__(self, *_):
        self._controller.stop()
