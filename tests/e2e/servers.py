"""Servers on the loopback address for the time of a test: Omega behind lighttpd, and proxies with a login."""
import contextlib
import os
import shutil
import socket
import subprocess
import tempfile
import time
from pathlib import Path

from demo import engine

# Where Debian keeps daemons, which is not in everyone's search path.
SEARCH_PATH = os.pathsep.join([os.environ.get("PATH", os.defpath), "/usr/sbin", "/sbin"])

LIGHTTPD = """
server.modules = ( "mod_alias", "mod_setenv", "mod_cgi", "mod_accesslog" )
server.bind = "127.0.0.1"
server.port = {port}
server.document-root = "{folder}/htdocs"
server.errorlog = "{folder}/error.log"
accesslog.filename = "{folder}/access.log"
index-file.names = ( "index.html" )
mimetype.assign = ( ".html" => "text/html", "" => "application/octet-stream" )
alias.url = ( "/cgi-bin/omega" => "{cgi}" )
$HTTP["url"] =~ "^/cgi-bin/omega" {{
    cgi.assign = ( "" => "" )
    setenv.set-environment = ( "OMEGA_CONFIG_FILE" => "{omega}" )
}}
"""

TINYPROXY = """
Port {port}
Listen 127.0.0.1
Timeout 120
MaxClients 100
Allow 127.0.0.1
LogFile "{folder}/access.log"
LogLevel Connect
PidFile "{folder}/pid"
BasicAuth {user} {password}
"""

SQUID = """
http_port 127.0.0.1:{port}
auth_param basic program /usr/lib/squid/basic_ncsa_auth {folder}/users
auth_param basic realm test
auth_param basic children 2 startup=1 idle=1
acl known proxy_auth REQUIRED
acl here dstdomain -n 127.0.0.1
http_access deny !known
http_access allow here
http_access deny all
cache deny all
cache_mem 8 MB
icp_port 0
dns_nameservers 127.0.0.1
visible_hostname test
shutdown_lifetime 0 seconds
pinger_enable off
netdb_filename none
max_filedescriptors 1024
pid_filename {folder}/pid
access_log stdio:{folder}/access.log
cache_log {folder}/cache.log
coredump_dir {folder}
"""


def free_port():
    """A free port that does not begin with 80, since a lookup takes ":80" out of next-page links."""
    while True:
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            port = probe.getsockname()[1]
        if not str(port).startswith("80"):
            return port


class Server:
    """A daemon in the foreground, in a temporary folder of its own. Use as a context."""

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="sondrel-e2e-")).resolve()
        self.port = 0
        self._process = None

    def __enter__(self):
        try:
            # Between its choice and its use, a port may be taken by another test.
            for _ in range(5):
                self.port = free_port()
                if self._start():
                    return self
            raise RuntimeError(f"{type(self).__name__} does not start:\n{self._words()}")
        except BaseException:
            self.__exit__()
            raise

    def __exit__(self, *_):
        self.stop()
        shutil.rmtree(self.folder)

    def stop(self):
        """Ends the daemon; its folder stays until the context ends."""
        if self._process and self._process.poll() is None:
            self._process.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                self._process.wait(10)
            self._process.kill()
            self._process.wait()

    def command(self):
        """Writes the configuration for the port and returns the command that serves it."""
        raise NotImplementedError

    def log_lines(self):
        """What the server wrote about requests; ends it first, since some write late."""
        self.stop()
        file = self.folder / "access.log"
        return file.read_text("latin-1").splitlines() if file.exists() else []

    def _start(self):
        command = self.command()
        program = shutil.which(command[0], path=SEARCH_PATH)
        if not program:
            raise RuntimeError(f"{command[0]} is not installed; script/bootstrap test installs it")
        with open(self.folder / "words", "ab") as words:
            self._process = subprocess.Popen([program, *command[1:]], stdin=subprocess.DEVNULL, stdout=words,
                                             stderr=words)
        end = time.monotonic() + 30
        while self._process.poll() is None and time.monotonic() < end:
            with contextlib.suppress(OSError):
                socket.create_connection(("127.0.0.1", self.port), 1).close()
                return self._process.poll() is None
            time.sleep(.02)
        self._process.kill()
        self._process.wait()
        return False

    def _words(self):
        files = [self.folder / name for name in ("words", "error.log", "cache.log")]
        return "\n".join(file.read_text("latin-1")[-2000:] for file in files if file.exists())


class Omega(Server):
    """The search engine over the given index folder (demo.engine.index), as CGI behind lighttpd."""

    def __init__(self, index_folder):
        super().__init__()
        self._omega = engine.configure(index_folder)["OMEGA_CONFIG_FILE"]

    @property
    def base(self):
        return f"http://127.0.0.1:{self.port}"

    def command(self):
        (self.folder / "htdocs").mkdir(exist_ok=True)
        (self.folder / "htdocs" / "index.html").write_bytes(engine.HOME)
        file = self.folder / "lighttpd.conf"
        file.write_text(LIGHTTPD.format(port=self.port, folder=self.folder, cgi=engine.CGI, omega=self._omega))
        return ["lighttpd", "-D", "-f", str(file)]


class Proxy(Server):
    """A proxy that lets one user in."""

    user = "tester"
    password = "s3cret"


class Tinyproxy(Proxy):
    def command(self):
        file = self.folder / "tinyproxy.conf"
        file.write_text(TINYPROXY.format(port=self.port, folder=self.folder, user=self.user, password=self.password))
        return ["tinyproxy", "-d", "-c", str(file)]


class Squid(Proxy):
    def command(self):
        hashed = subprocess.run(["openssl", "passwd", "-apr1", self.password], capture_output=True, text=True,
                                check=True).stdout.strip()
        (self.folder / "users").write_text(f"{self.user}:{hashed}\n")
        file = self.folder / "squid.conf"
        file.write_text(SQUID.format(port=self.port, folder=self.folder))
        if os.getuid() == 0:  # then it gives up root for the account of its package
            for path in (self.folder, self.folder / "users", file):
                shutil.chown(path, "proxy")
        # The name keeps apart what several of them share in memory.
        return ["squid", "-N", "-f", str(file), "-n", f"test{self.port}"]
