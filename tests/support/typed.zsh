# Types its argument into an interactive zsh. TAB completes, M-* puts all that is offered into the line, and the command
# prints its words. With a second argument, prints all that the terminal shows.

if [[ -o interactive ]]; then
    # Only the completion system itself: loading the completions of all other commands takes long.
    fpath=($COMPLETIONS ${(M)fpath:#*/(Completion|Base)})
    autoload -Uz compinit
    compinit -D -u
    offer-all() { _main_complete; compstate[insert]=all; compstate[list]= }
    zle -C offer-all complete-word offer-all
    bindkey '\e*' offer-all
    fobrob() { print -rl -- "$@" >&3; exit }
    fobrob-sim() { fobrob "$@" }
    PS1='ready> '
    return
fi

exec 3>&1
zmodload zsh/zpty
zpty session zsh -f -i
zpty -w session "source ${(q)0}"
zpty -r session shown '*ready> *'
zpty -w session $1
while zpty -r session shown; do [[ -z $2 ]] || print -r -- ${shown%$'\n'}; done
