#!/bin/sh
# Makes the Debian package of the working tree (its tracked files as they stand, committed or not) with
# the distribution's own tools, has lintian look at it, and leaves it in build/package/. Called by
# ./package debian, which installs what is needed.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=$root/build/package
work=$out/debian

fail() {
    echo "package.sh: $1" >&2
    exit 1
}

for tool in git dpkg-buildpackage dh lintian desktop-file-validate; do
    command -v "$tool" >/dev/null || fail "$tool is missing; ./package debian installs it"
done

version=$(sed -n 's/^project(Korvanti VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
changed=$(dpkg-parsechangelog -l "$here/changelog" -S Version)
[ -n "$version" ] || fail "CMakeLists.txt names no version"
[ "$version" = "$changed" ] ||
    fail "CMakeLists.txt has the version $version, packaging/debian/changelog $changed"

# A copy, so that nothing of a build comes into the tree, nor an untracked file into the package.
source=$work/korvanti-$version
rm -rf "$work"
mkdir -p "$source"
# shellcheck disable=SC2016  # for the inner shell
(cd "$root" && git ls-files -z |
    xargs -0 sh -c 'for file; do [ ! -e "$file" ] || printf "%s\0" "$file"; done' sh |
    tar -c --null -T - -f -) | tar -x -C "$source" -f -
cp -r "$source/packaging/debian" "$source/debian"
(cd "$root" && git rev-parse --short=7 HEAD) >"$source/COMMIT" # for --version; the copy is no repository

desktop-file-validate "$source/debian/korvanti.desktop"
log=$work/build.log
echo "Building the package (log: build/package/debian/build.log)" >&2
(cd "$source" && DEB_BUILD_OPTIONS="terse ${DEB_BUILD_OPTIONS-}" dpkg-buildpackage -b --no-sign) >"$log" 2>&1 || {
    tail -n 30 "$log" | cut -c 1-300 >&2
    fail "the build failed"
}

package=$(find "$work" -maxdepth 1 -name 'korvanti_*.deb')
[ -n "$package" ] || fail "the build left no package"
lintian --allow-root --fail-on error,warning "$work"/korvanti_*.changes >&2 ||
    fail "lintian found faults"
echo "lintian: no errors, no warnings" >&2
# Named by the commit's tag, or by version and commit; its version inside is that of the changelog.
named=$(basename "$package" | sed "s/_${version}_/_$(. "$root/packaging/setup.sh" && package_version)_/")
rm -f "$out"/korvanti_*.deb
mv "$package" "$out/$named"
package=$out/$named
rm -rf "$source"
echo "build/package/$(basename "$package") $(stat -c %s "$package") bytes"
