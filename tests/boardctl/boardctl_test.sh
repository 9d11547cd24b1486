#!/usr/bin/env bash
# boardctl as scripts see it: exit statuses, JSON, text from the air, state that lasts, faults that
# the checks must find. Status 77 where the virtual board cannot be entered.
# usage: boardctl_test.sh BOARDCTL HOST_LIBRARY PLATFORM_LIBRARY COMPLETION MANUAL TOUR
set -uo pipefail

boardctl=$1 host=$2 platform=$3 completion=$4 manual=$5 tour=$6
scratch=$(mktemp -d) || exit 1
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

# Wrong command lines.
while IFS='|' read -r line message; do
    eval "status 2 $line"
    grep -qF -- "boardctl: $message" err && [ "$(wc -l <err)" -eq 1 ] || fail "$line: $(cat err)"
done <<'EOF'
|name a verb
strat|unknown verb 'strat'; did you mean 'start'?
ports confg|unknown verb 'ports confg'; did you mean 'ports config'?
start foo|nothing expects 'foo'; see boardctl start --help
start --frsh|unknown option '--frsh'; did you mean '--fresh'?
--board|--board: 1 required DIR missing
--board "" start|--board is empty: folder of the virtual board
stations --host-library x --platform-library y --board z|--board is for the virtual board
apply|IFNAME is required; see boardctl apply --help
apply ra9|an interface of a radio is ra0, ra1, ra2, ra3, apcli0, rai0, rai1, rai2, rai3 or apclii0, not
apply ra0 --hidden perhaps|--hidden is on, off, yes, no, 1 or 0, not perhaps
apply ra0 --ssid 123456789012345678901234567890123|--ssid is at most 32 bytes, not 33
apply ra0 --ssid|--ssid: 1 required TEXT missing
apply ra0 --key short|--key is 8 to 63 bytes or 64 hexadecimal digits
apply ra0 --repeat up --repeat-key short|--repeat-key is 8 to 63 bytes
apply rai1 --channel 7|--channel of rai0 is 0, 36, 40
apply rai1 --channel 197|--channel is a number from 0 to 196, not 197
acl --policy deny|name the network to change
acl ra0 --policy maybe|--policy is off, deny or allow, not maybe
acl ra0 --add nobody|--add is the address of a station, such as 3C:5A:B4:01:02:03, not nobody
mac-table --clear --delete 01:00:5e:00:00:fb|--delete is the address of a station
wps start|IFNAME is required
wps start ra0 --pin 12345671|--pin is four digits, or eight with the right check digit
wps start ra0 --seconds 0|--seconds is a number from 1 to 3600, not 0
ports link lan9|a port is lan1, lan2, lan3, lan4 or wan1, not lan9
ports config lan1 fast|MODE is on, off, auto or fixed, not fast
ports config lan1 fixed|fixed goes with a speed
flash read Nothing|PARTITION is u-boot, Config, Factory or Kernel, not Nothing
flash read Factory --offset 0x40000|--offset is a number from 0 to 262143, not 0x40000
flash read Factory --offset 0x3ffff --length 2|--length is a number from 1 to 1, not 2
env set alone|VALUE is required
env set 'a&b' c|a boot variable's name
calibration install ""|FILE is empty: an image
leds silence hours 22 24|END is a number from 0 to 23, not 24
leds silence never 1 2|START and END go with hours
buttons press wrong|BUTTON is reset or wps, not wrong
journal --last -5|--last is a number from 0 to
config set no such field|not understood: no such field
config set radio 0 bss 0 channel 197|not understood: radio 0 bss 0 channel 197
check leeds|unknown area 'leeds'; did you mean 'leds'?
call|name a function
call mt_rssi_to_pw -60|no exported function is called "mt_rssi_to_pw"; did you mean 'mt_rssi_to_pwr'?
call mt_rssi_to_pwr|mt_rssi_to_pwr takes 1 arguments, not 0
EOF
status 0 --version
grep -qE '^boardctl [0-9]+\.[0-9]+\.[0-9]+$' out || fail "the version is $(cat out)"
for words in radios '--json radios' 'call --list' --help --version; do
    # shellcheck disable=SC2086
    "$boardctl" $words >/dev/full 2>err && fail "$words succeeds on a full device"
    grep -q 'No space left' err || fail "$words on a full device says $(cat err)"
done

# Failures of the board, and what is not there.
status 1 calibration install /dev/null
status 3 calibration install no/such/file
status 3 --host-library /no/such --platform-library "$platform" radios
status 3 --host-library "$host" --platform-library /no/such radios
status 3 --host-library "$host" --platform-library "$host" leds
grep -q 'boardctl: the platform library has no get_run_led_op$' err || fail "$(cat err)"

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

