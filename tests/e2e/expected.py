"""What a lookup must find, worked out from the engine's own order and from the rules of tracking alone."""
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

from demo import engine

ESCAPES = {"7e": "~", "2e": ".", "2d": "-", "21": "!", "23": "#", "24": "$", "25": "%", "5e": "^", "2c": ",",
           "2f": "/", "26": "&", "28": "(", "29": ")", "2b": "+", "60": "`", "3d": "=", "7b": "{", "7d": "}",
           "7c": "|", "5b": "[", "5d": "]", "5c": "\\", "5f": "_", "3a": ":", "27": "'", "3b": ";", "3c": "<",
           "3e": ">", "3f": "?"}


@dataclass(frozen=True)
class Definition:
    """How an engine definition queries and pages."""

    name: str
    per_page: int
    paged: bool
    any_word: bool = False
    stock: bool = False  # Omega's own page, which searches titles and file names too

    def count_text(self, count):
        """What is cut out of the page as the number of hits."""
        # The stock page says "All 45 matches" when it holds them all, and the definition looks for other words.
        return "" if count == 0 or self.stock and count <= self.per_page else str(count)


class Order:
    """Asks Omega on its command line for all that it finds, in its order."""

    def __init__(self, index_folder):
        self._environment = engine.configure(index_folder)
        template = Path(index_folder, "templates", "order")
        template.write_bytes(Path(__file__).with_name("order.template").read_bytes())

    def ask(self, keyword, definition):
        """The addresses of all hits for a query as the definition makes it."""
        done = subprocess.run([engine.CGI, "DB=default", "FMT=order", "HITSPERPAGE=10000", "MINHITS=10000",
                               f"DEFAULTOP={'or' if definition.any_word else 'and'}",
                               f"STOCK={'1' if definition.stock else ''}", f"P={keyword}"],
                              env=self._environment, stdin=subprocess.DEVNULL, capture_output=True, check=True)
        count, *urls = done.stdout.decode("latin-1").partition("\n\n")[2].split("\n")
        urls = [url for url in urls if url]
        if int(count) != len(urls):
            raise RuntimeError(f"Omega tells of {count} hits for {keyword!r} and shows {len(urls)}")
        return urls


def shown(url):
    """An address as the program keeps it: known escapes decoded, others dropped."""
    return re.sub("%(..)", lambda found: ESCAPES.get(found[1].lower(), ""), url)


def walk(urls, definition, links):
    """The listings that a lookup gets to see: pairs of address and page."""
    listings = []
    for page, start in enumerate(range(0, len(urls), definition.per_page), 1):
        listings += [(shown(url), page) for url in urls[start:start + definition.per_page]]
        if len(listings) >= links or not definition.paged:
            break
    return listings


def belongs(url, tracked):
    """Whether a listing is one of a tracked address."""
    short, wanted = _shortened(url), _shortened(tracked)
    host, _, path = short.partition("/")
    wanted_host, _, wanted_path = wanted.partition("/")
    if host != wanted_host:
        return False
    if not path and wanted_path:
        return False
    return short in wanted or wanted in short


def rows(keyword, count_text, listings, tracked, status):
    """The rows of a keyword that is looked up for the first time: its own, then one per further hit."""
    hits = [(position, page, url) for position, (url, page) in enumerate(listings, 1)
            for address in tracked if belongs(url, address)]
    result = [{"Keyword": keyword, "Count": count_text, "CurPos": "", "Page": "",
               "LastPosition": "", "Change": "", "URL": "", "Status": status}]
    for number, (position, page, url) in enumerate(hits):
        found = {"CurPos": str(position), "Page": str(page), "URL": url}
        if number == 0:
            result[0].update(found, Change=f"{position}+")
        else:
            result.append({"Keyword": f"{keyword}({number})", "Count": "", "LastPosition": "", "Change": "",
                           "Status": status, **found})
    return result


def _shortened(url):
    url = url.strip(" ")
    url = url.partition("//")[2] if "//" in url else url
    return url[4:].lower() if url.lower().startswith("www.") else url.lower()
