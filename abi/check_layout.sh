#!/bin/sh
# Compiles layout.c in every language and for every processor. usage: check_layout.sh COMPILER...
set -eu
here=$(cd "$(dirname "$0")" && pwd)
for compiler in "$@"; do
    if ! command -v "$compiler" >/dev/null; then
        echo "skipped: there is no $compiler"
        continue
    fi
    for language in 'c -std=c11' 'c++ -std=c++11' 'c++ -std=c++20'; do
        # shellcheck disable=SC2086
        "$compiler" -x $language -Wall -Wextra -Wpedantic -Werror -fsyntax-only \
            -I "$here/../include" "$here/layout.c"
        echo "$compiler, $language"
    done
done
