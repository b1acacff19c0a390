#!/usr/bin/env python3
"""bench/startup.py PROGRAM BARE_WINDOW [--rounds N]

Measures the start on a virtual display, within one run:

  start   from the start of the process to the shown main window, with 200 projects and 1,000 engines, against a bare
          window of the toolkit with the same widgets, empty; the target is 1.5 times that
  memory  resident with a project of 10,000 keywords open; the target is 120 MB

Needs xvfb and xdotool.
"""
import argparse
import ctypes
import os
import select
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))

from demo import display, program, project  # noqa: E402

PROJECTS = 200
ENGINES = 1000
MARKETS = 20
KEYWORDS = 10_000
MAP_NOTIFY = 19
SUBSTRUCTURE = 1 << 19
PATIENCE = 60


class Watcher:
    """Tells when a window with a title is shown, as the display server reports it."""

    def __init__(self, name):
        self._x = ctypes.CDLL("libX11.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._x.XDefaultRootWindow.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(self._x.XOpenDisplay(name.encode()))
        # A window may have gone by the time its name is asked for.
        self._handler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)
        self._x.XSetErrorHandler(self._handler)
        root = ctypes.c_ulong(self._x.XDefaultRootWindow(self._display))
        self._x.XSelectInput(self._display, root, ctypes.c_long(SUBSTRUCTURE))
        self._x.XSync(self._display, 0)

    def wait(self, part_of_title):
        deadline = time.monotonic() + PATIENCE
        event = (ctypes.c_long * 24)()
        while time.monotonic() < deadline:
            while self._x.XPending(self._display):
                self._x.XNextEvent(self._display, ctypes.byref(event))
                now = time.monotonic()
                if ctypes.c_int.from_buffer(event).value == MAP_NOTIFY and part_of_title in self._title(event[5]):
                    return now
            select.select([self._x.XConnectionNumber(self._display)], [], [], .5)
        raise SystemExit(f"no window {part_of_title!r} within {PATIENCE} seconds")

    def _title(self, window):
        name = ctypes.c_char_p()
        if not self._x.XFetchName(self._display, ctypes.c_ulong(window), ctypes.byref(name)) or not name.value:
            return ""
        return name.value.decode("latin-1")


def write_catalogue(file):
    """1,000 engines of the demo's kind in 20 markets."""
    own = (Path(__file__).resolve().parent.parent / "demo" / "engines.dat").read_text("ascii")
    body = own[own.index("[Omega]\n") + len("[Omega]\n"):].replace("{BASE}", "http://127.0.0.1:9").splitlines()
    names = [project.ENGINE] + [f"Engine {number}" for number in range(2, ENGINES + 1)]
    lines = ["[Markets]"] + [f"{number}=Market {number}" for number in range(1, MARKETS + 1)]
    each = ENGINES // MARKETS
    for market in range(MARKETS):
        lines.append(f"[Market {market + 1}]")
        lines += [f"{number}={name}" for number, name in enumerate(names[market * each:(market + 1) * each], 1)]
    for name in names:
        lines += [f"[{name}]", *body]
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_bytes("".join(line + "\r\n" for line in lines).encode("cp1252"))


def make_places(folder, executable, keywords, projects):
    places = program.Places(folder)
    write_catalogue(places.system / "qlteng4.dat")
    names = [project.NAME] + [f"Project {number}" for number in range(2, projects + 1)]
    engines = [project.ENGINE] + [f"Engine {number}" for number in range(2, 6)]
    for name in names:
        project.write_project(places.app, [("shop.example", False), ("rival.example", True)], keywords, name=name,
                              engines=engines)
    entries = [f"{number}={name}" for number, name in enumerate(names, 1)]
    (places.app / "project.dat").write_bytes(
        "".join(line + "\r\n" for line in ["[Accounts]", *entries, f"Last={projects}"]).encode("cp1252"))
    return places, program.install(executable, places)


def resident(process):
    for line in Path("/proc", str(process.pid), "status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) / 1024
    raise SystemExit("the process has gone")


def start(command, environment, watcher, title):
    before = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    return watcher.wait(title) - before, process


def measure_start(arguments, screen, watcher, folder):
    places, executable = make_places(folder, arguments.program, project.KEYWORDS, PROJECTS)
    environment = places.environment(screen.environment)
    times = {"program": [], "bare window": []}
    for _ in range(arguments.rounds + 1):
        for name, command, title in (("program", executable, f"{project.NAME} - {project.ENGINE} - "),
                                     ("bare window", arguments.bare, "Bare window")):
            seconds, process = start([command], environment, watcher, title)
            times[name].append(seconds)
            display.end(process)
    for name, values in times.items():
        values.pop(0)  # the first one warms the file cache
        print(f"  {name:12} {statistics.median(values) * 1000:6.0f} ms  (best {min(values) * 1000:.0f})")
    ratio = statistics.median(times["program"]) / statistics.median(times["bare window"])
    print(f"  ratio        {ratio:6.2f}     (target 1.50)")


def measure_memory(arguments, screen, watcher, folder):
    keywords = [f"keyword number {number}" for number in range(KEYWORDS)]
    places, executable = make_places(folder, arguments.program, keywords, 1)
    _, process = start([executable], places.environment(screen.environment), watcher,
                       f"{project.NAME} - {project.ENGINE} - ")
    screen.wait_until_still()
    print(f"  resident     {resident(process):6.1f} MB  (target 120)")
    display.end(process)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=lambda text: Path(text).resolve())
    parser.add_argument("bare", type=lambda text: Path(text).resolve())
    parser.add_argument("--rounds", type=int, default=15)
    arguments = parser.parse_args()
    os.environ["LC_ALL"] = "C.UTF-8"
    with tempfile.TemporaryDirectory(prefix="sondrel-bench-") as name:
        folder = Path(name).resolve()
        with display.Display(folder / "display") as screen:
            watcher = Watcher(screen.name)
            print(f"start with {PROJECTS} projects and {ENGINES} engines, {arguments.rounds} rounds:")
            measure_start(arguments, screen, watcher, folder / "start")
            print(f"memory with {KEYWORDS} keywords:")
            measure_memory(arguments, screen, watcher, folder / "memory")


if __name__ == "__main__":
    main()
