#!/usr/bin/env python3
"""bench/table.py BUILD_FOLDER [--rounds N] [--save]

Runs every benchmark that has a target, three times (N), and prints one table: what is measured, the command, each
run, the middle one as a part of its limit, whether the target is reached, and how that part has changed since the
committed bench/table.md. --save replaces that file.

A part below 1 is better than the target, whether the target is a least or a most.
"""
import argparse
import json
import re
import statistics
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

ROOT = Path(__file__).resolve().parent.parent
SAVED = ROOT / "bench" / "table.md"


@dataclass(frozen=True)
class Target:
    what: str
    command: str  # as for script/bench
    figure: Callable  # of what the command printed
    limit: float
    unit: str = ""
    least: bool = False  # or else a most

    def part(self, figure):
        return self.limit / figure if self.least else figure / self.limit


def printed(pattern):
    """The first group of a pattern in a script's output."""
    def figure(output):
        found = re.search(pattern, output)
        if not found:
            raise ValueError(f"no {pattern!r} in the output")
        return float(found[1])
    return figure


def row_of(output, name):
    for row in json.loads(output)["benchmarks"]:
        if re.fullmatch(re.escape(name) + r"(/iterations:\d+)?(/real_time)?(/iterations:\d+)?", row["name"]):
            if row.get("error_occurred"):
                raise ValueError(f"{name}: {row['error_message']}")
            return row
    raise ValueError(f"no benchmark {name!r} in the output")


def time(name, unit):
    """The time of a benchmark by the clock on the wall."""
    seconds = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}

    def figure(output):
        row = row_of(output, name)
        return row["real_time"] * seconds[row["time_unit"]] / seconds[unit]
    return figure


def counter(name, of):
    return lambda output: row_of(output, name)[of]


def ratio(name, other):
    """The processor time of one benchmark as a multiple of another's: what else the machine does adds to neither."""
    return lambda output: row_of(output, name)["cpu_time"] / row_of(output, other)["cpu_time"]


TARGETS = [
    Target("Catalogue of 1,000 engines, loading", "catalogue", time("loadCatalogue/1000", "ms"), 60, "ms"),
    Target("Lookup: time against ten connections that are never idle", "lookup",
           printed(r"latency:.* ratio ([\d.]+)"), 1.08),
    Target("Lookup: pages a second against curl's", "lookup",
           printed(r"work:.* ratio median ([\d.]+)"), .6, least=True),
    Target("Extraction of 100 listings against libxml2's parsing", "extraction",
           counter("extraction/100", "times_as_fast_as_libxml2"), 4, least=True),
    Target("Extraction of 1,000 listings against 100", "extraction",
           counter("extraction/1000", "times_as_long_as_100"), 11),
    Target("50,000 keywords: load, update, save", "keywords", time("loadUpdateSave/50000", "s"), 1, "s"),
    Target("50,000 keywords: peak memory", "keywords", counter("loadUpdateSave/50000", "peakMB"), 150, "MB"),
    Target("Update of one row of 50,000 against 500", "keywords", ratio("updateObject/50000", "updateObject/500"), 2),
    Target("Grid of 50,000 keywords, filling", "grid", time("fillGrid/50000", "ms"), 300, "ms"),
    Target("100,000 pasted keywords, adding and saving", "grid", time("addKeywords/100000", "s"), 2, "s"),
    Target("Start against a bare window", "startup", printed(r"ratio +([\d.]+)"), 1.5),
    Target("Memory with 10,000 keywords open", "startup", printed(r"resident +([\d.]+)"), 120, "MB"),
    Target("Three reports of 50,000 rows", "reports", time("engineReports/50000", "s"), 1.5, "s"),
    Target("Three reports of 50,000 rows against 25,000", "reports",
           ratio("engineReports/50000", "engineReports/25000"), 2.3),
    Target("Report set of 20 engines with 5,000 keywords", "reports", time("reportSet/20/5000", "s"), 3, "s"),
    Target("Memory of the reports for each byte written", "reports",
           counter("engineReportsOnDisk/50000", "peakPerByte"), 6),
    Target("Mail: attachments sent in a second", "mail", printed(r"speed +([\d.]+)"), 50, "MB", least=True),
    Target("Mail: memory against the message", "mail", printed(r"memory +([\d.]+)"), 3),
    Target("Mail: longest stop of the event loop", "mail", printed(r"block +([\d.]+)"), 50, "ms"),
    Target("Spreadsheet of 1,000 keywords, office not running", "spreadsheet", time("cold/1000", "s"), 4, "s"),
    Target("Spreadsheet of 1,000 keywords, office running", "spreadsheet", time("warm/1000", "s"), 2.5, "s"),
    Target("Spreadsheet of 10,000 keywords", "spreadsheet", time("warm/10000", "s"), 8, "s"),
    Target("Page of 1 MB judged on 50 keywords", "optimizer", time("writeReport/1", "ms"), 150, "ms"),
    Target("Page of 10 MB judged against 1 MB", "optimizer", ratio("writeReport/10", "writeReport/1"), 11),
    Target("Cutting 1 MB into tags against libxml2's parsing", "optimizer",
           ratio("cutIntoTags/1", "parseWithLibxml2/1"), 1),
    Target("10 MB of unclosed scripts", "optimizer", time("cutOpenScripts/10", "s"), 1, "s"),
]


