#!/usr/bin/python3
"""Draws how the cost of each hot path grows, and renews the page's table.

usage: draw.py RESULTS PICTURE PAGE
"""

import json
import re
import sys

import matplotlib

matplotlib.use("svg")
from matplotlib import pyplot  # noqa: E402

WAYS = {
    "library": dict(color="#1f4e79", linewidth=2, marker="o", label="library"),
    "limit": dict(color="#7f7f7f", linestyle="--", marker="s", label="limit: bare calls"),
    "shell": dict(color="#c55a11", linestyle=":", marker="^", label="shell: awk, sed"),
}


def rows_by_path(results):
    paths = {}
    for row in results:
        paths.setdefault(row["path"], []).append(row)
    return paths


def draw_growth(axes, path, rows):
    for way, style in WAYS.items():
        points = [(row["size"], row[f"{way}_us"]) for row in rows if f"{way}_us" in row]
        if points:
            axes.plot(*zip(*points), markersize=4, **style)
    axes.set_title(path, fontsize=10)
    axes.set_xlabel(rows[0]["unit"], fontsize=8)
    axes.set_ylabel("µs", fontsize=8)
    axes.set_yscale("log")
    axes.minorticks_off()
    axes.set_xlim(left=0)
    axes.set_ylim(bottom=1)
    axes.tick_params(labelsize=8)
    axes.grid(alpha=0.3)


def draw_ratios(axes, paths):
    names = list(paths)[::-1]
    ratios = [paths[name][-1]["library_per_limit"] for name in names]
    axes.barh(names, ratios, color="#1f4e79")
    for place, ratio in enumerate(ratios):
        axes.text(ratio, place, f" {ratio:.2f}", va="center", fontsize=7)
    axes.axvline(1, color="#7f7f7f", linestyle="--")
    axes.set_title("library / limit, full size", fontsize=10)
    axes.tick_params(labelsize=7)
    axes.margins(x=0.15)


def duration(microseconds):
    """With its unit, three digits of it."""
    for unit, factor in (("s", 1e6), ("ms", 1e3)):
        if microseconds >= factor:
            return f"{microseconds / factor:.3g} {unit}"
    return f"{microseconds:.3g} µs"


def span(rows, key, form):
    """From the smallest size to the full one; of what has one size, its value."""
    ends = [rows[0], rows[-1]] if len(rows) > 1 else rows
    return " → ".join(form(row[key]) for row in ends if key in row)


def table_row(path, rows):
    first, last = rows[0], rows[-1]
    sizes, each = f"one {first['unit']}", ""
    if len(rows) > 1:
        sizes = f"{first['size']} to {last['size']} {first['unit']}"
        more = (last["library_us"] - first["library_us"]) / (last["size"] - first["size"])
        each = duration(more)
    return (f"| {path} | {sizes} | {span(rows, 'library_us', duration)} | {each} | "
            f"{span(rows, 'library_per_limit', '{:.1f}'.format)} | "
            f"{span(rows, 'shell_per_library', '{:.0f}'.format)} |\n")


def renew_table(page, paths):
    with open(page, encoding="utf-8") as file:
        text = file.read()
    table = "".join(table_row(path, rows) for path, rows in paths.items())
    text, count = re.subn(r"(?<=\n\|---\|---\|---\|---\|---\|---\|\n)(\|.*\n)+",
                          lambda _: table, text)
    if count != 1:
        sys.exit(f"{page}: where is the table?")
    with open(page, "w", encoding="utf-8") as file:
        file.write(text)


def main(results_file, picture, page):
    matplotlib.rcParams["svg.fonttype"] = "none"
    matplotlib.rcParams["svg.hashsalt"] = "performance"
    with open(results_file, encoding="utf-8") as file:
        paths = rows_by_path(json.load(file))
    growing = {path: rows for path, rows in paths.items() if len(rows) > 1}

    figure, grid = pyplot.subplots(2, 4, figsize=(15, 7))
    places = list(grid.flat)
    for axes, (path, rows) in zip(places, growing.items()):
        draw_growth(axes, path, rows)
    places[0].legend(fontsize=8, loc="center right")
    draw_ratios(places[-1], paths)
    figure.tight_layout()
    figure.savefig(picture, metadata={"Date": None})
    renew_table(page, paths)


if __name__ == "__main__":
    main(*sys.argv[1:])
