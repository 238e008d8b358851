#!/bin/sh
# try_installer.sh FOLDER PREFIX: installs, uses, renews and removes what package.sh made in FOLDER, under Wine,
# and looks at every file and registry value that comes, stays or goes. The closing line says how many steps
# went as they should; the first that does not ends with status 1.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
folder=$(cd "$1" && pwd) prefix=$2
fail() {
    echo "try_installer: $1" >&2
    exit 1
}
. "$here/wine.sh"
make_prefix
work=$(mktemp -d "${TMPDIR:-/tmp}/kvinst.XXXXXX")
trap 'wineserver -k || true; rm -rf "$work"' EXIT

setup=$(find "$folder" -maxdepth 1 -name 'Korvanti-*-Setup.exe')
[ -f "$setup" ] || fail "no installer, or more than one, in $folder"
steps=0
step() {
    steps=$((steps + 1))
    echo "$steps. $1"
}
# expect STATUS COMMAND...: runs a Windows program and what it leaves to run behind itself.
expect() {
    wanted=$1 status=0
    shift
    wine "$@" >"$work/said" 2>&1 || status=$?
    wineserver -w
    [ "$status" = "$wanted" ] || fail "$*: status $status, not $wanted: $(cat "$work/said")"
}
# value KEY [NAME]: a value of the registry, the key's own without a name; "none" when there is none.
value() {
    key=$1
    if [ $# = 2 ]; then set -- /v "$2"; else set -- /ve; fi
    wine reg query "$key" "$@" 2>"$work/said" | tr -d '\r' >"$work/query" || true
    text=$(sed -n 's/^ .*REG_[A-Z]* *//p' "$work/query")
    echo "${text:-none}"
}
same() { [ "$1" = "$2" ] || fail "$3: \"$1\", not \"$2\""; }
files_below() { (cd "$1" && find . -type f -printf '%P\n' | sort); }
drive=$prefix/drive_c
product='HKLM\Software\Korvanti'
classes='HKLM\Software\Classes'
uninstall='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Korvanti'
menu=$(find "$drive" -type d -path '*/ProgramData/*Programs' | head -n 1)

rm -rf "$drive/Korvanti" "$drive/Shop"
expect 0 reg add "$classes\\.dxf" /ve /d Design.Program /f

step "into the folder that is offered, without a hand"
expect 0 "$setup" /S
installed=$drive/Korvanti
{
    sed 's/ [0-9]*$//' "$folder/installed-files.txt"
    echo Uninstall.exe
} | sort >"$work/wanted"
files_below "$installed" >"$work/there"
diff "$work/wanted" "$work/there" >&2 || fail "other files were installed than are listed"
same "$(value "$product" Folder)" 'C:\Korvanti' "folder in the registry"
same "$(value "$uninstall" DisplayName)" Korvanti "name among the programs"
for link in Korvanti "Operator's guide" Installation "Uninstall Korvanti"; do
    [ -f "$menu/Korvanti/$link.lnk" ] || fail "\"$link\" is not in the start menu"
done
same "$(value "$classes\\.dxf")" Design.Program "what opens drawings, without being asked"
grep -q '^Help=explorer.exe "C:\\Korvanti\\Guide\\operators-guide.html"' "$installed/KV90.INI" ||
    fail "the guide is not set in KV90.INI"

step "the installed command converts the installed example"
example='C:\Korvanti\Example\install'
expect 0 "C:\\Korvanti\\korvanti.exe" --version
expect 0 "C:\\Korvanti\\korvanti.exe" --home "$example" convert \
    'C:\Korvanti\Example\drawings\routed_door.dxf' -o "$example\\"
[ -n "$(find "$installed/Example/install/SRG" -type f)" ] || fail "no program was written"
rm -r "$installed/Example/install/SRG" "$installed/Example/install/NOTE" 2>/dev/null || true

step "the installed settings are those of the program's folder"
expect 1 'C:\Korvanti\korvanti.exe' convert 'C:\Korvanti\Example\drawings\routed_door.dxf'
grep -q 'INDICE.PRG\|DestinationPath90' "$work/said" || fail "the missing program folder was not told: $(cat "$work/said")"

step "a newer installer leaves settings and the machine's files"
sed -i 's/^SawKerf=.*/SawKerf=6\r/' "$installed/KV90.INI"
echo "the machine's own" >"$installed/DT.Par"
sed -i 's/^SawKerf=.*/SawKerf=7/' "$installed/Example/install/KV90.INI"
echo old >"$installed/Guide/settings.html"
cp "$installed/KV90.INI" "$work/settings"
expect 0 "$setup" /S
cmp "$work/settings" "$installed/KV90.INI" || fail "KV90.INI was changed"
same "$(cat "$installed/DT.Par")" "the machine's own" "DT.Par"
grep -q '^SawKerf=7' "$installed/Example/install/KV90.INI" || fail "the example's settings were overwritten"
[ "$(cat "$installed/Guide/settings.html")" != old ] || fail "the guide was not renewed"

step "drawings are opened by Korvanti when that was asked for"
expect 0 "$setup" /S /ASSOC
same "$(value "$classes\\.dxf")" Korvanti.Drawing "what opens drawings"
same "$(value "$classes\\Korvanti.Drawing\\shell\\open\\command")" '"C:\Korvanti\KV90WIN.exe" "%1"' "how they are opened"
expect 0 "$setup" /S /ASSOC # a second time, which must not forget what was before
same "$(value "$product" DrawingsBefore)" Design.Program "what opened drawings before"

step "a program that runs is not replaced"
wine 'C:\Korvanti\korvanti.exe' --home "$example" watch >"$work/watch" 2>&1 &
watch=$!
tries=0
until grep -q . "$work/watch" || [ "$tries" = 30 ]; do
    tries=$((tries + 1))
    sleep 1
done
status=0
wine "$setup" /S >"$work/said" 2>&1 || status=$?
same "$status" 3 "status of the installer while korvanti runs"
kill "$watch" 2>/dev/null || true
wine taskkill /F /IM korvanti.exe >/dev/null 2>&1 || true
wineserver -w

step "removed: what was installed; kept: KV90.INI and what is the shop's"
echo mine >"$installed/mine.dxf"
echo mine >"$installed/Example/drawings/mine.dxf"
expect 0 'C:\Korvanti\Uninstall.exe' /S
files_below "$installed" >"$work/there"
printf '%s\n' DT.Par Example/drawings/mine.dxf KV90.INI mine.dxf >"$work/wanted"
diff "$work/wanted" "$work/there" >&2 || fail "other files stayed than should"
cmp "$work/settings" "$installed/KV90.INI" || fail "KV90.INI was changed"
[ ! -e "$menu/Korvanti" ] || fail "the start menu was not cleared"
same "$(value "$classes\\.dxf")" Design.Program "what opens drawings afterwards"
for key in "$product" "$uninstall" "$classes\\Korvanti.Drawing"; do
    ! wine reg query "$key" >/dev/null 2>&1 || fail "$key is still in the registry"
done

step "into a folder of one's own, with a blank, and away again without a trace"
# The last word, and without quotation marks even where it has blanks.
expect 0 "$setup" /S '/D=C:\Shop\Our' control
[ -f "$drive/Shop/Our control/KV90WIN.exe" ] || fail "the folder of /D was not taken"
rm "$drive/Shop/Our control/KV90.INI"
expect 0 'C:\Shop\Our control\Uninstall.exe' /S
[ ! -e "$drive/Shop/Our control" ] || fail "the empty folder stayed"

step "a drive that is not there is refused"
expect 2 "$setup" /S '/D=Q:\Korvanti'

echo "Windows: the installer went through $steps steps as it should"
