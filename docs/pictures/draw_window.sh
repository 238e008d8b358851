#!/bin/sh
# Draws the pictures of the operator's guide anew; look at each of them behind a change of the windows.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
. "$root/packaging/setup.sh"

install_packages $build_packages $window_packages
build_window window_pictures
"$root/build/release/window_pictures" "$root/examples" "$root/docs/pictures"
