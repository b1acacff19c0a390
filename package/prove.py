"""Proves the Debian package in a clean system: installs it with what it declares to need, works with it as an ordinary
user does, updates and removes it, and looks after the user's files. Prints what it proved."""
import argparse
import hashlib
import subprocess
import sys
from pathlib import Path

from demo import display, engine, program, project, run
from package.clean_root import USER, CleanRoot, RootFailed

ROOT = Path(__file__).resolve().parent.parent
NAME = "marovia-sondrel"
HOME = f"/usr/lib/{NAME}"
SHARED = f"/usr/share/{NAME}"
SIZES = (16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512)
FILES = (
    f"/usr/bin/{NAME}", f"{HOME}/{NAME}", f"{HOME}/sondrel-calc.so", f"{HOME}/installed", f"{HOME}/deployment.ini",
    f"{HOME}/menutemplate.html", f"{HOME}/qlteng4.dat", f"{HOME}/report.xlt", f"{HOME}/qlt40.chm",
    f"{HOME}/manual/index.html", f"{SHARED}/qlt40.chm", f"/usr/share/applications/{NAME}.desktop",
    "/usr/share/metainfo/example.kestrune.marovia_sondrel.metainfo.xml", f"/usr/share/man/man1/{NAME}.1.gz",
    f"/usr/share/doc/{NAME}/copyright", f"/usr/share/doc/{NAME}/changelog.Debian.gz",
    f"/usr/share/icons/hicolor/scalable/apps/{NAME}.svg",
    *(f"/usr/share/icons/hicolor/{size}x{size}/apps/{NAME}.png" for size in SIZES),
)
FIRST_FILES = ("Error.log", "menutemplate.html", "qlt40.chm", "report.xlt", "system/qlteng4.dat")
# Stands in for the desktop, which a clean system does not have, and keeps what it was to open.
OPENER = f"#!/bin/sh\nprintf '%s\\n' \"$@\" >>/home/{USER}/opened.txt\n"


def expect(condition, what):
    if not condition:
        raise RootFailed(f"not so: {what}")


def proved(what):
    print(f"  ok  {what}", flush=True)


class UserPlaces(program.Places):
    """Where the installed program keeps the files of a user with a fresh home."""

    def __init__(self, home):
        self.app = home / ".local/share" / NAME
        self.system = self.app / "system"
        self.settings = home / ".config/Kestrune/marovia-sondrel-v4.ini"
        self.results = self.app / "Projects" / project.NAME / f"{project.ENGINE}.dat"
        self.log = self.app / "Error.log"
        self.menu = self.app / "Reports" / project.NAME / "menu.html"
        self.opened = home / "opened.txt"


class Installed(program.Driven):
    """The installed program, started by the user on the display."""

    def __init__(self, root, places, screen):
        super().__init__(NAME, places, screen)
        self._root = root

    def __enter__(self):
        command = self._root.command(NAME, user=USER, DISPLAY=self._screen.name, QT_QPA_PLATFORM="xcb")
        with open(self._root.path.parent / "output.log", "ab") as log, display.interrupts_held():
            self._process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                             start_new_session=True)
        return self

    def see(self, title):
        """Waits for a window and gives it the keyboard."""
        self._focus(f"the window {title}", title)
        self._screen.wait_until_still()

    def leave(self, title):
        """Closes the window with Escape."""
        self.see(title)
        self._screen.keys("Escape")
        self._wait(f"the end of the window {title}", lambda: not self._screen.find(title))

    def help(self):
        """F1; returns what the desktop was to open."""
        self._places.opened.unlink(missing_ok=True)
        self._screen.keys("F1")
        return self._wait("the help", lambda: self._places.opened.exists() and self._places.opened.read_text())


def first_start(root, places, screen):
    with Installed(root, places, screen) as started:
        started.leave("^Update Engine Data$")
        started.leave("^Project")
        started.see("^Marovia Sondrel V4$")
        screen.save(root.path.parent / "first-start.png")
        expect(all((places.app / name).is_file() for name in FIRST_FILES), f"{FIRST_FILES} in {places.app}")
        expect(places.settings.stat().st_mode & 0o777 == 0o600, "settings that only the user may read")
        started.close()


def look_up(root, places, screen):
    with Installed(root, places, screen) as started:
        started.open()
        seconds = started.look_up()
        started.report()
        screen.save(root.path.parent / "lookup.png")
        started.close()
    return seconds


def ask_for_help(root, places, screen):
    with Installed(root, places, screen) as started:
        started.open()
        answer = started.help().strip()
        started.close()
    return answer


def give_project(root, places, folder, server):
    """Gives the user the demo's project and its search engine."""
    for name in ("Projects", "project.dat"):
        subprocess.run(["cp", "-a", folder / "app" / name, places.app], check=True)
    project.write_engine_data(places.system, server.base)
    root.run("chown", "-R", f"{USER}:{USER}", f"/home/{USER}")


