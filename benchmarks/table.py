#!/usr/bin/env python3
"""Runs the benchmark programs and prints their table.

Usage: scripts/with-desktop benchmarks/table.py [--brief] [--record] FOLDER DOCUMENT...
FOLDER holds what bench_documents wrote.

The programs print one line per measurement ("pair ROW DOCUMENT OURS THEIRS" or "value ROW DOCUMENT
NUMBER", separated by tabs); this file says what each row means and what its limit is.
"""

import collections
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WINDOWS = ROOT / "build/windows/bin"
NATIVE = ROOT / "build/native/bin"
NOTES = ROOT / "docs/speed.md"

Row = collections.namedtuple("Row", "key title unit limit")

# In the order of the table. The limit applies to the ratio ours / theirs; None for no limit.
RATIOS = [
    Row("open", "open to first painted page / PDFium load + page + render", "ms", 1.5),
    Row("open-whole", "open until the program answers again / the same", "ms", None),
    Row("page-turn", "page turn to painted / PDFium page + text page + render", "ms", 1.1),
    Row("zoom-step", "zoom step / PDFium render", "ms", 1.1),
    Row("zoom-step-painted", "zoom step to painted / the same", "ms", None),
    Row("rotation", "rotation / PDFium render", "ms", 1.1),
    Row("rotation-painted", "rotation to painted / the same", "ms", None),
    Row("mode-change", "through all four modes / the pages and renders needed", "ms", 1.1),
    Row("mode-change-painted", "through all four modes, painted / the same", "ms", None),
    Row("mode-renders", "renders of a mode change / renders needed", "", 1.0),
    Row("mode-loads", "page loads of a mode change / page loads needed", "", 1.0),
    Row("pan-repaint", "one move of a drag pan, painted / one copy of the client area", "ms", 4.0),
    Row("mark", "making a mark / PDFium render of the page with it", "ms", 1.2),
    Row("mark-painted", "making a mark to painted / the same", "ms", None),
    Row("open-stamped", "open with 100 stamps to first painted page / PDFium load + 100 pages", "ms",
        1.5),
    Row("open-stamped-known", "open until all 100 stamps can be edited / the same", "ms", None),
    Row("stamp-drag", "one move of a stamp, painted / four copies of the client area + the stamp",
        "ms", 1.0),
    Row("stamp-library", "opening the panel with 50 large pictures / decoding them once", "ms", 1.3),
    Row("stamp-library-memory", "working set with 50 large pictures in the panel / before", "MiB",
        None),
    Row("find-literal", "find in the whole document / PDFium page + text page + find", "ms", 1.1),
    Row("find-regex", "the same with a regular expression / the same PDFium calls", "ms", 1.1),
    Row("find-keystroke", "a keystroke in the find bar / PDFium text page + find", "ms", 1.2),
    Row("find-page", "its search of the shown page alone / the same", "ms", None),
    Row("collect-marks", "collecting 1,000 marks / PDFium's reading of them", "ms", 1.3),
    Row("mark-summary", "a summary of 1,000 marks / the PDFium calls it makes", "ms", 1.5),
    Row("binder-open", "open from a binder to painted / PDFium load + page + render", "ms", 1.5),
    Row("binder-tree", "rows of 50 binders of 1,000 files / plain rows", "ms", 1.5),
    Row("binder-load-level", "loading a file of 50 binders of 1,000 / of 5", "us", 1.5),
    Row("save", "a whole save / PDFium's copy into nothing", "ms", 1.4),
    Row("shelve", "shelving / PDFium's copy into nothing", "ms", 1.4),
    Row("page-delete", "deleting a page to painted / PDFium delete + page + render", "ms", 1.2),
    Row("page-insert", "inserting a page to painted / PDFium import + page + render", "ms", 1.2),
    Row("save-size", "size of a saved document / of its source", "KiB", 1.05),
    Row("memory", "peak working set after open / plain PDFium window", "MiB", 1.3),
    Row("turning-memory", "working set after 500 pages there and back / after 100", "MiB", 1.1),
    Row("plain-turning-memory", "the same with PDFium's calls alone", "MiB", None),
    Row("find-memory", "working set after five whole searches / after the first", "MiB", 1.1),
    Row("plain-find-memory", "the same with PDFium's calls alone", "MiB", None),
    Row("start", "start to painted window / empty Win32 window", "ms", None),
    Row("start-memory", "peak working set after start / empty Win32 window", "MiB", None),
    Row("start-with-document", "start to painted document / plain PDFium window", "ms", None),
]

