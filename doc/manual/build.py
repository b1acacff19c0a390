#!/usr/bin/env python3
"""Makes the manual's pages from its texts, and packs them into one help file.

The texts are CommonMark with tables. contents.txt names them in their order; a line that is indented lies below the one
before that is not, one that ends in ":" is a heading. Pictures are named as they lie in doc/screenshots; the pages for
a browser show the dark one to those who prefer dark pages."""
import argparse
import html
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

PROGRAM = "Marovia Sondrel"
PICTURE = re.compile(r'<img src="\.\./screenshots/([^"]+)" alt="([^"]*)" ?/>')
LINK = re.compile(r'<a href="([a-z0-9-]+)\.md(#[^"]*)?"')

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<main>
{body}
<p class="steps">{steps}</p>
</main>
{sidebar}</body>
</html>
"""

PROJECT = """[OPTIONS]
Compatibility=1.1 or later
Compiled file={file}
Contents file=contents.hhc
Index file=index.hhk
Default topic=index.html
Full-text search=Yes
Language=0x409 English (United States)
Title={program}
[FILES]
{files}
"""

SITEMAP = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html><head></head><body>
{body}
</body></html>
"""


class Entry:
    """A line of the contents: a page, or a heading of pages."""

    def __init__(self, line):
        self.below = line.startswith(" ")
        name = line.strip()
        self.page = None if name.endswith(":") else name
        self.title = name.rstrip(":")


def contents(texts):
    lines = (texts / "contents.txt").read_text(encoding="utf-8").splitlines()
    entries = [Entry(line) for line in lines if line.strip()]
    for entry in entries:
        if entry.page:
            first = (texts / f"{entry.page}.md").read_text(encoding="utf-8").partition("\n")[0]
            entry.title = first.removeprefix("# ").strip()
    return entries


def convert(cmark, text):
    done = subprocess.run([cmark, "--extension", "table", "--to", "html"], input=text.encode(), stdout=subprocess.PIPE,
                          check=True)
    return done.stdout.decode()


def anchor(match):
    level, text = match.groups()
    name = re.sub(r"[^a-z0-9]+", "-", re.sub("<[^>]*>", "", text).lower()).strip("-")
    return f'<h{level} id="{name}">{text}</h{level}>'


def body_of(entry, texts, cmark):
    """The page's text with links to other pages and headings that can be linked to."""
    body = convert(cmark, (texts / f"{entry.page}.md").read_text(encoding="utf-8"))
    body = LINK.sub(lambda link: f'<a href="{link[1]}.html{link[2] or ""}"', body)
    return re.sub(r"<h([23])>(.*?)</h\1>", anchor, body)


def with_pictures(body, screenshots, folder, dark):
    """The body with its pictures, which are copied to the folder. Of those that there are not, only the words stay."""
    def picture(match):
        source, words = screenshots / match[1], match[2]
        if not source.exists():
            print(f"doc/manual: there is no picture {match[1]}", file=sys.stderr)
            return f"<em>{words}</em>"
        shutil.copyfile(source, folder / source.name)
        image = f'<img src="{source.name}" alt="{words}">'
        other = source.with_name(source.name.replace("-light-", "-dark-"))
        if not dark or other == source or not other.exists():
            return image
        shutil.copyfile(other, folder / other.name)
        return (f'<picture><source media="(prefers-color-scheme: dark)" srcset="{other.name}">{image}</picture>')

    return PICTURE.sub(picture, body)


def sidebar(entries, here):
    items = []
    for entry in entries:
        title = html.escape(entry.title)
        if not entry.page:
            items.append(f'<li class="heading">{title}</li>')
        elif entry is here:
            items.append(f'<li><a href="{entry.page}.html" aria-current="page">{title}</a></li>')
        else:
            items.append(f'<li><a href="{entry.page}.html">{title}</a></li>')
    return "<nav>\n<ul>\n" + "\n".join(items) + "\n</ul>\n</nav>\n"


def steps(pages, here):
    number = pages.index(here)
    links = []
    if number > 0:
        links.append(f'<a href="{pages[number - 1].page}.html">Back: {html.escape(pages[number - 1].title)}</a>')
    if number + 1 < len(pages):
        links.append(f'<a href="{pages[number + 1].page}.html">Next: {html.escape(pages[number + 1].title)}</a>')
    return " &#183; ".join(links)


