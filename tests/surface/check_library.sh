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

fail() {
    echo "FAILED: $1"
    [ -z "${2:-}" ] || echo "$2" | sed 's/^/    /'
    failed=1
}

# expect WHAT EXPECTED ACTUAL
expect() {
    if [ "$2" = "$3" ]; then echo "ok: $1"; else fail "$1 is not [$2] but" "$3"; fi
}

# Names of the symbols that nm lists with the given option, without their versions.
symbols() { nm -D "$1" "$library" | awk '{ sub(/@.*/, "", $NF); print $NF }' | sort -u; }
names() { sort -u "$@"; }
without() { comm -23 - "$1"; }
tag() { readelf -dW "$library" | sed -n "s/.*($1).*\[\(.*\)\].*/\1/p" | sort; }
init_size() { readelf -dW "$1" | awk '/\(INIT_ARRAYSZ\)/ { print $3 }'; }

scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
for list in exports pending host libc; do
    names "$lists/$list.txt" 2>/dev/null >"$scratch/$list"
    [ "$list" = pending ] || [ -s "$scratch/$list" ] || fail "$list.txt is missing or empty"
done

names "$scratch/exports" | without "$scratch/pending" >"$scratch/offered"
symbols --defined-only >"$scratch/defined"
expect "exports beyond exports.txt" "" "$(without "$scratch/offered" <"$scratch/defined")"
expect "exports missing" "" "$(without "$scratch/defined" <"$scratch/offered")"
expect "pending names that are no exports" "" "$(without "$scratch/exports" <"$scratch/pending")"

expect "SONAME" libplatform.so.1 "$(tag SONAME)"
expect "search path" "" "$(tag 'RPATH\|RUNPATH')"
expect "text relocations" "" "$(readelf -dW "$library" | grep TEXTREL)"
readelf -dW "$library" | grep -q BIND_NOW || fail "symbols are not bound at load time"
readelf -lW "$library" | grep -q GNU_RELRO || fail "relocations stay writable"
expect "stack" RW "$(readelf -lW "$library" | awk '/GNU_STACK/ { print $7 }')"
symbols --undefined-only >"$scratch/undefined"
grep -qx __stack_chk_fail "$scratch/undefined" || fail "the stack is not protected"

if [ "$build" = plain ]; then
    expect "libraries needed" libc.so.6 "$(tag NEEDED | grep -v '^libgcc_s\.so\.1$')"
    expect "undefined beyond host.txt and libc.txt" "" \
        "$(without "$scratch/host" <"$scratch/undefined" | without "$scratch/libc")"
    [ "$(init_size "$library")" -le "$(init_size "$empty")" ] || fail "it runs code when loaded"
else
    echo "not checked in an instrumented build: libraries needed, C library symbols, constructors"
fi

[ $failed -eq 0 ] && echo "$(wc -l <"$scratch/offered") exports as listed"
exit $failed
