#!/bin/sh
# Uses the installed tree as a firmware's build does, and installs and removes the Debian package in
# a root of its own. usage: check_package.sh BUILD_FOLDER C_COMPILER
set -eu
export LC_ALL=C
build=$1 cc=$2
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
stage=$scratch/stage root=$scratch/root

files() { (cd "$1" && find . ! -type d ! -path './var/*' | sort); }

# Where a tree has the library's pkg-config file.
use_tree() {
    export PKG_CONFIG_SYSROOT_DIR="$1" PKG_CONFIG_LIBDIR
    PKG_CONFIG_LIBDIR=$(dirname "$(find "$1" -name platform.pc)")
}

# What this host has no function of its own for answers 0.
host_by_pkg_config() {
    use_tree "$1"
    sed 's/.*/__attribute__((weak)) long &(void) { return 0; }/' \
        "$(pkg-config --variable=host_functions platform)" >"$scratch/stubs.c"
    # shellcheck disable=SC2046
    $cc -std=c11 -Wall -Wextra -Wpedantic -Werror -o "$scratch/host" "$here/host.c" \
        "$scratch/stubs.c" $(pkg-config --cflags --libs platform)
    LD_LIBRARY_PATH=$(pkg-config --variable=libdir platform) "$scratch/host"
}

# host_by_cmake FOLDER OPTION...
host_by_cmake() {
    folder=$scratch/$1
    shift
    cmake -S "$here" -B "$folder" -DCMAKE_C_COMPILER="$cc" "$@" >/dev/null
    cmake --build "$folder" >/dev/null
    ctest --test-dir "$folder" --output-on-failure --no-tests=error | grep 'tests passed.* of 2$'
}

# A root that has of this machine what the package depends on and nothing else. What the package
# asks of ldconfig is noted and not done to this machine.
make_root() {
    depends=$(dpkg-deb --field "$package" Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//')
    mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/triggers"
    for name in $depends; do
        dpkg-query --status "$name" && echo
        : >"$root/var/lib/dpkg/info/$name:$(dpkg --print-architecture).list"
    done >"$root/var/lib/dpkg/status"
    mkdir "$scratch/bin"
    printf '#!/bin/sh\necho "$*" >>%s\n' "$scratch/ldconfig" >"$scratch/bin/ldconfig"
    chmod +x "$scratch/bin/ldconfig"
}

on_root() {
    PATH=$scratch/bin:$PATH dpkg --root="$root" --force-not-root --force-script-chrootless \
        --force-bad-path --log=/dev/null "$@" >/dev/null
}

fail() { echo "FAILED: $*"; exit 1; }
step() { echo "-- $*"; }

step the installed tree, by pkg-config
DESTDIR=$stage cmake --install "$build" >/dev/null
host_by_pkg_config "$stage"

step the installed library
library=$(pkg-config --variable=libdir platform)/libplatform.so
sh "$here/../surface/check_library.sh" "$library" "$build/tests/libempty_library.so" shipped \
    "$build/border" \
    >"$scratch/surface" || { cat "$scratch/surface"; exit 1; }

step what is installed is optimised
levels=$(sed -n '/"command"/ { / -o \(src\|board\|boardctl\)\//s/.* \(-O[^ ]*\) .*/\1/p }' \
    "$build/compile_commands.json" | sort -u)
[ "$levels" = -O2 ] || fail "compiled with $levels"

step the installed tree, by CMake
host_by_cmake installed -DCMAKE_PREFIX_PATH="$stage/usr"

# A machine with a compiler and CMake is a machine on which nothing else is found.
step the sources in a build of their own and in another project
bare=--no-warn-unused-cli
for package in GTest Python3 fmt nlohmann_json CLI11 benchmark PkgConfig; do
    bare="$bare -DCMAKE_DISABLE_FIND_PACKAGE_$package=ON"
done
# shellcheck disable=SC2086
{
    cmake -S "$here/../.." -B "$scratch/alone" -DPLATFORM_BOARD=OFF $bare >/dev/null
    host_by_cmake added -DSOURCES="$here/../.." -DBUILD_TESTING=ON $bare
}

step the installed tool, on a board of its own
if grep -qF "$build" "$stage/usr/bin/boardctl"; then fail 'boardctl knows where it was built'; fi
status=0
"$stage/usr/bin/boardctl" start --board "$scratch/board" >"$scratch/start" 2>"$scratch/errors" ||
    status=$?
case $status in
    0) ;;
    77) echo "skipped: $(cat "$scratch/errors")" ;;
    *) fail "boardctl start: status $status: $(cat "$scratch/errors")" ;;
esac

step the Debian package
cpack --config "$build/CPackConfig.cmake" -B "$scratch/deb" >"$scratch/cpack" 2>&1 ||
    { cat "$scratch/cpack"; exit 1; }
package=$(echo "$scratch"/deb/*.deb)
make_root
on_root --install "$package"
files "$stage" >"$scratch/staged"
files "$root" | diff "$scratch/staged" -
host_by_pkg_config "$root"
on_root --purge "$(dpkg-deb --field "$package" Package)"
left=$(find "$root" -mindepth 1 ! -path "$root/var*")
[ -z "$left" ] || fail "left behind: $left"
printf '%s\n' "-r $root" "-r $root" | diff - "$scratch/ldconfig" || fail "ldconfig's calls"
echo "$(wc -l <"$scratch/staged") files installed and removed"
