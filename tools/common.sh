# SPDX-FileCopyrightText: 2026 The Morvix authors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# Shared by the scripts of this repository; sourced, never run.

say() { printf '\n== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

# The packages of some sections of the list, one a line.
packages_of() {
    local section wanted=" $* "
    while read -r line; do
        case $line in
        '' | '#'*) ;;
        '['*']') section=${line:1:-1} ;;
        *) [[ $wanted == *" $section "* ]] && printf '%s\n' "$line" ;;
        esac
    done <"$root/packaging/debian-packages.txt"
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "Packages are missing and need root: run as root, or install sudo."
    fi
}

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Installs what is missing of some sections; does nothing where all is there.
install_packages() {
    command -v dpkg-query >/dev/null || die "This script sets up Debian 12; elsewhere install the packages of packaging/debian-packages.txt by hand."
    local missing=() package
    while read -r package; do
        is_installed "$package" || missing+=("$package")
    done < <(packages_of "$@")
    [ ${#missing[@]} = 0 ] && return
    say "Installing: ${missing[*]}"
    as_root apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# Whether this machine has never compiled anything through the cache.
is_first_build() { [ ! -d "$(ccache --get-config cache_dir)" ]; }

# build_preset PRESET [-DNAME=VALUE…] [--target NAME]: configures once and builds; ninja finds out
# what is new by itself.
build_preset() {
    local preset=$1 settings=() targets=()
    shift
    while [ $# -gt 0 ]; do
        case $1 in
        --target) targets+=("$1" "$2"); shift 2 ;;
        *) settings+=("$1"); shift ;;
        esac
    done
    if [ ! -f "$root/build/$preset/build.ninja" ]; then
        # An empty cache helps nobody; precompiled headers halve the time.
        is_first_build && settings+=(-DMORVIX_PRECOMPILE=ON)
        (cd "$root" && cmake --preset "$preset" "${settings[@]}")
    fi
    cmake --build "$root/build/$preset" "${targets[@]}"
}