def run(command, build, folder):
    arguments = {
        "lookup": [ROOT / "bench/lookup_speed.py", build / "probe/sondrel-probe", "--rounds", "3", "--folder", folder],
        "startup": [ROOT / "bench/startup.py", build / "program/marovia-sondrel", build / "bench/bare_window"],
        "mail": [ROOT / "bench/mail_speed.py", build / "probe/sondrel-probe", "--rounds", "3"],
    }.get(command, [build / f"bench/bench_{command}", "--benchmark_format=json"])
    return subprocess.run(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True).stdout.decode()


def measure(build, rounds):
    """Every target's figures; the commands take turns, so that a busy minute does not hit one target alone. But the
    lookups come first, and all their files are removed last: making files is slow where many have been removed."""
    figures = {target: [] for target in TARGETS}
    commands = dict.fromkeys(target.command for target in TARGETS)
    turns = [(number, command) for number in range(rounds) for command in commands]
    turns.sort(key=lambda turn: turn[1] != "lookup")
    with tempfile.TemporaryDirectory(prefix="sondrel-bench-") as folder:
        for number, command in turns:
            print(f"{number + 1}/{rounds} {command}", file=sys.stderr, flush=True)
            try:
                output = run(command, build, Path(folder, str(number)))
            except (OSError, subprocess.CalledProcessError) as failure:
                print(failure, file=sys.stderr)
                continue
            for target in TARGETS:
                if target.command == command:
                    take(target, output, figures)
    return figures


def take(target, output, figures):
    try:
        figures[target].append(target.figure(output))
    except (KeyError, ValueError) as failure:
        print(failure, file=sys.stderr)


def short(figure):
    return f"{figure:,.0f}" if figure >= 100 else f"{figure:.3g}"


def saved_parts():
    """What was measured -> its part of the limit, from the committed table."""
    rows = [line.split(" | ") for line in SAVED.read_text("utf-8").splitlines()] if SAVED.exists() else []
    return {row[0].lstrip("| "): float(row[4]) for row in rows if len(row) > 5 and re.fullmatch(r"[\d.]+", row[4])}


def table(figures):
    before = saved_parts()
    lines = ["| What | script/bench | Target | Runs | Part of it | Reached | Since the last table |",
             "| --- | --- | --- | --- | --- | --- | --- |"]
    for target, runs in figures.items():
        limit = f"{'≥' if target.least else '≤'} {target.limit:g} {target.unit}".rstrip()
        part = f"{target.part(statistics.median(runs)):.2f}" if runs else "-"
        reached = "not measured" if not runs else "yes" if float(part) <= 1 else "NO"
        change = f"{float(part) - before[target.what]:+.2f}" if runs and target.what in before else "new"
        lines.append(f"| {target.what} | {target.command} | {limit} | {', '.join(map(short, runs))} | {part} | "
                     f"{reached} | {change} |")
    return "\n".join(lines) + "\n"


def git(*words):
    return subprocess.run(["git", "-C", ROOT, *words], stdout=subprocess.PIPE, check=True).stdout.decode().strip()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--save", action="store_true")
    arguments = parser.parse_args()
    figures = measure(arguments.build.resolve(), arguments.rounds)
    text = table(figures)
    print(text)
    if arguments.save:
        changed = " and what was not yet committed" if git("status", "--porcelain", "--untracked-files=no") else ""
        SAVED.write_text(f"""# Speed

Every target as `script/bench` measured it at commit {git('rev-parse', '--short', 'HEAD')}{changed}. A part below 1 is
better than the target. Machines differ: only the parts and their changes mean something elsewhere.

{text}""", encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