# What the checks must not take for a fault, each on a board of its own.
while IFS='|' read -ra calls; do
    status 0 start --fresh
    for call in "${calls[@]}"; do eval "status 0 $call"; done
    "$boardctl" check >out </dev/null || fail "after ${calls[*]}: $(sed -n '/^faults/,$p' out)"
done <<'EOF'
config set set easymesh 1|acl ra0 --policy deny --add 3C:5A:B4:01:02:03|start
ports mirror lan2|ports mirror lan3
ports mirror lan2|start
mac-table --clear
leds silence always|leds set all on|leds set wl off
leds set all off
apply rai0 --enabled off|apply rai1 --enabled off|start
call set_hwaddr_flash 00:11:22:33:44:55
ports config lan3 on|ports config lan4 fixed 100 full|ports config lan2 fixed 1000 full
ports counters --clear|check counters|wps start ra0 --no-wait|check wps
EOF

# What the checks must find.
spoiled() { # AREA, then what spoils it
    local area=$1
    shift
    status 0 check "$area"
    "$@" >/dev/null || fail "cannot spoil $area"
    status 1 check "$area"
}
status 0 start --fresh
status 0 leds set all off
spoiled profiles "$boardctl" config set radio 0 bss 0 ssid other
spoiled bridge cp /dev/null "$board/sys/class/net/br0/address"
spoiled modules sed -i '3d' "$board/var/board/modules"
spoiled vlan sed -i 's/^pvid.1=1/pvid.1=2/' "$board/var/board/switch"
spoiled mirror sed -i '/^mirror.target.1=/d' "$board/var/board/switch"
spoiled ports sed -i 's/^register.3300=.*/register.3300=56330/' "$board/var/board/switch"
spoiled leds sed -i 's/^run=off/run=slow/' "$board/var/board/leds"
status 0 acl ra0 --policy deny --add 3C:5A:B4:01:02:03
spoiled access sed -i 's/^AccessPolicy=2/AccessPolicy=0/' "$board/var/board/driver/ra0.set"
spoiled calibration truncate -s 100 "$board/lib/firmware/e2p.1"

# Mistakes in the configuration stop every call before it acts.
status 0 start --fresh
while IFS='|' read -r file line; do
    cp "$board/etc/$file" good
    echo "$line" >>"$board/etc/$file"
    number=$(wc -l <"$board/etc/$file")
    cp "$board/var/board/journal" before
    for verb in start radios; do
        status 2 $verb
        same "$(head -n 1 err)" "$board/etc/$file:$number: not understood: $line" "$file"
    done
    cmp -s before "$board/var/board/journal" || fail "$file: something was done to the board"
    cp good "$board/etc/$file"
done <<'EOF'
board.conf|set easy_mesh 1
board.conf|set my_mac 00:11:22:33:44
board.conf|port 3 fixed 100
modules.conf|usblp.ko=late
neighbours.conf|ra0 0 02:11:32:AA:00:01 NONE -43 11b/g/n ABOVE NO name
pins.conf|18
stations.conf|station ra0 3C:5A:B4:01:02 1 144 130 5025 1 1 -48
stations.conf|table ra7 V2
switch.conf|busy 2 0
switch.conf|port 5 100/full
wps_peer.conf|colour=red
EOF

# Every example of the help and of the manual; "config" last, for it changes what is only stored.
boardctl() {
    "$boardctl" "$@" >out 2>err </dev/null || fail "status $? of: boardctl $*: $(cat err)"
}
status 0 start --fresh
boardctl --help
verbs=$(awk '/^Subcommands:/ { on = 1; next } /^$/ { on = 0 } on && /^  [a-z]/ { print $1 }' out)
for verb in '' ${verbs/config/} config; do
    # shellcheck disable=SC2086
    boardctl $verb --help
    sed -n 's/^  \(boardctl .*\)/\1/p' out | sed 's/   .*//' >examples
    grep -q "^boardctl $verb" examples || fail "no example of $verb"
    cat examples >>all
done
grep '^boardctl ' "$manual" >>all
[ "$(wc -w <<<"$verbs")" -ge 19 ] && [ "$(wc -l <all)" -ge 60 ] || fail "only $verbs; $(cat all)"
while read -r example; do eval "$example"; done <all
unset -f boardctl
status 0 start --fresh
status 0 check

# The tour ends at the first step that fails.
cat >failing <<EOF
#!/bin/sh
case "\$*" in *" mac-table") exit 1 ;; esac
exec "$boardctl" "\$@"
EOF
chmod +x failing
bash "$tour" ./failing >out 2>err && fail 'the tour goes on after a step that failed'
grep -q '^FAULT: .*mac-table' err || fail "the tour ends with $(cat err)"
grep -q '^\$ boardctl leds' out && fail 'the tour goes on after its fault'

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
