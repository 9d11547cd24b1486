#!/bin/sh
# Holds the surface of the built library to the lists beside this script.
# usage: check_library.sh LIBRARY EMPTY_LIBRARY plain|instrumented
#
# EMPTY_LIBRARY is built with the same flags from nothing. Sanitizers and coverage bring symbols,
# libraries and constructors of their own; "instrumented" leaves those checks out and says so.
set -u
export LC_ALL=C
library=$1 empty=$2 build=$3
lists=$(dirname "$0")
failed=0

# expect WHAT EXPECTED ACTUAL
expect() {
    if [ "$2" = "$3" ]; then echo "ok: $1"; return; fi
    printf 'FAILED: %s is not [%s] but\n%s\n' "$1" "$2" "$3"
    failed=1
}

symbols() { nm -D "$1" "$library" | awk '{ sub(/@.*/, "", $NF); print $NF }' | sort -u; }
without() { comm -23 - "$1"; }
tag() { readelf -dW "$library" | sed -n "s/.*($1).*\[\(.*\)\].*/\1/p" | sort; }
count() { grep -c "$1"; }
init_size() { readelf -dW "$1" | awk '/\(INIT_ARRAYSZ\)/ { print $3 }'; }

scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
for list in exports host libc; do sort -u "$lists/$list.txt" >"$scratch/$list" || exit 1; done
symbols --defined-only >"$scratch/defined"
symbols --undefined-only >"$scratch/undefined"

expect "exports beyond exports.txt" "" "$(without "$scratch/exports" <"$scratch/defined")"
expect "exports missing" "" "$(without "$scratch/defined" <"$scratch/exports")"
expect "SONAME" libplatform.so.1 "$(tag SONAME)"
expect "search path" "" "$(tag 'RPATH\|RUNPATH')"
expect "text relocations" 0 "$(readelf -dW "$library" | count TEXTREL)"
expect "binding at load time" 1 "$(readelf -dW "$library" | count '(FLAGS).*BIND_NOW')"
expect "read-only relocations" 1 "$(readelf -lW "$library" | count GNU_RELRO)"
expect "stack" RW "$(readelf -lW "$library" | awk '/GNU_STACK/ { print $7 }')"
expect "stack protection" 1 "$(count '^__stack_chk_fail$' <"$scratch/undefined")"
if [ "$build" = plain ]; then
    expect "libraries needed" libc.so.6 "$(tag NEEDED | grep -v '^libgcc_s\.so\.1$')"
    expect "undefined beyond host.txt and libc.txt" "" \
        "$(without "$scratch/host" <"$scratch/undefined" | without "$scratch/libc")"
    expect "constructors" "$(init_size "$empty")" "$(init_size "$library")"
else
    echo "not checked in an instrumented build: libraries needed, C library symbols, constructors"
fi
echo "$(wc -l <"$scratch/exports") exports listed"
exit $failed
