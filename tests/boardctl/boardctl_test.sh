#!/usr/bin/env bash
# boardctl as scripts see it: exit statuses, JSON, text from the air, state that lasts, faults that
# the checks must find. Status 77 where the virtual board cannot be entered.
# usage: boardctl_test.sh BOARDCTL HOST_LIBRARY PLATFORM_LIBRARY COMPLETION
set -uo pipefail

boardctl=$1 host=$2 platform=$3 completion=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
export XDG_STATE_HOME=$scratch/state
board=$XDG_STATE_HOME/boardctl/board
failed=0

fail() {
    echo "FAILED: $*"
    failed=1
}

# status WANTED ARGUMENTS...: what it printed is in ./out and ./err
status() {
    local wanted=$1 found
    shift
    "$boardctl" "$@" >out 2>err </dev/null
    found=$?
    [ $found -eq "$wanted" ] || fail "status $found, not $wanted, of: boardctl $*: $(cat err)"
}

same() { [ "$1" = "$2" ] || fail "$3: \"$1\" instead of \"$2\""; }

# A value of the JSON in ./out, by keys and indices; cmake refuses what is no JSON.
json() {
    printf 'file(READ out text)\nstring(JSON value GET "${text}" %s)\nmessage("${value}")\n' \
        "$*" >json.cmake
    cmake -P json.cmake 2>&1
}

"$boardctl" start >/dev/null 2>err
[ $? -eq 77 ] && echo "skipped: $(cat err)" && exit 77
[ -d "$board/var/board" ] || fail 'the board is not where XDG_STATE_HOME says'

# Help of every verb, and wrong command lines.
status 0 --help
verbs=$(awk '/^Subcommands:/ { on = 1; next } /^$/ { on = 0 } on && /^  [a-z]/ { print $1 }' out)
[ "$(wc -w <<<"$verbs")" -ge 19 ] || fail "only the verbs $verbs"
for verb in $verbs; do
    status 0 "$verb" --help
    grep -q '^  boardctl '"$verb" out || fail "no example of $verb"
done
while read -r line; do
    # shellcheck disable=SC2086
    status 2 $line
done <<'EOF'

nonsense
apply
apply ra9
apply ra0 --hidden perhaps
apply ra0 --ssid 123456789012345678901234567890123
acl --policy deny
acl ra0 --add nobody
wps start
ports link lan9
env set alone
env set a&b c
leds silence hours 22 24
buttons press wrong
config set no such field
call
call no_such_function
call mt_rssi_to_pwr
check nothing
stations --host-library x --platform-library y --board z
EOF

# Failures of the board, and what is not there.
status 1 calibration install /dev/null
status 3 calibration install no/such/file
status 3 --host-library /no/such --platform-library "$platform" radios
status 3 --host-library "$host" --platform-library /no/such radios

# Folders that are no board of the caller's are refused and stay as they are.
mkdir -p full/var/board other && ln -s "$board" link
[ "$(id -u)" -eq 0 ] && chown 1 other && foreign=other || foreign=/usr
while IFS='|' read -r folder reason; do
    status 3 --board "$folder" start --fresh
    grep -qF "$reason" err || fail "$folder is not refused since it $reason: $(cat err)"
done <<EOF
full|is not empty and no virtual board
link|is a symbolic link
$foreign|belongs to another user
EOF
[ -d full/var/board ] || fail 'a folder that is no board was emptied'
[ -d "$board/etc" ] || fail 'a board was emptied through a link'
mkdir -p old linked/board/kept && echo 'version 0' >old/.virtual-board
status 3 --board old start
status 0 --board old start --fresh
rm -r old/var && ln -s ../linked old/var
status 0 --board old start
[ -d linked/board/kept ] || fail 'files were removed through a link'
status 1 --host-library "$host" --platform-library "$platform" journal
status 0 --host-library "$host" --platform-library "$platform" --json call mt_rssi_to_pwr -60
same "$(json result)" 75 'a call of a library that was named'

