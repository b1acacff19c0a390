"""Chromium without a window, driven over its remote protocol through a pair of pipes."""
import contextlib
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

PATIENCE = 120  # seconds


class BrowserFailed(Exception):
    pass


class Browser:
    """One page of a browser that knows no network. Use as a context: it ends with it."""

    def __init__(self, program="chromium"):
        self._program = shutil.which(program)
        if not self._program:
            raise BrowserFailed(f"{program} is missing; script/bootstrap test installs it")
        self._numbers = iter(range(1, 1_000_000))
        self._buffer = b""
        self._events = []

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            profile = stack.enter_context(tempfile.TemporaryDirectory(prefix="sondrel-browser-",
                                                                      ignore_cleanup_errors=True))
            commands, self._commands = os.pipe()
            self._answers, answers = os.pipe()
            stack.callback(os.close, self._answers)
            stack.callback(self._end)
            # The protocol's pipes are the descriptors 3 and 4.
            self._process = subprocess.Popen(
                ["sh", "-c", f'exec "$@" 3<&{commands} 4>&{answers}', "sh", self._program, "--headless=new",
                 "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run", "--disable-extensions",
                 "--allow-file-access-from-files", "--host-resolver-rules=MAP * ~NOTFOUND",
                 "--remote-debugging-pipe", f"--user-data-dir={profile}", "about:blank"],
                pass_fds=(commands, answers), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL, start_new_session=True, env=dict(os.environ, HOME=profile))
            os.close(commands)
            os.close(answers)
            target = self._ask("Target.createTarget", {"url": "about:blank"})["targetId"]
            self._session = self._ask("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]
            self.ask("Page.enable")
            self.ask("Page.setLifecycleEventsEnabled", enabled=True)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *details):
        return self._stack.__exit__(*details)

    def _end(self):
        with contextlib.suppress(OSError):
            os.write(self._commands, b'{"id":0,"method":"Browser.close"}\0')
        os.close(self._commands)
        try:
            self._process.wait(20)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()

    def _read(self, deadline):
        """The next message."""
        while b"\0" not in self._buffer:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self._answers], [], [], left)[0]:
                raise BrowserFailed("the browser does not answer")
            piece = os.read(self._answers, 1 << 20)
            if not piece:
                raise BrowserFailed("the browser has ended")
            self._buffer += piece
        message, _, self._buffer = self._buffer.partition(b"\0")
        return json.loads(message)

    def _ask(self, method, parameters=None, **members):
        number = next(self._numbers)
        text = json.dumps({"id": number, "method": method, "params": parameters or {}, **members})
        os.write(self._commands, text.encode() + b"\0")
        deadline = time.monotonic() + PATIENCE
        while True:
            message = self._read(deadline)
            if message.get("id") != number:
                self._events.append(message)
            elif "error" in message:
                raise BrowserFailed(f"{method}: {message['error']['message']}")
            else:
                return message["result"]

    def ask(self, method, **parameters):
        """One command of the protocol to the page."""
        return self._ask(method, parameters, sessionId=self._session)

    def _await_load(self, loader):
        """Waits until that page is there; the end of another one's loading may come late."""
        def is_load(event):
            what = event.get("params", {})
            return event.get("method") == "Page.lifecycleEvent" and (what["loaderId"], what["name"]) == (loader, "load")
        deadline = time.monotonic() + PATIENCE
        while not any(map(is_load, self._events)):
            self._events.append(self._read(deadline))

    def open(self, address):
        """Goes to an address and waits until it is there; false when the browser does not find it."""
        self._events.clear()
        answer = self.ask("Page.navigate", url=address)
        if "errorText" in answer:
            return False
        if "loaderId" in answer:  # else another place of the same page
            self._await_load(answer["loaderId"])
        return True

    def evaluate(self, expression):
        answer = self.ask("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in answer:
            raise BrowserFailed(answer["exceptionDetails"]["text"])
        return answer["result"].get("value")

    def links(self):
        """Pairs of where a link of the page leads, as the browser understands it, and its text."""
        return [tuple(link) for link in self.evaluate(
            "Array.from(document.querySelectorAll('a[href]'), link => [link.href, link.textContent])")]

    def text(self):
        return self.evaluate("document.documentElement.innerText")
