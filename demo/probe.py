"""Calls the program's own operations through sondrel-probe."""
import contextlib
import json
import subprocess


class ProbeFailed(Exception):
    pass


class Probe:
    """One running probe, on given folders. Use as a context: it ends with it."""

    def __init__(self, program, app, system, registry, today=None):
        command = [str(program), "--app", str(app), "--system", str(system), "--registry", str(registry)]
        if today:
            command += ["--today", today]
        self._process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # An operation may still be under way when an error or Ctrl+C leads here.
        self._process.kill()
        self._process.wait()
        with contextlib.suppress(BrokenPipeError):
            self._process.stdin.close()
        self._process.stdout.close()

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

    def close(self):
        """Lets the probe end by itself; returns its exit status (a sanitizer has its say there)."""
        self._process.stdin.close()
        return self._process.wait()
