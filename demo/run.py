"""Opens the program on a demo project and a real search engine, both on this machine; without a display, uses it as a
person would. Shows where the sites stand."""
import argparse
import fcntl
import re
import shutil
import signal
import sys
from pathlib import Path

from demo import display, engine, program, project, sites, table
from demo.probe import Probe, ProbeFailed

ROOT = Path(__file__).resolve().parent.parent
OWN = (11, 12)  # which of the made-up shops are one's own,
COMPETITORS = (9, 14)  # and which are watched
CHOSEN = (.35, .488)  # where in the window the keyword stands whose listings the screenshot shows


class Stop(Exception):
    """Ends the demo with a message."""


def main(arguments=None):
    parser = argparse.ArgumentParser(prog="script/run", description=__doc__)
    parser.add_argument("--program", type=Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--probe", type=Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--folder", type=Path, default=ROOT / "build" / "demo",
                        help="where the demo keeps its files (default: build/demo)")
    parser.add_argument("--fresh", action="store_true", help="forget earlier runs first")
    parser.add_argument("--stay", action="store_true", help="without a display: keep the search engine until Ctrl+C, to try it out")
    options = parser.parse_args(arguments)
    # A request to end is an exception like Ctrl+C, so that what was started is stopped.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    signal.signal(signal.SIGHUP, lambda *_: sys.exit(129))
    try:
        return run(options.program.resolve(), options.probe.resolve(), options.folder.resolve(), options.fresh,
                   options.stay)
    except KeyboardInterrupt:
        print("\nscript/run: stopped", file=sys.stderr)
        return 130
    except (engine.MissingPackage, display.MissingPackage) as missing:
        print(f"script/run: the package {missing} is missing; script/bootstrap run installs it", file=sys.stderr)
    except (Stop, ProbeFailed, program.ProgramFailed, RuntimeError, OSError) as error:
        print(f"script/run: {error}", file=sys.stderr)
    return 1


def run(executable, probe, folder, fresh=False, stay=False):
    engine.check()
    seated = display.is_there()
    if not seated:
        display.check()
    folder.mkdir(parents=True, exist_ok=True)
    with open(folder / "lock", "w", encoding="ascii") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise Stop(f"another run uses {folder}") from None
        if fresh:
            for name in ("app", "config", "data", "engine", "generation", "screenshot.png"):
                remove(folder / name)
        places = program.Places(folder)
        shops = prepare(folder)
        with engine.Server(folder / "engine") as server:
            project.write_engine_data(places.system, server.base)
            log_before = places.log.stat().st_size if places.log.exists() else 0
            if seated:
                print(f"The project {project.NAME} is open on {server.base}: look its keywords up with Shift+F5.\n"
                      "The search engine stops when you close the program.", flush=True)
                program.show(program.install(executable, places), places)
                seconds = None
            else:
                print(f"Looking up the project {project.NAME} on {server.base} ...", flush=True)
                seconds = drive(executable, places, folder, own_page(folder, shops))
            if seconds is not None or places.results.exists():
                if not is_newer(places.menu, places.results):
                    write_set(probe, places)
                show(results(probe, folder, places), seconds, folder, places, shops)
            check_log(places, log_before)
            if stay and not seated:
                print(f"\nThe search engine stays at {server.base} until you press Ctrl+C.", flush=True)
                signal.pause()
    return 0


def own_page(folder, shops):
    """The page of one's own that the optimizer is to judge."""
    return folder / "engine" / "sites" / shops[OWN[0]].host / "index.html"


def drive(executable, places, folder, page):
    """Looks all keywords up as a person would, on a display that nobody sees, and has a page judged; returns the
    seconds that the lookup took."""
    with display.Display(folder / "display") as screen:
        installed = program.install(executable, places, screen)
        with program.Driven(installed, places, screen) as driven:
            driven.open()
            seconds = driven.look_up()
            driven.report()
            driven.optimize(page)
            driven.choose(*CHOSEN)
            screen.save(folder / "screenshot.png")
            driven.close()
    return seconds


def results(probe, folder, places):
    """The rows of the grid, from the files that the program has written."""
    terms, positions = (file.read_bytes().decode("cp1252", "replace")
                        for file in (places.results.with_name("Keywords.dat"), places.results))
    scratch = folder / "probe"
    with Probe(probe, scratch / "app", scratch / "system", scratch / "settings.ini") as operations:
        return operations.ask("LoadKeywords", terms, positions, project.ENGINE)["rows"]


def is_newer(file, other):
    return file.exists() and file.stat().st_mtime_ns >= other.stat().st_mtime_ns


def write_set(probe, places):
    """Report > HTML Format, for whoever has closed the program without it."""
    with Probe(probe, places.app, places.system, places.settings) as operations:
        operations.ask("WriteReportSet", project.NAME)


def check_log(places, start):
    """Keywords without an answer are told in the log alone."""
    with open(places.log, encoding="cp1252", newline="") as log:
        log.seek(start)
        failed = re.findall("Look up '.*' Fail", log.read())
    if failed:
        raise Stop(f"the lookup was not answered in full; {places.log} says why: {', '.join(failed)}")


def below_here(path):
    return path.relative_to(Path.cwd()) if Path.cwd() in path.parents else path


def remove(path):
    if path.is_dir():
        shutil.rmtree(path)
    else:
        path.unlink(missing_ok=True)


def prepare(folder):
    """Makes the web sites of the next generation and their index, and at first the project; returns the shops."""
    counter = folder / "generation"
    generation = int(counter.read_text()) + 1 if counter.exists() else 0
    pages = folder / "engine" / "sites"
    remove(pages)
    shops = sites.write(pages, generation)
    engine.index(pages, folder / "engine")
    if not (folder / "app" / "Projects" / project.NAME).exists():
        own = [(shops[number].host, False) for number in OWN]
        project.write_project(folder / "app", own + [(shops[number].host, True) for number in COMPETITORS])
    counter.write_text(f"{generation}\n")
    return shops


def show(rows, seconds, folder, places, shops):
    own = {shops[number].host for number in OWN}

    def whose(url):
        return "own" if url.partition("//")[2].partition("/")[0] in own else "rival"

    print()
    print("\n".join(table.render(rows, whose, table.Style())))
    print(f"\n{table.summary(rows)}" + (f"; {seconds:.1f} seconds" if seconds is not None else ""))
    app = below_here(places.app)
    if seconds is not None:
        print(f"\nScreenshot {below_here(folder)}/screenshot.png", end="")
    advice = places.advice(own_page(folder, shops))
    advice = f"\nAdvice     {below_here(advice)}, on a page of one's own" if advice.is_file() else ""
    print(f"""
Positions  {app}/Projects/{project.NAME}/{project.ENGINE}.dat
Project    {app}/Projects/{project.NAME}/{project.NAME}.dat and Keywords.dat
Listings   {app}/Results/{project.ENGINE}/
Pages      {app}/Reports/{project.NAME}/
Log        {app}/Error.log
Report     {app}/Reports/{project.NAME}/menu.html, for a browser{advice}

The sites change a little with every run: run it again and see who rose and who fell.""")


if __name__ == "__main__":
    sys.exit(main())
