# Bash completion for korvanti and KV90WIN. Calls, options, their values and the stages are taken from
# the program's own --help, the keys of --set from the example installation that is installed with it,
# so that nothing here can grow stale.

# Sets cur, and option to the word whose value cur is. The shell cuts words at "=": --home=DIR is three
# words, and behind --set KEY= the option is KEY.
_korvanti_words() {
    cur=${COMP_WORDS[COMP_CWORD]}
    option=${COMP_WORDS[COMP_CWORD - 1]}
    if [[ $cur == "=" ]]; then
        cur=""
    elif [[ $option == "=" ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    else
        return
    fi
    [[ $option == -* ]] || option=KEY
}

_korvanti_of() { # of WORDS: those that begin with cur
    COMPREPLY=($(compgen -W "$*" -- "$cur"))
}

_korvanti_paths() { # paths -d or -f
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen "$1" -- "$cur"))
}

_korvanti_drawings() {
    local name
    _korvanti_paths -d
    while IFS= read -r name; do
        [[ ${name,,} == *.dxf && ! -d $name ]] && COMPREPLY+=("$name")
    done < <(compgen -f -- "$cur")
}

_korvanti_options() {
    _korvanti_of $(sed -n 's/^  \(-[^ ]*\).*/\1/p' <<<"$help" | tr , ' ')
}

# The keys of KV90.INI, those of the cut list with their section.
_korvanti_keys() {
    local path
    path=$(type -P "$program") || return
    awk -F= '
        /^\[/ { prefix = toupper($0) ~ /^\[PTSDATA\]/ ? "PTSDATA." : "" }
        /^[A-Za-z0-9]+=/ { print prefix $1 }
    ' "${path%/*}/../share/korvanti/examples/install/KV90.INI" 2>/dev/null
}

# The values that the help lists in braces behind a name, such as {text,json} behind --report.
_korvanti_choices() {
    sed -n "s/^  $1 [A-Z]*:{\([^}]*\)}.*/\1/p" <<<"$help" | tr , ' '
}

# The first word that is a call.
_korvanti_call() {
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        [[ " $calls " == *" ${COMP_WORDS[i]} "* ]] && echo "${COMP_WORDS[i]}" && return
    done
}

_korvanti() {
    local program=${1/#\~/$HOME} cur option help calls call choices
    _korvanti_words
    help=$("$program" --help 2>/dev/null) || return
    calls=$(echo $(sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p' <<<"$help"))
    call=$(_korvanti_call)
    [[ -z $call ]] || help=$("$program" "$call" --help 2>/dev/null)
    choices=$(_korvanti_choices "$option")

    if [[ " ${COMP_WORDS[*]:0:COMP_CWORD} " == *" -- "* ]]; then
        _korvanti_drawings
    elif [[ $option == --home || $option == --stage ]]; then
        _korvanti_paths -d
    elif [[ $option == --jobs || $option == --number ]]; then
        COMPREPLY=()
    elif [[ $option == -o || $option == --output || $option == KEY ]]; then
        _korvanti_paths -f
    elif [[ $option == --set ]]; then
        compopt -o nospace 2>/dev/null
        _korvanti_of $(_korvanti_keys | sed 's/$/=/')
    elif [[ $option == --after ]]; then
        _korvanti_of $(sed -n 's/^Stages: //p' <<<"$help")
    elif [[ $option == -* && -n $choices ]]; then
        _korvanti_of $choices
    elif [[ $cur == -* ]]; then
        _korvanti_options
    elif [[ -z $call ]]; then
        _korvanti_of $calls
    elif [[ $help == *SWITCH* ]]; then
        _korvanti_of $(_korvanti_choices SWITCH)
    elif [[ $call == place ]]; then
        _korvanti_paths -d
    else
        _korvanti_drawings
    fi
}

_KV90WIN() {
    local program=${1/#\~/$HOME} cur option help
    _korvanti_words
    help=$("$program" --help 2>/dev/null) || return
    if [[ $option == --home ]]; then
        _korvanti_paths -d
    elif [[ $option == -o || $option == --picture ]]; then
        _korvanti_paths -f
    elif [[ $cur == -* ]]; then
        _korvanti_options
    else
        _korvanti_drawings
        [[ $cur != /* ]] || COMPREPLY+=($(compgen -W "$(sed -n 's/^  \(\/[A-Z]\) .*/\1/p' <<<"$help")" -- "$cur"))
    fi
}

complete -F _korvanti korvanti
complete -F _KV90WIN KV90WIN