# Ours minus theirs must not exceed the limit.
DIFFERENCES = [
    Row("turning-gdi", "GDI objects left behind by 1,000 page turns", "", 0),
    Row("turning-windows", "windows left behind by 1,000 page turns", "", 0),
    Row("turning-handles", "handles left behind by 1,000 page turns", "", 0),
]

COUNTS = [
    Row("stamp-drag-renders", "renderings during 200 moves of a stamp", "", 0),
    Row("pan-engine-calls", "calls into PDFium during 200 moves of a drag pan", "", 0),
]

TIMES = [
    Row("find-bad-pattern", "from Enter to \"Bad pattern\", (a+)+$ on a page of a's", "ms", 1000),
    Row("outline-fill", "first fill of the tree with an outline of 10,000 entries", "ms", 300),
    Row("binder-load", "loading 50 binders of 1,000 files", "ms", 2000),
]

ENGINE = [
    Row("engine-first-page", "engine: open and render page 1, Windows build / native", "ms", None),
    Row("engine-walk", "engine: load every page, Windows build / native", "ms", None),
    Row("engine-draw", "engine: draw up to 100 pages, Windows build / native", "ms", None),
    Row("engine-text", "engine: text of every page, Windows build / native", "ms", None),
    Row("engine-search", "engine: search every page, Windows build / native", "ms", None),
    Row("engine-save", "engine: write the document, Windows build / native", "ms", None),
]

SIZES = [
    Row("saved-size", "size of a written document / its source", "KiB", 1.05),
]

# Writing a document natively against the same for one whose objects are not packed, and against
# another program. Each is a new process.
SAVES = [
    ("engine, native: write the document / write it unpacked",
     [str(NATIVE / "bench_engine"), "--save", "{unpacked}"], 1.2),
    ("engine, native: write the document / qpdf rewrites it",
     ["qpdf", "{document}", "{out}.pdf"], 1.0),
]

# The time of a search in the reader (under Wine, document already open) against a new process of
# another program (native).
FIND_PEERS = [
    ("find-literal", "find in the whole document, Wine / pdfgrep, native",
     ["pdfgrep", "-c", "-i", "-F", "eigenvalue", "{document}"], 0.25),
    ("find-literal", "find in the whole document, Wine / pdftotext, native",
     ["pdftotext", "{document}", "{out}.txt"], 0.5),
    ("find-literal", "find in the whole document, Wine / mutool's text, native",
     ["mutool", "draw", "-q", "-F", "txt", "-o", "{out}.txt", "{document}"], 1.0),
    ("find-regex", "find a regular expression, Wine / pdfgrep, native",
     ["pdfgrep", "-c", "[Ee]igenvalues?", "{document}"], 0.25),
    ("find-regex", "find a regular expression, Wine / pdftotext, native",
     ["pdftotext", "{document}", "{out}.txt"], 0.5),
    ("find-regex", "find a regular expression, Wine / mutool's text, native",
     ["mutool", "draw", "-q", "-F", "txt", "-o", "{out}.txt", "{document}"], 1.0),
]

# The time of a new native process with our engine against a new process of another program.
PEERS = [
    ("--first-page", "engine, native: page 1 / mutool draw",
     ["mutool", "draw", "-q", "-r", "72", "-o", "{out}.png", "{document}", "1"]),
    ("--first-page", "engine, native: page 1 / pdftoppm",
     ["pdftoppm", "-r", "72", "-l", "1", "{document}", "{out}"]),
    ("--text", "engine, native: text of every page / mutool draw",
     ["mutool", "draw", "-q", "-F", "txt", "-o", "{out}.txt", "{document}"]),
    ("--text", "engine, native: text of every page / pdftotext",
     ["pdftotext", "{document}", "{out}.txt"]),
    ("--search", "engine, native: search every page / pdfgrep",
     ["pdfgrep", "-c", "-F", "function", "{document}"]),
]


class Samples:
    def __init__(self):
        self.pairs = collections.defaultdict(list)
        self.values = collections.defaultdict(list)

    def take(self, output):
        for line in output.splitlines():
            kind, row, document, *numbers = line.split("\t")
            if kind == "pair":
                self.pairs[row, document].append(tuple(map(float, numbers)))
            else:
                self.values[row, document].append(float(numbers[0]))


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


# A move to another processor in the middle of a comparison would distort it.
def stay_on_one_processor():
    os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})