# What comes from the air: bytes that are no text, controls, what looks like an escape.
mv "$board/etc/neighbours.conf" usual
cat >"$board/etc/neighbours.conf" <<'EOF'
ra0 1 02:11:32:AA:00:01 WPA2PSK/AES -43 11b/g/n ABOVE NO "\x1b[2J\x07\x00\x7f\x0a\x0d\x09"
ra0 6 02:11:32:AA:00:02 WPA2PSK/AES -43 11b/g/n ABOVE NO "\xff\xc3(\xe2\x82\xed\xa0\x80\xf5\xc0\xaf"
ra0 6 02:11:32:AA:00:03 WPA2PSK/AES -43 11b/g/n ABOVE NO "\xc2\x9b31m\xe2\x80\xaegnp.exe"
ra0 6 02:11:32:AA:00:04 WPA2PSK/AES -43 11b/g/n ABOVE NO "\\x1b \"quoted\" \xc3\xa9\xf0\x9f\x93\xb6"
EOF
status 0 --json survey ra0
for row in 'bssid|0|02:11:32:AA:00:01' \
    'ssid|1|\\xff\\xc3(\\xe2\\x82\\xed\\xa0\\x80\\xf5\\xc0\\xaf' \
    'ssid|2|\\xc2\\x9b31m\\xe2\\x80\\xaegnp.exe' 'ssid|3|\\\\x1b "quoted" é📶'; do
    IFS='|' read -r key number wanted <<<"$row"
    same "$(json networks "$number" "$key")" "$(printf '%b' "$wanted")" "$key of network $number"
done
status 0 survey ra0
for output in out err; do
    LC_ALL=C grep -qP '[^\x20-\x7e\x80-\xff]' "$output" && fail "a control character in $output"
    iconv -f utf-8 -t utf-8 "$output" >/dev/null || fail "$output is not UTF-8"
done
mv usual "$board/etc/neighbours.conf"

# What lasts: over calls, and over power off and on.
status 0 apply rai1 --ssid 'my "net"' --hidden on
status 0 acl ra0 --policy deny --add 3C:5A:B4:01:02:03
status 0 env set bootdelay 7
status 0 ports config lan2 fixed 10 half
status 0 start
status 0 --json profile show rai0 SSID2 HideSSID
same "$(json SSID2) $(json HideSSID)" 'my "net" 0;1;' 'a network after a restart'
status 0 --json acl ra0
same "$(json access 0 policy) $(json access 0 driver_addresses 0)" \
    'deny 3C:5A:B4:01:02:03' 'the access list after a restart'
status 0 --json env
same "$(json bootdelay)" 7 'a boot variable after a restart'
status 0 --json ports link lan2
same "$(json ports 0 stored) $(json ports 0 speed)" 'fixed 10 half 10' 'a port after a restart'
status 0 check
grep -q '^# The router' "$board/etc/board.conf" || fail 'comments of the configuration are lost'
status 0 flash read Factory --length 4 --output head
same "$(od -An -tx1 head)" ' 15 76 00 05' 'bytes that went into a file'

# What the checks must find.
spoiled() { # AREA, then what spoils it
    local area=$1
    shift
    status 0 check "$area"
    "$@" >/dev/null || fail "cannot spoil $area"
    status 1 check "$area"
}
spoiled profiles "$boardctl" config set radio 0 bss 0 ssid other
spoiled bridge cp /dev/null "$board/sys/class/net/br0/address"
spoiled modules sed -i '3d' "$board/var/board/modules"
spoiled vlan sed -i 's/^pvid.1=1/pvid.1=2/' "$board/var/board/switch"
spoiled mirror sed -i '/^mirror.target.1=/d' "$board/var/board/switch"
spoiled calibration truncate -s 100 "$board/lib/firmware/e2p.1"
status 0 start --fresh
status 0 check

# Completion.
completed() { # WORDS...: the last one is begun
    PATH=$(dirname "$boardctl"):$PATH bash -c '. "$1"; shift; COMP_WORDS=(boardctl "$@")
        COMP_CWORD=$#; _boardctl; echo "${COMPREPLY[*]}"' - "$completion" "$@"
}
same "$(completed mac)" mac-table 'completion of a verb'
same "$(completed ports co)" 'counters config' 'completion within a group'
same "$(completed wps start --p)" '--pin --platform-library' 'completion of an option'
same "$(completed call mt_rssi)" mt_rssi_to_pwr 'completion of a function'
exit $failed
