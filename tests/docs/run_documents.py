#!/usr/bin/env python3
"""Runs what the documents tell their readers to run.

    run_documents.py

Every block that is fenced as sh runs as a whole, in the tree, with a home of its own; every ./dev
command that a document names must be one that ./dev help lists; every link must lead to a file.
Ends with status 77 when this machine does not let the virtual board be entered.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def run(block, home):
    return subprocess.run(["bash", "-euo", "pipefail", "-c", block], cwd=ROOT, timeout=300,
                          env={**os.environ, "HOME": home, "XDG_STATE_HOME": home},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def main():
    known = set(re.findall(r"^  (\w+)", subprocess.run(
        ["./dev", "help"], cwd=ROOT, stdout=subprocess.PIPE, text=True).stdout, re.M)) | {"help"}
    faults, blocks = [], 0
    for document in sorted([*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]):
        text = document.read_text()
        faults += [f"{document.name}: no ./dev {command}"
                   for command in set(re.findall(r"\./dev (\w+)", text)) - known]
        faults += [f"{document.name}: no {link}"
                   for link in re.findall(r"\]\(([^)#:]+)\)", text)
                   if not (document.parent / link).exists()]
        for block in re.findall(r"^```sh\n(.*?)^```", text, re.M | re.S):
            blocks += 1
            with tempfile.TemporaryDirectory() as home:
                ended = run(block, home)
            if ended.returncode == 77:
                print("skipped:", *ended.stdout.splitlines()[-1:])
                sys.exit(77)
            if ended.returncode != 0:
                faults.append(f"{document.name}: status {ended.returncode} of\n{block}{ended.stdout}")
    print(*faults, f"{blocks} blocks run", sep="\n")
    sys.exit(bool(faults) or blocks == 0)


main()
