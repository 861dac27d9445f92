# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# A Debian that holds nothing else, for a test to be sourced by: bare_system WORK_FOLDER [NAME] makes one and sets `root`.
# Needs root, debootstrap and the network. WORK_FOLDER keeps a tarball of the bare system for the next time.

set -euo pipefail
suite=bookworm

[ "$(id -u)" -eq 0 ] || { echo "A chroot can be made by root only."; exit 77; }
command -v debootstrap >/dev/null || { echo "debootstrap is missing."; exit 77; }

bare_system() {
    mkdir -p "$1"
    work=$(cd "$1" && pwd)
    root=$work/${2:-root}
    log=$root.log
    if [ ! -e "$work/$suite.tar" ]; then
        debootstrap --variant=minbase "$suite" "$work/bare" http://deb.debian.org/debian >"$work/debootstrap.log"
        tar -C "$work/bare" -cf "$work/$suite.tar.part" .
        mv "$work/$suite.tar.part" "$work/$suite.tar"
        rm -rf "$work/bare"
    fi
    rm -rf --one-file-system "$root" "$log"
    mkdir -p "$root"
    tar -C "$root" -xf "$work/$suite.tar"
    cp /etc/resolv.conf "$root/etc/"
}

# Runs a command in the new system, with mounts that are gone when it ends.
inside() {
    unshare --mount --pid --fork --ipc sh -c '
        root=$1; shift
        mount -t proc proc "$root/proc"; mkdir -p "$root/dev/shm"; mount -t tmpfs shm "$root/dev/shm"
        exec chroot "$root" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' _ "$root" "$@"
}
install() { inside apt-get install -q -y --no-install-recommends "$@" >>"$log" 2>&1; }
on_display() { inside timeout "${patience:-120}" xvfb-run -a -s "-screen 0 1280x800x24" "$@"; }
