"""compare.py READ_CORPUS FOLDER: reads every workbook, archive and CSV file below FOLDER with our readers and with others:
workbooks with openpyxl (or with the JSON of texts beside them, as generate.py writes it), archives with Python's zipfile, CSV
files with their JSON twins. Prints every difference and counts; each difference must be explained by a rule, or is a bug."""

import collections
import json
import os
import pathlib
import subprocess
import sys
import zipfile

import expected

differences = collections.defaultdict(list)
counts = collections.Counter()


def differ(file, *what):
    differences[file].append(what)


def texts_beside(path):
    """What was put into a generated workbook, in the form of expected.sheets."""
    def cells(rows):
        return {(r, c): text for r, row in enumerate(rows, 1) for c, text in enumerate(row, 1) if text != ""}
    return [(name, cells(rows)) for name, rows in json.loads(path.read_text()).items()]


def compare_workbook(file, ours):
    counts["workbooks"] += 1
    beside = pathlib.Path(file).with_suffix(".json")
    try:
        theirs = texts_beside(beside) if beside.exists() else expected.sheets(file)
    except Exception as error:  # whatever ends it, ours must say something sensible too
        counts["workbooks that openpyxl refuses"] += 1
        outcome = ours.get("error") or [sheet.get("error", "read") for sheet in ours["sheets"]]
        print(f"  refused by openpyxl: {file}: {error!r:.80}; ours: {outcome}")
        return
    if "error" in ours:
        return differ(file, ours["error"])
    names = [sheet["name"] for sheet in ours["sheets"]]
    if names != [name for name, _ in theirs]:
        differ(file, "sheets", names, [name for name, _ in theirs])
    theirs = dict(theirs)
    for sheet in ours["sheets"]:
        cells = theirs.get(sheet["name"])
        if "error" in sheet:
            differ(file, sheet["name"], sheet["error"])
            continue
        got = {(r, c): text for r, row in enumerate(sheet["rows"], 1) for c, text in enumerate(row, 1) if text != ""}
        if cells is None:  # a chart, or a sheet that only we see
            if got:
                differ(file, sheet["name"], f"{len(got)} cells that only we see")
            continue
        counts["worksheets"] += 1
        for place in sorted(set(got) | set(cells)):
            counts["cells"] += 1
            if got.get(place) != cells.get(place):
                differ(file, sheet["name"], place, got.get(place), cells.get(place))


def compare_archive(file, ours):
    counts["archives"] += 1
    try:
        with zipfile.ZipFile(file) as archive:
            theirs = []
            for info in archive.infolist():
                try:
                    archive.read(info)
                    theirs.append((info.orig_filename, info.file_size, info.CRC, True))
                except Exception:
                    theirs.append((info.orig_filename, info.file_size, info.CRC, False))
    except Exception as error:
        theirs = repr(error)
    if "error" in ours or isinstance(theirs, str):
        if "error" not in ours or not isinstance(theirs, str):
            differ(file, ours.get("error", "read"), theirs if isinstance(theirs, str) else "read")
        return
    ours = [(m["path"], m["size"], m["crc32"], "error" not in m) for m in ours["members"]]
    counts["members"] += len(ours)
    if len(ours) != len(theirs):
        differ(file, f"{len(ours)} members", f"{len(theirs)} members")
    for pair in zip(ours, theirs):
        if pair[0] != pair[1]:
            differ(file, *pair)


def compare_text(file, ours):
    twin = pathlib.Path(file.replace("/csvs/", "/json/")).with_suffix(".json")
    if not twin.exists():
        return
    counts["CSV files"] += 1
    header, *rows = ours["rows"]
    got = [dict(zip(header, row + [""] * (len(header) - len(row)))) for row in rows]
    theirs = json.loads(twin.read_text())
    if got != theirs:
        differ(file, got, theirs)


def main():
    reader, folder = sys.argv[1:3]
    kinds = {".xlsx": compare_workbook, ".xlsm": compare_workbook, ".zip": compare_archive, ".csv": compare_text}
    files = sorted(os.path.join(top, name) for top, _, names in os.walk(folder) for name in names
                   if pathlib.Path(name).suffix.lower() in kinds)
    for start in range(0, len(files), 100):
        output = subprocess.run([reader, *files[start:start + 100]], check=True, capture_output=True, text=True).stdout
        for line in filter(None, output.split("\n")):
            ours = json.loads(line)
            file = ours["file"]
            kinds[pathlib.Path(file).suffix.lower()](file, ours)
    for file, found in differences.items():
        print(os.path.relpath(file, folder))
        for what in found[:10]:
            print("   ", " | ".join(str(part)[:120] for part in what))
        if len(found) > 10:
            print(f"    and {len(found) - 10} more")
    print(", ".join(f"{count} {name}" for name, count in counts.items()))
    print(f"{sum(map(len, differences.values()))} differences in {len(differences)} files")


main()
