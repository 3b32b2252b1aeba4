#!/usr/bin/env python3
# Usage: compare_readers.py FOLDER
# Compares PDFium's pictures of documents, NAME.ppm beside NAME.pdf, with those that Poppler
# and MuPDF draw of them at 144 DPI, and lets qpdf check the documents. Every pixel of one
# picture must lie between the darkest and the lightest that the other has within one pixel,
# give or take TOLERANCE of 255 in each colour. Documents called NAME-text.pdf hold text that
# every reader lays out by its own rules, and get TEXT_REACH pixels. Of documents called
# NAME-ink.pdf, which show one text in letters of each reader's own, the box around all dark
# pixels is compared, within INK_REACH pixels. Exits with 0 if all agree.

import pathlib
import subprocess
import sys

TOLERANCE = 12
TEXT_REACH = 10
INK_REACH = 2  # capitals of the readers' own fonts differ that much in height


def read_picture(path):
    """Width, height and the three bytes of every pixel of a binary PPM file."""
    data = path.read_bytes()
    fields, at = [], 0
    while len(fields) < 4:
        end = at
        while data[end : end + 1].strip():
            end += 1
        fields.append(data[at:end])
        at = end + 1
    if fields[0] != b"P6" or fields[3] != b"255":
        raise ValueError(f"{path}: no picture of the kind that is compared")
    return int(fields[1]), int(fields[2]), data[at:]


def strays(picture, other, reach):
    """How many pixels of |picture| are unlike all of |other| within |reach| pixels."""
    width, height, pixels = picture
    _, _, others = other
    count = 0
    for at in range(0, 3 * width * height, 3):
        if pixels[at : at + 3] == others[at : at + 3]:
            continue
        x, y = at // 3 % width, at // 3 // width
        near = [
            others[3 * (row * width + column) :][:3]
            for row in range(max(0, y - reach), min(height, y + reach + 1))
            for column in range(max(0, x - reach), min(width, x + reach + 1))
        ]
        for channel in range(3):
            values = [pixel[channel] for pixel in near]
            if not min(values) - TOLERANCE <= pixels[at + channel] <= max(values) + TOLERANCE:
                count += 1
                break
    return count


def ink_box(picture):
    """Left, top, right and bottom of the dark pixels."""
    width, height, pixels = picture
    dark = [at for at in range(width * height) if pixels[3 * at + 1] < 128]
    if not dark:
        return (0, 0, 0, 0)
    columns = [at % width for at in dark]
    return min(columns), dark[0] // width, max(columns) + 1, dark[-1] // width + 1


def drawn_by_others(pdf):
    """Name and picture of each other reader."""
    poppler = pdf.with_suffix(".poppler")
    subprocess.run(
        ["pdftoppm", "-r", "144", "-cropbox", "-singlefile", pdf, poppler], check=True)
    yield "Poppler", pathlib.Path(f"{poppler}.ppm")
    mupdf = pdf.with_suffix(".mupdf.ppm")
    subprocess.run(
        ["mutool", "draw", "-q", "-r", "144", "-o", mupdf, pdf, "1"],
        check=True, stderr=subprocess.DEVNULL)
    yield "MuPDF", mupdf


def compare(pdf):
    """What is wrong with one document, as lines."""
    check = subprocess.run(["qpdf", "--check", pdf], capture_output=True, text=True)
    if check.returncode != 0:
        yield f"{pdf.name}: {check.stdout}{check.stderr}"
    ours = read_picture(pdf.with_suffix(".ppm"))
    for name, path in drawn_by_others(pdf):
        theirs = read_picture(path)
        if theirs[:2] != ours[:2]:
            yield f"{pdf.name}: {name} draws {theirs[:2]} pixels, PDFium {ours[:2]}"
            continue
        if pdf.stem.endswith("-ink"):
            boxes = ink_box(ours), ink_box(theirs)
            if max(abs(a - b) for a, b in zip(*boxes)) > INK_REACH:
                yield f"{pdf.name}: ink lies in {boxes[0]}, with {name} in {boxes[1]}"
            continue
        reach = TEXT_REACH if pdf.stem.endswith("-text") else 1
        wrong = strays(ours, theirs, reach) + strays(theirs, ours, reach)
        if wrong:
            yield f"{pdf.name}: {wrong} pixels are not where {name} has them"


def main():
    documents = sorted(pathlib.Path(sys.argv[1]).glob("*-*.pdf"))
    faults = [fault for pdf in documents for fault in compare(pdf)]
    print("\n".join(faults + [f"{len(documents)} documents compared with Poppler and MuPDF"]))
    return 1 if faults or not documents else 0


if __name__ == "__main__":
    sys.exit(main())
