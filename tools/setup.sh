#!/bin/bash
# Brings in what the project needs and the machine lacks: Debian packages, and SQLite's source under .cache/sqlite.
# setup.sh [PACKAGE...]: these packages too; wine32:i386 lets Wine run 32-bit programs. Nothing is removed for them.
# Where all is there it ends at once and touches no network. Where it cannot go on, one line says what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
cache=$PWD/.cache
log=$cache/setup.log
asRoot=(env DEBIAN_FRONTEND=noninteractive)
[ "$(id -u)" -eq 0 ] || asRoot=(sudo "${asRoot[@]}")

packages=(
    ca-certificates g++ cmake ninja-build googletest libgtest-dev libgmock-dev
    g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools
    wine wine64 libwine-dev fonts-wine fonts-liberation
    xvfb xdotool imagemagick sqlite3 jq zip clang-format
    "$@"
)
sqlitePackage=better-sqlite3@12.11.1
sqliteSums="60d2f39a3726cd6b9021da6f4e868608d66fbb6528a9f513dc8ffcc640493422  sqlite3.c
9e69a1353a4288450b0d5239ede11fc7f1f4c8e5eb07491fc8317eacb5b7de7e  sqlite3.h"

fail() {
    echo "set-up: $*" >&2
    exit 1
}

# sqliteIn FOLDER: whether the expected source lies there.
sqliteIn() {
    [ -f "$1/sqlite3.c" ] && (cd "$1" && sha256sum --quiet --check --status <<<"$sqliteSums") 2>/dev/null
}

# Prints the packages that are not installed, in the order of the list.
missingPackages() {
    local package
    for package in "${packages[@]}"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package"
    done
    sqliteIn "$cache/sqlite" || command -v npm >/dev/null || echo npm
}

# Tried with a program of our own, before Debian's are brought in: with wine32 there, all of Wine starts by it.
runs32BitPrograms() (
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    as --32 -o "$work/program.o" <<<'.globl _start; _start: mov $1, %eax; xor %ebx, %ebx; int $0x80' &&
        ld -m elf_i386 -o "$work/program" "$work/program.o" && "$work/program" 2>/dev/null
)

aptInstall() {
    "${asRoot[@]}" apt-get -q -y --no-remove --no-install-recommends -o DPkg::Lock::Timeout=300 install "$@" \
        >>"$log" 2>&1 </dev/null
}

# A library has to have the same version in both widths, and one width's index may be behind: where that is in the way,
# versions of the release itself serve, older ones too.
aptInstallOlder() {
    [[ " $* " == *:i386\ * ]] || return 1
    printf '%s\n' "Package: *" "Pin: release n=$VERSION_CODENAME" "Pin-Priority: 1001" >"$cache/preferences"
    aptInstall --allow-downgrades -o "Dir::Etc::preferences=$cache/preferences" "$@"
}

installPackages() {
    local added=""
    . /etc/os-release 2>/dev/null || true
    [ "${ID:-} ${VERSION_ID:-}" = "debian 12" ] || fail "this needs Debian 12; missing here: $*"
    [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; } ||
        fail "neither root nor rights by sudo, so these packages cannot be installed: $*"
    if [[ " $* " == *:i386\ * ]] && ! dpkg --print-foreign-architectures | grep -qx i386; then
        runs32BitPrograms || fail "this machine runs no 32-bit programs, so it cannot have $*"
        added=i386
        "${asRoot[@]}" dpkg --add-architecture i386
    fi
    echo "set-up: installing $* (see ${log#"$PWD"/})"
    # A source that does not answer need not be the one that is wanted, so installing decides.
    "${asRoot[@]}" apt-get -q update >"$log" 2>&1 </dev/null || true
    aptInstall "$@" || aptInstallOlder "$@" || {
        [ -z "$added" ] || "${asRoot[@]}" dpkg --remove-architecture i386 || true
        fail "apt-get cannot install $*: $(grep '^E:' "$log" | tail -n 1) (no network? see ${log#"$PWD"/})"
    }
}

fetchSqlite() (
    echo "set-up: fetching SQLite's source"
    work=$(mktemp -d "$cache/npm.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    (cd "$work" && timeout 300 npm pack --ignore-scripts --cache "$work/npm" "$sqlitePackage") >"$log" 2>&1 </dev/null ||
        fail "no network? npm cannot fetch $sqlitePackage, which brings SQLite's source (see ${log#"$PWD"/})"
    tar -xzf "$work"/*.tgz -C "$work" --strip-components 3 package/deps/sqlite3/sqlite3.{c,h} || true
    sqliteIn "$work" || fail "$sqlitePackage has not the expected source of SQLite, so it is not used"
    mkdir -p "$cache/sqlite"
    mv "$work"/sqlite3.[ch] "$cache/sqlite/"
)

mkdir -p "$cache"
exec 9>"$cache/setup.lock"
flock 9
readarray -t missing < <(missingPackages)
[ ${#missing[@]} -eq 0 ] || installPackages "${missing[@]}"
sqliteIn "$cache/sqlite" || fetchSqlite
