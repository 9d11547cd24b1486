#!/usr/bin/env bash
# A tour of the virtual board in calls of boardctl, from power-on to radios on the air. Ends with
# status 1 at the first step that fails.
# usage: tour.sh BOARDCTL [--board DIR]
set -euo pipefail

boardctl=$1
shift
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT
trap 'exit 130' INT # after the call that is under way, which ends the board's processes
trap 'exit 143' TERM
board=$copies/board
if [ "${1:-}" = --board ]; then
    board=$2
    shift 2
fi
[ -s "$board/.virtual-board" ] && was_there=yes || was_there=no

ctl() { "$boardctl" --board "$board" "$@"; }

title() {
    if [ -t 1 ]; then printf '\n\033[1m%s\033[0m\n' "$*"; else printf '\n%s\n' "$*"; fi
}

fault() {
    printf 'FAULT: %s\n' "$*" >&2
    exit 1
}

# Shows a call and its answer; the call must end well. 77: this machine does not let us.
run() {
    printf '\n$ boardctl'
    printf ' %q' "$@"
    printf '\n'
    local status=0
    ctl "$@" || status=$?
    if [ $status -eq 77 ]; then exit 77; fi
    [ $status -eq 0 ] || fault "\"boardctl $*\" ended with status $status"
}

# The same for what the board must refuse or find wanting.
run_failing() {
    printf '\n$ boardctl %s\n' "$*"
    local status=0
    ctl "$@" || status=$?
    [ $status -eq 1 ] || fault "\"boardctl $*\" did not fail"
}

# The same without its answer.
quietly() { ctl "$@" >/dev/null || fault "\"boardctl $*\" failed"; }

# Without a word while it is good.
check() {
    local report
    report=$(ctl check "$@") || fault "after this step:
$report"
}

# The values of a key in a JSON answer, one a line.
values() {
    local key=$1 answer
    shift
    answer=$(ctl --json "$@") || fault "\"boardctl $*\" failed"
    sed -n "s/^ *\"$key\": \"\(.*\)\",\{0,1\}\$/\1/p" <<<"$answer"
}

installs() {
    local effects
    effects=$(ctl journal) || fault '"boardctl journal" failed'
    grep -c '^mtd write - Factory$' <<<"$effects"
}

# Whether the answer has the text: has TEXT ARGUMENTS...
has() {
    local text=$1 answer
    shift
    answer=$(ctl "$@") || fault "\"boardctl $*\" failed"
    grep -qF -- "$text" <<<"$answer"
}

power_on_without_calibration() {
    title 'Power-on of a board whose calibration data was never written'
    run start --erased
    [ "$(installs)" = 1 ] || fault 'the default calibration image was not installed exactly once'
    run calibration
    check calibration modules pins
    quietly flash read Factory --output "$copies/installed"
}

power_on() {
    title 'Power off, power on'
    run start
    [ "$(installs)" = 0 ] || fault 'good calibration data was installed over'
    if [ -n "${1:-}" ]; then
        quietly flash read Factory --output "$copies/kept"
        cmp -s "$1" "$copies/kept" || fault 'good calibration data was changed'
    fi
    run profile diff
    run radios
    check helper
}

use_switch() {
    title 'The Ethernet switch'
    run vlan
    run ports mirror
    run ports
    run ports counters
    check vlan mirror ports
    run check counters
    run mac-table
    check wired
    local station
    station=$(values station mac-table | sed -n 1p)
    [ -n "$station" ] || return 0
    run mac-table --delete "$station"
    ! has "$station" mac-table || fault "$station is still there after it was deleted"
    check wired
}

# Two hours each, so that the one that runs out meanwhile makes no difference.
silent_hours() {
    title "LEDs before, in and after their silent hours"
    local now start
    now=$((10#$(date -u +%H)))
    for start in $((now + 2)) $((now)) $((now + 21)); do
        run leds silence hours $((start % 24)) $(((start + 2) % 24))
        check leds
        local state=normal
        [ "$start" -eq "$now" ] && state=silent
        [ "$(values run_led_state leds)" = $state ] || fault "the LEDs are not $state"
    done
    quietly leds silence never
}

use_panel() {
    silent_hours
    title 'A held reset button'
    has '"held": false' --json buttons held reset --samples 5 --interval 2 || fault 'reset is held'
    run buttons press reset
    run buttons held reset --samples 5 --interval 2
    has '"held": true' --json buttons held reset --samples 5 --interval 2 ||
        fault 'reset is released'
    check buttons
    quietly buttons release reset
    check buttons
}

change_network() {
    local network=$1
    title "The owner renames and hides $network"
    run apply "$network" --ssid renamed --hidden on --steps
    check bridge networks profiles
    [ "$(values ssid radios "$network" | grep -c '^renamed$')" = 1 ] ||
        fault "$network does not announce its new name"
}

use_radios() {
    local radio=$1 upstream
    title 'Stations and networks in reach'
    run stations
    run survey
    upstream=$(ctl --json survey "$radio" | awk -F '"' '
        $2 == "ssid" { name = $4 }
        $2 == "auth" { auth = $4 }
        $2 == "cipher" && auth == "WPA2-PSK" && $4 == "AES" && name ~ /^[^\\]+$/ && !found {
            print name
            found = 1
        }') || fault "\"boardctl survey $radio\" failed"
    check radios stations survey
    [ -n "$upstream" ] || return 0
    title "The owner has $radio repeat a neighbour's network"
    run apply "$radio" --repeat "$upstream" --repeat-key upstream-passphrase
    run radios
    run stations "$radio"
    check networks radios stations
    has "\"upstream\": \"$upstream\"" --json radios "$radio" || fault "$radio is not on $upstream"
}

use_wps() {
    local radio=$1
    title 'WPS: by push button to its end, then by PIN and broken off'
    run wps identity
    run wps start "$radio"
    run wps stop "$radio"
    run check wps
    run wps start "$radio" --pin 12345670 --no-wait
    [ "$(values state wps status "$radio")" = running ] || fault 'WPS by PIN does not run'
    run wps stop "$radio"
    [ "$(values state wps status "$radio")" = failed ] || fault 'WPS that was broken off goes on'
}

lock_out() {
    local radio=$1 station network
    station=$(values station stations "$radio" | sed -n 1p)
    network=$(values interface stations "$radio" | sed -n 1p)
    [ -n "$network" ] || return 0
    title "The owner locks $station out of $network"
    run acl "$network" --policy deny --add "${station//-/:}"
    run stations "$radio"
    ! has "$station" stations "$radio" || fault "$station is still there"
    check access stations
    run acl "$network" --policy off --clear
    check access
}

refuse() {
    title 'What the board refuses'
    run_failing calibration install /dev/null
    check calibration
}

conclude() {
    title 'Result'
    check
    echo '  The board is up and the changes have arrived.'
}

if [ $was_there = yes ]; then
    ctl start >/dev/null # it may have been broken off before its calibration data was installed
    power_on
else
    power_on_without_calibration
    power_on "$copies/installed"
fi
use_switch
use_panel
network=$(values network acl | tail -1)
radio=$(values radio radios | tail -1)
[ -z "$network" ] || change_network "$network"
if [ -n "$radio" ]; then
    use_radios "$radio"
    security=$(values AuthMode profile show "$radio")
    case $security in
        'WPA;'* | 'WPA2;'* | 'WPA1WPA2;'* | WPA | WPA2 | WPA1WPA2) ;; # 802.1X has no WPS
        *) use_wps "$radio" ;;
    esac
    lock_out "$radio"
fi
refuse
conclude
