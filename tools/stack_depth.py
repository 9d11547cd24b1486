"""Holds the library's use of the stack: the deepest call chain behind every export.

usage: stack_depth.py CALL_GRAPH EXPORTS

CALL_GRAPH is what -fcallgraph-info=su wrote at the link. The host's and the C library's own
functions count nothing: their stack is not ours.
"""
import re
import subprocess
import sys

LIMIT = 24 * 1024

# Records that an export's contract has it hold for its caller, beyond the limit, in bytes.
RECORDS = {
    "wireless_api_check_station_exist": (35880, "the radio's station_list"),
    "wirelesss_get_wl_bh_sta": (35880, "the radio's station_list"),
}

# What a function calls through a pointer.
POINTERS = {
    "_ZN12_GLOBAL__N_114for_interfacesIPFvPKcEEEvS2_T_": (
        "_ZN12_GLOBAL__N_118wps_prepare_ifnameEPKc",
        "_ZN12_GLOBAL__N_115wps_stop_ifnameEPKc",
    ),
}

NODE = re.compile(r'node: \{ title: "([^"]+)" label: "([^"]+)"')
EDGE = re.compile(r'edge: \{ sourcename: "([^"]+)" targetname: "([^"]+)"')
FRAME = re.compile(r"(\d+) bytes \((.+?)\)")


def plain(title):
    """The symbol, without the object file that defines it."""
    return title.rsplit(":", 1)[-1]


class Graph:
    def __init__(self, text):
        self.frames, self.calls, self.faults = {}, {}, []
        for title, label in NODE.findall(text):
            frame = FRAME.search(label)
            if frame is None:
                continue
            if frame[2] not in ("static", "dynamic,bounded"):
                self.faults.append(f"{plain(title)}: unbounded stack")
            self.frames[plain(title)] = int(frame[1])
        for caller, callee in EDGE.findall(text):
            self.calls.setdefault(plain(caller), set()).add(plain(callee))
        self.deepest = {}

    def callees(self, name):
        for callee in self.calls.get(name, ()):
            if callee != "__indirect_call":
                yield callee
            elif name in POINTERS:
                yield from POINTERS[name]
            else:
                self.faults.append(f"{name}: calls through a pointer that POINTERS does not know")

    def chain(self, name, path=()):
        """(bytes, functions) of the deepest chain that begins with the function."""
        if name not in self.frames:
            return 0, ()
        if name in path:
            self.faults.append(f"{name}: recursion")
            return 0, ()
        if name not in self.deepest:
            below = max((self.chain(c, path + (name,)) for c in self.callees(name)), default=(0, ()))
            self.deepest[name] = (self.frames[name] + below[0], (name,) + below[1])
        return self.deepest[name]


def readable(path):
    names = subprocess.run(["c++filt", "-p"], input="\n".join(path), text=True, check=True,
                           stdout=subprocess.PIPE).stdout.split("\n")
    return " > ".join(name.replace("(anonymous namespace)::", "").replace("platform::", "")
                      for name in names)


def main(graph_file, exports_file):
    with open(graph_file, encoding="utf-8") as text:
        graph = Graph(text.read())
    with open(exports_file, encoding="utf-8") as text:
        exports = [name for name in text.read().split() if name in graph.frames]
    chains = sorted(((*graph.chain(name), name) for name in exports), reverse=True)
    for size, path, name in chains[:10]:
        record, reason = RECORDS.get(name, (0, ""))
        print(f"{size:6} {readable(path)}" + (f"\n       {record} of it: {reason}" if record else ""))
    for size, _, name in chains:
        if size - RECORDS.get(name, (0, ""))[0] > LIMIT:
            graph.faults.append(f"{name}: {size} bytes of stack")
    for name in set(RECORDS) - set(exports):
        graph.faults.append(f"{name}: in the table of records, but not exported")
    for name in sorted(set().union(*POINTERS.values()) - set(graph.frames)):
        graph.faults.append(f"{name}: in the table of pointers, but not in the call graph")
    if len(exports) < 100:
        graph.faults.append(f"only {len(exports)} exports in the call graph")
    for fault in graph.faults:
        print("FAILED:", fault)
    print(f"{len(exports)} exports, at most {LIMIT} bytes of stack beyond their records")
    return 1 if graph.faults else 0


sys.exit(main(*sys.argv[1:]))
