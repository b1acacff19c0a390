"""The demo's project: some shops of one's own, some competitors, and what their customers search for."""
import datetime
from pathlib import Path

NAME = "Demo"
ENGINE = "Omega"
LINKS = 30  # listings to look through per keyword

KEYWORDS = (
    "blue shoes", "running shoes", "garden chairs", "garden tools", "cheap flights", "hotels in Lisbon",
    "kitchen knives", "salt & pepper mills", "mountain bikes", "used books", "children's books", "acoustic guitar",
    "dog food", "wooden tables", "laptop repair", "organic honey", "green tea", "tennis rackets", "car insurance",
    "picture frames", "reading glasses", "zeppelin moorings",
)

MONTHS = ("January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
          "November", "December")


def write_engine_data(system, base):
    """The engine data file, for the engine at this address."""
    text = Path(__file__).with_name("engines.dat").read_text(encoding="ascii").replace("{BASE}", base)
    Path(system).mkdir(parents=True, exist_ok=True)
    _write(Path(system, "qlteng4.dat"), text.splitlines())


def write_project(app, urls, keywords=KEYWORDS, *, name=NAME, engines=(ENGINE,), links=LINKS, top_only=False,
                  today=None):
    """A project's settings and keywords, and the list of projects. urls: pairs of URL and whether a competitor's."""
    day = today or datetime.date.today()
    date = f"{MONTHS[day.month - 1]},{day.day:02} {day.year}"
    settings = ["[Schedler]", "SchedlerEnable=False", "Frequency=0", f"LastLookup={date}", f"StartDate={date}",
                "StartTime=12:00:00 PM", f"NextLookup={date}", "SentReport=False", "ExcludeUnRanking=False",
                "KeywordSummary=True", f"TopPosOnly={top_only}", "RankingDetail=False", "EngineSummary=False",
                "KeywordURL=False", "Reportformat=1", "ReportTo=", "Subject=", "CC=", f"NumLink={links}", "[URL]"]
    settings += [f"{number}={url}|{competitor}" for number, (url, competitor) in enumerate(urls, 1)]
    settings += [f"NumURL={len(urls)}", "[Engine]"]
    settings += [f"{number}={engine}" for number, engine in enumerate(engines, 1)]
    settings += [f"NumEngine={len(engines)}"]
    folder = Path(app, "Projects", name)
    folder.mkdir(parents=True, exist_ok=True)
    _write(folder / f"{name}.dat", settings)
    _write(folder / "Keywords.dat", [f"{keyword};-1" for keyword in keywords])
    _write(Path(app, "project.dat"), ["[Accounts]", f"1={name}", "Last=1"])


def _write(path, lines):
    path.write_text("".join(line + "\r\n" for line in lines), encoding="cp1252", newline="")
