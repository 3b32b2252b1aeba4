#!/usr/bin/env python3
"""Prints unicode_tables.inc: case pairs and letter ranges of the Basic Multilingual Plane."""

import sys
import unicodedata


def lower_deltas():
    for unit in range(0x10000):
        if 0xD800 <= unit <= 0xDFFF:
            continue
        lower = chr(unit).lower()
        # The system's table has only pairs that convert both ways.
        if lower != chr(unit) and len(lower) == 1 and ord(lower) < 0x10000:
            if lower.upper() == chr(unit):
                yield unit, ord(lower) - unit


def lower_runs():
    runs = []
    for unit, delta in lower_deltas():
        if runs and runs[-1][3] == delta:
            first, last, stride, _ = runs[-1]
            step = unit - last
            if step <= 2 and (first == last or step == stride):
                runs[-1] = (first, unit, step, delta)
                continue
        runs.append((unit, unit, 1, delta))
    return runs


def letter_runs():
    runs = []
    for unit in range(0x10000):
        category = unicodedata.category(chr(unit))
        if category[0] == "L" or category == "Nd":
            if runs and runs[-1][1] == unit - 1:
                runs[-1] = (runs[-1][0], unit)
            else:
                runs.append((unit, unit))
    return runs


def print_rows(rows, per_line):
    for start in range(0, len(rows), per_line):
        print("    " + " ".join(rows[start : start + per_line]))


def main():
    print("// Written by make_unicode_tables.py.")
    print("// clang-format off")
    print("constexpr LowerRun kLowerRuns[] = {")
    print_rows([f"{{0x{f:04X}, 0x{l:04X}, {s}, {d}}}," for f, l, s, d in lower_runs()], 4)
    print("};")
    print("constexpr LetterRun kLetterRuns[] = {")
    print_rows([f"{{0x{f:04X}, 0x{l:04X}}}," for f, l in letter_runs()], 6)
    print("};")
    print("// clang-format on")
    return 0


if __name__ == "__main__":
    sys.exit(main())
