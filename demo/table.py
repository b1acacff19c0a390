"""The positions of a lookup as a table of text."""
import re
import shutil
import sys

HEADS = ("Keyword", "Position", "Page", "Change", "Results", "Also at", "Whose", "Matched URL")
NUMBERS = {1, 2, 4}  # columns
CHANGE = 3
SHOWN = 3  # further hits

GREEN, RED, GREY, BOLD = "32", "31", "90", "1"
ARROWS = {"up": "\N{UPWARDS ARROW}", "down": "\N{DOWNWARDS ARROW}", "same": "=", "none": " "}
PLAIN_ARROWS = {"up": "^", "down": "v", "same": "=", "none": " "}


class Style:
    """What the output can show: colours only on a terminal, arrows only where the encoding has them. On a terminal
    the table is as wide as that, elsewhere as wide as it is."""

    def __init__(self, stream=sys.stdout):
        self.colours = stream.isatty()
        self.width = shutil.get_terminal_size().columns if self.colours else 0
        try:
            "".join(ARROWS.values()).encode(stream.encoding or "ascii")
            self.arrows = ARROWS
        except UnicodeEncodeError:
            self.arrows = PLAIN_ARROWS

    def colour(self, text, code):
        return f"\033[{code}m{text}\033[0m" if self.colours and code else text


def group(rows):
    """The rows of keywords, in order, each with its further hits: pairs of a row and a list of rows."""
    names = {row["Keyword"] for row in rows}
    groups = {}
    for row in rows:
        head = re.fullmatch(r"(.*)\(\d+\)", row["Keyword"])
        if head and head[1] in names:
            groups[head[1]][1].append(row)
        else:
            groups[row["Keyword"]] = (row, [])
    return list(groups.values())


def movement(row):
    """What happened to a keyword: "new", "rose", "fell", "kept", "lost" or "absent"."""
    now, before = row["CurPos"], row["LastPosition"]
    if not now:
        return "lost" if before else "absent"
    if not before:
        return "new"
    return "rose" if int(now) < int(before) else "fell" if int(now) > int(before) else "kept"


# movement: arrow and colour
LOOKS = {"new": ("up", GREEN), "rose": ("up", GREEN), "fell": ("down", RED), "kept": ("same", ""),
         "lost": ("down", RED), "absent": ("none", GREY)}


def change_text(row, style):
    moved = movement(row)
    if moved == "absent":
        return "  not found"
    text = f"{style.arrows[LOOKS[moved][0]]} {row['Change']}"
    return f"{text} {moved}" if moved in ("new", "lost") else text


def further_text(further):
    """The positions of further hits, the first of them."""
    positions = ", ".join(row["CurPos"] for row in further[:SHOWN])
    return f"{positions} +{len(further) - SHOWN}" if len(further) > SHOWN else positions


def elided(text, width):
    """The text without its middle where it is too long."""
    if len(text) <= width:
        return text
    kept = width - 3
    return text[:(kept + 1) // 2] + "..." + text[len(text) - kept // 2:]


def render(rows, whose, style):
    """The table's lines. whose(url) tells to whom a matched URL belongs."""
    cells = [HEADS]
    colours = [BOLD]
    for row, further in group(rows):
        found = bool(row["CurPos"])
        cells.append((row["Keyword"], row["CurPos"], row["Page"], change_text(row, style), row["Count"],
                      further_text(further), whose(row["URL"]) if found else "", row["URL"] if found else ""))
        colours.append(LOOKS[movement(row)][1])
    widths = [max(len(line[column]) for line in cells) for column in range(len(HEADS))]
    if style.width:
        widths[-1] = max(20, min(widths[-1], style.width - sum(widths[:-1]) - 2 * (len(widths) - 1)))
    lines = []
    for line, colour in zip(cells, colours):
        padded = [elided(text, width).rjust(width) if column in NUMBERS else elided(text, width).ljust(width)
                  for column, (text, width) in enumerate(zip(line, widths))]
        if line is HEADS:
            lines += [style.colour("  ".join(padded).rstrip(), BOLD), "  ".join("-" * width for width in widths)]
        else:
            padded[CHANGE] = style.colour(padded[CHANGE], colour)
            lines.append("  ".join(padded).rstrip())
    return lines


def summary(rows):
    """As in: 22 keywords: 3 rose, 2 fell, 1 new, 1 lost, 12 kept, 3 not found"""
    counts = {}
    heads = [row for row, _ in group(rows)]
    for row in heads:
        counts[movement(row)] = counts.get(movement(row), 0) + 1
    told = {"absent": "not found"}
    parts = [f"{counts[name]} {told.get(name, name)}" for name in ("rose", "fell", "new", "lost", "kept", "absent")
             if name in counts]
    return f"{len(heads)} keywords: {', '.join(parts)}"
