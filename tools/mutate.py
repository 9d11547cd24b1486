#!/usr/bin/env python3
"""Changes src/ in many small ways, one at a time, and counts how many the tests notice.

    mutate.py [--count 200] [--seed 1] [--jobs N] [--results FILE] [--build DIR]

Each mutant swaps a comparison, shifts a constant, exchanges two statements or removes a call. It is
compiled in a copy of the tree into the library and, where they hold the file once more, into the
tests; then the tests run, quick ones first, up to the first that fails. One that does not compile
or that leaves the library as it was to the byte is replaced by another of its kind.

The results are kept line by line, so that an interrupted run goes on where it stopped: the same
seed gives the same mutants as long as src/ is the same. With --list FILE:LINE,... only the mutants
of these lines are looked at again.
"""
import argparse
import hashlib
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
SLOW = "PowerCut.*:FaultDeathTest.*"
TEST_PROGRAM = ["build/release/tests/platform_tests", "--gtest_fail_fast", "--gtest_brief=1"]
TESTS = [  # quick ones first
    [*TEST_PROGRAM, "--gtest_filter=-" + SLOW],
    [*TEST_PROGRAM, "--gtest_filter=" + SLOW],
    ["ctest", "--test-dir", "build/release", "-R", "^(injection_tests|unload_tests|boardctl)$"],
]
COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
               "&&": "||", "||": "&&"}
STATEMENT = re.compile(r"^\s+(?!return|if|for|while|else|case|break|continue|using|static|const"
                       r"|char|int|uint|std::|auto|[A-Z]\w*(<[^;]*>)? \w)[\w:.>\-*]+[^{}]*;$")
CALL = re.compile(r"^\s+[\w:.>\-]+\([^{}]*\);$")


def comparisons(lines):
    for number, line in enumerate(lines):
        for match in re.finditer(r" (==|!=|<=|>=|<|>|&&|\|\|) ", line):
            yield number, 1, [line[:match.start(1)] + COMPARISONS[match[1]] + line[match.end(1):]]


def constants(lines):
    for number, line in enumerate(lines):
        for match in re.finditer(r"(?<![\w\"'.])(0x[0-9A-Fa-f]+|0|[1-9]\d*)(?![\w\"'.])", line):
            value = int(match[1], 0) + 1
            text = f"{value:#x}" if match[1].startswith("0x") else str(value)
            yield number, 1, [line[:match.start()] + text + line[match.end():]]


def exchanges(lines):
    for number in range(len(lines) - 1):
        pair = lines[number:number + 2]
        indents = {len(line) - len(line.lstrip()) for line in pair}
        if all(STATEMENT.match(line) for line in pair) and len(indents) == 1:
            yield number, 2, [pair[1], pair[0]]


def removals(lines):
    for number, line in enumerate(lines):
        if CALL.match(line):
            yield number, 1, [line[:len(line) - len(line.lstrip())] + ";"]


KINDS = {"comparison": comparisons, "constant": constants, "order": exchanges, "removed": removals}


def code_lines(path):
    """The lines, those without code emptied: comments, includes, preprocessor."""
    return ["" if re.match(r"\s*(//|#|static_assert)", line) else
            re.sub(r"\s+// .*", "", line) for line in path.read_text().split("\n")]


def sample(seed):
    """Endless mutants, the kinds in turn, each mutant once."""
    pools = {kind: [] for kind in KINDS}
    for path in sorted((ROOT / "src").rglob("*.cpp")):
        lines = code_lines(path)
        for kind, find in KINDS.items():
            for number, count, text in find(lines):
                pools[kind].append((str(path.relative_to(ROOT)), kind, number, count, text))
    chance = random.Random(seed)
    for pool in pools.values():
        chance.shuffle(pool)
    while any(pools.values()):
        for pool in pools.values():
            if pool:
                yield pool.pop()


def key_of(mutant):
    return hashlib.sha256(json.dumps(mutant).encode()).hexdigest()[:12]


def copy_changed(source, target):
    """As of now: an older time would leave the object of an earlier mutant standing."""
    if target.exists() and target.read_bytes() == source.read_bytes():
        return
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    shutil.copymode(source, target)


