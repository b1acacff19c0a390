#!/usr/bin/env python3
"""bench/lookup_speed.py PROBE [--keywords N] [--rounds N] [--folder FOLDER]

Measures whole lookups, as ratios within one run:

  latency  200 keywords of 3 pages each, from a server that answers after 50 ms, against the ideal of ten
           connections that are never idle
  work     the same without delay, from static pages of 60 KB with 10 listings, against curl fetching the same
           addresses over ten connections and writing them to disk

Both make thousands of files. Where many have been removed within the last minutes, file systems can take a hundred
times as long to make one (ext4 passes over what was removed for up to six minutes), so the time that one takes is
printed first, and what is written to FOLDER stays there. What has been written before is on the disk when a clock
starts: the program waits for the disk where it saves the project, and not for what others have left to be written.

Needs lighttpd and curl.
"""
import argparse
import asyncio
import contextlib
import json
import os
import pathlib
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time

PAGES = 3
LISTINGS = 10
PAGE_SIZE = 60_000
CONNECTIONS = 10
DELAY = 0.05

ENGINE = """[Markets]\r
1=Bench\r
[Bench]\r
1=Static\r
[Static]\r
EngineKey=127.0.0.1\r
EngineURL=http://127.0.0.1:{port}/p/\r
QueryKeyword2=_1.html\r
SubmitMethod=GET\r
ResultStartString=<ol>\r
ResultEndString=</ol>\r
Sectionstart=<li>\r
SectionEnd=</li>\r
beginTitle=<b>\r
endTitle=</b>\r
beginURL=href="\r
endURL="\r
beginMatches=Results\r
endMatches=</p>\r
NextPage1=Next page\r
"""

PROJECT = """[Schedler]\r
SchedlerEnable=False\r
NumLink={links}\r
[URL]\r
1=site.example|False\r
2=rival.example|True\r
NumURL=2\r
[Engine]\r
1=Static\r
NumEngine=1\r
"""