def rows(probe, places, folder):
    return run.results(probe, folder, places)


def fingerprints(home):
    """Of everything that the user has."""
    return {str(file.relative_to(home)): hashlib.sha256(file.read_bytes()).hexdigest() if file.is_file() else "link"
            for file in sorted(home.rglob("*")) if file.is_file() or file.is_symlink()}


def check_files(root):
    missing = [file for file in FILES if not Path(f"{root.path}{file}").exists()
               and not (root.path / file.lstrip("/")).is_symlink()]
    expect(not missing, f"installed files; missing: {missing}")
    expect(not root.run("dpkg", "--verify", NAME).strip(), "files as they were packed")
    for file in (f"{HOME}/{NAME}",):
        expect("not found" not in root.run("ldd", file), f"all libraries of {file} found")
    broken = root.run("find", HOME, "-xtype", "l").strip()
    expect(not broken, f"links that lead somewhere; broken: {broken}")
    expect(not root.run("find", HOME, SHARED, "-writable", user=USER).strip(), "nothing there that the user may write")


def prove(options):
    engine.check()
    display.check()
    folder = ROOT / "build" / "clean-root"
    with CleanRoot(folder) as root:
        places = UserPlaces(root.home)
        before = set(root.run("dpkg-query", "-f", "${Package}\n", "-W").split())
        root.install(options.package)
        after = set(root.run("dpkg-query", "-f", "${Package}\n", "-W").split())
        proved(f"installed {options.package.name} in a clean Debian {Path(root.path, 'etc/debian_version').read_text().strip()}"
               f" with {len(after - before) - 1} packages that it declares, nothing recommended")
        expect("libreoffice-core" not in after, "no office where it is only recommended")
        check_files(root)
        proved(f"{len(FILES)} files in place, {len(SIZES) + 1} icons among them; the user may write none of them")
        opener = root.path / "usr/local/bin/xdg-open"
        opener.write_text(OPENER, encoding="ascii")
        opener.chmod(0o755)
        demo = folder / "demo"
        subprocess.run(["rm", "-rf", demo], check=True)
        (demo / "app").mkdir(parents=True)
        with display.Display(folder / "display") as screen:
            first_start(root, places, screen)
            proved(f"the first start of {USER} with a fresh home: engine data, new project, main window; "
                   "files in ~/.local/share and ~/.config")
            run.prepare(demo)
            with engine.Server(demo / "engine") as server:
                give_project(root, places, demo, server)
                seconds = look_up(root, places, screen)
                found = rows(options.probe, places, demo)
                ranked = sum(1 for row in found if row.get("CurPos"))
                expect(ranked > 0, "a keyword with a position")
                proved(f"the demo's lookup: {len(found)} rows, {ranked} of them with a position, in {seconds:.1f} seconds;"
                       " and its report")
                kept = fingerprints(root.home)
                root.install(options.next)
                version = root.run("dpkg-query", "-f", "${Version}", "-W", NAME)
                expect(fingerprints(root.home) == kept, "the user's files as they were before the update")
                answer = ask_for_help(root, places, screen)
                proved(f"the update to {version}: {len(kept)} files of the user as they were, and the project opens")
                expect(answer.endswith(f"{HOME}/manual/index.html"), f"F1 opens the manual, not {answer}")
                expect(Path(f"{root.path}{SHARED}/manual/index.html").is_file(), "the manual")
                proved("F1 opens the manual's pages, since nothing here reads the help file")
                look_up(root, places, screen)
                proved("another lookup")
        kept = fingerprints(root.home)
        root.run("apt-get", "--quiet", "--yes", "purge", NAME)
        left = [file for file in FILES if Path(f"{root.path}{file}").exists()]
        expect(not left and not Path(f"{root.path}{HOME}").exists() and not Path(f"{root.path}{SHARED}").exists(),
               f"nothing left of the package; there is {left}")
        expect(fingerprints(root.home) == kept, "the user's files as they were before the removal")
        proved(f"the removal leaves nothing of the package, and all {len(kept)} files of the user")
        root.install(options.package)
        with display.Display(folder / "display") as screen, Installed(root, places, screen) as started:
            started.open()
            started.close()
        proved("installed again, it opens the project")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--package", type=Path, required=True)
    parser.add_argument("--next", type=Path, required=True, help="the package of a later version")
    parser.add_argument("--probe", type=Path, required=True)
    options = parser.parse_args()
    options.probe = options.probe.resolve()
    try:
        return prove(options)
    except (RootFailed, program.ProgramFailed, RuntimeError, OSError, subprocess.CalledProcessError) as error:
        print(f"script/package: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
