"""What a workbook's cells should show, told independently of our reader: openpyxl reads the file, and the rules of display
are written down here once more. Needs python3-openpyxl."""

import datetime
import math
import warnings

import openpyxl
from openpyxl.worksheet import _reader

warnings.filterwarnings("ignore")

MOST_ROWS, MOST_COLUMNS = 100_000, 500
DATE_IDS = {*range(14, 18), *range(27, 37), *range(50, 59)}
TIME_IDS = {*range(18, 22), *range(45, 48)}


def stripped(code):
    result, quoted, bracketed, i = "", False, False, 0
    while i < len(code):
        c = code[i]
        if c == "\\":
            i += 1
        elif c == '"':
            quoted = not quoted
        elif c == "[" and not quoted:
            bracketed = True
        elif c == "]" and bracketed and not quoted:
            bracketed = False
        elif not quoted and not bracketed:
            result += c
        i += 1
    return result.lower()


def classified(number_id, code):
    if number_id in DATE_IDS:
        return "date"
    if number_id == 22:
        return "dateTime"
    if number_id in TIME_IDS:
        return "time"
    if number_id in (9, 10):
        return "percent"
    if number_id < 164 or code is None:
        return "general"
    code = stripped(code)
    date, clock = any(c in code for c in "yd"), any(c in code for c in "hs")
    if date:
        return "dateTime" if clock else "date"
    if clock:
        return "time"
    if "m" in code and "0" not in code and "#" not in code:
        return "date"
    if "%" in code:
        return "percent"
    if len(code) >= 2 and set(code) == {"0"}:
        return len(code)
    return "general"


def number_text(value):
    if math.isfinite(value) and value == round(value) and abs(value) < 1e15:
        return str(int(value))
    return "%.15g" % value


def shown(value, kind, from_1904):
    if kind == "general":
        return number_text(value)
    if kind == "percent":
        return number_text(value * 100.0) + "%"
    if isinstance(kind, int):
        if value == round(value) and abs(value) < 1e15:
            return ("-" if value < 0 else "") + str(abs(int(value))).zfill(kind)
        return number_text(value)
    if not 0 <= value <= 2958465.999:
        return number_text(value)
    days = math.floor(value)
    seconds = math.floor((value - days) * 86400 + 0.5)
    base = datetime.datetime(1904, 1, 1) if from_1904 else datetime.datetime(1899, 12, 30)
    if not from_1904 and value < 61:
        days += 1
    # The calendar repeats after 400 years; Python's ends before ours does.
    cycles, days = divmod(days, 146097)
    when = base + datetime.timedelta(days=days, seconds=seconds)
    date = "%04d-%02d-%02d" % (when.year + 400 * cycles, when.month, when.day)
    time = "%02d:%02d" % (when.hour, when.minute)
    if kind == "date":
        return date
    if kind == "time":
        return time
    return date if time == "00:00" else date + " " + time


class Parser(_reader.WorkSheetParser):
    """Leaves dates as the numbers that they are stored as."""

    def __init__(self, *args, **kwargs):
        super().__init__(*args, **kwargs)
        self.date_formats = set()
        self.timedelta_formats = set()


_reader.WorkSheetParser = Parser
openpyxl.reader.excel.WorksheetReader.__init__.__globals__["WorkSheetParser"] = Parser


def sheets(path):
    """Sheet names in order, and for each sheet a map of (row, column) from 1 to what the cell shows; None for sheets
    without cells of their own."""
    book = openpyxl.load_workbook(path, data_only=True)
    from_1904 = book.epoch == openpyxl.utils.datetime.CALENDAR_MAC_1904
    result = []
    for sheet in book._sheets:
        if not hasattr(sheet, "_cells"):
            result.append((sheet.title, None))
            continue
        cells = {}
        for (row, column), cell in sheet._cells.items():
            value = cell.value
            if value is None or row > MOST_ROWS or column > MOST_COLUMNS:
                continue
            if isinstance(value, bool):
                text = "TRUE" if value else "FALSE"
            elif isinstance(value, (int, float)):
                kind = classified(cell._style.numFmtId, cell.number_format)
                text = shown(value, kind, from_1904)
            elif isinstance(value, (datetime.datetime, datetime.date, datetime.time)):
                text = value.isoformat().removesuffix("T00:00:00")
            else:
                text = str(value)
            if text != "":
                cells[row, column] = text
        result.append((sheet.title, cells))
    return result
