#!/usr/bin/env bash
# Runs a command on another release of Debian, in a clean clone of the last commit. The system stands
# in build/debian/RELEASE; the first run makes it with debootstrap, later runs use it again with what
# was installed in it.
#
# usage: tools/on_debian.sh RELEASE COMMAND [ARGUMENT...]
#        for example: tools/on_debian.sh trixie ./test core
#
# Exits with the command's code, or with 125 where no such system can be had; it then says why.
#
# All mounts and processes are in namespaces of their own. The kernel removes them with the first
# process in them, and that process dies with this script: nothing is left mounted or running, even
# after SIGKILL.
. "$(dirname "$0")/common.sh"
. "$top/tools/install.sh"

unavailable=125
cannot() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit "$unavailable"
}

(($# >= 2)) || die "usage: tools/on_debian.sh RELEASE COMMAND [ARGUMENT...]"
release=$1
shift
[[ $release =~ ^[a-z]+$ ]] || die "a release is named by its code name: $release"
system=$build/debian/$release
logs=$build/logs
clone=/root/tidemark # as the system inside sees it

# remove FOLDER: deletes it, but nothing that is mounted below it.
remove() {
    if awk -v folder="$1/" 'index($5 "/", folder) == 1 { found = 1 } END { exit !found }' \
        /proc/self/mountinfo; then
        die "something is mounted in $1; unmount it first"
    fi
    # Tests that were killed leave a file that not even root may delete.
    [ ! -d "$1" ] || find "$1" -xdev -name unwritable.txt -exec chattr -i {} + 2>/dev/null
    rm -rf --one-file-system "$1"
}

# The mirror that this machine installs from.
mirror() {
    # shellcheck disable=SC2016 # apt-get fills in what looks like variables
    apt-get indextargets --format '$(SITE) $(COMPONENT) $(ORIGIN) $(LABEL)' 2>/dev/null |
        awk '$2 == "main" && $3 == "Debian" && $4 == "Debian" { print $1; exit }'
}

make_system() {
    local site
    site=$(mirror)
    [ -n "$site" ] || cannot "apt's sources name no mirror of Debian"
    step "Making a Debian system of $release from the mirror of this machine"
    remove "$system.new"
    mkdir -p "$system.new" "$logs"
    debootstrap --variant=minbase "$release" "$system.new" "$site" >"$logs/debootstrap.log" 2>&1 || {
        tail -n 5 "$logs/debootstrap.log" >&2
        cannot "debootstrap cannot make $release ($logs/debootstrap.log)"
    }
    # How this machine reaches its mirror.
    apt-config dump | grep -E '^Acquire::(http|https|Retries)\b' \
        >"$system.new/etc/apt/apt.conf.d/99machine"
    mv "$system.new" "$system"
}

mount_system() {
    if ! { mount -t proc proc "$system/proc" && mount --rbind /dev "$system/dev" &&
        mount --rbind /sys "$system/sys" && mount -t tmpfs -o mode=1777 tmpfs "$system/tmp"; }; then
        cannot "nothing can be mounted here"
    fi
    cp -L /etc/resolv.conf /etc/hosts "$system/etc/"
}

inside() {
    env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM="${TERM:-dumb}" LC_ALL=C.UTF-8 \
        ${http_proxy:+"http_proxy=$http_proxy"} ${https_proxy:+"https_proxy=$https_proxy"} \
        ${no_proxy:+"no_proxy=$no_proxy"} chroot "$system" "$@"
}

# From version 10 on, Debian's 64-bit Wine runs 32-bit programs once it has the Windows-side files of
# the 32-bit package. Only such a throw-away system is given them: no package manager knows of them
# there.
give_wine_32_bits() {
    # shellcheck disable=SC2016 # the inner shell expands its own variables
    inside bash -eu -c '
        folder=/usr/lib/x86_64-linux-gnu/wine/i386-windows
        version_of() { dpkg-query -W -f="\${Version}" libwine 2>/dev/null || true; }
        given=$(cat "$folder/version" 2>/dev/null || true)
        [ -z "$given" ] || [ -n "$(version_of)" -a "$(version_of)" != "$given" ] || exit 0
        dpkg --add-architecture i386
        trap "dpkg --remove-architecture i386" EXIT
        apt-get update -q
        version=$(apt-cache policy libwine:i386 | sed -n "s/^  Candidate: //p")
        dpkg --compare-versions "$version" ge 10 || exit 0
        cd "$(mktemp -d)"
        apt-get download -q "libwine:i386=$version"
        dpkg-deb -x ./*.deb .
        rm -rf "$folder"
        mkdir -p "$folder"
        cp usr/lib/i386-linux-gnu/wine/i386-windows/* "$folder"
        echo "$version" >"$folder/version"
        ' >"$logs/wine-32-bits.log" 2>&1 || {
        tail -n 5 "$logs/wine-32-bits.log" >&2
        cannot "Wine in $release cannot be given its 32-bit files ($logs/wine-32-bits.log)"
    }
}

run_in_system() {
    local code
    [ -d "$system" ] || make_system
    mount_system
    give_wine_32_bits
    remove "$system$clone"
    git -c safe.directory='*' clone --quiet "$top" "$system$clone" || cannot "the tree cannot be cloned"
    step "On Debian $(cat "$system/etc/debian_version") ($release): $*"
    # shellcheck disable=SC2016 # the inner shell expands its own arguments
    inside bash -c 'cd "$1" && shift && exec "$@"' bash "$clone" "$@" </dev/null
    code=$?
    # This fails only where the command has mounted something there; the next run says so again.
    (remove "$system$clone")
    exit "$code"
}

if [ "${TIDEMARK_IN_NAMESPACE:-}" = yes ]; then
    run_in_system "$@"
fi

[ "$(id -u)" = 0 ] || cannot "only root can make a system of another release"
command -v apt-get >/dev/null || cannot "there is no apt-get to tell where packages come from"
(install_packages "${packages_for_other_releases[@]}") || exit "$unavailable"
unshare --mount --pid --fork true 2>/dev/null || cannot "the kernel gives no namespaces here"
mkdir -p "$build/debian" "$logs"
exec 8>"$system.lock"
flock -n 8 || { note "waiting for another run on $release" && flock 8; }

TIDEMARK_IN_NAMESPACE=yes setpriv --pdeathsig KILL \
    unshare --mount --pid --fork --kill-child "$0" "$release" "$@" 8>&- &
child=$!
trap 'kill -KILL "$child" 2>/dev/null; exit 130' INT TERM HUP
wait "$child"
