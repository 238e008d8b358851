#!/bin/sh
# Shows what the program says of drawings with a mistake each: for each drawing of FOLDER (see
# make_mistakes.py) the explanation, then the report of its conversion. All drawings go into one shop, so
# that programs of one name meet; it is removed at the end.
#
#     show_mistakes.sh KORVANTI FOLDER
set -eu
[ $# -eq 2 ] || { echo "usage: show_mistakes.sh KORVANTI FOLDER" >&2; exit 2; }
korvanti=$(realpath "$1")
drawings=$(realpath "$2")
install=$(realpath "$(dirname "$0")/../install")
shop=$(mktemp -d)
trap 'rm -rf "$shop"' EXIT
cp -r "$install" "$shop/home"
mkdir "$shop/programs" "$shop/lists"
cp "$install/INDICE.PRG" "$shop/programs"
cp "$drawings"/*.dxf "$shop"
cd "$shop"

# The folders of the shop are shown from the shop on, whatever the machine calls it.
shown() { sed "s|$shop/||g" | tr -d '\r'; }
call() {
    "$korvanti" --home "$shop/home" "$@" --set "DestinationPath90=$shop/programs/" \
        --set "DestinationPathEV=$shop/programs/" --set "PTSDATA.Path=$shop/lists/" 2>&1 | shown
}
while read -r name mistake words; do
    # shellcheck disable=SC2086 # the words are several
    set -- "$name.dxf" $words
    echo "==== $name $mistake $words"
    call explain "$@" </dev/null
    echo "---- convert"
    call convert "$@" </dev/null
    echo
done <"$drawings/mistakes.txt"
