"""Makes up web sites of small shops: a folder per host name, with HTML pages in it.

The same arguments always give the same bytes. With each generation some pages are written anew and a few are
offline, so that a search engine ranks them differently.
"""
import html
import random
import unicodedata
from dataclasses import dataclass, field
from pathlib import Path

from demo import words

# Shares of the pages that a generation writes anew, and that are offline in it.
REWRITTEN = .2
OFFLINE = .06


@dataclass
class Page:
    path: str
    theme: str
    phrase: str


@dataclass
class Site:
    host: str
    shop: str
    themes: list
    pages: list = field(default_factory=list)


def plan(sites=30, pages=600, seed=1):
    """The shops and the addresses of their pages, which stay the same in every generation."""
    rng = random.Random(seed)
    themes = sorted(words.THEMES)
    mainly = themes * (sites // len(themes) + 1)
    rng.shuffle(mainly)
    shops = [_make_site(rng, first, theme)
             for first, theme in zip(rng.sample(words.FIRST_NAMES, sites), mainly)]
    sizes = [rng.randint(2, 9) for _ in shops]
    for site, size in zip(shops, sizes):
        used = {"index.html"}
        for _ in range(max(2, pages * size // sum(sizes) - 1)):
            theme = site.themes[0] if rng.random() < .5 else rng.choice(site.themes)
            phrase = rng.choice(words.THEMES[theme][0])
            site.pages.append(Page(_make_path(rng, theme, phrase, used), theme, phrase))
    return shops


def write(folder, generation=0, **arguments):
    """Writes the pages of a generation below the folder, <folder>/<host>/..., and returns the sites."""
    sites = plan(**arguments)
    for site in sites:
        root = Path(folder, site.host)
        rng = random.Random(site.host)
        home = [text for theme in site.themes
                for text in _sentences(rng, theme, rng.choice(words.THEMES[theme][0]), 3)]
        links = [(_quoted(page.path), page.phrase) for page in site.pages]
        _write_page(root / "index.html", "Welcome to " + site.shop, home, links, _meta_tags(site))
        for number, page in enumerate(site.pages):
            if _is_offline(site, page, generation):
                continue
            rng = random.Random(f"{site.host}/{page.path}/{_version(site, page, generation)}")
            title = "" if rng.random() < .01 else _title(rng, site.shop, page)
            text = _sentences(rng, page.theme, page.phrase, rng.randint(6, 30))
            up = "../" * page.path.count("/")
            neighbours = [site.pages[(number + step) % len(site.pages)] for step in (1, 2)]
            _write_page(root / page.path, title, text, [(up + "index.html", "Home")] + [
                (up + _quoted(other.path), "See also") for other in neighbours])
    return sites


def _make_site(rng, first, theme):
    shop = f"{first} {rng.choice(words.LAST_NAMES)}"
    plain = unicodedata.normalize("NFD", shop).encode("ascii", "ignore").decode().lower()
    name = plain.replace(" ", "" if rng.random() < .4 else "-")
    others = rng.sample([other for other in sorted(words.THEMES) if other != theme], rng.randint(1, 4))
    return Site(rng.choice(words.HOST_FORMS).format(name), shop, [theme] + others)


def _make_path(rng, theme, phrase, used):
    vocabulary = words.THEMES[theme][1]
    if rng.random() < .5:
        name = phrase.lower().replace("'", "").replace(" & ", "-").replace(" ", "-")
    else:
        name = "-".join(rng.sample(vocabulary, rng.choice([1, 1, 2])))
    folder = rng.choice(words.FOLDERS).format(w=rng.choice(vocabulary))
    odd = rng.random()
    if odd < .03:
        name = name.replace("-", " ") + " sale"
    elif odd < .05:
        folder = f"~{rng.choice(['anna', 'ben', 'carla'])}/"
    elif odd < .07:
        name += f"({rng.randint(2, 9)})"
    path, number = f"{folder}{name}.html", 1
    while path in used:
        number += 1
        path = f"{folder}{name}-{number}.html"
    used.add(path)
    return path


def _happens(what, share, site, page, generation):
    return random.Random(f"{what} {site.host}/{page.path} {generation}").random() < share


def _version(site, page, generation):
    return sum(_happens("rewritten", REWRITTEN, site, page, each) for each in range(1, generation + 1))


def _is_offline(site, page, generation):
    return generation > 0 and _happens("offline", OFFLINE, site, page, generation)


def _capital(text):
    return text[:1].upper() + text[1:]


def _title(rng, shop, page):
    w, v = rng.sample(words.THEMES[page.theme][1], 2)
    return rng.choice(words.TITLES).format(shop=shop, p=page.phrase, P=_capital(page.phrase), w=w, v=v,
                                           W=_capital(w), f=rng.choice(words.FILLERS))


def _sentences(rng, theme, phrase, count):
    phrases, vocabulary = words.THEMES[theme]
    result = []
    for _ in range(count):
        other = rng.choice(words.THEMES[rng.choice(sorted(words.THEMES))][0])
        p = phrase if rng.random() < .6 else rng.choice(phrases)
        w, v = rng.sample(vocabulary, 2)
        f, g = rng.sample(words.FILLERS, 2)
        result.append(rng.choice(words.SENTENCES).format(p=p, P=_capital(p), w=w, v=v, f=f, g=g, o=other))
    return result


def _meta_tags(site):
    """What a shop says of itself in the head of its home page."""
    phrases = list(dict.fromkeys(page.phrase for page in site.pages))[:6]
    return {"keywords": ", ".join(phrases), "description": f"{site.shop} sells {phrases[0]} and {phrases[-1]}."}


def _quoted(path):
    return path.replace(" ", "%20")


def _write_page(path, title, sentences, links, meta_tags=None):
    def text(plain):
        return html.escape(plain).encode("ascii", "xmlcharrefreplace").decode()

    paragraphs = [sentences[start:start + 4] for start in range(0, len(sentences), 4)]
    lines = ["<!DOCTYPE html>", '<html lang="en">', "<head>",
             '<meta http-equiv="Content-Type" content="text/html; charset=iso-8859-1">',
             f"<title>{text(title)}</title>"]
    lines += [f'<meta name="{name}" content="{text(content)}">' for name, content in (meta_tags or {}).items()]
    lines += ["</head>", "<body>", f"<h1>{text(title) or 'Welcome'}</h1>"]
    lines += [f"<p>{text(' '.join(paragraph))}</p>" for paragraph in paragraphs]
    lines += ["<ul>"] + [f'<li><a href="{address}">{text(name)}</a></li>' for address, name in links]
    lines += ["</ul>", "</body>", "</html>", ""]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(lines), encoding="ascii", newline="\n")
