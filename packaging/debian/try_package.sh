#!/bin/sh
# try_package.sh [DEB [PICTURE]]: installs the package (without a name the one in build/package/) in a
# clean chroot of this release, works with it as a person who is not root, removes it, and shows that
# nothing of it is left but the person's own files. PICTURE gets a picture of the window. Needs root;
# takes the package sources of this machine. Prints a line for each thing that was seen, fails with the
# first that is wrong.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
. "$root/packaging/setup.sh"

see() {
    echo "seen: $1"
}

# --- Outside: the chroot ---

if [ "${1-}" != --inside ]; then
    [ "$(id -u)" = 0 ] || fail "only root can make a chroot"
    deb=${1:-$(find "$root/build/package" -maxdepth 1 -name 'korvanti_*.deb' | sort -V | tail -n 1)}
    [ -f "$deb" ] || fail "no package; ./package debian makes it"
    picture=${2-}
    install_packages mmdebstrap xvfb xdotool imagemagick
    TRIED_DEB=$(realpath "$deb")
    TRIED_PICTURE=${picture:+$(realpath "$picture")}
    export TRIED_DEB TRIED_PICTURE
    release=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    set --
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        [ ! -s "$file" ] || set -- "$@" "$file"
    done
    # What is needed to look at the package belongs to the chroot before it comes.
    exec mmdebstrap --quiet --variant=minbase --format=null \
        --include=man-db,bash-completion,desktop-file-utils \
        --customize-hook="'$here/try_package.sh' --inside \"\$1\"" "$release" - "$@" </dev/null
fi

# --- Inside: $chroot is its folder, seen from here ---

chroot=$2
name=korvanti
person=shop
home=/home/$person
drawings=/usr/share/korvanti/examples/drawings

in_chroot() {
    chroot "$chroot" env LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

as_person() {
    in_chroot su - "$person" -c "$1"
}

installed() {
    in_chroot dpkg-query -W -f '${Package}\n' | sort
}

# Every path, without what the package tools and the caches keep for themselves.
paths() {
    (cd "$chroot" && find . -xdev \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp -o -path ./run \
        -o -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache -o -path ./var/log \
        -o -path ".$home" \) -prune -o -print | sort)
}

persons_files() {
    (cd "$chroot$home" && find . -type f -exec sha256sum {} + | sort)
}

work=$(mktemp -d)
server=
leave() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap leave EXIT

in_chroot useradd --create-home --shell /bin/bash "$person"
in_chroot apt-get -q update >"$work/log"
cp "$TRIED_DEB" "$chroot/tmp/$name.deb"
installed >"$work/packages"
paths >"$work/before"

in_chroot apt-get -q -y --no-install-recommends install "/tmp/$name.deb" >"$work/log" 2>&1 ||
    { tail "$work/log" >&2; fail "apt-get does not install the package"; }
version=$(in_chroot dpkg-query -W -f '${Version}' $name)
installed | comm -13 "$work/packages" - >"$work/came"
grep -vx $name "$work/came" >"$work/needed"
see "$name $version installed, and $(wc -l <"$work/needed") packages that it depends on"

[ "$(as_person 'korvanti --version')" = "korvanti $version" ] || fail "korvanti tells another version"
[ "$(as_person 'KV90WIN --version')" = "KV90WIN $version" ] || fail "KV90WIN tells another version"
see "both programs tell the version $version"

as_person "mkdir -p .config && cp -r /usr/share/korvanti/examples/install .config/korvanti &&
    mkdir programs && cp .config/korvanti/INDICE.PRG programs &&
    sed -i 's|^DestinationPath90=|&$home/programs/|' .config/korvanti/KV90.INI"
as_person "korvanti convert $drawings/door.dxf" >"$work/log" ||
    { cat "$work/log" >&2; fail "the drawing was not converted"; }
cmp "$chroot$home/programs/SRG/D/OOR" "$root/tests/data/examples/door.expected" || fail "the program is another"
see "door.dxf converted with the settings of the home folder; the program is the expected one"