def page(term, number):
    """A result page of about PAGE_SIZE bytes with LISTINGS listings."""
    listings = []
    padding = "<!-- " + "x" * (PAGE_SIZE // LISTINGS - 150) + " -->"
    for place in range(1, LISTINGS + 1):
        host = "site.example" if place == number + 3 else f"host{place}.example"
        listings.append(f'<li><b>Title {place} of {term}</b> <a href="http://www.{host}/{term}/{number}">go</a>'
                        f"{padding}</li>")
    link = f'<a href="/p/{term}_{number + 1}.html">Next page</a>' if number < PAGES else ""
    return f"<html><p>Results 1 - 10 of 2,340</p><ol>{''.join(listings)}</ol>{link}</html>".encode()


def free_port():
    while True:
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            port = probe.getsockname()[1]
        if not str(port).startswith("80"):  # a next link would lose ":80"
            return port


def make_program(folder, port, terms):
    """An application folder and a system directory with one project of these terms."""
    (folder / "system").mkdir(parents=True)
    (folder / "system/qlteng4.dat").write_text(ENGINE.format(port=port), newline="")
    project = folder / "app/Projects/Bench"
    project.mkdir(parents=True)
    (project / "Bench.dat").write_text(PROJECT.format(links=PAGES * LISTINGS), newline="")
    (project / "Keywords.dat").write_text("".join(f"{term};-1\r\n" for term in terms), newline="")


def lookup(probe, folder, terms):
    """Milliseconds of one lookup of all terms; stops when a result is wrong."""
    request = json.dumps({"op": "Lookup", "args": ["Bench", "Static", "all"]}) + "\n"
    os.sync()
    done = subprocess.run(
        [probe, "--app", folder / "app", "--system", folder / "system", "--registry", folder / "settings.ini"],
        input=request.encode(), capture_output=True, check=True)
    answer = json.loads(done.stdout)
    found = {row["Keyword"]: row["CurPos"] for row in answer["rows"]}
    if answer["result"] != "completed" or any(found.get(term) != "4" for term in terms):
        sys.exit(f"the lookup went wrong: {str(answer)[:500]}")
    return answer["ms"]


def microseconds_to_make_a_file(folder):
    count = 500
    folder.mkdir(parents=True)
    begin = time.monotonic()
    for number in range(count):
        (folder / str(number)).touch()
    return (time.monotonic() - begin) / count * 1e6


class SlowServer:
    """Answers every request for a page after DELAY, over kept connections, from a thread of its own. The pages
    are made before: what the server works would count as the program's time."""

    class Connection(asyncio.Protocol):
        def __init__(self, answers, loop):
            self.answers = answers
            self.loop = loop
            self.received = b""
            self.transport = None

        def connection_made(self, transport):
            self.transport = transport

        def data_received(self, data):
            self.received += data
            while b"\r\n\r\n" in self.received:
                head, self.received = self.received.split(b"\r\n\r\n", 1)
                self.loop.call_later(DELAY, self.transport.write, self.answers[head.split(b" ", 2)[1]])

    def __init__(self, port, terms):
        answers = {}
        for term in terms:
            for number in range(1, PAGES + 1):
                body = page(term, number)
                head = b"HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: %d\r\n\r\n" % len(body)
                answers[f"/p/{term}_{number}.html".encode()] = head + body
        self.loop = asyncio.new_event_loop()
        self.loop.run_until_complete(
            self.loop.create_server(lambda: self.Connection(answers, self.loop), "127.0.0.1", port))
        self.thread = threading.Thread(target=self.loop.run_forever, daemon=True)
        self.thread.start()

    def stop(self):
        self.loop.call_soon_threadsafe(self.loop.stop)
        self.thread.join()


def measure_latency(site, probe, rounds):
    terms = [f"term{number}" for number in range(200)]
    ideal = len(terms) * PAGES / CONNECTIONS * DELAY * 1000
    times = []
    port = free_port()
    server = SlowServer(port, terms)
    for number in range(rounds):
        folder = site / f"latency{number}"
        make_program(folder, port, terms)
        times.append(lookup(probe, folder, terms))
    server.stop()
    median = statistics.median(times)
    print(f"latency: {len(terms)} keywords x {PAGES} pages: median {median:.0f} ms of {sorted(times)}, "
          f"ideal {ideal:.0f} ms, ratio {median / ideal:.3f}")


def start_static_server(folder, port):
    (folder / "lighttpd.conf").write_text(
        f'server.document-root = "{folder}/site"\nserver.bind = "127.0.0.1"\nserver.port = {port}\n'
        'mimetype.assign = ( ".html" => "text/html" )\nserver.max-keep-alive-requests = 100000\n')
    path = "/usr/sbin:/usr/bin:/bin"
    server = subprocess.Popen(["lighttpd", "-D", "-f", folder / "lighttpd.conf"], env={"PATH": path})
    for _ in range(100):
        try:
            socket.create_connection(("127.0.0.1", port), 1).close()
            return server
        except OSError:
            time.sleep(0.05)
    sys.exit("lighttpd does not answer")


def curl(folder, port, terms):
    """Milliseconds that curl takes for the same addresses, written to disk."""
    lines = []
    for term in terms:
        for number in range(1, PAGES + 1):
            lines.append(f'url = "http://127.0.0.1:{port}/p/{term}_{number}.html"\noutput = "{folder}/{term}_{number}"\n')
    config = folder / "curl.conf"
    config.write_text("".join(lines))
    os.sync()
    begin = time.monotonic()
    subprocess.run(["curl", "-q", "-s", "--noproxy", "*", "--parallel", "--parallel-max", str(CONNECTIONS),
                    "-K", config], check=True)
    return (time.monotonic() - begin) * 1000


def measure_work(site, probe, count, rounds):
    terms = [f"term{number}" for number in range(count)]
    port = free_port()
    (site / "site/p").mkdir(parents=True)
    for term in terms:
        for number in range(1, PAGES + 1):
            (site / f"site/p/{term}_{number}.html").write_bytes(page(term, number))
    server = start_static_server(site, port)
    ours, theirs = [], []
    try:
        for number in range(rounds):
            folder = site / f"work{number}"
            make_program(folder, port, terms)
            ours.append(lookup(probe, folder, terms))
            (folder / "curl").mkdir()
            theirs.append(curl(folder / "curl", port, terms))
    finally:
        server.terminate()
        server.wait()
    pages = count * PAGES
    ratios = [b / a for a, b in zip(ours, theirs)]
    print(f"work: {count} keywords x {PAGES} pages of {PAGE_SIZE // 1000} KB: "
          f"{pages / statistics.median(ours) * 1000:.0f} pages/s, "
          f"curl {pages / statistics.median(theirs) * 1000:.0f} pages/s, "
          f"ratio median {statistics.median(ratios):.2f} of {sorted(round(r, 2) for r in ratios)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("probe", type=pathlib.Path)
    parser.add_argument("--keywords", type=int, default=1000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--folder", type=pathlib.Path)
    options = parser.parse_args()
    with contextlib.ExitStack() as stack:
        site = options.folder or pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory()))
        print(f"files: making one takes {microseconds_to_make_a_file(site / 'files'):.0f} us")
        measure_latency(site, options.probe, options.rounds)
        measure_work(site, options.probe, options.keywords, options.rounds)


if __name__ == "__main__":
    main()
