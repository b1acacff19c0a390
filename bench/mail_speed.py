#!/usr/bin/env python3
"""bench/mail_speed.py PROBE [--rounds N]

Mails 20 MB of attachments to a server on this machine that throws them away, and tells

  speed   attached bytes per second, from composing to the last answer, by the clock and by the processor's time
  memory  what the sending adds to the process, as a multiple of the message
  block   the longest time for which the event loop did not turn; with --silent also while the server is silent for
          30 s after the message and again at the end
  stop    with --silent: how long a stop takes that is asked for in that silence
"""
import argparse
import json
import os
import pathlib
import random
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time
import typing

FILES = 4
FILE_SIZE = 5 * 1024 * 1024
PIECE = 1 << 20
SILENCE = 30  # s


class Sink:
    """Says what a mail server says, and keeps nothing."""

    def __init__(self, silence=0):
        self.silence = silence
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        self.received = 0
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            connection, _ = self.socket.accept()
            with connection:
                self.talk(connection)

    def talk(self, connection):
        connection.sendall(b"220 sink\r\n")
        rest = b""
        while True:
            piece = connection.recv(PIECE)
            if not piece:
                return
            *lines, rest = (rest + piece).split(b"\r\n")
            for line in lines:
                if line == b"DATA":
                    connection.sendall(b"354 go on\r\n")
                    self.swallow(connection)
                    time.sleep(self.silence)
                    connection.sendall(b"250 OK\r\n")
                elif line == b"QUIT":
                    time.sleep(self.silence)
                    connection.sendall(b"221 bye\r\n")
                    return
                else:
                    connection.sendall(b"250 OK\r\n")

    def swallow(self, connection):
        end = b""
        self.received = 0
        while end != b"\r\n.\r\n":
            piece = connection.recv(PIECE)
            if not piece:
                return
            self.received += len(piece)
            end = (end + piece[-5:])[-5:]


def peak_kilobytes(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
    return int(re.search(r"VmHWM:\s+(\d+)", status)[1])


def processor_seconds(process):
    """User and system time of all threads."""
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text(encoding="ascii").rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def ask(process, operation, *arguments, **members):
    process.stdin.write((json.dumps({"op": operation, "args": arguments, **members}) + "\n").encode())
    process.stdin.flush()
    return json.loads(process.stdout.readline())


class Round(typing.NamedTuple):
    """What one mail took."""
    clock_speed: float
    processor_speed: float
    memory: float
    block: int
    milliseconds: int


def measure(program, folder, files, silence=0, stop_after=None):
    sink = Sink(silence)
    mail = {"From": "a@sender.example", "ToRecipient": "client@site.example", "Subject": "x", "BodyTEXT": "x\r\n",
            "Host": "127.0.0.1", "Port": str(Sink().port)}
    command = [program, "--app", f"{folder}/app", "--system", f"{folder}/system", "--registry", f"{folder}/settings"]
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        ask(process, "SendMail", mail)
        memory, processor = peak_kilobytes(process), processor_seconds(process)
        members = {} if stop_after is None else {"cancel_after_ms": stop_after}
        answer = ask(process, "SendMail", {**mail, "Port": str(sink.port), "Attachment": files}, **members)
        wanted = ["Completed", 0, ""] if stop_after is None else ["Completed", 30006, "Stop, cancel by user."]
        assert answer["result"] == [wanted], answer
        memory, processor = peak_kilobytes(process) - memory, processor_seconds(process) - processor
        process.stdin.close()
    size = FILES * FILE_SIZE / 1e6
    return Round(size / (answer["ms"] / 1e3), size / max(processor, .01), memory * 1024 / sink.received,
                 answer["block_ms"], answer["ms"])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("probe")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--silent", action="store_true", help="with a server that is silent twice for 30 s")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        files = []
        for number in range(FILES):
            path = pathlib.Path(folder, f"{number}.bin")
            path.write_bytes(random.Random(number).randbytes(FILE_SIZE))
            files.append(str(path))
        rounds = [measure(options.probe, folder, files) for _ in range(options.rounds)]
        print(f"speed   {statistics.median(r.clock_speed for r in rounds):.0f} MB/s (at least 50), "
              f"{statistics.median(r.processor_speed for r in rounds):.0f} MB per second of processor time")
        print(f"memory  {max(r.memory for r in rounds):.2f} times the message (at most 3)")
        print(f"block   {max(r.block for r in rounds)} ms (at most 50)")
        if options.silent:
            silent = measure(options.probe, folder, files, SILENCE)
            print(f"block   {silent.block} ms (at most 50) beside a server that is silent, "
                  f"{silent.milliseconds / 1e3:.0f} s in all")
            wait = 5000
            stopped = measure(options.probe, folder, files, SILENCE, wait)
            print(f"stop    {stopped.milliseconds - wait} ms behind the order, block {stopped.block} ms")
    return 0


if __name__ == "__main__":
    sys.exit(main())
