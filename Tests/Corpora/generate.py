"""generate.py FOLDER: workbooks by openpyxl, XlsxWriter and LibreOffice with every type of cell, number format and date that
the reader knows, and beside each a JSON file of the texts that it must read. Needs python3-openpyxl, python3-xlsxwriter
and, for the last kind, soffice."""

import datetime
import json
import math
import pathlib
import shutil
import subprocess
import sys

import openpyxl
import xlsxwriter

import expected

CODES = ["General", "0", "0.00", "#,##0", "#,##0.00", "0%", "0.00%", "0.0%", "0.00E+00", "# ?/?", "m/d/yyyy", "d-mmm-yy",
         "d-mmm", "mmm-yy", "h:mm AM/PM", "h:mm:ss AM/PM", "h:mm", "h:mm:ss", "m/d/yyyy h:mm", "mm:ss", "[h]:mm:ss", "mm:ss.0",
         "@", "00", "000", "00000", "0000000000", "yyyy-mm-dd", "yyyy-mm-dd hh:mm", "yyyy-mm-dd hh:mm:ss", "dd.mm.yyyy", "mmm",
         "mmmm", "yyyy", "[h]:mm", "[mm]:ss", '"No. "000', '0.0"m"', '0 "days"', "\\d0", "[Red]000", "[$-409]d/m/yyyy",
         "[$€-407]#,##0.00", "_-* #,##0.00_-", "0;-0;;@", "#,##0;[Red]-#,##0", "000;-000", "0.0%;[Red]-0.0%", "yyyy\"年\"m\"月\"",
         "hh\"h\"mm", "s", "dddd", "ddd d mmm"]

NUMBERS = [0, 1, -1, 7, 42, 59, 60, 61, 1000, 45000, 45000.5, 45000.25, 45000.75, 45000.999, 0.25, 0.5, 0.999, 1.5, 0.1, 0.07, 0.125,
           1 / 3, 2 / 3, -7, -7.5, 1234.5678, 123456789, 1e10, 1e14, 1e15, 1.5e15, 1e20, 1e-5, 1.23e-7, 2958465, 2958466, 3e6,
           36526.0 + 13 / 24 + 37 / 1440, 99.99, 3.14159265358979]

TEXTS = ["plain", "Ünïcødé 漢字 😀", " leading and trailing ", "two\nlines", "a < b & c > \"d\" 'e'", "tab\there", "007", "=1+1", "1e5", "TRUE",
         "#N/A", "2024-01-01", "x" * 32767, "\u00a0", "'quoted", "{{title}} {icon:coin}", "é (combining e\u0301)", "\u200f\u05e9\u05dc\u05d5\u05dd"]


def kind_of(code):
    built_in = {v: k for k, v in openpyxl.styles.numbers.BUILTIN_FORMATS.items()}
    return expected.classified(built_in.get(code, 164), None if code == "General" else code)


def texts_of_numbers(from_1904=False):
    return [[expected.shown(float(value), kind_of(code), from_1904) for value in NUMBERS] for code in CODES]


def by_openpyxl(folder, from_1904):
    book = openpyxl.Workbook()
    if from_1904:
        book.epoch = openpyxl.utils.datetime.CALENDAR_MAC_1904
    sheet = book.active
    sheet.title = "Numbers & “more”"
    for row, code in enumerate(CODES, 1):
        for column, value in enumerate(NUMBERS, 1):
            sheet.cell(row, column, value).number_format = code
    other = book.create_sheet("Texts")
    for row, text in enumerate(TEXTS, 1):
        cell = other.cell(row, 2, text)
        cell.data_type = "s"
    for row, value in enumerate([True, False], 1):
        other.cell(row, 3, value)
    for row, value in enumerate(["#N/A", "#REF!", "#DIV/0!", "#NAME?", "#NULL!", "#NUM!", "#VALUE!"], 1):
        other.cell(row, 4, value).data_type = "e"
    other.cell(1, 5, "=1+1")  # never calculated
    path = folder / ("openpyxl-1904.xlsx" if from_1904 else "openpyxl.xlsx")
    book.save(path)
    grid = [["", text] for text in TEXTS]
    for row, value in enumerate(["TRUE", "FALSE"]):
        grid[row].append(value)
    for row, value in enumerate(["#N/A", "#REF!", "#DIV/0!", "#NAME?", "#NULL!", "#NUM!", "#VALUE!"]):
        grid[row] += [""] * (3 - len(grid[row])) + [value]
    return path, {"Numbers & “more”": texts_of_numbers(from_1904), "Texts": grid}


