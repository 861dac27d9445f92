# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the scripts share. To be sourced by bash; it moves to the root of the tree and keeps standard input closed.

set -euo pipefail

CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."
root=$PWD
exec </dev/null

say() { printf '%s: %s\n' "${0##*/}" "$*" >&2; }

die() {
    say "$*"
    exit 1
}

# needed_packages LIST...: the names in lists like scripts/packages, without comments and reasons.
needed_packages() { sed -e 's/#.*//' -- "$@" | awk 'NF { print $1 }'; }

# configure_and_build PRESET [TARGET...]: the build tree of a preset is build/PRESET.
configure_and_build() {
    local preset=$1
    shift
    cmake --preset "$preset"
    cmake --build "build/$preset" --target "${@:-all}"
}

# build_benchmarks TARGET...: optimised, in a tree of their own, so that no other command builds them along.
build_benchmarks() {
    cmake --preset release -B build/benchmarks \
        -DVORLIX_BUILD_BENCHMARKS=ON -DVORLIX_BUILD_TESTS=OFF -DVORLIX_BUILD_VIEWER=ON
    cmake --build build/benchmarks --target "$@"
}

has_display() { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }

# Runs a command on a virtual display of its own, whatever display there is. UTF-8, so that any file name can be passed.
# Qt wants a private folder for a session's sockets; a machine without a login has none.
on_virtual_display() {
    mkdir -p build/session
    chmod 700 build/session
    env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 XDG_RUNTIME_DIR="$root/build/session" \
        xvfb-run -a -s "-screen 0 1920x1200x24 -noreset" "$@"
}
