#!/usr/bin/env python3
"""Counts the exported functions that a test of an effect and a test of a failure cover.

    check_tests.py PLATFORM_TESTS

Effect: the function is emptied (it returns a value and does nothing, surface/stub_export.cpp) and
the tests run without those of failing calls and power cuts. A test has to fail, for the result 0
as for 1: no test can be satisfied by the result alone. It proves that work which is missing as a
whole is noticed, not that every part of it is; the mutation check looks at the parts. A function
that does nothing but answer is emptied with another answer instead.

Failure: tests/fault lets every call to the system fail that the function makes, one after the
other, and looks at result, outputs and what was left open; its own count says how many failures
each function stood. A function that calls nothing that can fail is listed below, with the reason
and the test of what it refuses, if anything.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).resolve().parent.parent
NOT_OF_EFFECTS = ("fault", "power_cut", "surface")

ANSWERS_ONLY = {}

CANNOT_FAIL = {}


def run(program, test_filter, **environment):
    return subprocess.run(
        [program, "--gtest_brief=1", "--gtest_fail_fast", "--gtest_filter=" + test_filter],
        env={**os.environ, **environment}, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        stdin=subprocess.DEVNULL, timeout=120).returncode


def report_of(program, *arguments):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "report.json"
        subprocess.run([program, f"--gtest_output=json:{path}", *arguments], check=True,
                       stdout=subprocess.DEVNULL)
        return json.loads(path.read_text())


def suites_by_file(program):
    suites = {}
    for suite in report_of(program, "--gtest_list_tests")["testsuites"]:
        for test in suite["testsuite"]:
            name = pathlib.Path(os.path.normpath(program.parent / test["file"])).name
            suites.setdefault(name, set()).add(suite["name"])
    return suites


def naming_suites(suites, function):
    """The suites of the files that name the function: they are the first to ask."""
    word = re.compile(r"\b%s\b" % function)
    named = set()
    for path in TESTS.glob("*/*_test.cpp"):
        if path.parent.name not in NOT_OF_EFFECTS and word.search(path.read_text()):
            named |= suites.get(path.name, set())
    return sorted(named)


def notices(program, suites, function, value):
    stub = {"STUB_EXPORT": f"{function}:{value}"}
    named = naming_suites(suites, function)
    if named and run(program, ":".join(f"{suite}.*" for suite in named), **stub) != 0:
        return True
    return run(program, "-Fault*:PowerCut*", **stub) != 0


def effect_is_tested(program, suites, function):
    values = {0, 1} if function not in ANSWERS_ONLY else {ANSWERS_ONLY[function] ^ 1}
    return all(notices(program, suites, function, value) for value in values)


def failures_stood(program):
    report = report_of(program, "--gtest_filter=FaultDeathTest.EveryFunctionStandsEveryFailure")
    case = report["testsuites"][0]["testsuite"][0]
    return {key: int(value) for key, value in case.items() if str(value).isdigit()}


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    functions = [name for name in (TESTS / "surface/exports.txt").read_text().split()
                 if name not in ("module_list", "platform_drv")]
    suites = suites_by_file(program)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        tested = dict(zip(functions, pool.map(
            lambda function: effect_is_tested(program, suites, function), functions)))
    stood = failures_stood(program)
    without_effect = [name for name in functions if not tested[name]]
    without_failure = [name for name in functions
                       if stood.get(name, 0) == 0 and name not in CANNOT_FAIL]
    outdated = [name for name in CANNOT_FAIL if stood.get(name, 0) != 0]
    print(f"{len(functions)} functions; a test of an effect: {len(functions) - len(without_effect)}"
          f", of failures: {sum(stood.get(name, 0) > 0 for name in functions)}"
          f", cannot fail: {len(CANNOT_FAIL)}")
    for title, names in (("no test misses the work of", without_effect),
                         ("no failure of", without_failure), ("can fail after all", outdated)):
        for name in names:
            print(f"{title} {name}")
    return 1 if without_effect or without_failure or outdated else 0


sys.exit(main())
