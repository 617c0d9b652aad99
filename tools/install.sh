# shellcheck shell=bash
# Sourced by the commands in the root and by scripts here: the Debian packages that they use, and how
# missing ones are installed.

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
    binutils-mingw-w64-x86-64 # which DLLs the program imports
    clang-format clang-tidy cppcheck
    diffutils libc-bin # comparing what the installer leaves with what was there
    e2fsprogs # a file that nobody may write, not even root
)
# What tools/fuzz.sh takes besides what building takes.
packages_to_fuzz=(
    cmake ninja-build
    clang-14 libclang-rt-14-dev # the compiler, and libFuzzer with the sanitizers
)

# install_packages PACKAGE...: installs those that are missing; says so plainly when it cannot.
install_packages() {
    local package missing=() as_root=()
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
        die "this needs Debian (apt-get) or a system with these packages: $*"
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    ((${#missing[@]})) || return 0
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
