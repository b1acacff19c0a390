#!/usr/bin/python3
"""Prints what another program than the one that wrote it sees in an Excel 97 workbook, as JSON.

    read_workbook.py FILE.xls

Debian's own interpreter: only that one sees Debian's modules.
"""
import json
import sys

import xlrd

HORIZONTAL = {0: "general", 1: "left", 2: "centre", 3: "right", 5: "justify"}
VERTICAL = {0: "top", 1: "centre", 2: "bottom", 3: "justify"}


def colour(book, index):
    value = book.colour_map.get(index)
    return None if value is None else "%02X%02X%02X" % value


def cell_of(book, sheet, row, column):
    cell = sheet.cell(row, column)
    xf = book.xf_list[cell.xf_index]
    font = book.font_list[xf.font_index]
    border = xf.border
    result = {
        "value": cell.value,
        "type": ("empty", "text", "number", "date", "boolean", "error", "blank")[cell.ctype],
        "font": font.name, "size": font.height / 20, "bold": font.weight >= 700, "italic": bool(font.italic),
        "underline": font.underline_type, "colour": colour(book, font.colour_index),
        "background": colour(book, xf.background.pattern_colour_index) if xf.background.fill_pattern else None,
        "horizontal": HORIZONTAL.get(xf.alignment.hor_align), "vertical": VERTICAL.get(xf.alignment.vert_align),
        "shrink": bool(xf.alignment.shrink_to_fit),
    }
    for edge in ("left", "top", "right", "bottom"):
        result[edge] = getattr(border, edge + "_line_style")
        result[edge + "Colour"] = colour(book, getattr(border, edge + "_colour_index"))
    result["diagonals"] = [bool(border.diag_down), bool(border.diag_up)]
    link = sheet.hyperlink_map.get((row, column))
    if link:
        result["link"] = link.url_or_path if isinstance(link.url_or_path, str) else link.url_or_path.decode()
    return result


def name_of(row, column):
    letters = ""
    number = column + 1
    while number:
        number, digit = divmod(number - 1, 26)
        letters = chr(65 + digit) + letters
    return f"{letters}{row + 1}"


def sheet_of(book, sheet):
    cells = {name_of(row, column): cell_of(book, sheet, row, column)
             for row in range(sheet.nrows) for column in range(sheet.row_len(row))}
    return {
        "cells": cells,
        "merged": sorted(f"{name_of(top, left)}:{name_of(bottom - 1, right - 1)}"
                         for top, bottom, left, right in sheet.merged_cells),
        "heights": {str(row + 1): info.height / 20 for row, info in sheet.rowinfo_map.items()},
        "widths": {name_of(0, column)[:-1]: info.width / 256 for column, info in sheet.colinfo_map.items()},
        "breaks": [row + 1 for row, _, _ in sheet.horizontal_page_breaks],
        "active": sheet.sheet_selected == 1 and sheet.sheet_visible == 1,
        "rows": sheet.nrows,
    }


def main():
    book = xlrd.open_workbook(sys.argv[1], formatting_info=True)
    print(json.dumps({
        "biff": book.biff_version,
        "sheets": book.sheet_names(),
        "content": {sheet.name: sheet_of(book, sheet) for sheet in book.sheets()},
    }))


if __name__ == "__main__":
    main()
