"""A small real search engine: Xapian's Omega over a folder of web sites, served on the loopback address."""
import http.server
import os
import shutil
import subprocess
import threading
from pathlib import Path

CGI = Path("/usr/lib/cgi-bin/omega/omega")
STOCK_TEMPLATES = Path("/usr/share/xapian-omega/templates")
ADDRESS = "/cgi-bin/omega"

HOME = b"""<!DOCTYPE html>
<html><head><title>Search</title></head>
<body><a href="/cgi-bin/omega?DB=default&amp;FMT=results">Search</a></body></html>
"""


class MissingPackage(Exception):
    pass


def check():
    """Raises MissingPackage when Omega is not installed."""
    if not (shutil.which("omindex") and CGI.exists() and STOCK_TEMPLATES.is_dir()):
        raise MissingPackage("xapian-omega")


def index(sites, folder):
    """Makes the index of the web sites, a folder per host name, anew."""
    fresh = Path(folder, "data", "fresh")
    shutil.rmtree(fresh, ignore_errors=True)
    fresh.parent.mkdir(parents=True, exist_ok=True)
    done = subprocess.run(["omindex", "--db", fresh, "--url", "http://", sites], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    Path(folder, "index.log").write_bytes(done.stdout)
    if done.returncode:
        raise RuntimeError(f"omindex failed; see {folder}/index.log")
    shutil.rmtree(fresh.with_name("default"), ignore_errors=True)
    fresh.rename(fresh.with_name("default"))


def configure(folder):
    """Writes Omega's configuration and returns the environment that it runs in."""
    folder = Path(folder).resolve()
    shutil.copytree(STOCK_TEMPLATES, folder / "templates", dirs_exist_ok=True)
    shutil.copy(Path(__file__).with_name("results.template"), folder / "templates" / "results")
    for name in ("log", "cdb"):
        (folder / name).mkdir(exist_ok=True)
    file = folder / "omega.conf"
    file.write_text(f"database_dir {folder}/data\ntemplate_dir {folder}/templates\n"
                    f"log_dir {folder}/log\ncdb_dir {folder}/cdb\n")
    return {"OMEGA_CONFIG_FILE": str(file), "PATH": os.environ.get("PATH", os.defpath)}


class Server(http.server.ThreadingHTTPServer):
    """Runs Omega once per request. Use as a context; answers from its own thread meanwhile."""

    request_queue_size = 64

    def __init__(self, folder):
        self.environment = configure(folder)
        self.log = open(Path(folder, "access.log"), "a", encoding="utf-8", buffering=1)
        while True:
            super().__init__(("127.0.0.1", 0), _Handler)
            # A lookup takes ":80" out of next-page links, also at the head of a longer port.
            if not str(self.server_port).startswith("80"):
                break
            self.server_close()
        self.base = f"http://127.0.0.1:{self.server_port}"
        self._thread = threading.Thread(target=self.serve_forever, kwargs={"poll_interval": .05}, daemon=True)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self.shutdown()
        self._thread.join()
        self.server_close()
        self.log.close()

    def handle_error(self, request, client_address):
        pass  # a client that hung up is no news


class _Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True
    wbufsize = -1
    timeout = 60

    def do_GET(self):
        self._answer(b"")

    def do_POST(self):
        self._answer(self.rfile.read(int(self.headers.get("Content-Length", 0))))

    def log_message(self, format, *args):
        if not self.server.log.closed:
            self.server.log.write(f"{self.log_date_time_string()} {format % args}\n")

    def _answer(self, body):
        path, _, query = self.path.partition("?")
        if path == ADDRESS:
            self._send(200, *self._run(query, body))
        elif path == "/":
            self._send(200, "text/html", HOME)
        else:
            self._send(404, "text/html", b"<html><body>There is no such page.</body></html>\n")

    def _run(self, query, body):
        environment = dict(self.server.environment, GATEWAY_INTERFACE="CGI/1.1", SERVER_PROTOCOL="HTTP/1.1",
                           REQUEST_METHOD=self.command, SCRIPT_NAME=ADDRESS, QUERY_STRING=query,
                           HTTP_HOST=self.headers.get("Host", ""), CONTENT_LENGTH=str(len(body)),
                           CONTENT_TYPE=self.headers.get("Content-Type", ""))
        done = subprocess.run([CGI], input=body, stdout=subprocess.PIPE, env=environment, check=False)
        head, _, page = done.stdout.partition(b"\n\n")
        kind = head.decode("latin-1").partition("Content-Type:")[2].partition("\n")[0].strip()
        return kind or "text/plain", page

    def _send(self, status, kind, page):
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(page)))
        self.end_headers()
        self.wfile.write(page)
