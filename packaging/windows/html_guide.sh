#!/bin/sh
# html_guide.sh FOLDER: writes the guides that a shop needs as HTML, with their pictures. Fails when a link
# leads nowhere.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
guide=$1
fail() {
    echo "html_guide: $1" >&2
    exit 1
}

# Links lead to headings by their words: small letters and digits, one hyphen for each blank.
name_headings() {
    awk 'match($0, /^<h[1-6]>/) {
        words = tolower($0)
        gsub(/<[^>]*>|&[a-z]*;/, "", words)
        gsub(/[^a-z0-9 _-]/, "", words)
        gsub(/ /, "-", words)
        sub(/>/, " id=\"" words "\">")
    } {print}'
}

mkdir -p "$guide/pictures"
for name in windows operators-guide drawing-guide integrators-guide messages scale settings programs file-formats; do
    title=$(sed -n 's/^# //p' "$root/docs/$name.md" | head -n 1)
    {
        cat <<END
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Korvanti: $title</title>
<style>
body { max-width: 52em; margin: 2em auto; padding: 0 1em; font: 16px/1.5 "Segoe UI", sans-serif; }
table { border-collapse: collapse; } td, th { border: 1px solid #999; padding: 0.2em 0.6em; text-align: left; }
pre, code { background: #eee; } pre { padding: 0.6em; overflow-x: auto; } img { max-width: 100%; }
</style>
</head>
<body>
END
        cmark-gfm --extension table "$root/docs/$name.md" |
            sed 's/\(href="[^":]*\)\.md\(["#]\)/\1.html\2/g' | name_headings
        printf '</body>\n</html>\n'
    } >"$guide/$name.html"
done

for page in "$guide"/*.html; do
    for picture in $(sed -n 's/.*<img src="\([^"]*\)".*/\1/p' "$page"); do
        [ -f "$root/docs/$picture" ] || fail "$(basename "$page") shows $picture, which is not there"
        cp "$root/docs/$picture" "$guide/pictures"
    done
    for link in $(grep -o 'href="[^"]*' "$page" | sed 's/^href="//'); do
        file=${link%%#*}
        heading=${link#"$file"}
        file=$guide/${file:-$(basename "$page")}
        if [ ! -f "$file" ] || { [ -n "$heading" ] && ! grep -q " id=\"${heading#\#}\"" "$file"; }; then
            fail "$(basename "$page") leads to $link, which is not there"
        fi
    done
done
