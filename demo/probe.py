"""Calls the program's own operations through sondrel-probe."""
import contextlib
import json
import re
import subprocess
from pathlib import Path


class ProbeFailed(Exception):
    pass


class Probe:
    """One running probe, on given folders. Use as a context: it ends with it."""

    def __init__(self, program, app, system, registry, today=None, options=()):
        command = [str(program), "--app", str(app), "--system", str(system), "--registry", str(registry)]
        if today:
            command += ["--today", today]
        command += options
        self._process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        with contextlib.suppress(BrokenPipeError):
            self._process.stdin.close()
        # It ends with its input, once it has finished what it is at; an interrupted run does not wait long for that.
        with contextlib.suppress(subprocess.TimeoutExpired):
            self._process.wait(5)
        self._process.kill()
        self._process.wait()
        self._process.stdout.close()

    def peak_memory(self):
        """The most memory that it has used so far, in bytes."""
        status = Path(f"/proc/{self._process.pid}/status").read_text(encoding="ascii")
        return int(re.search(r"VmHWM:\s*(\d+) kB", status)[1]) * 1024

    def ask(self, operation, *arguments, **members):
        """The whole answer, as a dictionary."""
        line = json.dumps({"op": operation, "args": arguments, **members}) + "\n"
        try:
            self._process.stdin.write(line.encode())
            self._process.stdin.flush()
        except BrokenPipeError:
            pass  # then there is no answer either
        answer = self._process.stdout.readline()
        if not answer:
            raise ProbeFailed(f"sondrel-probe ended in {operation}, exit status {self._process.wait()}")
        answer = json.loads(answer)
        if "error" in answer:
            raise ProbeFailed(f"{operation}: {answer['error']}")
        return answer
