# Shared by ./run and ./test, which read it with `root` set to the folder of the clone: installs what
# is missing and builds one preset. Asks the package database first, so that a machine that has all
# it needs is left alone and no network is used.

build_packages="g++ cmake ninja-build libboost-dev libcli11-dev nlohmann-json3-dev"
# Fonts: without any, no text of the window can be measured or seen.
window_packages="qt6-base-dev fonts-dejavu-core"
# A browser for the pages that the program writes.
test_packages="libgtest-dev libpolyclipping-dev chromium"
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

# build_preset PRESET [TARGET...]: standard output stays the program's own, and a build that was there
# before goes on silently where nobody watches. No target: all.
build_preset() {
    folder="$root/build/$1"
    preset=$1
    shift
    first=
    if [ ! -f "$folder/build.ninja" ]; then
        (cd "$root" && cmake --preset "$preset") >&2
        first=yes
    fi
    if [ -t 2 ] || [ -n "$first" ]; then
        cmake --build "$folder" ${1:+--target "$@"} >&2 || fail "the build failed"
        return
    fi
    said=$(cmake --build "$folder" ${1:+--target "$@"} 2>&1) || fail "the build failed:
$said"
}

# The window program beside the console in build/release, so that one build of the core serves both.
build_window() {
    if ! grep -q '^KORVANTI_WINDOW:BOOL=ON' "$root/build/release/CMakeCache.txt" 2>/dev/null; then
        (cd "$root" && cmake --preset release -DKORVANTI_WINDOW=ON) >&2
    fi
    build_preset release KV90WIN "$@"
}

# stage NAME begins a stage of a long call; stages_end prints how long each took.
stages=
stage() {
    now=$(date +%s)
    [ -z "${stage_name-}" ] || stages="$stages$stage_name $((now - stage_start)) s, "
    stage_name=$1 stage_start=$now
}
stages_end() {
    stage ""
    echo "Time: ${stages%, }"
}

fail_usage() {
    echo "$(basename "$0"): \"$1\" is no word of this call; $(basename "$0") --help prints them" >&2
    exit 2
}

# The name of what is packed: the tag of this commit without its "v", else version and commit.
package_version() {
    version=$(sed -n 's/^project(Korvanti VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
    tag=$(git -C "$root" describe --tags --exact-match 2>/dev/null) || tag=
    commit=$(git -C "$root" rev-parse --short=7 HEAD 2>/dev/null) || commit=
    if [ -n "$tag" ]; then
        printf '%s\n' "${tag#v}" | tr / -
    else
        printf '%s\n' "$version${commit:+-$commit}"
    fi
}
