"""A search engine on the loopback address that means its visitors ill: each keyword is one way to keep them busy, fill
their memory or spoil their files. Keywords that begin with "good" get ordinary pages."""
import contextlib
import http.server
import itertools
import threading
import zlib

OWN = "site.example"
GOOD_PAGES = 3
MOST_WAIT = 300  # seconds; only a run that has gone wrong waits as long

ENGINE = """[Markets]\r
1=Test\r
[Test]\r
1=Hostile\r
[Hostile]\r
EngineKey=127.0.0.1\r
EngineURL=http://127.0.0.1:{port}/search/\r
QueryKeyword2=/1\r
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

MEBIBYTE = 1 << 20


def listing(address, title="Title", padding=""):
    return f'<li><b>{title}</b> <a href="{address}">go</a>{padding}</li>'


def page(listings, next_path=""):
    link = f'<a href="{next_path}">Next page</a>' if next_path else ""
    return f"<html><p>Results 1 - 10 of 2,340</p><ol>{''.join(listings)}</ol>{link}</html>"


def good_page(keyword, number):
    """Ten listings a page; the tracked one is the fourth of the second page."""
    listings = [listing(f"http://{OWN if (number, place) == (2, 4) else f'host{place}.example'}/{keyword}/{number}")
                for place in range(1, 11)]
    return page(listings, f"/search/{keyword}/{number + 1}" if number < GOOD_PAGES else "")


def zipped_forever():
    """A gzip stream without end, a thousandth of what it unfolds to."""
    packer = zlib.compressobj(9, zlib.DEFLATED, 31)
    yield packer.compress(page([listing(f"http://{OWN}/bomb")]).encode()) + packer.flush(zlib.Z_FULL_FLUSH)
    # What stands between two full flushes can be repeated as it is.
    part = packer.compress(bytes(MEBIBYTE)) + packer.flush(zlib.Z_FULL_FLUSH)
    yield from itertools.repeat(part)


class HostileEngine(http.server.ThreadingHTTPServer):
    """Use as a context. Well-behaved pages wait until the drip has begun, and the drip lasts until they are all out."""

    daemon_threads = True
    request_queue_size = 50

    def __init__(self, good_keywords):
        super().__init__(("127.0.0.1", 0), Handler)
        self.port = self.server_address[1]
        self.drip_begun = threading.Event()
        self.all_good = threading.Event()
        self.ended = threading.Event()
        self.requests = []
        self._lock = threading.Lock()
        self._due = {(keyword, number) for keyword in good_keywords for number in range(1, GOOD_PAGES + 1)}

    def __enter__(self):
        self._thread = threading.Thread(target=self.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True)
        self._thread.start()
        return self

    def __exit__(self, *_):
        for event in (self.all_good, self.drip_begun, self.ended):
            event.set()
        self.shutdown()
        self._thread.join()
        self.server_close()

    def handle_error(self, *_):
        """Visitors hang up on most of this."""

    def note(self, keyword, number):
        with self._lock:
            self.requests.append((keyword, number))

    def count(self, keyword):
        with self._lock:
            return sum(1 for name, _ in self.requests if name == keyword)

    def served(self, keyword, number):
        with self._lock:
            self._due.discard((keyword, number))
            if not self._due:
                self.all_good.set()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    wbufsize = -1
    disable_nagle_algorithm = True

    def log_message(self, *_):
        pass

    def do_GET(self):
        keyword, number, *rest = self.path.split("/")[2:]
        self.server.note(keyword, number)
        if rest:
            self.answer(page([]))  # the folder, where a lookup looks once when there is no next link
        elif keyword.startswith("good"):
            self.server.drip_begun.wait(MOST_WAIT)
            self.answer(good_page(keyword, int(number)))
            self.server.served(keyword, int(number))
        else:
            getattr(self, keyword)(int(number))

    def answer(self, text):
        body = text if isinstance(text, bytes) else text.encode()
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def stream(self, parts, **headers):
        """Sends until the parts or the visitor's patience end."""
        self.close_connection = True
        self.send_response(200)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        with contextlib.suppress(ConnectionError):
            for part in parts:
                self.wfile.write(part)
                self.wfile.flush()

    # What never ends.

    def drip(self, _):
        self.server.drip_begun.set()
        head = page([listing(f"http://{OWN}/drip")])[:-len("</html>")].encode()

        def parts():
            yield head
            while not self.server.all_good.wait(0.1):
                yield b"."

        self.stream(parts())

    def drip_forever(self, _):
        head = page([listing(f"http://{OWN}/drip")]).encode()
        self.stream(itertools.chain([head], iter(lambda: b"." if not self.server.ended.wait(0.1) else b"", b"")))

    def body(self, _):
        block = b" " * 65536
        self.stream(itertools.chain([page([listing(f"http://{OWN}/body")]).encode()], itertools.repeat(block)))

    def listings(self, _):
        block = 16 * listing("http://other.example/", padding="x" * 8192).encode()
        self.stream(itertools.chain([b"<ol>", listing(f"http://{OWN}/listings").encode()], itertools.repeat(block)))

    def bomb(self, _):
        self.stream(zipped_forever(), Content_Encoding="gzip")

    def headers_(self, _):
        self.close_connection = True
        with contextlib.suppress(ConnectionError):
            self.wfile.write(b"HTTP/1.1 200 OK\r\n")
            for number in itertools.count():
                self.wfile.write(b"X-Header-%d: %s\r\n" % (number, b"x" * 60000))

    def redirects(self, number):
        self.send_response(302)
        self.send_header("Location", f"/search/redirects/{number + 1}")
        self.send_header("Content-Length", "0")
        self.end_headers()

    def pages(self, number):
        self.answer(page([listing(f"http://host{number}.example/")], f"/search/pages/{number + 1}"))

    def loop(self, number):
        self.answer(page([listing(f"http://host{number}.example/")], f"/search/loop/{3 - number}"))

    def barren(self, number):
        self.answer(page([], f"/search/barren/{number + 1}"))

    # What is too much.

    def many(self, _):
        self.answer(page(listing(f"http://{OWN if place == 9999 else 'host.example'}/{place}")
                         for place in range(1, 10001)))

    def too_many(self, _):
        self.answer(page(listing(f"http://{OWN if place == 7 else 'host.example'}/{place}")
                         for place in range(1, 40001)))

    def title(self, _):
        self.answer(page([listing(f"http://{OWN}/title", "t" * MEBIBYTE)]))

    def huge_title(self, _):
        self.answer(page([listing(f"http://{OWN}/title", "<i>t</i>" + "t" * (16 * MEBIBYTE))]))

    def blanks(self, _):
        self.answer(page([listing(f"http://{OWN}/blanks", "a" + "\r\n \n\r" * (MEBIBYTE // 5) + "b")]))

    def brackets(self, _):
        self.answer(page([listing(f"http://{OWN}/brackets", "a" + "<" * (MEBIBYTE // 2) + ">" * (MEBIBYTE // 2))]))

    def entities(self, _):
        self.answer(page([listing(f"http://{OWN}/entities", "a" + "&nbsp;'\"" * (MEBIBYTE // 8))]))

    def escapes(self, _):
        self.answer(page([listing(f"http://{OWN}/" + "%25" * (MEBIBYTE // 3) + "escapes")]))

    # What is not text.

    def nuls(self, _):
        self.answer(page([listing(f"http://{OWN}/nu\0ls", "ti\0tle"), "\0" * 1000]))

    def broken(self, _):
        self.answer(page([listing(f"http://{OWN}/@", "@")]).encode()
                    .replace(b"@", b"\xc3\x28\xff\xfe\xed\xa0\x80\xf8\x88\xc0\xaf"))

    def script(self, _):
        self.answer(page([listing(f"http://{OWN}/script", "a<script>alert('here')</script>&lt;b&gt;"),
                          listing("javascript:alert(1).x", "b"), listing("http://../../x;#y;#z", "c;#d")]))
