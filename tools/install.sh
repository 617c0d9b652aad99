# shellcheck shell=bash
# Sourced by the commands in the root and by scripts here: the Debian packages that they use, and how
# missing ones are installed.

# shellcheck disable=SC2034 # each script that sources this uses some of the lists

# What building the Windows program takes.
packages_to_build=(
    cmake ninja-build g++-mingw-w64-x86-64-posix
    googletest # configuring needs its sources; only the test programs use them
    util-linux findutils coreutils
)
packages_to_package=("${packages_to_build[@]}" nsis)
# What starting it takes besides.
packages_to_run=(
    "${packages_to_build[@]}"
    procps
    wine wine64
    # What Wine's display driver loads when it is there.
    libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libxxf86vm1
    fonts-dejavu-core
    xvfb openbox imagemagick # a display of our own where there is none, and its pictures
)
# What testing takes besides.
packages_to_test=(
    "${packages_to_run[@]}"
    "${packages_to_package[@]}"
    g++ g++-mingw-w64-i686-posix
    binutils-mingw-w64-x86-64 # which DLLs the program imports, and its resources
    clang-format clang-tidy cppcheck shellcheck
    xsltproc # reading the reports of the tests
    diffutils libc-bin # comparing what the installer leaves with what was there
    e2fsprogs # a file that nobody may write, not even root
)
# What tools/render-artwork.sh takes.
packages_to_draw=(librsvg2-bin imagemagick fontconfig fonts-urw-base35)
# What tools/fuzz.sh takes: the compiler with libFuzzer, which its package recommends or depends on.
packages_to_fuzz=(cmake ninja-build clang libclang-rt-dev)
# What tools/on_debian.sh takes.
packages_for_other_releases=(debootstrap git util-linux mount e2fsprogs)

# What shows on a system without Debian's list of packages that one is there: a command, or a file;
# nothing for what has none of its own, like fonts and plain tools that every system has.
sign_of() {
    case $1 in
    cmake | openbox | xsltproc | clang-format | clang-tidy | cppcheck | shellcheck | wine) echo "$1" ;;
    ninja-build) echo ninja ;;
    g++) echo g++ ;;
    g++-mingw-w64-x86-64-posix) echo x86_64-w64-mingw32-g++-posix ;;
    g++-mingw-w64-i686-posix) echo i686-w64-mingw32-g++-posix ;;
    binutils-mingw-w64-x86-64) echo x86_64-w64-mingw32-objdump ;;
    googletest) echo /usr/src/googletest/CMakeLists.txt ;;
    nsis) echo makensis ;;
    xvfb) echo Xvfb ;;
    imagemagick) echo convert ;;
    procps) echo pgrep ;;
    util-linux) echo flock ;;
    e2fsprogs) echo chattr ;;
    clang) echo clang++ ;;
    librsvg2-bin) echo rsvg-convert ;;
    esac
}

# is_there PACKAGE
is_there() {
    local sign
    if command -v dpkg-query >/dev/null; then
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
    else
        sign=$(sign_of "$1")
        [ -z "$sign" ] || [[ $sign == /* && -e $sign ]] || command -v "$sign" >/dev/null
    fi
}

# install_packages PACKAGE...: installs those that are missing; says so plainly when it cannot.
install_packages() {
    local package missing=() as_root=()
    for package in "$@"; do
        is_there "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    command -v apt-get >/dev/null ||
        die "only apt-get can be asked to install what is missing here, in Debian's names:" \
            "${missing[*]}"
    step "Installing ${missing[*]}"
    if [ "$(id -u)" != 0 ]; then
        as_root=(sudo)
        # Without a terminal sudo cannot ask for a password.
        if ! command -v sudo >/dev/null || { ! sudo -n true 2>/dev/null && [ ! -t 0 ]; }; then
            die "these packages are missing, and there is neither root nor a usable sudo to" \
                "install them. As root: apt-get install --no-install-recommends ${missing[*]}"
        fi
    fi
    "${as_root[@]}" apt-get update -q ||
        die "apt-get update failed; still missing: ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" ||
        die "apt-get install failed; still missing: ${missing[*]}"
}
