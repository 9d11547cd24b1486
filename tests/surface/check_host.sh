#!/bin/sh
# Holds the host contract to its rows: declared exactly so, and defined whole by the board's host.
# usage: check_host.sh HOST_HEADER HOST_LIBRARY HOST_LIST
set -u
export LC_ALL=C
: "${NM:=nm}"
scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
failed=0

# A declared name stands before a parenthesis once comments and attributes are gone.
sed 's@//.*@@; s/\[\[[^]]*\]\]//g' "$1" | grep -oE '[a-z_0-9]+\(' | tr -d '(' | sort >"$scratch/declared"
"$NM" -D --defined-only "$2" | awk '{ print $NF }' | sort -u >"$scratch/defined"
sort "$3" >"$scratch/listed"
[ -s "$scratch/listed" ] || exit 1

diff "$scratch/listed" "$scratch/declared" || { echo "FAILED: declared otherwise (>)"; failed=1; }
missing=$(comm -23 "$scratch/listed" "$scratch/defined")
[ -z "$missing" ] || { echo "FAILED: the board's host does not define $missing"; failed=1; }
[ $failed -eq 0 ] && echo "$(wc -l <"$scratch/listed") host functions declared and defined"
exit $failed
