# The start file of an interactive bash that gets on its standard input what is typed. TAB completes, M-* puts all that
# is offered into the line, and the command prints its words.

# shellcheck source=/dev/null
source "$COMPLETIONS/fobrob.bash"

fobrob()
{
    printf '%s\n' "$@"
}

fobrob-sim()
{
    fobrob "$@"
}
