# What can stand at the cursor, one word a line: sh -c THIS fobrob TYPED WORD...
# TYPED is the part before the cursor of the word at it, each WORD one of those before that, from the category on.
# What does not begin like TYPED is left to the shell to drop. No single quote and no doubled backslash stand in here,
# for all of it stands between single quotes in the scripts of the shells.

set -f
typed=$1
shift

category=${1%%=*}
given=" "
target=
taker= # an option without a value, which takes the next word for it
for word; do
    word=$taker$word
    taker=
    case $word in
    --eeprom | --setting | --update | --verify | --filepath) taker=$word= ;;
    --update=* | --verify=*) target=${word#*=} ;;
    esac
    [ -n "$taker" ] || given="$given${word%%=*} "
done
typed=$taker$typed

print_lines() # LINE...
{
    for line; do
        printf "%s\n" "${line#"$taker"}"
    done
}

# A file is taken by what stands behind its last dot, and only by its full path.
print_firmware() # OPTION PATH, as far as typed
{
    case $target in
    [Ss][Ss] | [Ff][Rr][Oo][Nn][Tt]) extensions=" hex " ;;
    [Ff][Pp][Gg][Aa]) extensions=" mcs " ;;
    *) extensions=" hex mcs " ;;
    esac
    case $2 in
    "") print_lines "$1=/" ;;
    /*)
        set +f
        for path in "$2"*; do
            if [ -d "$path" ]; then
                print_lines "$1=$path/"
            elif [ -f "$path" ]; then
                case $extensions in
                *" ${path##*.} "*) print_lines "$1=$path" ;;
                esac
            fi
        done
        set -f
        ;;
    esac
}

# The name of an option until its "=" is typed, the words of its value from then on.
offer() # OPTION WORD..., a row of the table
{
    option=$1
    name=${1%%=*}
    shift
    case $typed in
    "$name="*)
        if [ "$*" = "<firmware>" ]; then
            print_firmware "$name" "${typed#*=}"
        else
            for word; do
                print_lines "$name=$word"
            done
        fi
        return
        ;;
    *=*) return ;;
    esac
    case $given in
    *" $name "*) return ;;
    esac
    case $option in
    *"=?") print_lines "$name" "$name=" ;;
    *) print_lines "$option" ;;
    esac
}

if [ -z "$category" ]; then
    for option in --help --list -h -v; do
        offer "$option"
    done
fi
while IFS= read -r row; do
    case $row in
    "" | "#"*) continue ;;
    " "*) place=$heading ;;
    *)
        place=
        heading=${row%%[= ]*}
        [ "$heading" != "$category" ] || offer --help
        ;;
    esac
    # shellcheck disable=SC2086  # the row is words
    [ "$place" != "$category" ] || offer $row
done <<END
@OPTIONS@
END
