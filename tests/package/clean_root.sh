#!/bin/sh
# Installs the Debian packages in a bare Debian beside a compiler, CMake and pkg-config, builds and runs README's first
# program there, and one that breaks a precondition, and purges them: no file may remain.
#
#   tests/package/clean_root.sh [--required] PACKAGE.deb ...
#
# Needs root rights, debootstrap and a Debian archive among the sources of apt. Where one is missing it says so and is
# skipped, or fails with --required. The bare Debian is kept in build/clean_root, as it takes minutes to make.
set -eu

here=$(dirname -- "$(readlink -f -- "$0")")
root=$(dirname -- "$(dirname -- "$here")")
cache=$root/build/clean_root
missing_is=0
if [ "${1-}" = --required ]; then
    missing_is=1
    shift
fi
[ $# -gt 0 ] || {
    echo 'tests/package/clean_root.sh: name the packages' >&2
    exit 1
}
skip() {
    echo "tests/package/clean_root.sh: skipped, $*"
    exit $missing_is
}

[ "$(id -u)" -eq 0 ] || skip 'it takes root rights'
command -v debootstrap >/dev/null || skip 'it takes debootstrap'
# shellcheck source=/dev/null
suite=$(. /etc/os-release && echo "${VERSION_CODENAME-}")
# shellcheck disable=SC2016  # apt-get expands it, not the shell
archive=$(apt-get indextargets --format '$(RELEASE) $(REPO_URI)' 'Created-By: Packages' |
    awk -v suite="$suite" '$1 == suite { print $2; exit }')
[ -n "$archive" ] || skip 'apt has no source of this Debian'

mkdir -p "$cache"
bare=$(mktemp -d "$cache/root.XXXXXX")
trap 'rm -rf --one-file-system "$bare"' EXIT
base=$cache/$suite.tar
if [ ! -e "$base" ]; then
    log=$cache/debootstrap.log
    debootstrap --variant=minbase --include=g++,cmake,make,pkg-config "$suite" "$bare" "$archive" >"$log" 2>&1 || {
        tail -n 50 "$log"
        exit 1
    }
    rm -rf "$bare"/var/cache/apt/archives/*.deb
    tar -C "$bare" --one-file-system -cf "$base.new" .
    mv "$base.new" "$base"
else
    tar -C "$bare" -xf "$base"
fi

inside() {
    chroot "$bare" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C "$@"
}
files() {
    inside find / -xdev -path /trial -prune -o -print | sort
}
seconds() {
    date +%s.%N
}

mkdir "$bare/trial"
cp "$here/readme.sh" "$here/checked.sh" "$root/README.md" "$@" "$bare/trial"
names=$(for package; do dpkg-deb -f "$package" Package; done)
files >"$bare/trial/before"

start=$(seconds)
inside sh -euc 'cd /trial && dpkg -i ./*.deb >dpkg.log 2>&1 || { cat dpkg.log; exit 1; }'
installed=$(seconds)
inside sh -euc 'cd /trial && ./readme.sh README.md'
inside sh -euc 'cd /trial && ./checked.sh'
ready=$(seconds)
echo "$start $installed $ready" |
    awk '{ printf "installed in %.1f s; the program ran by both tools %.1f s after that\n", $2 - $1, $3 - $2 }'

# shellcheck disable=SC2086  # a list of words
inside dpkg --purge $names >"$bare/trial/purge.log" 2>&1 || {
    cat "$bare/trial/purge.log"
    exit 1
}
files | diff "$bare/trial/before" - || {
    echo 'purging leaves other files than there were before'
    exit 1
}
echo 'purged without a trace'
