#!/usr/bin/python3
"""Counts the instructions of each hot path under qemu and compares them with bench/counts.tsv.

usage: count.py [--update]

Fails when a path of the library takes more than 2 % above the table. With --update it renews the
table and that of docs/performance.md.
"""

import re
import subprocess
import sys

TABLE, PAGE = "bench/counts.tsv", "docs/performance.md"
HEAD = "path\tunit\tprocessor\tlibrary\tordinary\tbytes"
GROWTH = 1.02
COUNTER = "release/bench/libinstruction_counter.so"
# One model each, so that the C library takes the same functions on every machine.
EMULATORS = {
    "x86-64": ("release", ["qemu-x86_64", "-cpu", "qemu64"]),
    "aarch64": ("cross", ["qemu-aarch64", "-cpu", "cortex-a53", "-L", "/usr/aarch64-linux-gnu"]),
}


def count(preset, emulator):
    """The instructions a unit of each way of each path: {(path, unit): {way: instructions}}."""
    run = subprocess.run(
        emulator + ["-plugin", f"../../{COUNTER}", "./paths", "--count"], env={}, check=False,
        cwd=f"build/{preset}/bench", capture_output=True, text=True)
    counts = [int(line) for line in run.stderr.splitlines() if line.isdigit()]
    rows = [line.split("\t") for line in run.stdout.splitlines() if line.count("\t") == 3]
    if run.returncode != 0 or not rows or len(counts) != 2 * len(rows):
        sys.exit(f"{' '.join(run.args)}: status {run.returncode}\n{run.stdout}{run.stderr}")
    result = {}
    for (path, unit, way, units), once, twice in zip(rows, counts[::2], counts[1::2]):
        result.setdefault((path, unit), {})[way] = round((twice - once) / int(units))
    return result


def table_lines(results):
    return [HEAD] + ["\t".join([*path, processor] + [str(ways.get(way, "")) for way in
                                                     ("library", "ordinary", "bytes")])
                     for processor, paths in results.items() for path, ways in paths.items()]


def page_rows(results):
    for path, ways in results["aarch64"].items():
        ordinary = ways.get("ordinary")
        ratio = f"{ways['library'] / ordinary:.2f}" if ordinary else ""
        cells = [f"{path[0]}, per {path[1]}", ways["library"], ordinary or "", ratio,
                 ways.get("bytes", ""), results["x86-64"][path]["library"]]
        yield "| " + " | ".join(f"{c:,}" if isinstance(c, int) else c for c in cells) + " |\n"


def renew(results):
    with open(TABLE, "w", encoding="utf-8") as file:
        file.write("\n".join(table_lines(results)) + "\n")
    with open(PAGE, encoding="utf-8") as file:
        text = file.read()
    rows = "".join(page_rows(results))
    text, found = re.subn(r"(?<=\n\|---\|--:\|--:\|--:\|--:\|--:\|\n)(\|.*\n)+", lambda _: rows, text)
    if found != 1:
        sys.exit(f"{PAGE}: where is the table?")
    with open(PAGE, "w", encoding="utf-8") as file:
        file.write(text)


def compare(results):
    """Whether every path keeps to the table, and the table to the paths."""
    with open(TABLE, encoding="utf-8") as file:
        rows = [line.rstrip("\n").split("\t") for line in file][1:]
    kept = {tuple(row[:3]): int(row[3]) for row in rows}
    fresh = {(*path, processor): ways["library"]
             for processor, paths in results.items() for path, ways in paths.items()}
    for path in kept.keys() ^ fresh.keys():
        print(f"{', '.join(path)}: {'only in' if path in kept else 'not in'} {TABLE}")
    grown = [path for path in kept.keys() & fresh.keys() if fresh[path] > GROWTH * kept[path]]
    for path in grown:
        print(f"{', '.join(path)}: {fresh[path]:,} instructions, more than 2 % above {kept[path]:,}")
    return kept.keys() == fresh.keys() and not grown


def main(arguments):
    if arguments not in ([], ["--update"]):
        sys.exit(__doc__)
    results = {name: count(*emulator) for name, emulator in EMULATORS.items()}
    print("\n".join(table_lines(results)).expandtabs(16))
    if arguments:
        renew(results)
    elif not compare(results):
        sys.exit("./dev bench --count --update renews the table, when it is meant to be so")


if __name__ == "__main__":
    main(sys.argv[1:])
