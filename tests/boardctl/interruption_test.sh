#!/usr/bin/env bash
# Interrupts "start", "start --fresh" and "apply" at so many moments each. Every time the caller must
# see the signal, nothing of the board may be left running, and a plain "start" must work.
# Status 77 where the virtual board cannot be entered.
# usage: interruption_test.sh BOARDCTL TOUR MOMENTS
set -uo pipefail

boardctl=$1 tour=$2 moments=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
: >"$scratch/faults"

fail() { echo "FAILED: $*" | tee -a "$scratch/faults"; }

microseconds() { echo "${EPOCHREALTIME/[.,]/}"; }

# A group of its own and Ctrl-C that is heeded, as at a prompt: run this with "&".
as_prompt() { exec env --default-signal=INT setsid "$@" </dev/null; }

pause() { sleep "$(printf '%d.%06d' $(($1 / 1000000)) $(($1 % 1000000)))"; }

# Stops a process; false when it had ended. After that a signal is sure to find it at work.
stop() {
    local state=
    kill -STOP "$1" 2>/dev/null || return 1
    until [ "$state" = T ] || [ "$state" = Z ]; do
        read -r _ _ state _ 2>/dev/null <"/proc/$1/stat" || state=Z
    done
    [ "$state" = T ]
}

nothing_runs() { # BOARD AFTER
    readlink /proc/[0-9]*/root | grep -qxF "$1" && fail "$2 left processes on the board"
    flock --nonblock "$1" true || fail "$2 left the board locked"
}

# interrupt MOMENT HOW BOARD ARGUMENTS...: false when the call had ended before that moment. HOW is
# what is signalled, the call alone or like Ctrl-C all of its group, and with what.
interrupt() {
    local moment=$1 how=$2 board=$3 call name='' status wanted=130
    shift 3
    as_prompt "$boardctl" --board "$board" "$@" >"$board.out" 2>&1 &
    call=$!
    until [ "$name" = boardctl ]; do read -r name <"/proc/$call/comm"; done
    pause "$moment"
    if ! stop $call; then
        wait $call
        return 1
    fi
    case $how in
        group) kill -INT -- -$call ;;
        INT) kill -INT $call ;;
        TERM) kill -TERM $call && wanted=143 ;;
        KILL) kill -KILL $call && wanted=137 ;;
    esac
    kill -CONT $call 2>/dev/null
    wait $call 2>/dev/null
    status=$?
    what="boardctl $* and $how after $moment us"
    [ $status -eq $wanted ] || fail "status $status of $what"
    # Only who is killed outright cannot wait for the board's end; the next call does.
    [ "$how" = KILL ] || nothing_runs "$board" "$what"
}

# Interrupts a call at moments that are spread over its time, and starts the board after each.
interrupt_often() { # NAME ARGUMENTS...
    local board=$scratch/$1 ways=(group TERM INT group TERM INT group KILL) hits=0 begun time what
    shift
    "$boardctl" --board "$board" start >/dev/null || fail 'the board does not start'
    begun=$(microseconds)
    "$boardctl" --board "$board" "$@" >/dev/null || fail "boardctl $* fails"
    time=$(($(microseconds) - begun))
    while [ $hits -lt $moments ]; do
        if ! interrupt $((time * hits / moments)) "${ways[hits % ${#ways[@]}]}" "$board" "$@"; then
            time=$((time * 9 / 10)) # it was faster than when it was measured
            continue
        fi
        hits=$((hits + 1))
        "$boardctl" --board "$board" start >"$board.out" 2>&1 ||
            fail "no start after $what: $(cat "$board.out")"
    done
    "$boardctl" --board "$board" check >"$board.out" 2>&1 || fail "after $*: $(cat "$board.out")"
    find "$board"/{.new,dev,etc,lib} -name '*.new*' 2>/dev/null | grep . &&
        fail "files of broken-off writes are left after $*"
    echo "boardctl $*: interrupted at $hits moments"
}

# The script behind "./dev run", at its first call and between later ones.
interrupt_tour() { # SECONDS SIGNAL STATUS
    local board=$scratch/tour status
    as_prompt bash "$tour" "$boardctl" --board "$board" >"$board.out" 2>&1 &
    sleep "$1"
    kill -"$2" $!
    wait $!
    status=$?
    [ $status -eq "$3" ] || fail "status $status of the tour after SIG$2"
    nothing_runs "$board" "the tour and SIG$2"
}

"$boardctl" --board "$scratch/first" start >/dev/null
[ $? -eq 77 ] && exit 77

interrupt_often fresh start --fresh &
interrupt_often start start &
{
    interrupt_often apply apply ra0
    interrupt_tour 0.2 INT 130
    interrupt_tour 1 TERM 143
} &
wait
grep -F "$scratch" /proc/self/mountinfo && fail 'mounts are left'
[ ! -s "$scratch/faults" ]
