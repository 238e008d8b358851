#!/bin/sh
# build_qt.sh: makes a static Qt for Windows from the distribution's own source package, of the version
# whose tools this machine runs, and prints its folder. It takes half an hour or so on two cores, so it is
# kept in ${KORVANTI_CACHE:-~/.cache/korvanti}; a second call only prints.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
fail() {
    echo "build_qt: $1" >&2
    exit 1
}

cache=${KORVANTI_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/korvanti}
mkdir -p "$cache"
cache=$(cd "$cache" && pwd)
version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev) || fail "qt6-base-dev is not installed"
# Another toolchain or another choice of parts is another Qt.
made_by=$(cat "$0" "$here/toolchain.cmake" | sha256sum | cut -c 1-12)
qt=$cache/qt-windows-$version-$made_by
if [ -f "$qt/complete" ]; then
    echo "$qt"
    exit
fi

# Source packages by the machine's own package sources, without a change to the machine.
fetch_source() {
    mkdir -p "$work/apt/parts" "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ ! -f "$list" ] || sed -n 's/^deb\([[:space:]]\)/deb-src\1/p' "$list"
    done >"$work/apt/sources.list"
    for list in /etc/apt/sources.list.d/*.sources; do
        [ ! -f "$list" ] || sed 's/^Types:.*/Types: deb-src/' "$list" >"$work/apt/parts/$(basename "$list")"
    done
    set -- -q -o Dir::Etc::SourceList="$work/apt/sources.list" -o Dir::Etc::SourceParts="$work/apt/parts" \
        -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache"
    apt-get "$@" update || true # a source without source packages matters only when Qt is not found
    (cd "$work" && apt-get "$@" source --download-only "qt6-base=$version")
    dpkg-source --no-check -x "$work"/qt6-base_*.dsc "$work/source" # apt has checked the signature
}

# Widgets on the Windows platform and nothing else. The packaged source is without the header of the
# graphics tablets' interface; the plain Windows platform draws its letters with a part of direct2d, which
# stays on without the platform of that name (direct2d1_1).
configure_qt() {
    off=
    for feature in sql dbus vulkan direct2d1_1 network printsupport icu zstd pkg_config tabletevent concurrent xml \
        testlib androiddeployqt macdeployqt qmake; do
        off="$off -DFEATURE_$feature=OFF"
    done
    for library in zlib pcre2 png freetype harfbuzz doubleconversion jpeg; do
        off="$off -DFEATURE_system_$library=OFF"
    done
    tools=$(find /usr/lib -maxdepth 3 -path '*/cmake/Qt6' -printf '%h' -quit)
    [ -n "$tools" ] || fail "the CMake files of qt6-base-dev are not where they were expected"
    # shellcheck disable=SC2086  # one word for each switch
    cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$qt/toolchain.cmake" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$tools" -DCMAKE_INSTALL_PREFIX="$qt" \
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DINPUT_opengl=no \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF $off
}

work=$cache/building-$(basename "$qt")
rm -rf "$work" "$qt"
mkdir -p "$work" "$qt"
cp "$here/toolchain.cmake" "$qt" # the installed Qt names it, and outlives this clone
{
    echo "Making a static Qt $version for Windows in $qt; this happens once."
    fetch_source
    configure_qt
    cmake --build "$work/build"
    cmake --install "$work/build"
} >&2
touch "$qt/complete"
rm -rf "$work"
echo "$qt"
