#!/usr/bin/env python3
"""Kills the program while it writes, and looks at what is left: every store loads, and holds the old or the new state.

    tests/crash/kill_runs.py [--runs N] [--seed N] [--keep FOLDER] build/debug/tests/crash/sondrel-stores
"""
import argparse
import collections
import json
import random
import re
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# Longest wait before a kill, in seconds: a little more than the operation takes to write one state.
OPERATIONS = {"save": .12, "small": .06, "report": .25, "update": .03, "lookup": .5}
# Texts that grow page by page may lose their last page; every other file is whole.
GROWING = ("Error.log",)
# Loading always tells of a table that was empty before; a lookup leaves its trace.
USUAL_LOG = ("IsEngineExist_Error: The table of engines is empty", "Start ranking at ", "Lookup Connect start")


ENDING = 10  # bytes that a whole file is known by


class Damage(Exception):
    pass


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def is_failure(line):
    return line and not line.startswith(USUAL_LOG)


def files(folder):
    """Relative name to bytes, without what differs from run to run: the folder's own path, and the port of the server.

    Links are names of files that are there themselves.
    """
    changing = re.compile(re.escape(str(folder).encode()) + rb"|127\.0\.0\.1:\d+")
    contents = {str(path.relative_to(folder)): changing.sub(b"", path.read_bytes())
                for path in sorted(folder.rglob("*")) if path.is_file() and not path.is_symlink()}
    # In these, new lines go behind the old ones: their order tells what was there before.
    return {name: b"\n".join(sorted(content.split(b"\n"))) if name.endswith(("/Shop.dat", "/project.dat")) else content
            for name, content in contents.items()}


def is_debris(name):
    return name.rsplit("/", 1)[-1].startswith(".sondrel-")


class Reference:
    """What the complete states look like, each written into a folder of its own."""

    def __init__(self, program, operation, folder):
        self.stores = []
        self.files = collections.defaultdict(list)
        for states in ("0", "1", "01", "10"):
            place = folder / f"{operation}-{states}"
            for state in states:
                run(program, operation, place, state)
            self.add(files(place))
            self.stores.append(load(program, place)["stores"])
            self.add(files(place))  # loading makes the settings
        self.end = files(folder / f"{operation}-01")  # as the second state leaves them

    def add(self, written):
        for name, content in written.items():
            self.files[name].append(content)


def load(program, folder):
    answer = json.loads(run(program, "load", folder))
    lines = [line for line in answer["log"].split("\r\n") if is_failure(line)]
    if lines or answer["boxes"]:
        raise Damage(f"loading says {lines}, and shows {answer['boxes']} boxes")
    return answer


def check(program, operation, folder, reference, mixed=()):
    """What loading makes of the stores.

    Files whose names begin with one of mixed, and the results, may hold something of both states.
    """
    found = files(folder)  # before the loading, which writes too
    for name, content in found.items():
        if is_debris(name) or name.endswith(GROWING):
            continue
        wanted = reference.files.get(name)
        if wanted is None:
            raise Damage(f"{name} is not one of the program's files")
        if name.startswith(tuple(mixed)):
            if not any(whole.endswith(content[-ENDING:]) for whole in wanted):
                raise Damage(f"{name} has another end: {content[-ENDING:]!r}")
        elif operation == "lookup" and is_appended(name):
            if not any(whole.startswith(content) for whole in wanted):
                raise Damage(f"{name} is no beginning of a state: {content[-200:]!r}")
        elif content not in wanted and not is_result_of_lookup(operation, name):
            raise Damage(f"{name} is neither old nor new, {len(content)} bytes")
    stores = load(program, folder)["stores"]
    left = [name for name in files(folder) if is_debris(name)]
    if left:
        raise Damage(f"{left} is still there at the next start")
    for name, value in stores.items():
        if value not in [state[name] for state in reference.stores] and not (mixed and name == "results"):
            raise Damage(f"the store '{name}' is neither old nor new")
    return stores


def is_mixed(stores, reference):
    """Whether some are in the old state, and others in the new one."""
    old, new = reference.stores[:2]
    changed = [name for name in stores if old[name] != new[name]]
    return len({stores[name] == new[name] for name in changed}) > 1


def is_appended(name):
    """Listings and their report, which grow with every page."""
    return name.startswith("app/Results/") or (name.startswith("app/Reports/") and not name.endswith("_p1.html"))


def is_result_of_lookup(operation, name):
    """Such a file also tells of the position before, whatever that was."""
    return operation == "lookup" and name in ("app/Projects/Shop/Finder.dat", "system/qlteng4.dat")


def killed(program, operation, folder, wait):
    process = subprocess.Popen([program, operation, folder], stdout=subprocess.PIPE)
    process.stdout.readline()
    time.sleep(wait)
    process.send_signal(signal.SIGKILL)
    if process.wait() != -signal.SIGKILL:
        raise Damage(f"{operation} ended by itself: {process.returncode}")
    process.stdout.close()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=500)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", help="folder to work in, kept for a look")
    options = parser.parse_args()
    chance = random.Random(options.seed)
    with tempfile.TemporaryDirectory(prefix="sondrel-crash-") as temporary:
        root = Path(options.keep or temporary).resolve()
        references = {}
        counts = collections.Counter()
        mixed = debris = 0
        for number in range(options.runs):
            operation = chance.choice(list(OPERATIONS))
            wait = chance.uniform(0, OPERATIONS[operation])
            folder = root / operation
            try:
                if operation not in references:
                    references[operation] = Reference(options.program, operation, root / "whole")
                    run(options.program, operation, folder, "0")
                killed(options.program, operation, folder, wait)
                debris += sum(map(is_debris, files(folder)))
                stores = check(options.program, operation, folder, references[operation])
            except Damage as damage:
                print(f"seed {options.seed}, run {number}, {operation} killed after {wait * 1000:.1f} ms: {damage}", file=sys.stderr)
                return 1
            counts[operation] += 1
            mixed += is_mixed(stores, references[operation])
        print(f"{options.runs} kills (seed {options.seed}): "
              + ", ".join(f"{count} in a {operation}" for operation, count in sorted(counts.items())))
        print(f"every store loaded, each old or new; {mixed} kills fell between two stores, "
              f"{debris} left a temporary file, which the next start removed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
