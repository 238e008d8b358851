#!/bin/sh
# package.sh BUILD FOLDER: makes the installer from the programs in BUILD, in FOLDER, and prints its path and
# size. What it installs is listed beside it.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
build=$1 folder=$2
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
version=$(sed -n 's/^project(Korvanti VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")

stage=$folder/files
rm -rf "$stage"
mkdir -p "$stage/Example"
for program in KV90WIN korvanti; do
    x86_64-w64-mingw32-strip -o "$stage/$program.exe" "$build/$program.exe"
done
cp "$root/packaging/icon/korvanti.ico" "$stage"
# Editors of older systems show no line end in a file that has them without carriage return.
sed 's/$/\r/' "$root/examples/install/KV90.INI" >"$stage/KV90.INI"
cp -r "$root/examples/install" "$root/examples/drawings" "$stage/Example"
"$here/html_guide.sh" "$stage/Guide"
# The programs hold parts of these packages; their licences go with them.
mkdir "$stage/Licences"
for package in qt6-base-dev libcli11-dev nlohmann-json3-dev mingw-w64-x86-64-dev g++-mingw-w64-x86-64-posix; do
    sed 's/$/\r/' "/usr/share/doc/$package/copyright" >"$stage/Licences/$package.txt"
done
for licence in LGPL-3 GPL-3; do
    sed 's/$/\r/' "/usr/share/common-licenses/$licence" >"$stage/Licences/$licence.txt"
done

# The lists of the folders, for the installer and the uninstaller: every file by its name. An example
# that a person has changed is left as it is by a newer installer.
lists=$folder/lists.nsh
# line WORD FILE: one line of a list, with the file's path as Windows writes it.
line() { printf '%s "$INSTDIR\\%s"\n' "$1" "$(printf '%s' "$2" | tr / '\\')"; }
{
    echo "!macro InstallLists"
    for directory in $(cd "$stage" && find Guide Example Licences -type d | sort); do
        case $directory in
        Example/install) echo "SetOverwrite off" ;;
        *) echo "SetOverwrite on" ;;
        esac
        line SetOutPath "$directory"
        (cd "$stage" && find "$directory" -maxdepth 1 -type f | sort) | while read -r file; do
            echo "File \"\${STAGE}/$file\""
        done
    done
    echo "SetOverwrite on"
    echo "!macroend"
    echo "!macro RemoveLists"
    (cd "$stage" && find Guide Example Licences -type f | sort) | while read -r file; do
        line Delete "$file"
    done
    for directory in $(cd "$stage" && find Guide Example Licences -type d | sort -r); do
        line RMDir "$directory"
    done
    echo "!macroend"
} >"$lists"

# The newest installer alone, named by the commit's tag or by version and commit.
rm -f "$folder"/Korvanti-*-Setup.exe
installer=$folder/Korvanti-$(. "$root/packaging/setup.sh" && package_version)-Setup.exe
makensis -V2 -WX -DVERSION="$version" -DNUMBERS="$version.0" -DSTAGE="$stage" -DFILES="$lists" \
    -DSIZE="$(du -sk "$stage" | cut -f 1)" -DOUTPUT="$installer" "$here/installer.nsi"
(cd "$stage" && find . -type f ! -name korvanti.ico -printf '%P %s\n' | sort) >"$folder/installed-files.txt"
echo "$installer, $(stat -c %s "$installer") bytes"
