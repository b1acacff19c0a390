#!/usr/bin/python3
"""Prints what Gnumeric sees in a workbook, as JSON in the form of read_workbook.py.

    read_gnumeric.py FILE.xls
"""
import json
import subprocess
import sys
import tempfile
import xml.etree.ElementTree
from pathlib import Path

SPACE = "{http://www.gnumeric.org/v10.dtd}"
ROWS, COLUMNS = 60, 12  # styles reach to the end of the sheet; the cells looked at do not
TYPES = {"20": "boolean", "30": "number", "40": "number", "50": "error", "60": "text"}
HORIZONTAL = {"GENERAL": "general", "LEFT": "left", "CENTER": "centre", "RIGHT": "right", "JUSTIFY": "justify"}
VERTICAL = {"TOP": "top", "CENTER": "centre", "BOTTOM": "bottom", "JUSTIFY": "justify"}


def name_of(row, column):
    return f"{chr(65 + column)}{row + 1}"


def colour(text):
    return "".join(f"{int(part, 16) >> 8:02X}" for part in text.split(":"))


def children(element, *names):
    """The elements that the names lead to, none where one is missing."""
    found = [element]
    for name in names:
        found = [child for parent in found for child in parent.findall(SPACE + name)]
    return found


def look_of(style):
    """What a style makes of a cell."""
    font = children(style, "Font")[0]
    result = {
        "font": font.text, "size": float(font.get("Unit")), "bold": font.get("Bold") == "1",
        "italic": font.get("Italic") == "1", "underline": int(font.get("Underline")), "colour": colour(style.get("Fore")),
        "background": colour(style.get("Back")) if style.get("Shade") != "0" else None,
        "horizontal": HORIZONTAL.get(style.get("HAlign").rpartition("_")[2]),
        "vertical": VERTICAL.get(style.get("VAlign").rpartition("_")[2]), "shrink": style.get("ShrinkToFit") == "1",
    }
    lines = {line.tag.removeprefix(SPACE): line for line in style.findall(f"{SPACE}StyleBorder/*")}
    for edge in ("Left", "Top", "Right", "Bottom"):
        line = lines.get(edge)
        result[edge.lower()] = int(line.get("Style")) if line is not None else 0
        result[edge.lower() + "Colour"] = colour(line.get("Color")) if result[edge.lower()] else None
    result["diagonals"] = [name in lines and lines[name].get("Style") != "0" for name in ("Rev-Diagonal", "Diagonal")]
    for link in children(style, "HyperLink"):
        result["link"] = link.get("target")
    return result


def cells_of(sheet):
    cells = {}
    for region in children(sheet, "Styles", "StyleRegion"):
        first, last = ((int(region.get(end + "Row")), int(region.get(end + "Col"))) for end in ("start", "end"))
        look = look_of(children(region, "Style")[0])
        for row in range(first[0], min(last[0] + 1, ROWS)):
            for column in range(first[1], min(last[1] + 1, COLUMNS)):
                cells[name_of(row, column)] = {"value": "", "type": "empty", **look}
    for cell in children(sheet, "Cells", "Cell"):
        row, column = int(cell.get("Row")), int(cell.get("Col"))
        if row >= ROWS or column >= COLUMNS:
            continue
        kind = TYPES.get(cell.get("ValueType"), "formula")
        value = float(cell.text) if kind == "number" else cell.text or ""
        cells.setdefault(name_of(row, column), {}).update(value=value, type=kind)
    return cells


def sizes_of(sheet, names, key):
    """Sizes in points by row or column, as given for runs of them."""
    sizes = {}
    for info in children(sheet, *names):
        for number in range(int(info.get("No")), min(int(info.get("No")) + int(info.get("Count", 1)), ROWS)):
            sizes[key(number)] = float(info.get("Unit"))
    return sizes


def objects_of(sheet):
    """The shapes, with their places as offsets in points."""
    return [{"kind": item.tag.removeprefix(SPACE), "name": item.get("Name"), "text": item.get("Label"),
             "place": [float(part) for part in item.get("ObjectOffset").split()]}
            for item in sheet.findall(f"{SPACE}Objects/*")]


def sheet_of(sheet):
    scale = children(sheet, "PrintInformation", "Scale")[0]
    return {
        "cells": cells_of(sheet),
        "merged": sorted(merge.text for merge in children(sheet, "MergedRegions", "Merge")),
        "heights": sizes_of(sheet, ("Rows", "RowInfo"), lambda row: str(row + 1)),
        "widths": sizes_of(sheet, ("Cols", "ColInfo"), lambda column: chr(65 + column) if column < COLUMNS else ""),
        "breaks": [int(item.get("pos")) for item in children(sheet, "PrintInformation", "hPageBreaks", "break")],
        "objects": objects_of(sheet),
        "fit": [scale.get("type"), scale.get("cols"), scale.get("rows")],
    }


def main():
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder, "book.xml")
        subprocess.run(["ssconvert", "-T", "Gnumeric_XmlIO:sax:0", sys.argv[1], file], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        book = xml.etree.ElementTree.parse(file).getroot()
    sheets = {children(sheet, "Name")[0].text: sheet for sheet in children(book, "Sheets", "Sheet")}
    shown = int(children(book, "UIData")[0].get("SelectedTab"))
    content = {name: sheet_of(sheet) for name, sheet in sheets.items()}
    for number, sheet in enumerate(content.values()):
        sheet["active"] = number == shown
    print(json.dumps({"sheets": list(sheets), "content": content}))


if __name__ == "__main__":
    main()
