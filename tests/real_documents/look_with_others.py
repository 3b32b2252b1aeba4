#!/usr/bin/env python3
"""Usage: look_with_others.py EDIT_DOCUMENT PDF...

Has EDIT_DOCUMENT (edit_document.cpp) edit and save each document, and lets other programs judge the
file: for qpdf it is no worse than the source; Poppler and MuPDF find as many pages and draw the
edited ones as the window does; its metadata is that of the source. Readers have letters of their
own, so pictures are compared in blocks, which may differ by as much as the same readers differ on
the page before the edits, and the text that was added as a whole. Prints the faults and exits with
1 if there are any.
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = 24  # pixels
TOLERANCE = 40  # of 255, between the mean colours of two blocks
# Letters of a font that is not in the document are each reader's own.
MORE_THAN_BEFORE = 16
LONGEST = 300  # seconds for one run of a program

# From sound to broken, by qpdf's exit status.
QPDF_GRADES = {0: 0, 3: 1, 2: 2}


def run(*command):
    command = [str(part) for part in command]
    try:
        return subprocess.run(command, capture_output=True, timeout=LONGEST, check=False)
    except subprocess.TimeoutExpired:
        return subprocess.CompletedProcess(command, -1, b"", b"")


def read_picture(path):
    """Width, height and the bytes of a binary PPM file."""
    data = path.read_bytes()
    match = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    return int(match[1]), int(match[2]), data[match.end():]


def mean_colour(picture, left, top, right, bottom):
    width, _, pixels = picture
    inside = b"".join(pixels[3 * (y * width + left):3 * (y * width + right)]
                      for y in range(top, bottom))
    return [3 * sum(inside[channel::3]) / max(len(inside), 1) for channel in range(3)]


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


def areas(width, height, text):
    """The blocks of a picture, with the box `text` whole in place of those that it touches."""
    if text:
        yield text
    for top in range(0, height - BLOCK + 1, BLOCK):
        for left in range(0, width - BLOCK + 1, BLOCK):
            block = (left, top, left + BLOCK, top + BLOCK)
            if not (text and overlap(block, text)):
                yield block


def largest_gap(one, other, text=None):
    """Between the mean colours of two pictures' areas; None where the pictures differ in size."""
    if one[:2] != other[:2]:
        return None
    return max((abs(a - b) for area in areas(*one[:2], text)
                for a, b in zip(mean_colour(one, *area), mean_colour(other, *area))), default=0)


def draw_with_poppler(pdf, page, width, height, out):
    run("pdftoppm", "-cropbox", "-f", page, "-l", page, "-scale-to-x", width, "-scale-to-y", height,
        "-singlefile", pdf, out.with_suffix(""))
    return read_picture(out) if out.exists() else None


def draw_with_mupdf(pdf, page, width, height, out):
    run("mutool", "draw", "-q", "-w", width, "-h", height, "-f", "-o", out, pdf, page)
    return read_picture(out) if out.exists() else None


def draw(reader, pdf, page, like, out):
    """The page as `reader` draws it, as large as the picture `like`; None if it does not."""
    width, height = like[:2]
    if reader == "MuPDF":
        return draw_with_mupdf(pdf, page, width, height, out)
    picture = draw_with_poppler(pdf, page, width, height, out)
    # Poppler takes the sides of a page as they are before it is turned.
    if picture and picture[:2] == (height, width):
        picture = draw_with_poppler(pdf, page, height, width, out)
    return picture


def compare_page(source, folder, name, pages, text):
    """Faults of the page `name`; `pages` are its numbers before and after the edits."""
    before, after = pages
    ours = read_picture(folder / f"{name}.ppm")
    ours_before = read_picture(folder / "marked-source.ppm")
    for reader in "Poppler", "MuPDF":
        theirs = draw(reader, folder / "saved.pdf", after, ours, folder / f"{name}-after.ppm")
        gap = largest_gap(ours, theirs, text) if theirs else None
        if gap is None:
            size = "in another size" if theirs else "not at all"
            yield f"{reader} draws the {name} page {size}"
            continue
        if gap <= TOLERANCE:
            continue
        theirs_before = draw(reader, source, before, ours_before, folder / f"{name}-before.ppm")
        gap_before = largest_gap(ours_before, theirs_before) if theirs_before else 0
        if gap > (gap_before or 0) + MORE_THAN_BEFORE:
            yield f"{reader} draws the {name} page otherwise: {gap:.0f}, before {gap_before:.0f}"


def pages_found(pdf):
    """How many pages Poppler and MuPDF find, by their names."""
    poppler = re.search(rb"^Pages:\s+(\d+)", run("pdfinfo", pdf).stdout, re.MULTILINE)
    mupdf = re.search(rb"^Pages: (\d+)", run("mutool", "info", pdf, "1").stdout, re.MULTILINE)
    return {"Poppler": int(poppler[1]) if poppler else 0, "MuPDF": int(mupdf[1]) if mupdf else 0}


def metadata(pdf):
    """Of a plain stream Poppler also takes the line end behind it."""
    return run("pdfinfo", "-meta", pdf).stdout.rstrip()


def complaints(pdf):
    return run("pdfinfo", pdf).stderr.count(b"Syntax")


def judge(source, folder):
    saved = folder / "saved.pdf"
    lines = [line.split() for line in (folder / "pages.txt").read_text().splitlines()]
    (_, pages), marked, turned, (_, *text) = lines
    grades = [QPDF_GRADES.get(run("qpdf", "--check", pdf).returncode, 3)
              for pdf in (source, saved)]
    if grades[1] > grades[0]:
        yield "qpdf finds it worse than the source"
    if complaints(saved) > complaints(source):
        yield "Poppler complains of its syntax"
    for reader, found in pages_found(saved).items():
        if found != int(pages):
            yield f"{reader} finds {found} of {pages} pages"
    if metadata(source) != metadata(saved):
        yield "the metadata differs"
    yield from compare_page(source, folder, "marked", marked[1:], tuple(map(int, text)))
    if turned[1:] != marked[1:]:
        yield from compare_page(source, folder, "turned", turned[1:], None)


def faults_of(program, source):
    """None for a document that the program does not open."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        done = run(program, source, folder)
        if done.returncode == 2:
            return None
        faults = done.stdout.decode(errors="replace").splitlines()
        if done.returncode not in (0, 1):
            faults.append(f"the program ended with {done.returncode}")
        if (folder / "pages.txt").exists():
            faults.extend(judge(source, folder))
        return faults


def main():
    program, *names = sys.argv[1:]
    sources = [pathlib.Path(name) for name in names]
    edited = wrong = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        results = workers.map(lambda source: faults_of(program, source), sources)
        for source, faults in zip(sources, results):
            if faults is None:
                continue
            edited += 1
            wrong += bool(faults)
            for fault in faults:
                print(f"{source}: {fault}", flush=True)
    print(f"{edited} of {len(sources)} documents edited and saved, {wrong} with faults")
    return 1 if wrong or not edited else 0


if __name__ == "__main__":
    sys.exit(main())
