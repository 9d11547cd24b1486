#!/usr/bin/env bash
# The way of somebody who sees the project for the first time: a fresh clone, ./dev run from nothing,
# then the calls of boardctl that README.md shows. Prints the seconds that it took, and ends with
# status 1 when something did not work. Not part of ./dev test: it builds everything once more.
set -euo pipefail

tree=$(cd "$(dirname "$0")/../.." && pwd)
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
git clone -q "$tree" "$home/clone"
cd "$home/clone"

started=$SECONDS
./dev run >"$home/run.txt" 2>&1 || { tail -n 40 "$home/run.txt" && exit 1; }
echo "./dev run: $((SECONDS - started)) s"
tail -n 2 "$home/run.txt"

sed -n '/^```sh$/,/^```$/p' README.md | grep -v '^```' >"$home/calls.sh"
grep -c '^boardctl ' "$home/calls.sh" | sed 's/$/ calls of README.md/'
HOME=$home XDG_STATE_HOME=$home bash -eu "$home/calls.sh" >"$home/calls.txt" 2>&1 ||
    { tail -n 40 "$home/calls.txt" && exit 1; }
echo "all calls ended well"
