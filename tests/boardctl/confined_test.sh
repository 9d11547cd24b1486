#!/usr/bin/env bash
# The virtual board where a machine allows less: in a name space of users, without more of these,
# in a plain chroot; and what boardctl says where it cannot be entered. Status 77 and the reason
# where this machine does not let us make such places.
# usage: confined_test.sh BOARDCTL BUILD_KIND
set -uo pipefail

PATH=$PATH:/usr/sbin # chroot, for who is not root
export boardctl=$1 hidden=/proc
[ "$2" != instrumented ] || hidden= # memory checkers need it
scratch=$(mktemp -d)
trap 'rm -rf --one-file-system "$scratch"' EXIT
export board=$scratch/board
failed=0
left_out=

fail() {
    echo "FAILED: $*"
    failed=1
}

# expect STATUS TEXT COMMAND...: with a TEXT, the command prints one line on standard error, with it.
expect() {
    local wanted=$1 text=$2 status
    shift 2
    rm -rf "$board"
    "$@" >/dev/null 2>"$scratch/err" </dev/null
    status=$?
    [ $status -eq "$wanted" ] || fail "status $status, not $wanted, of: $*: $(cat "$scratch/err")"
    [ -z "$text" ] && return
    grep -qF -- "$text" "$scratch/err" || fail "$* does not say \"$text\": $(cat "$scratch/err")"
    [ "$(wc -l <"$scratch/err")" -eq 1 ] || fail "$* says more: $(cat "$scratch/err")"
}

# without KIND...: a start by the root of a name space that may have no more of these kinds.
without() {
    # shellcheck disable=SC2016
    unshare --map-root-user sh -c 'for kind; do echo 0 >"/proc/sys/user/max_${kind}_namespaces"; done
        exec "$boardctl" --board "$board" start' - "$@"
}

# in_chroot UNSHARE_OPTION COMMAND...: where "/" is a folder and no mount point, and without /proc.
# The mounts are in a name space of their own.
in_chroot() {
    mkdir -p "$scratch/root"
    # shellcheck disable=SC2016
    unshare --mount "$1" sh -c 'root=$1
        shift
        for place in /*; do
            if [ -L "$place" ]; then cp -P "$place" "$root"; fi
            if [ -L "$place" ] || [ ! -d "$place" ] || [ "$place" = "$hidden" ]; then continue; fi
            mkdir -p "$root$place" && mount --rbind "$place" "$root$place" || exit 1
        done
        exec chroot "$root" "$@"' - "$scratch/root" "${@:2}"
}

if ! unshare --map-root-user true; then
    echo 'SKIPPED: this machine allows no name space of users'
    exit 77
fi
expect 0 '' unshare --map-root-user "$boardctl" --board "$board" start
expect 0 '' without user
expect 77 'unshare(CLONE_NEWNS | CLONE_NEWPID): No space left on device; ' without user pid
expect 77 'mount(/dev/null): ' in_chroot --map-root-user "$boardctl" --board "$board" start
if [ "$(id -u)" -eq 0 ]; then
    expect 0 '' in_chroot --fork "$boardctl" --board "$board" start
else
    left_out='a plain chroot, which needs root'
fi
grep -F "$scratch" /proc/self/mountinfo && fail 'mounts are left'
[ -z "$left_out" ] || echo "SKIPPED: $left_out"
[ $failed -eq 0 ] || exit 1
[ -z "$left_out" ] || exit 77
