#!/usr/bin/env python3
"""Checks in src/ who includes and calls whom, and that no files do so in a circle.

Runs in the root of the repository. A header and its source count as one file. A file uses those
whose headers it includes and those that define a function which it names.
"""
import pathlib
import re
import sys

# What the files of a folder may use beside their own folder, support and fixed_answers. A row
# names only rows above it.
ALLOWED = {
    "fixed_answers": [],
    "support": [],
    "host": [],
    "wlmap": ["host"],
    "profile": ["host", "wlmap"],
    "driver": ["host"],
    "wps": ["host", "wlmap", "driver"],
    "flash": ["host", "wlmap"],
    "switch": ["host"],
    "gpio": ["host", "switch"],
    "wireless": ["host", "wlmap", "profile", "driver", "gpio"],
    "start": ["host", "flash", "gpio"],
}
FOR_ALL = ["support", "fixed_answers"]

# Their texts lie in static buffers until the next lookup: only wlmap's IfName may call them.
BUFFERED = {"get_wl_ifname", "get_wl_ifname_by_wlmode", "get_wl_bridge_ifname_by_wlmode"}

INCLUDE = re.compile(r'#include "(?!platform/)(.+)\.h"')
COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|(?<!#include )"(?:\\.|[^"\\\n])*"', re.S)
DEFINITION = re.compile(r"^\w[\w:<>*&, ]*?[ *&](\w+)\([^;{}]*\) \{", re.M)


def folder_of(file):
    return file.split("/")[1]


def circle_from(start, uses):
    """A way from a file back to it, or None."""
    ways = [[start]]
    seen = set()
    while ways:
        way = ways.pop()
        for used in sorted(uses[way[-1]]):
            if used == start:
                return way + [start]
            if used not in seen:
                seen.add(used)
                ways.append(way + [used])
    return None


def main():
    faults = []
    rows = list(ALLOWED)
    for at, folder in enumerate(rows):
        faults += [f"{folder}: the row of {used} is not above" for used in ALLOWED[folder]
                   if used not in rows[:at]]

    texts = {path: COMMENT_OR_TEXT.sub("", path.read_text())
             for path in sorted(pathlib.Path("src").rglob("*.*")) if path.suffix in (".cpp", ".h")}
    headers = "".join(path.read_text() for folder in ("include", "src")
                      for path in pathlib.Path(folder).rglob("*.h"))
    declared = set(re.findall(r"(\w+)\(", headers))
    definers = {name: path.with_suffix("").as_posix() for path, text in texts.items()
                for name in DEFINITION.findall(text) if name in declared and path.suffix == ".cpp"}

    uses = {}
    for path, text in texts.items():
        file = path.with_suffix("").as_posix()
        if folder_of(file) != "wlmap":
            faults += [f"{path}: {name} is for IfName alone"
                       for name in sorted(BUFFERED.intersection(re.findall(r"\w+", text)))]
        used = set(INCLUDE.findall(text))
        if path.suffix == ".cpp":  # a header only declares
            names = re.findall(r"(?<![.>:])\b\w+\b", text)
            used |= {definers[name] for name in names if name in definers}
        uses[file] = uses.get(file, set()) | used - {file}

    for file in uses:
        folder = folder_of(file)
        if folder not in ALLOWED:
            faults.append(f"{file}: {folder} has no row in tools/layers.py")
            continue
        allowed = {folder, *FOR_ALL, *ALLOWED[folder]} if folder not in FOR_ALL else {folder}
        faults += [f"{file} must not use {used}" for used in sorted(uses[file])
                   if not used.startswith("src/") or folder_of(used) not in allowed]
    for file in uses:
        uses[file] &= uses.keys()
    circles = [way for file in sorted(uses) if (way := circle_from(file, uses))]
    faults += ["a circle: " + " -> ".join(way) for way in circles]
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


sys.exit(main())
