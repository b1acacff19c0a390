"""Looks a demo project up on a real search engine, both on this machine, and shows where the sites stand."""
import argparse
import fcntl
import shutil
import signal
import sys
from pathlib import Path

from demo import engine, project, sites, table
from demo.probe import Probe, ProbeFailed

ROOT = Path(__file__).resolve().parent.parent
OWN = (11, 12)  # which of the made-up shops are one's own,
COMPETITORS = (9, 14)  # and which are watched


class Stop(Exception):
    """Ends the demo with a message."""


def main(arguments=None):
    parser = argparse.ArgumentParser(prog="script/run", description=__doc__)
    parser.add_argument("--probe", type=Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--folder", type=Path, default=ROOT / "build" / "demo",
                        help="where the demo keeps its files (default: build/demo)")
    parser.add_argument("--fresh", action="store_true", help="forget earlier runs first")
    parser.add_argument("--stay", action="store_true", help="keep the search engine until Ctrl+C, to try it out")
    options = parser.parse_args(arguments)
    # A request to end is an exception like Ctrl+C, so that what was started is stopped.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    signal.signal(signal.SIGHUP, lambda *_: sys.exit(129))
    try:
        return run(options.probe.resolve(), options.folder.resolve(), options.fresh, options.stay)
    except KeyboardInterrupt:
        print("\nscript/run: stopped", file=sys.stderr)
        return 130
    except engine.MissingPackage as missing:
        print(f"script/run: the package {missing} is missing; script/bootstrap run installs it", file=sys.stderr)
    except (Stop, ProbeFailed, RuntimeError, OSError) as error:
        print(f"script/run: {error}", file=sys.stderr)
    return 1


def run(probe, folder, fresh=False, stay=False):
    engine.check()
    folder.mkdir(parents=True, exist_ok=True)
    with open(folder / "lock", "w", encoding="ascii") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise Stop(f"another run uses {folder}") from None
        if fresh:
            for name in ("app", "engine", "system", "generation"):
                remove(folder / name)
        shops = prepare(folder)
        with engine.Server(folder / "engine") as server:
            project.write_engine_data(folder / "system", server.base)
            print(f"Looking up the project {project.NAME} on {server.base} ...", flush=True)
            with Probe(probe, folder / "app", folder / "system", folder / "settings.ini") as operations:
                answer = operations.ask("Lookup", project.NAME, project.ENGINE, "all")
                reports = write_reports(operations, folder)
            show(answer, folder, shops, reports)
            if stay:
                print(f"\nThe search engine stays at {server.base} until you press Ctrl+C.", flush=True)
                signal.pause()
    return 0


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


def write_reports(operations, folder):
    """Writes the pages of the project's report and returns their index."""
    shutil.copy(ROOT / "data" / "menutemplate.html", folder / "app")
    index = operations.ask("WriteReportSet", project.NAME)["result"]
    if index is None:
        raise Stop(f"the report was not written; {folder}/app/Error.log says why")
    return Path(index)


def show(answer, folder, shops, reports):
    rows = answer["rows"]
    own = {shops[number].host for number in OWN}

    def whose(url):
        return "own" if url.partition("//")[2].partition("/")[0] in own else "rival"

    print()
    print("\n".join(table.render(rows, whose, table.Style())))
    print(f"\n{table.summary(rows)}; {answer['ms'] / 1000:.1f} seconds")
    app = below_here(folder) / "app"
    print(f"""
Positions  {app}/Projects/{project.NAME}/{project.ENGINE}.dat
Project    {app}/Projects/{project.NAME}/{project.NAME}.dat and Keywords.dat
Listings   {app}/Results/{project.ENGINE}/
Pages      {app}/Reports/{project.NAME}/
Log        {app}/Error.log

The report of the project, for a browser: {below_here(reports)}

The sites change a little with every run: run it again and see who rose and who fell.""")
    failed = [row["Keyword"] for row in rows if row["Status"] == "Failed"]
    if answer["result"] != "completed" or failed:
        raise Stop(f"the lookup was {answer['result']}, without an answer for: {', '.join(failed) or '-'}")


if __name__ == "__main__":
    sys.exit(main())
