"""sondrel-stores as it runs: writes the states that it is told, and tells what came of it."""
import json
import subprocess

import kill_runs

# Pages are written one after the other, and each tells of what it found.
MIXED = ("app/Reports/", "app/Results/", "app/Projects/Shop/Finder.dat")
# Where the stores lie that loading says nothing of.
PLACES = {"reports": "app/Reports/", "advice": "app/Optimizer/", "addresses": "app/dmlist.dat", "list": "list.txt",
          "next date": "app/Projects/Garden/Garden.dat", "text report": "app/Reports/"}


class Stores:
    """Use as a context."""

    def __init__(self, program, operation, folder):
        # A file that may not grow is to be an error of the write, as on a disk with quotas, and no signal.
        self.process = subprocess.Popen([program, operation, folder, "-"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, restore_signals=False)
        assert self.process.stdout.readline() == b"ready\n"
        self.calls = 0  # that changed the disk, for the last state
        self.unflushed = []  # files of it that took their place before they were on the disk

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()

    def write(self, state, *failure):
        """Store to all that was said of it; the same store may be written in several steps.

        A failure is the number of the call that fails, its error, and whether the calls behind it fail as well.
        """
        self.process.stdin.write(" ".join(str(int(word)) for word in (state, *failure)).encode() + b"\n")
        self.process.stdin.flush()
        told = json.loads(self.process.stdout.readline())
        self.calls = told["calls"]
        self.unflushed = told["unflushed"]
        said = {}
        for answer in told["answers"]:
            said.setdefault(answer["store"], []).extend(
                text for text in (answer["log"], *answer["boxes"], answer["thrown"]) if text)
        return said


def failures(said):
    """The lines in it that tell of one."""
    lines = [line for texts in said.values() for text in texts for line in text.split("\r\n")]
    return [line for line in lines if kill_runs.is_failure(line)]


def lead_log_out(folder, log):
    """Keeps the program's log elsewhere, readable and writable, so that it can be seen to be written."""
    own = folder / "app" / "Error.log"
    own.unlink(missing_ok=True)
    log.touch()
    own.symlink_to(log)


def worse_positions(folder):
    """Keywords that are where neither state has them: a page that could not be kept leaves its keyword alone."""
    results = folder / "app" / "Projects" / "Shop" / "Finder.dat"
    rows = results.read_text("cp1252").split("\n") if results.exists() else ()
    return [row for row in rows if row.startswith("shoe ") and row.split(";")[2] not in ("3", "7")]


def lost(after, folder, reference, said):
    """Stores that are not written, of which nothing was said either; after is what loading made of them."""
    found = kill_runs.files(folder)

    def is_written(store):
        if store in after:
            return after[store] == reference.stores[1][store]
        return all(found.get(name) == content for name, content in reference.end.items()
                   if name.startswith(PLACES[store]))
    return [store for store, texts in said.items() if not texts and not is_written(store)]