def write_pages(entries, bodies, texts, folder, for_browser):
    pages = [entry for entry in entries if entry.page]
    for entry in pages:
        title = PROGRAM if entry.page == "index" else f"{entry.title} - {PROGRAM}"
        body = with_pictures(bodies[entry.page], texts.parent / "screenshots", folder, for_browser)
        (folder / f"{entry.page}.html").write_text(
            PAGE.format(title=html.escape(title), body=body.strip(), steps=steps(pages, entry),
                        sidebar=sidebar(entries, entry) if for_browser else ""), encoding="utf-8")
    shutil.copyfile(texts / "style.css", folder / "style.css")


def sitemap(entries):
    """The contents in the form that help files want."""
    def item(entry):
        local = f'<param name="Local" value="{entry.page}.html">' if entry.page else ""
        return (f'<li><object type="text/sitemap"><param name="Name" value="{html.escape(entry.title)}">{local}'
                "</object></li>")

    lines, open_list = ["<ul>"], False
    for entry in entries:
        if entry.below != open_list:
            lines.append("<ul>" if entry.below else "</ul>")
            open_list = entry.below
        lines.append(item(entry))
    lines += ["</ul>"] * (2 if open_list else 1)
    return SITEMAP.format(body="\n".join(lines))


def index(entries, bodies):
    """An index of the pages and of what they have under headings of their own."""
    places = {}
    for entry in entries:
        if entry.page:
            places.setdefault(entry.title, f"{entry.page}.html")
            for name, text in re.findall(r'<h[23] id="([^"]*)">(.*?)</h', bodies[entry.page]):
                places.setdefault(re.sub("<[^>]*>", "", text), f"{entry.page}.html#{name}")
    items = (f'<li><object type="text/sitemap"><param name="Name" value="{title}">'
             f'<param name="Local" value="{place}"></object></li>'
             for title, place in sorted(places.items(), key=lambda item: item[0].lower()))
    return SITEMAP.format(body="<ul>\n" + "\n".join(items) + "\n</ul>")


def pack(entries, bodies, texts, chmcmd, help_file):
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        write_pages(entries, bodies, texts, folder, for_browser=False)
        files = sorted(file.name for file in folder.iterdir())
        (folder / "contents.hhc").write_text(sitemap(entries), encoding="utf-8")
        (folder / "index.hhk").write_text(index(entries, bodies), encoding="utf-8")
        (folder / "manual.hhp").write_text(
            PROJECT.format(file=help_file.name, program=PROGRAM, files="\n".join(files)), encoding="utf-8")
        done = subprocess.run([chmcmd, "manual.hhp"], cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              check=False)
        made = folder / help_file.name
        if done.returncode or not made.exists():
            raise SystemExit(f"doc/manual: {chmcmd} failed: {done.stdout.decode(errors='replace')}")
        shutil.copyfile(made, help_file)


def write_stamp(stamp, entries, texts):
    """The file that stands for all that was made, and beside it the list of what it was made of."""
    sources = [texts / "contents.txt", texts / "style.css"]
    for entry in entries:
        if entry.page:
            text = texts / f"{entry.page}.md"
            sources.append(text)
            for name in re.findall(r"\]\(\.\./screenshots/([^)]+\.png)\)", text.read_text(encoding="utf-8")):
                picture = texts.parent / "screenshots" / name
                dark = picture.with_name(picture.name.replace("-light-", "-dark-"))
                sources += [file for file in (picture, dark) if file.exists()]
    names = sorted({str(source).replace(" ", "\\ ") for source in sources})
    stamp.with_name(stamp.name + ".d").write_text(f"{stamp}: " + " ".join(names) + "\n", encoding="utf-8")
    stamp.touch()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--texts", type=Path, required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--cmark", required=True)
    parser.add_argument("--pages", type=Path, required=True)
    parser.add_argument("--chmcmd")
    parser.add_argument("--help-file", type=Path)
    parser.add_argument("--stamp", type=Path, required=True)
    options = parser.parse_args()

    entries = contents(options.texts)
    bodies = {entry.page: body_of(entry, options.texts, options.cmark).replace("{VERSION}", options.version)
              for entry in entries if entry.page}
    shutil.rmtree(options.pages, ignore_errors=True)
    options.pages.mkdir(parents=True)
    write_pages(entries, bodies, options.texts, options.pages, for_browser=True)
    if options.chmcmd:
        pack(entries, bodies, options.texts, options.chmcmd, options.help_file)
    write_stamp(options.stamp, entries, options.texts)


if __name__ == "__main__":
    main()