for page in korvanti KV90WIN; do
    as_person "man $page" | grep -q 'EXIT STATUS' || fail "man $page shows nothing"
done
see "man korvanti and man KV90WIN"

completions=$(as_person "bash -c '. /usr/share/bash-completion/bash_completion
    _completion_loader korvanti
    COMP_WORDS=(korvanti convert --set SawK) COMP_CWORD=3
    \$(complete -p korvanti | sed \"s/.*-F //;s/ .*//\") korvanti 2>/dev/null
    echo \"\${COMPREPLY[*]}\"'")
[ "$completions" = SawKerf= ] || fail "--set SawK is completed as \"$completions\""
see "the shell completes korvanti convert --set SawK to SawKerf="

in_chroot desktop-file-validate /usr/share/applications/korvanti.desktop
entry() {
    sed -n "s/^$1=//p" "$chroot/usr/share/applications/korvanti.desktop"
}
[ -x "$chroot/usr/bin/$(entry Exec)" ] || fail "the desktop entry starts what is not there"
for size in scalable 48x48 256x256; do
    [ -n "$(find "$chroot/usr/share/icons/hicolor/$size/apps" -name "$(entry Icon).*")" ] || fail "no icon, $size"
done
see "desktop entry valid, its program and its icons there"

# The screen is this machine's, so that its libraries do not come into the chroot.
mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -ac 3>"$work/display" 2>/dev/null &
server=$!
read -r number <"$work/display"
DISPLAY=:$number
export DISPLAY
as_person "DISPLAY=$DISPLAY KV90WIN $drawings/side.dxf" || fail "the window did not convert a drawing"
[ -s "$chroot$home/programs/SRG/S/IDE" ] || fail "the window left no program"
see "KV90WIN side.dxf on a virtual screen: converted, status 0"

as_person "DISPLAY=$DISPLAY exec KV90WIN" &
window=$!
timeout 60 xdotool search --sync --onlyvisible --class "$(entry StartupWMClass)" >"$work/windows" ||
    fail "no window came that the desktop entry would know"
sleep 2
[ -z "$TRIED_PICTURE" ] || import -window root "$TRIED_PICTURE"
kill -TERM "$(xdotool getwindowpid "$(tail -n 1 "$work/windows")")"
wait "$window" || fail "the window ended with status $?"
see "KV90WIN on a virtual screen: its window came, and closed with status 0"

persons_files >"$work/persons"
in_chroot apt-get -q -y remove $name >"$work/log" 2>&1 || fail "apt-get does not remove the package"
left=$(cd "$chroot" && find usr etc var -xdev \( -iname '*korvanti*' -o -iname '*kv90*' \) \
    ! -path 'var/lib/dpkg/*' ! -path 'var/log/*' ! -path 'var/cache/*')
[ -z "$left" ] || fail "removed, but left: $left"
see "removed; no path of its name in /usr, /etc and /var"

# Not apt-get: it has forgotten a package that is in no list and left nothing to purge.
in_chroot dpkg --purge $name >"$work/log" 2>&1 || fail "dpkg does not purge the package"
# By name: of what it depended on, autoremove keeps what other packages recommend.
# shellcheck disable=SC2046  # one word for each package
in_chroot apt-get -q -y purge $(cat "$work/needed") >"$work/log" 2>&1 || fail "what it depended on stays"
installed | cmp - "$work/packages" || fail "the packages are not those of before"
! grep -rqs "$name" "$chroot/var/lib/dpkg/info" "$chroot/var/lib/dpkg/status" || fail "dpkg still knows it"
paths >"$work/after"
diff "$work/before" "$work/after" || fail "purged, but the paths are not those of before"
see "purged with all it depended on; the $(wc -l <"$work/after") paths outside the caches are those of before"

persons_files | cmp - "$work/persons" || fail "the person's files are not those of before"
see "the person's $(wc -l <"$work/persons") files are as they were"
