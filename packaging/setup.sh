# Shared by ./run and ./test, which read it with `root` set to the folder of the clone: installs what
# is missing and builds one preset. Asks the package database first, so that a machine that has all
# it needs is left alone and no network is used.

build_packages="g++ cmake ninja-build libcli11-dev nlohmann-json3-dev"
# Fonts: without any, no text of the window can be measured or seen.
window_packages="qt6-base-dev fonts-dejavu-core"
test_packages="libgtest-dev"
# Programs for Windows: made on this machine, run on it, packed on it.
windows_build_packages="g++-mingw-w64-x86-64-posix"
windows_test_packages="wine wine64 googletest"
installer_packages="dpkg-dev nsis cmark-gfm"
windows_trial_packages="wine wine64 fonts-wine xvfb xdotool imagemagick"
debian_packages="build-essential debhelper desktop-file-utils librsvg2-bin lintian"

fail() {
    echo "$(basename "$0"): $1" >&2
    exit 1
}

missing_packages() {
    for package in "$@"; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || status=absent
        [ "$status" = installed ] || printf '%s ' "$package"
    done
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    else
        command -v sudo >/dev/null || fail "packages are missing ($missing) and there is no sudo"
        sudo "$@"
    fi
}

# Other systems than Debian and its kin bring the same tools by their own ways.
install_packages() {
    command -v dpkg-query >/dev/null || return 0
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    echo "Installing $missing" >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update >&2
    # shellcheck disable=SC2086  # one word for each package
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends install $missing >&2
}

# build_preset PRESET PROGRAM: standard output stays the program's own, and a build that was there
# before goes on silently where nobody watches.
build_preset() {
    folder="$root/build/$1"
    if [ ! -f "$folder/build.ninja" ]; then
        (cd "$root" && cmake --preset "$1") >&2
    fi
    if [ -t 2 ] || [ ! -x "$folder/$2" ]; then
        cmake --build "$folder" >&2
        return
    fi
    said=$(cmake --build "$folder" 2>&1) || fail "the build failed:
$said"
}
