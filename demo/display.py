"""A display without a screen: a virtual X server, the keys and clicks of a person before it, and pictures of it."""
import contextlib
import os
import shutil
import signal
import struct
import subprocess
import time
import zlib
from pathlib import Path


class MissingPackage(Exception):
    pass


def is_there():
    """Whether there is a display to sit at."""
    return bool(os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"))


def check():
    """Raises MissingPackage when no virtual display can be had."""
    for program, package in (("Xvfb", "xvfb"), ("xdotool", "xdotool")):
        if not shutil.which(program):
            raise MissingPackage(package)


class Display:
    """One virtual display; use as a context. The folder gets its log and its frame buffer."""

    def __init__(self, folder, width=1280, height=860):
        self._folder = Path(folder)
        self._folder.mkdir(parents=True, exist_ok=True)
        opener = self._folder / "xdg-open"
        if not opener.is_symlink():
            opener.symlink_to(shutil.which("true"))
        self.width, self.height = width, height

    def __enter__(self):
        told, tell = os.pipe()
        self._server = None
        try:
            with open(self._folder / "xvfb.log", "wb") as log, interrupts_held():
                # A session of its own: Ctrl+C is for the one who started it, and he ends it. The server resets itself
                # whenever its last client leaves, unless told otherwise, and drops who comes at that moment.
                self._server = subprocess.Popen(
                    ["Xvfb", "-displayfd", str(tell), "-screen", "0", f"{self.width}x{self.height}x24",
                     "-nolisten", "tcp", "-noreset", "-fbdir", str(self._folder)],
                    stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=[tell],
                    start_new_session=True)
            os.close(tell)
            with open(told, encoding="ascii") as answer:
                number = answer.readline().strip()
            if not number:
                self._server.wait()
                raise RuntimeError(f"the virtual display did not start; see {self._folder}/xvfb.log")
        except BaseException:  # an interrupt too
            if self._server:
                end(self._server)
            raise
        self.name = f":{number}"
        return self

    def __exit__(self, *_):
        end(self._server)

    @property
    def environment(self):
        """Of a program that is to show itself here."""
        environment = dict(os.environ, DISPLAY=self.name, QT_QPA_PLATFORM="xcb")
        # A session bus would lead to the desktop of whoever sits elsewhere at this machine, and so would what opens
        # documents there.
        environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        environment["PATH"] = f"{self._folder}{os.pathsep}{environment.get('PATH', os.defpath)}"
        environment.pop("XAUTHORITY", None)
        return environment

    def do(self, *words):
        """Runs xdotool with these words and returns what it prints, None when it fails or does not end."""
        try:
            done = subprocess.run(["xdotool", *map(str, words)], env=self.environment, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, timeout=30)
        except subprocess.TimeoutExpired:
            return None
        return done.stdout.decode() if done.returncode == 0 else None

    def find(self, title):
        """The visible window whose title matches, or None."""
        found = (self.do("search", "--onlyvisible", "--name", title) or "").split()
        return found[-1] if found else None

    def focus(self, window, seconds=10):
        """Gives a window the keyboard; False when it has not got it in time, as when it has just gone."""
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            if self.do("windowfocus", window) is not None and window in (self.do("getwindowfocus") or "").split():
                return True
            time.sleep(.05)
        return False

    def keys(self, *names):
        self.do("key", "--delay", 50, *names)

    def type(self, text):
        self.do("type", "--delay", 20, text)

    def click(self, x, y):
        self.do("mousemove", x, y, "click", 1)

    def _frame(self):
        return (self._folder / "Xvfb_screen0").read_bytes()

    def picture(self):
        """Width, height and the lines of what is seen now, three bytes a pixel."""
        data = self._frame()
        head = struct.unpack(">25I", data[:100])
        width, height, line, colours = head[4], head[5], head[12], head[19]
        start = head[0] + 12 * colours
        lines = []
        for y in range(height):
            seen = data[start + y * line:start + y * line + 4 * width]
            pixels = bytearray(3 * width)
            pixels[0::3], pixels[1::3], pixels[2::3] = seen[2::4], seen[1::4], seen[0::4]
            lines.append(bytes(pixels))
        return width, height, lines

    def wait_until_still(self, seconds=10):
        """Waits until what is seen has stopped changing."""
        before = None
        for _ in range(int(seconds / .2)):
            now = self._frame()
            if now == before:
                return
            before = now
            time.sleep(.2)

    def save(self, file):
        """Saves what is seen as a PNG file."""
        width, height, lines = self.picture()

        def chunk(kind, content):
            return (struct.pack(">I", len(content)) + kind + content
                    + struct.pack(">I", zlib.crc32(kind + content)))

        Path(file).write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(b"".join(b"\0" + line for line in lines), 9)) + chunk(b"IEND", b""))


@contextlib.contextmanager
def interrupts_held():
    """Lets requests to end wait until a process that is started here is known, and can be ended."""
    came = []
    before = {number: signal.signal(number, lambda *arguments: came.append(arguments[0]))
              for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM)}
    try:
        yield
    finally:
        for number, handler in before.items():
            signal.signal(number, handler)
        for number in came:
            signal.raise_signal(number)


def end(process):
    """Ends a process that was started here."""
    if process.poll() is None:
        process.terminate()
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(5)
    if process.poll() is None:
        process.kill()
        process.wait()
