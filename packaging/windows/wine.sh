# Read with `prefix` set to a folder of the build: Wine with a fresh set-up of its own there, without a
# screen and without what it would fetch for web pages and managed programs.

export WINEPREFIX="$prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# The words of a call reach Windows programs through this system's idea of letters.
export LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY

make_prefix() {
    [ -f "$prefix/made" ] && return 0
    rm -rf "$prefix"
    mkdir -p "$prefix"
    wine wineboot -i >"$prefix.log" 2>&1 || fail "Wine cannot be set up: $(cat "$prefix.log")"
    wineserver -w
    touch "$prefix/made"
}