def run(command):
    finished = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, text=True,
                              check=False, preexec_fn=stay_on_one_processor)
    if finished.returncode != 0:
        sys.exit(f"{command[0]} {command[1]} failed with {finished.returncode}.")
    return finished.stdout


def wine(program, *arguments):
    return run(["wine", WINDOWS / f"{program}.exe", *arguments])


def progress(text):
    print(f"== {text}", file=sys.stderr, flush=True)


def measure_reader(samples, documents):
    for document in documents:
        progress(f"The reader with {document.name}")
        samples.take(wine("bench_reader", windows_path(document)))
    for document in documents:
        progress(f"Turning pages of {document.name}")
        samples.take(wine("bench_turning", windows_path(document)))
        samples.take(wine("bench_turning", "--plain", windows_path(document)))


def measure_processes(samples, documents):
    progress("Starting programs")
    samples.take(wine("bench_processes", *map(windows_path, documents)))


def measure_engine(samples, documents, repetitions):
    for document in documents:
        progress(f"The engine with {document.name}")
        for _ in range(repetitions):
            windows, native = Samples(), Samples()
            windows.take(wine("bench_engine", windows_path(document)))
            native.take(run([NATIVE / "bench_engine", document]))
            for key, values in windows.values.items():
                samples.pairs[key].append((values[0], native.values[key][0]))
            for key, pairs in windows.pairs.items():
                samples.pairs[key].extend(pairs)


def milliseconds(command):
    start = time.perf_counter()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False,
                   preexec_fn=stay_on_one_processor)
    return (time.perf_counter() - start) * 1000


def measure_find(samples, document, repetitions):
    progress(f"Searching {document.name}")
    samples.take(wine("bench_find", "--plain", windows_path(document)))
    with tempfile.TemporaryDirectory() as folder:
        for _ in range(repetitions):
            ours = Samples()
            ours.take(wine("bench_find", windows_path(document)))
            for key, pairs in ours.pairs.items():
                samples.pairs[key].extend(pairs)
            for row, title, command, _ in FIND_PEERS:
                search = statistics.median(pair[0] for pair in ours.pairs[row, document.name])
                theirs = [part.format(document=document, out=f"{folder}/out") for part in command]
                samples.pairs[title, document.name].append((search, milliseconds(theirs)))


def measure_bad_pattern(samples, made):
    progress("Giving up a pattern")
    samples.take(wine("bench_find", "--bad-pattern", windows_path(made / "same-letters.pdf")))


def measure_marks(samples, document):
    progress(f"Marks in {document.name}")
    samples.take(wine("bench_marks", windows_path(document)))


def measure_placements(samples, document):
    progress(f"Stamps on {document.name}")
    samples.take(wine("bench_placements", windows_path(document)))
    progress("A library of large stamps")
    samples.take(wine("bench_placements", "--library"))


def measure_saves(samples, documents):
    for document in documents:
        progress(f"Saving {document.name}")
        samples.take(wine("bench_save", windows_path(document)))
        progress(f"Pages of {document.name}")
        samples.take(wine("bench_pages", windows_path(document)))


def measure_outlines(samples, made):
    progress("Filling the tree")
    for name in "outline-flat.pdf", "outline-deep.pdf":
        samples.take(wine("bench_outline", windows_path(made / name)))


def measure_binders(samples, documents):
    progress("Binders")
    for document in documents:
        samples.take(wine("bench_binders", windows_path(document)))


def measure_peers(samples, document, repetitions):
    progress(f"Other programs with {document.name}")
    with tempfile.TemporaryDirectory() as folder:
        for task, title, command in PEERS:
            theirs = [part.format(document=document, out=f"{folder}/out") for part in command]
            ours = [str(NATIVE / "bench_engine"), task, str(document)]
            for _ in range(repetitions):
                samples.pairs[title, document.name].append(
                    (milliseconds(ours), milliseconds(theirs)))


def measure_writing(samples, document, repetitions):
    progress(f"Writing {document.name}")
    ours = [str(NATIVE / "bench_engine"), "--save", str(document)]
    with tempfile.TemporaryDirectory() as folder:
        unpacked = f"{folder}/unpacked.pdf"
        subprocess.run(["qpdf", "--object-streams=disable", document, unpacked], check=False)
        for title, command, _ in SAVES:
            theirs = [part.format(document=document, unpacked=unpacked, out=f"{folder}/out")
                      for part in command]
            for _ in range(repetitions):
                samples.pairs[title, document.name].append(
                    (milliseconds(ours), milliseconds(theirs)))


