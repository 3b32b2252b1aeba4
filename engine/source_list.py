#!/usr/bin/env python3
"""Prints deb-src entries for the Debian mirrors this machine's apt already uses.

Reads apt's main source list and its folder of lists, in both formats, and
prints deb822 stanzas for the suites of the running release. The mirrors and
the keys they are checked with stay the ones the machine's owner chose.
"""

import pathlib
import re
import shlex
import subprocess
import sys


def release_suites():
    text = pathlib.Path("/etc/os-release").read_text(encoding="utf-8")
    match = re.search(r'^VERSION_CODENAME="?([a-z]+)', text, re.MULTILINE)
    name = match.group(1) if match else ""
    return {name, name + "-updates", name + "-security", name + "/updates"}


def configured_files():
    dump = subprocess.run(
        ["apt-config", "shell", "LIST", "Dir::Etc::sourcelist/f", "PARTS", "Dir::Etc::sourceparts/d"],
        check=True, capture_output=True, text=True).stdout
    paths = dict(word.split("=", 1) for word in shlex.split(dump))
    files = [pathlib.Path(paths["LIST"])] if "LIST" in paths else []
    parts = pathlib.Path(paths.get("PARTS", "/nonexistent"))
    files += sorted(path for path in parts.glob("*") if path.suffix in (".list", ".sources"))
    return [path for path in files if path.is_file()]


def deb822_entries(text):
    """Yields one dictionary of fields for each stanza of a .sources file."""
    for stanza in re.split(r"\n\s*\n", text):
        fields, last = {}, None
        for line in stanza.splitlines():
            if line.startswith("#"):
                continue
            if line[:1] in (" ", "\t") and last:
                fields[last] += "\n" + line
            elif ":" in line:
                last, value = line.split(":", 1)
                last = last.strip().lower()
                fields[last] = value.strip()
        if fields and fields.get("enabled", "yes").lower() not in ("no", "false", "off", "0"):
            yield fields


def one_line_entries(text):
    """Yields the same for each line of a .list file."""
    for line in text.splitlines():
        match = re.match(r"\s*(deb|deb-src)\s+(?:\[([^]]*)\]\s+)?(\S+)\s+(\S+)\s+([^#]+)", line)
        if not match:
            continue
        fields = {"types": match.group(1), "uris": match.group(3),
                  "suites": match.group(4), "components": match.group(5).strip()}
        for option in (match.group(2) or "").split():
            if option.startswith("signed-by="):
                fields["signed-by"] = option.split("=", 1)[1].replace(",", " ")
        yield fields


def main():
    wanted = release_suites()
    stanzas = []
    for path in configured_files():
        text = path.read_text(encoding="utf-8")
        entries = deb822_entries(text) if path.suffix == ".sources" else one_line_entries(text)
        for fields in entries:
            suites = [suite for suite in fields.get("suites", "").split() if suite in wanted]
            if not suites or "main" not in fields.get("components", "").split():
                continue
            stanza = (f"Types: deb-src\nURIs: {fields.get('uris', '')}\n"
                      f"Suites: {' '.join(suites)}\nComponents: main\n")
            if "signed-by" in fields:
                stanza += f"Signed-By: {fields['signed-by']}\n"
            if stanza not in stanzas:
                stanzas.append(stanza)
    if not stanzas:
        sys.exit("apt on this machine is not set up for a Debian mirror of its release.")
    print("\n".join(stanzas))


if __name__ == "__main__":
    main()
