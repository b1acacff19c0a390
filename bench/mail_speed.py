#!/usr/bin/env python3
"""bench/mail_speed.py PROBE [--rounds N]

Mails 20 MB of attachments to a server on this machine that throws them away, and tells

  speed   attached bytes per second, from composing to the last answer
  memory  what the sending adds to the process, as a multiple of the message
  block   the longest time for which the event loop did not turn, also while the server is silent for 30 s after the
          message and again at the end (only with --silent)
"""
import argparse
import json
import pathlib
import random
import re
import socket
import subprocess
import sys
import tempfile
import threading
import time

FILES = 4
FILE_SIZE = 5 * 1024 * 1024
PIECE = 1 << 20


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


def ask(process, operation, *arguments):
    process.stdin.write((json.dumps({"op": operation, "args": arguments}) + "\n").encode())
    process.stdin.flush()
    return json.loads(process.stdout.readline())


def measure(program, folder, files, silence=0):
    sink = Sink(silence)
    mail = {"From": "a@sender.example", "ToRecipient": "b@site.example", "Subject": "x", "BodyTEXT": "x\r\n",
            "Host": "127.0.0.1", "Port": str(sink.port)}
    command = [program, "--app", f"{folder}/app", "--system", f"{folder}/system", "--registry", f"{folder}/settings"]
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        ask(process, "SendMail", mail)
        before = peak_kilobytes(process)
        answer = ask(process, "SendMail", {**mail, "Attachment": files})
        assert answer["result"] == [["Completed", 0, ""]], answer
        memory = (peak_kilobytes(process) - before) * 1024 / sink.received
        process.stdin.close()
    return FILES * FILE_SIZE / 1e3 / answer["ms"], memory, answer["block_ms"]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("probe")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--silent", action="store_true")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        files = []
        for number in range(FILES):
            path = pathlib.Path(folder, f"{number}.bin")
            path.write_bytes(random.Random(number).randbytes(FILE_SIZE))
            files.append(str(path))
        rounds = [measure(options.probe, folder, files) for _ in range(options.rounds)]
        print(f"speed   {sorted(r[0] for r in rounds)[len(rounds) // 2]:.0f} MB/s (at least 50)")
        print(f"memory  {max(r[1] for r in rounds):.2f} times the message (at most 3)")
        print(f"block   {max(r[2] for r in rounds)} ms (at most 50)")
        if options.silent:
            print(f"block   {measure(options.probe, folder, files, 30)[2]} ms beside a server that is silent")
    return 0


if __name__ == "__main__":
    sys.exit(main())
