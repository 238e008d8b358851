#!/bin/sh
# check_texts.sh PREFIX: holds the manual pages, the completion and the guides installed below PREFIX
# against the programs there and against each other. Silent when all is well, else it tells what is
# wrong and fails.
set -eu

[ $# = 1 ] || { echo "check_texts.sh: wants the folder of an installation" >&2; exit 2; }
prefix=$(cd "$1" && pwd)
documents=$prefix/share/doc/korvanti
faults=$(mktemp) # a file, since half of the checks stand in pipes
trap 'rm -f "$faults"' EXIT

fault() {
    echo "check_texts.sh: $1" | tee -a "$faults" >&2
}

# The page's words, without its escapes and fonts.
page() {
    sed -e 's/\\-/-/g' -e 's/\\f.//g' "$prefix/share/man/man1/$1.1"
}

# Options, switches, and the values that stand in braces, of a help on standard input.
words_of_help() {
    sed -n -e 'h; s/^[^{]*{\([^}]*\)}.*/\1/p; g; s/^  \([-/][^ ]*\).*/\1/p; s/^Stages: //p' | tr ', ' '\n\n'
}

# holds PAGE WHERE: each word on standard input stands in the page.
holds() {
    words=$(cat)
    [ -n "$words" ] || fault "$2 shows no options"
    for word in $words; do
        page "$1" | grep -qwF -e "$word" || fault "$1.1 does not tell $word of $2"
    done
}

calls=$("$prefix/bin/korvanti" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p')
[ -n "$calls" ] || fault "korvanti --help shows no calls"
echo "$calls" | holds korvanti "korvanti --help"
for call in "" $calls; do
    # shellcheck disable=SC2086  # no word where there is no call
    "$prefix/bin/korvanti" $call --help | words_of_help | holds korvanti "korvanti $call --help"
done
"$prefix/bin/KV90WIN" --help | words_of_help | holds KV90WIN "KV90WIN --help"

# Paths and variables that a page names.
for name in korvanti KV90WIN; do
    page "$name" | grep -o '/usr/share/[a-z/]*[a-z]' | sort -u | while read -r path; do
        [ -e "$prefix/${path#/usr/}" ] || fault "$name.1 names $path, which is not installed"
    done
    page "$name" | grep -ow -e 'KORVANTI_[A-Z]*' -e 'XDG_[A-Z_]*' | sort -u | while read -r word; do
        grep -qF "$word" "$prefix/bin/$name" || fault "$name.1 names $word, which the program does not know"
    done
done
for guide in "$documents"/*.md; do
    grep -o ']([^)#]*' "$guide" | cut -c3- | sort -u | while read -r link; do
        [ -z "$link" ] || [ -e "$documents/$link" ] ||
            fault "$(basename "$guide") points at $link, which is not there"
    done
done

# The completion as a shell would ask it, each in a process of its own.
completed() {
    (cd "$prefix/share/korvanti/examples/drawings" && PATH="$prefix/bin:$PATH" bash -c '
        . "$1"
        function=$2
        shift 2
        COMP_WORDS=("$@")
        COMP_CWORD=$(($# - 1))
        "$function" "$1" 2>/dev/null
        printf "%s\n" "${COMPREPLY[@]}"' bash "$prefix/share/bash-completion/completions/$1" "_$@")
}
completes() {
    wanted=$1
    shift
    completed "$@" | grep -qxF -e "$wanted" || fault "the completion of \"$*\" lacks $wanted"
}
for call in $calls; do
    completes "$call" korvanti korvanti ""
    completes --help korvanti korvanti "$call" --
done
completes --set korvanti korvanti convert --s
completes door.dxf korvanti korvanti convert d
completes evolution korvanti korvanti convert --system e
completes json korvanti korvanti convert --report ""
completes SawKerf= korvanti korvanti convert --set Saw
completes PTSDATA.Path= korvanti korvanti --home . convert --set PTS
completes pockets korvanti korvanti trace --after p
completes /S korvanti korvanti watch /
completes door.dxf korvanti korvanti convert -- d
completes --home KV90WIN KV90WIN --h
completes /K KV90WIN KV90WIN /
completes side.dxf KV90WIN KV90WIN s

[ ! -s "$faults" ]