def line(title, document, ratio, ours, theirs, unit, limit, good):
    verdict = "" if good is None else "ok" if good else "over"
    numbers = f"{ours:.4g} / {theirs:.4g} {unit}".rstrip() if theirs is not None else f"{ours:.4g}"
    return [title, document, ratio, numbers, "" if limit is None else f"{limit:g}", verdict]


# The side that runs second finds the caches filled. The sides take turns, so average the medians of
# both orders.
def balanced_median(values):
    orders = [values[0::2], values[1::2] or values]
    return statistics.mean(statistics.median(order) for order in orders)


def ratio_lines(rows, samples):
    for row in rows:
        for (key, document), pairs in samples.pairs.items():
            if key != row.key:
                continue
            ours, theirs = (balanced_median(side) for side in zip(*pairs))
            ratio = ours / theirs if theirs > 0 else 1.0
            good = None if row.limit is None else ratio <= row.limit
            yield line(row.title, document, f"{ratio:.2f}", ours, theirs, row.unit, row.limit, good)


def difference_lines(rows, samples):
    for row in rows:
        for (key, document), pairs in samples.pairs.items():
            if key != row.key:
                continue
            left = max(ours - theirs for ours, theirs in pairs)
            ours, theirs = pairs[-1]
            yield line(row.title, document, f"{left:+g}", ours, theirs, "", row.limit,
                       left <= row.limit)


def count_lines(rows, samples):
    for row in rows:
        for (key, document), values in samples.values.items():
            if key == row.key:
                most = max(values)
                yield line(row.title, document, "", most, None, "", row.limit, most <= row.limit)


def time_lines(rows, samples):
    for row in rows:
        for (key, document), values in samples.values.items():
            if key == row.key:
                time = statistics.median(values)
                yield [row.title, document, "", f"{time:.4g} {row.unit}", f"{row.limit:g}",
                       "ok" if time <= row.limit else "over"]


def table(lines):
    header = ["what", "document", "ratio", "medians", "limit", ""]
    widths = [max(len(row[i]) for row in [header, *lines]) for i in range(len(header))]
    text = ""
    for row in [header, *lines]:
        cells = [cell.rjust(width) if i in (2, 3, 4) else cell.ljust(width)
                 for i, (cell, width) in enumerate(zip(row, widths))]
        text += "  ".join(cells).rstrip() + "\n"
    return text


# The notes hold one table, between lines of three backquotes.
def record(text):
    notes = NOTES.read_text(encoding="utf-8")
    replaced = re.sub(r"(?<=^```text\n).*?(?=^```$)", lambda _: text, notes, count=1,
                      flags=re.DOTALL | re.MULTILINE)
    NOTES.write_text(replaced, encoding="utf-8")


def main():
    options = [argument for argument in sys.argv[1:] if argument.startswith("--")]
    made, *manuals = [pathlib.Path(argument) for argument in sys.argv[1 + len(options):]]
    repetitions = 1 if "--brief" in options else 3
    documents = [*manuals, made / "small.pdf"]
    samples = Samples()
    measure_reader(samples, documents)
    for document in manuals:
        measure_find(samples, document, repetitions)
    measure_bad_pattern(samples, made)
    measure_outlines(samples, made)
    measure_marks(samples, manuals[0])
    measure_binders(samples, documents)
    measure_placements(samples, documents[0])
    measure_saves(samples, manuals)
    measure_processes(samples, documents)
    measure_engine(samples, documents, repetitions)
    measure_peers(samples, documents[0], repetitions)
    for document in manuals:
        measure_writing(samples, document, repetitions)
    text = table([
        *ratio_lines(RATIOS, samples),
        *ratio_lines([Row(title, title, "ms", limit) for _, title, _, limit in FIND_PEERS],
                     samples),
        *time_lines(TIMES, samples),
        *difference_lines(DIFFERENCES, samples),
        *count_lines(COUNTS, samples),
        *ratio_lines(ENGINE, samples),
        *ratio_lines(SIZES, samples),
        *ratio_lines([Row(title, title, "ms", limit) for title, _, limit in SAVES], samples),
        *ratio_lines([Row(title, title, "ms", None) for _, title, _ in PEERS], samples),
    ])
    print(text, end="")
    if "--record" in options:
        record(text)


if __name__ == "__main__":
    main()
