"""The program on the demo's folders: as a person uses it, or as the keys of one drive it."""
import os
import shutil
import subprocess
import time
from pathlib import Path

from demo import display, project

VERSION = "4.0.0"
TITLE = f"^{project.NAME} - {project.ENGINE} - "  # of the main window
PATIENCE = 120  # seconds; a lookup takes about one


class ProgramFailed(Exception):
    pass


class Places:
    """Where the program finds and puts its files: the application folder is that of the executable."""

    def __init__(self, folder):
        self.app = Path(folder, "app")
        self.data = Path(folder, "data")
        self.system = self.data / "marovia-sondrel" / "system"
        self.config = Path(folder, "config")
        self.settings = self.config / "Kestrune" / "marovia-sondrel-v4.ini"
        self.results = self.app / "Projects" / project.NAME / f"{project.ENGINE}.dat"
        self.log = self.app / "Error.log"
        self.menu = self.app / "Reports" / project.NAME / "menu.html"

    def advice(self, page):
        """The optimizer's report of a page on this disk."""
        return self.app / "Optimizer" / f"{page.name}.html"

    def environment(self, base):
        return dict(base, XDG_DATA_HOME=str(self.data), XDG_CONFIG_HOME=str(self.config))


def install(executable, places, *screens):
    """Puts the program and what lies beside it into the application folder, and the settings of a version that has
    run before, on the whole of a screen where one is given."""
    for file in executable.parent.iterdir():
        if file == executable or file.suffix in (".chm", ".html", ".ini", ".so", ".xlt"):
            shutil.copy2(file, places.app)
        elif file.name == "manual":
            shutil.copytree(file, places.app / file.name, dirs_exist_ok=True)
    if not places.settings.exists():
        places.settings.parent.mkdir(parents=True, exist_ok=True)
        places.settings.touch(mode=0o600)
        place = "".join(f"MainFormPos=0,0,{screen.width},{screen.height}\n" for screen in screens)
        places.settings.write_text("[Software\\Kestrune\\Marovia Sondrel V4\\Preference]\n"
                                   f"{place}URLBoxStatus=True\nVersion={VERSION}\n", encoding="utf-8")
    return places.app / executable.name


def share_desktop_settings(places):
    """Lets the program look as the others on the desktop do, though its settings lie elsewhere."""
    own = Path(os.environ.get("XDG_CONFIG_HOME") or Path.home() / ".config")
    for name in ("dconf", "fontconfig", "gtk-3.0", "kdeglobals", "qt6ct"):
        link = places.config / name
        if (own / name).exists() and not link.is_symlink():
            link.symlink_to(own / name)


def show(executable, places):
    """Opens the program for the person at the display and waits until it has been closed."""
    share_desktop_settings(places)
    with subprocess.Popen([executable], env=places.environment(os.environ), cwd=places.app,
                          start_new_session=True) as process:
        try:
            status = process.wait()
        finally:
            display.end(process)
    if status:
        raise ProgramFailed(f"the program ended with status {status}")


class Driven:
    """The program on a display of its own, under the keys of somebody who looks all keywords up."""

    def __init__(self, executable, places, screen):
        self._executable = executable
        self._places = places
        self._screen = screen
        self._process = None

    def __enter__(self):
        environment = self._places.environment(self._screen.environment)
        try:
            with open(self._places.app / "output.log", "wb") as log, display.interrupts_held():
                self._process = subprocess.Popen([self._executable], env=environment, cwd=self._places.app,
                                                 stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                                 start_new_session=True)
        except BaseException:  # an interrupt too
            if self._process:
                display.end(self._process)
            raise
        return self

    def __exit__(self, *_):
        display.end(self._process)

    def _wait(self, what, condition):
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            answer = condition()
            if answer:
                return answer
            if self._process.poll() is not None:
                raise ProgramFailed(f"the program ended with status {self._process.returncode}, waiting for {what}; "
                                    f"see {self._places.app}/output.log and Error.log")
            time.sleep(.05)
        raise ProgramFailed(f"waited in vain for {what}")

    def _focus(self, what, title):
        """Waits for a window and gives it the keyboard."""
        def focused():
            found = self._screen.find(title)
            return found and self._screen.focus(found)
        self._wait(what, focused)

    def open(self):
        """Waits for the main window and gives it the keyboard."""
        self._focus("its window", TITLE)
        self._screen.wait_until_still()

    def look_up(self):
        """LookUp > Lookup All Keywords; returns the seconds that it took."""
        before = stamp(self._places.results)
        start = time.monotonic()
        self._screen.keys("shift+F5")
        self._wait("the end of the lookup", lambda: stamp(self._places.results) != before)
        return time.monotonic() - start

    def choose(self, across, down):
        """Clicks into the grid, on the row of a keyword. The place is given in parts of the window."""
        self._screen.wait_until_still()
        self._screen.click(int(across * self._screen.width), int(down * self._screen.height))
        self._screen.wait_until_still()

    def report(self):
        """Report > HTML Format."""
        before = stamp(self._places.menu)
        self._screen.keys("alt+r", "h")
        self._wait("the report", lambda: stamp(self._places.menu) != before)
        self._screen.wait_until_still()

    def optimize(self, page):
        """Report > Optimizer, the last item there, on a page on this disk."""
        report = self._places.advice(page)
        before = stamp(report)
        self._screen.keys("alt+r", "Up", "Return")
        self._focus("the optimizer", "^Optimizer$")
        self._screen.type(page)
        self._screen.keys("Return")
        self._wait("the advice", lambda: stamp(report) != before)
        self._screen.wait_until_still()
        self._screen.keys("alt+c")
        self._wait("the end of the optimizer", lambda: not self._screen.find("^Optimizer$"))
        self._focus("the main window", TITLE)
        self._screen.wait_until_still()

    def close(self):
        """File > Exit, and Yes."""
        self._screen.keys("ctrl+q")
        self._focus("the last question", "^Exit Sondrel$")
        self._screen.keys("alt+y")
        try:
            status = self._process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise ProgramFailed("waited in vain for the end of the program") from None
        if status:
            raise ProgramFailed(f"the program ended with status {status}; see {self._places.app}/output.log")


def stamp(file):
    """Another one when the file has been written anew; None when there is none."""
    try:
        status = file.stat()
    except OSError:
        return None
    return status.st_ino, status.st_mtime_ns
