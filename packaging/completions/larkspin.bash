# Completes the arguments of larkspin and larkspin-tty: their options, which they tell by --help,
# directories, and what can be played by its name.

_larkspin() {
    local cur prev words cword
    _init_completion || return
    if [[ $cur == -* && " ${words[*]:1:cword-1} " != *" -- "* ]]; then
        COMPREPLY=($(compgen -W '$(_parse_help "$1")' -- "$cur"))
        return
    fi
    _filedir '@(mp3|wav|wma|mid|flac|og[ga]|opus|m4[ab]|aac|ape|wv|mpc|aif?(f))'
} && complete -F _larkspin larkspin larkspin-tty
