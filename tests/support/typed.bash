# The startup file of an interactive bash whose standard input is the typed keys. TAB completes, M-* inserts all offers
# into the line, and the commands print their arguments.

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
