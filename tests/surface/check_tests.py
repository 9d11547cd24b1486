#!/usr/bin/env python3
"""Counts the exported functions that a test of an effect and a test of a failure cover.

    check_tests.py PLATFORM_TESTS

Effect: the function is emptied (it returns a value and does nothing, surface/stub_export.cpp) and
the tests run without those of failing calls, refusals and power cuts. A test has to fail, for the
result 0 as for 1: no test can be satisfied by the result alone. It proves that work which is
missing as a whole is noticed, not that every part of it is; the mutation check looks at the parts.
A function that does nothing but answer is emptied with another answer; one that does nothing at
all must be called by a test.

Failure: tests/fault lets every call to the system fail that the function makes, one after the
other, and looks at result, outputs and what was left open; its own count says how many failures
each function stood. For a function that makes no such call, FAILS_IN names the test of what it
refuses or hands on, which must notice the emptied function, too; CANNOT_FAIL says why there is
none.
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
NOT_OF_EFFECTS = ("fault", "surface")

# The answer of functions that this board does not need.
ANSWERS_ONLY = {
    "get_pincode_flash": 0, "init_gpio": 0, "mtk_optimize_set": 0, "platform_default": 0,
    "platform_reset": 0, "platform_restore": 0, "platform_save": 0,
    "platform_wireless_api_stop_ap_scan": 0, "rt61_get_hostinfo_from_wireless": 0,
    "set_pincode_flash": 0, "set_usb_mode": 0, "set_usbled": 0, "start_runled": 0,
    "stop_runled": 0, "wireless_api_get_keyinfo_status": 1, "wireless_macauth_kickall": 0,
    "wireless_macauth_kickmac": 0, "wireless_set_wps_led": 0, "wireless_update_wps": 0,
}
DOES_NOTHING = ("gpio_set_led", "platform_init_led_control", "platform_power_led_control",
                "platform_wan_led_control")

MISSING = "Refusal.OfAMissingArgumentTouchesNothing"
FAILS_IN = {
    "convert_2byte_hex": MISSING,
    "get_kdx_devname": MISSING,
    "get_one_line": MISSING,
    "get_run_led_op": MISSING,
    "platform_all_usb_led_control": "Leds.OfUsbAreAsManyAsThereAreAndRoomFor",
    "platform_all_wl_led_control": "Leds.AreDrivenByTheirPins",
    "platform_run_led_control": "Leds.OfBothRadiosTheSecondOneAnswers",
    "platform_usb_led_control": "Leds.AreDrivenByTheirPins",
    "platform_wireless_set_led": MISSING,
    "platform_wl_led_control": "Leds.AreDrivenByTheirPins",
    "rt61_get_wireless_link_speed": MISSING,
    "set_quolex_helper_bss": MISSING,
    "set_run_led_op": MISSING,
    "trans_uuid_str_to_hex": "Uuid.*",
    "turn_led": "Leds.AreDrivenByTheirPins",
    "wireless_api_get_mbridge_status": MISSING,
    "wireless_api_get_ssid": MISSING,
}
CANNOT_FAIL = {
    **{name: "answers only" for name in ANSWERS_ONLY},
    **{name: "does nothing" for name in DOES_NOTHING},
    "get_run_led_state": "has an answer for every state of the host",
    "get_usb_mode": "answers only",
    "init_gpio_after_insmod": "the host writes the pins, and nobody learns of its failure",
    "is_factory_test_mode": "asks the host whether a file is there",
    "mt_rssi_to_pwr": "has a number for every number",
    "platform_get_drv": "answers only",
    "platform_preinit": "answers only",
    "send_system_reboot_signal": "process 1 is always there",
    "soft_reset": "answers only",
}


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
    return run(program, "-Fault*:Refusal*:PowerCut*", **stub) != 0


def effect_is_tested(program, suites, function):
    if function in DOES_NOTHING:
        return bool(naming_suites(suites, function))
    values = {0, 1} if function not in ANSWERS_ONLY else {ANSWERS_ONLY[function] ^ 1}
    return all(notices(program, suites, function, value) for value in values)


def failure_is_tested(program, function):
    return any(run(program, FAILS_IN[function], STUB_EXPORT=f"{function}:{value}") != 0
               for value in (0, 1))


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
    stands = failures_stood(program)
    stood = {name for name in functions if stands.get(name, 0) > 0}
    shown = {name for name in FAILS_IN if failure_is_tested(program, name)}
    without_effect = [name for name in functions if not tested[name]]
    without_failure = [name for name in functions if name not in stood | shown | set(CANNOT_FAIL)]
    outdated = sorted(stood & set(CANNOT_FAIL))
    print(f"{len(functions)} functions: {len(functions) - len(without_effect)} with a test of an "
          f"effect, {len(stood | shown)} with a test of a failure, {len(CANNOT_FAIL)} cannot fail")
    for title, names in (("no test misses the work of", without_effect),
                         ("no failure of", without_failure), ("can fail after all", outdated)):
        for name in names:
            print(f"{title} {name}")
    return 1 if without_effect or without_failure or outdated else 0


sys.exit(main())
