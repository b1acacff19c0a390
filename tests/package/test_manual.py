"""The manual: its links and pictures lead somewhere, and what it sets in bold stands on the program's windows."""
import re
import sys
import unittest
from pathlib import Path

SOURCES = ("automation", "engines", "keywords", "lookup", "optimizer", "shell")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
# What the toolkit or the reader's eye adds: captions of standard buttons, and a page told without its menu.
KNOWN = {"OK", "Cancel"}


def plain(text):
    """A caption as it is read: without the mark of its key, colons and blanks at its end."""
    return " ".join(text.replace("&", "").split()).rstrip(":").rstrip()


def captions(root):
    """All texts of the program's windows; those that go over several lines as one."""
    found = set()
    for folder in SOURCES:
        for file in (root / folder).glob("*.cpp"):
            text = re.sub(r'"(?:_s|_L1)?\s*\n\s*u?"', "", file.read_text(encoding="utf-8"))
            found |= {plain(caption.replace('\\"', '"')) for caption in LITERAL.findall(text)}
    return found


class Manual(unittest.TestCase):
    root = Path()

    def setUp(self):
        folder = self.root / "doc" / "manual"
        self.texts = {file.stem: file.read_text(encoding="utf-8") for file in sorted(folder.glob("*.md"))}
        self.listed = [line.strip() for line in (folder / "contents.txt").read_text(encoding="utf-8").splitlines()
                       if line.strip() and not line.strip().endswith(":")]

    def test_lists_every_page_once(self):
        self.assertEqual(sorted(self.listed), sorted(self.texts))

    def test_begins_every_page_with_a_title_of_its_own(self):
        titles = [text.partition("\n")[0] for text in self.texts.values()]
        self.assertTrue(all(title.startswith("# ") for title in titles), titles)
        self.assertEqual(len(set(titles)), len(titles))

    def test_links_to_pages_that_there_are(self):
        broken = [(page, link) for page, text in self.texts.items()
                  for link in re.findall(r"[^!]\[[^]]*\]\(([^)]*)\)", text)
                  if link.removesuffix(".md") not in self.texts]
        self.assertEqual(broken, [])

    def test_shows_pictures_that_there_are(self):
        missing = [(page, picture) for page, text in self.texts.items()
                   for picture in re.findall(r"!\[[^]]*\]\(([^)]*)\)", text)
                   if not (self.root / "doc" / "manual" / picture).is_file()]
        self.assertEqual(missing, [])

    def test_reaches_every_page_from_another(self):
        linked = {link.removesuffix(".md") for text in self.texts.values()
                  for link in re.findall(r"\]\(([a-z-]+\.md)\)", text)}
        self.assertEqual(set(self.texts) - linked - {"index"} - {"keys"}, set())

    def test_calls_things_as_the_program_does(self):
        known = captions(self.root) | KNOWN
        unknown = []
        for page, text in self.texts.items():
            for bold in re.findall(r"\*\*([^*]+)\*\*", text):
                if not all(plain(part) in known for part in " ".join(bold.split()).split(" > ")):
                    unknown.append((page, bold))
        self.assertEqual(unknown, [])


if __name__ == "__main__":
    Manual.root = Path(sys.argv.pop(1))
    unittest.main()
