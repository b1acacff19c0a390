#!/usr/bin/env python3
"""Lets one call of the system fail after the other while the program writes: it tells, loses nothing, and goes on.

    tests/crash/failing_calls.py [--runs N] [--seed N] [--only OPERATION] build/debug/tests/crash/sondrel-stores

Every call that changes the disk fails once alone, and once with all that follow it, of a lookup one of the two; with
--runs only so many of them, chosen by chance.
"""
import argparse
import collections
import errno
import random
import sys
import tempfile
from pathlib import Path

import kill_runs
from kill_runs import Damage
from running_stores import MIXED, Stores, failures, lead_log_out, lost, worse_positions

OPERATIONS = ("save", "small", "update", "report", "lookup")
ERRORS = (errno.ENOSPC, errno.EDQUOT, errno.EIO, errno.EROFS)
# Can be fetched again.
UNFLUSHED = ("app/Results/", "app/Reports/Shop/Finder_")


class Operation:
    """One of the operations in a folder of its own, in a process that lives through all the failures."""

    def __init__(self, program, name, root):
        self.program = program
        self.name = name
        self.folder = root / name
        self.log = root / f"{name}.log"
        self.reference = kill_runs.Reference(program, name, root / "whole")
        kill_runs.run(program, name, self.folder, "0")
        lead_log_out(self.folder, self.log)
        self.stores = Stores(program, name, self.folder)
        self.expect_silence()
        self.calls = self.stores.calls

    def expect_silence(self):
        for state in (0, 1):
            said = failures(self.stores.write(state))
            if said:
                raise Damage(f"nothing fails, and it says {said}")
            unflushed = [name for name in self.stores.unflushed if not name.startswith(UNFLUSHED)]
            if unflushed:
                raise Damage(f"{unflushed} took their places before they were on the disk")

    def fail(self, call, error, lasts):
        self.stores.write(0)
        said = self.stores.write(1, call, error, lasts)
        after = kill_runs.check(self.program, self.name, self.folder, self.reference, MIXED)
        worse = worse_positions(self.folder)
        if worse:
            raise Damage(f"positions have become worse: {worse}")
        silent = lost(after, self.folder, self.reference, said)
        if silent:
            raise Damage(f"{silent} not written, and nothing is said")
        lead_log_out(self.folder, self.log)  # loading has put a new one there
        return bool(failures(said))

    def end(self):
        self.expect_silence()
        with self.stores:
            pass
        after = kill_runs.check(self.program, self.name, self.folder, self.reference)
        if after != self.reference.stores[1]:
            raise Damage("at the end it has not written what it was to write")


def both(chance, name):
    # A lookup makes the same calls for each of its 40 keywords.
    return (chance.choice((False, True)),) if name == "lookup" else (False, True)


def chosen(operations, options):
    """Operation, call, error and whether it lasts."""
    chance = random.Random(options.seed)
    if options.runs:
        names = [chance.choice(list(operations)) for _ in range(options.runs)]
        wanted = [(name, chance.randint(1, operations[name].calls), chance.choice((False, True))) for name in names]
    else:
        wanted = [(name, call, lasts) for name, operation in operations.items()
                  for call in range(1, operation.calls + 1) for lasts in both(chance, name)]
    return [(name, call, chance.choice(ERRORS), lasts) for name, call, lasts in wanted]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", choices=OPERATIONS, action="append", help="an operation; may be given again")
    options = parser.parse_args()
    counts = collections.Counter()
    told = 0
    with tempfile.TemporaryDirectory(prefix="sondrel-failing-") as temporary:
        root = Path(temporary).resolve()
        what = "before anything fails"
        try:
            operations = {name: Operation(options.program, name, root) for name in options.only or OPERATIONS}
            for name, call, error, lasts in chosen(operations, options):
                what = f"{name}, {'from' if lasts else 'only'} call {call}, {errno.errorcode[error]}"
                told += operations[name].fail(call, error, lasts)
                counts[name] += 1
            for name, operation in operations.items():
                what = f"{name}, at the end"
                operation.end()
        except Damage as damage:
            print(f"seed {options.seed}, {what}: {damage}", file=sys.stderr)
            return 1
    print(f"{sum(counts.values())} failures of the disk (seed {options.seed}): "
          + ", ".join(f"{count} in a {name}" for name, count in sorted(counts.items())))
    print(f"every store loaded, each old or new; {told} were told, and none that cost a store was not")
    return 0


if __name__ == "__main__":
    sys.exit(main())