def by_xlsxwriter(folder, inline, from_1904):
    name = "xlsxwriter" + ("-inline" if inline else "") + ("-1904" if from_1904 else "") + ".xlsx"
    book = xlsxwriter.Workbook(folder / name, {"constant_memory": inline, "date_1904": from_1904, "strings_to_formulas": False})
    sheet = book.add_worksheet("Numbers")
    for row, code in enumerate(CODES):
        style = book.add_format({"num_format": code})
        for column, value in enumerate(NUMBERS):
            sheet.write_number(row, column, value, style)
    other = book.add_worksheet("Texts")
    grid = []
    bold = book.add_format({"bold": True})
    for row, text in enumerate(TEXTS):
        other.write_string(row, 0, text)
        other.write_boolean(row, 2, row % 2 == 0)
        other.write_formula(row, 3, "=1+1", None, row)
        other.write_formula(row, 4, '="a"', None, text if len(text) < 1000 else "")
        other.write_blank(row, 9, None, bold)
        line = [text, "", "TRUE" if row % 2 == 0 else "FALSE", str(row), text if len(text) < 1000 else ""]
        if not inline:
            other.write_rich_string(row, 5, "plain ", bold, "bold", " tail" )
            line.append("plain bold tail")
        grid.append(line)
    day = book.add_format({"num_format": "yyyy-mm-dd"})
    moment = book.add_format({"num_format": "yyyy-mm-dd hh:mm"})
    dates = book.add_worksheet("Dates")
    lines = []
    start = datetime.datetime(1904 if from_1904 else 1900, 1, 2)  # it takes the first day for a time without a day
    for row in range(3000):
        when = start + datetime.timedelta(days=row * 17 % 59000, minutes=row * 7 % 1440)
        dates.write_datetime(row, 0, when, day)
        dates.write_datetime(row, 1, when, moment)
        lines.append([when.strftime("%Y-%m-%d").zfill(10), when.strftime("%Y-%m-%d %H:%M").removesuffix(" 00:00")])
    far = book.add_worksheet("Corners")
    far.write_number(0, 0, 1)
    far.write_string(1, 499, "last column")
    far.write_string(2, 500, "dropped")
    far.write_string(99_999, 3, "last row")
    far.write_string(100_000, 0, "dropped")
    corners = [["1"], [""] * 499 + ["last column"]] + [[]] * 99_997 + [["", "", "", "last row"]]
    book.close()
    return folder / name, {"Numbers": texts_of_numbers(from_1904), "Texts": grid, "Dates": lines, "Corners": corners}


def by_libreoffice(folder, source, texts):
    """LibreOffice reads a workbook of another, calculates formulas that show nothing or an error, trims what the others show,
    and writes all of it anew."""
    texts = json.loads(json.dumps(texts))
    if "xlsxwriter" in source.name:
        for line in texts["Texts"]:
            line[4] = "a" if line[4] in ("", "#N/A") else line[4].strip(" ")
    else:
        line = texts["Texts"][0]
        line += [""] * (4 - len(line)) + ["2"]
    target = folder / "libreoffice"
    target.mkdir(exist_ok=True)
    subprocess.run(["soffice", "--headless", "--convert-to", "xlsx:Calc MS Excel 2007 XML", "--outdir", target, source],
                   check=True, capture_output=True)
    path = folder / ("libreoffice-" + source.name)
    shutil.move(target / source.name, path)
    return path, texts


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    made = [by_openpyxl(folder, False), by_openpyxl(folder, True)]
    made += [by_xlsxwriter(folder, inline, from_1904) for inline in (False, True) for from_1904 in (False, True)]
    if shutil.which("soffice"):
        made += [by_libreoffice(folder, path, texts) for path, texts in made[:4]]
    for path, texts in made:
        path.with_suffix(".json").write_text(json.dumps(texts))


main()