class Tree:
    """A copy of the sources with a build of its own."""

    def __init__(self, folder, jobs):
        self.folder = folder
        self.jobs = jobs
        names = subprocess.run(["git", "ls-files"], cwd=ROOT, capture_output=True, text=True,
                               check=True).stdout.split("\n")
        for name in filter(None, names):
            copy_changed(ROOT / name, folder / name)
        # What a removed call leaves unused is no fault of the mutant.
        self.command("cmake", "--preset", "release", "-DCMAKE_UNITY_BUILD=OFF",
                     "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF")
        if not self.build():
            sys.exit(f"{folder}: the tests do not build as they are")
        self.library = (folder / "build/release/libplatform.so").resolve()
        self.unchanged = self.content()
        if self.notices():
            sys.exit(f"{folder}: the tests fail as they are")

    def command(self, *words, **options):
        return subprocess.run(words, cwd=self.folder, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, **options).returncode

    def build(self):
        return self.command("cmake", "--build", "build/release", "-j", str(self.jobs)) == 0

    def content(self):
        objects = sorted((self.folder / "build/release/src/CMakeFiles/platform_internals.dir")
                         .rglob("*.o"))
        return [hashlib.sha256(path.read_bytes()).digest() for path in [self.library, *objects]]

    def notices(self):
        """Whether a test fails, ends the program or does not end."""
        waiting = list(TESTS)
        running = []
        noticed = False
        while (waiting or running) and not noticed:
            while waiting and len(running) < self.jobs:
                running.append(self.start(waiting.pop(0)))
            time.sleep(0.02)
            noticed = any(process.poll() not in (None, 0) for process in running)
            running = [process for process in running if process.poll() is None]
        for process in running:
            process.terminate()
            process.wait()
        return noticed

    def start(self, test):
        return subprocess.Popen(["timeout", "120", *test], cwd=self.folder,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def judge(self, mutant):
        path, _, number, count, text = mutant
        place = self.folder / path
        original = place.read_text()
        lines = original.split("\n")
        lines[number:number + count] = text
        place.write_text("\n".join(lines))
        try:
            if not self.build():
                return "not compiling"
            if self.content() == self.unchanged:
                return "same code"
            return "caught" if self.notices() else "survived"
        finally:
            place.write_text(original)


def describe(mutant):
    path, kind, number, count, text = mutant
    before = (ROOT / path).read_text().split("\n")[number:number + count]
    return (f"{path}:{number + 1}: {kind}\n    - " + "\n    - ".join(line.strip() for line in before)
            + "\n    + " + "\n    + ".join(line.strip() for line in text))


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--count", type=int, default=200)
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--jobs", type=int, default=os.cpu_count())
    options.add_argument("--results", default=ROOT / "build/mutants.jsonl", type=pathlib.Path)
    options.add_argument("--build", default=ROOT / "build/mutation", type=pathlib.Path)
    options.add_argument("--list", default="")
    options = options.parse_args()
    options.build.mkdir(parents=True, exist_ok=True)
    known = {}
    if options.results.exists():
        known = {row["key"]: row["result"] for row in map(json.loads, options.results.open())}
    places = set(filter(None, options.list.split(",")))
    tree = None
    rows = []
    for mutant in sample(options.seed):
        if len(rows) == options.count:
            break
        if places and f"{mutant[0]}:{mutant[2] + 1}" not in places:
            continue
        result = known.get(key_of(mutant)) if not places else None
        if result is None:
            tree = tree or Tree(options.build, options.jobs)
            start = time.monotonic()
            result = tree.judge(mutant)
            print(f"{result} {time.monotonic() - start:.1f} s {describe(mutant)}", flush=True)
            with options.results.open("a") as file:
                file.write(json.dumps({"key": key_of(mutant), "result": result}) + "\n")
        if result in ("caught", "survived"):
            rows.append((mutant, result))
    survivors = [mutant for mutant, result in rows if result == "survived"]
    for kind in KINDS:
        of_kind = [result for mutant, result in rows if mutant[1] == kind]
        print(f"{kind:<10} {of_kind.count('caught'):4} caught of {len(of_kind)}")
    print(f"{len(rows) - len(survivors)} caught of {len(rows)}; survived:")
    for mutant in survivors:
        print(describe(mutant))


main()
