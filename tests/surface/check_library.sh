#!/bin/sh
# Holds the surface of the built library to the names of the table and to libc.txt.
# usage: check_library.sh LIBRARY EMPTY_LIBRARY plain|shipped|instrumented NAMES
#
# EMPTY_LIBRARY is built with the same flags from nothing. Sanitizers and coverage bring symbols,
# libraries and constructors of their own; "instrumented" leaves those checks out and says so.
# "shipped" is bound at load time, checks buffers, and on the board's processor has a size to keep.
# NM and READELF name the target's tools.
set -u
export LC_ALL=C
: "${NM:=nm}" "${READELF:=readelf}"
library=$1 empty=$2 build=$3 lists=$4
size_limit=94208  # 92 KiB in all sections: the file's own size moves in pages
shipped=$([ "$build" = shipped ] && echo 1 || echo 0)
failed=0

# expect WHAT EXPECTED ACTUAL
expect() {
    if [ "$2" = "$3" ]; then echo "ok: $1"; return; fi
    printf 'FAILED: %s is not [%s] but\n%s\n' "$1" "$2" "$3"
    failed=1
}

symbols() { "$NM" -D "$1" "$library" | awk '{ sub(/@.*/, "", $NF); print $NF }' | sort -u; }
without() { comm -23 - "$1"; }
tag() { "$READELF" -dW "$library" | sed -n "s/.*($1).*\[\(.*\)\].*/\1/p" | sort; }
count() { grep -c "$1"; }
init_size() { "$READELF" -dW "$1" | awk '/\(INIT_ARRAYSZ\)/ { print $3 }'; }
zero_pages() {
    "$READELF" -lW "$1" | awk '$1 == "LOAD" && $7 == "RW" { print $3, $5, $6 }' | {
        read -r start in_file in_memory
        echo $(((start + in_memory - 1) / 4096 - (start + in_file - 1) / 4096))
    }
}
# Of those that are in memory.
section_sizes() {
    "$READELF" -SW "$library" | sed -n 's/^ *\[ *[0-9]*\] //p' | {
        sum=0
        while read -r _ _ _ _ size _ flags _; do
            case $flags in *A*) sum=$((sum + 0x$size)) ;; esac
        done
        echo "$sum"
    }
}

scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
sort -u "$(dirname "$0")/libc.txt" >"$scratch/libc" || exit 1
for list in exports host; do sort -u "$lists/$list.txt" >"$scratch/$list" || exit 1; done
symbols --defined-only >"$scratch/defined"
symbols --undefined-only >"$scratch/undefined"

expect "exports beyond exports.txt" "" "$(without "$scratch/exports" <"$scratch/defined")"
expect "declared without a row, or the other way round" "" "$(
    sed -nE 's/^PLATFORM_API [^([;]*[ *]([a-z_0-9]+)[([;].*/\1/p' "$(dirname "$0")"/../../include/platform/*.h |
        sort | diff - "$scratch/exports")"
expect "exports missing" "" "$(without "$scratch/defined" <"$scratch/exports")"
expect "SONAME" libplatform.so.1 "$(tag SONAME)"
expect "search path" "" "$(tag 'RPATH\|RUNPATH')"
expect "text relocations" 0 "$("$READELF" -dW "$library" | count TEXTREL)"
expect "binding at load time" "$shipped" "$("$READELF" -dW "$library" | count '(FLAGS).*BIND_NOW')"
expect "checks of buffers" "$shipped" \
    "$(grep -vx __stack_chk_fail "$scratch/undefined" | grep -m 1 '_chk$' | count .)"
expect "read-only relocations" 1 "$("$READELF" -lW "$library" | count GNU_RELRO)"
expect "stack" RW "$("$READELF" -lW "$library" | awk '/GNU_STACK/ { print $7 }')"
expect "stack protection" 1 "$(count '^__stack_chk_fail$' <"$scratch/undefined")"
if [ "$build" != instrumented ]; then
    # On aarch64 the loader, which is in every process, holds the stack guard.
    expect "libraries needed" libc.so.6 \
        "$(tag NEEDED | grep -v -e '^libgcc_s\.so\.1$' -e '^ld-linux-aarch64\.so\.1$')"
    expect "undefined beyond host.txt and libc.txt" "" \
        "$(without "$scratch/host" <"$scratch/undefined" | without "$scratch/libc")"
    expect "pages of zeroes alone" 0 "$(zero_pages "$library")"
    expect "constructors" "$(init_size "$empty")" "$(init_size "$library")"
else
    echo "not checked in an instrumented build: libraries needed, C library symbols, constructors"
fi
if [ "$shipped" = 1 ] && "$READELF" -h "$library" | grep -q AArch64; then
    size=$(section_sizes)
    echo "$size bytes in all sections"
    expect "size" "" "$([ "$size" -le $size_limit ] || echo "more than $size_limit bytes")"
fi
echo "$(wc -l <"$scratch/exports") exports listed"
exit $failed
