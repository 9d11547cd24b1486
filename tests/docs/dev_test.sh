#!/usr/bin/env bash
# What ./dev refuses: with status 2 and one line that says what is allowed, before it begins.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit 1
failed=0

while IFS=@ read -r arguments allowed; do
    # shellcheck disable=SC2086
    said=$(./dev $arguments 2>&1)
    status=$?
    [[ $status -eq 2 && $said == "./dev: "*"$allowed"* && $said != *$'\n'* ]] && continue
    echo "FAILED: status $status of ./dev $arguments: $said"
    failed=1
done <<'EOF_ROWS'
tset@the nearest is test
xyzzy@"xyzzy": run, test,
run --bord x@[--board DIR]
run --board@[--board DIR]
test debug@[--preset release|debug|sanitizers]
test --preset@[--preset release|debug|sanitizers]
test --preset coverage@[--preset release|debug|sanitizers]
test --coverage --preset debug@--coverage has a preset of its own
build --preset debug|release@[--preset release|debug|sanitizers]
bench --fast@[--count] [--update]
bench --update@--update goes with --count
abi update@[--update]
fuzz survy 5@the nearest is survey
fuzz survey@SECONDS
fuzz survey 5 x@[SEED]
format --chek@[--check]
cross --update@./dev cross
EOF_ROWS
exit $failed
