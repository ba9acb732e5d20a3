# Prints the words that can be completed at the cursor, one per line: sh -c SCRIPT fobrob TYPED WORD...
#
# TYPED is the part of the current word before the cursor. The WORDs are the words before it, from the category on. The
# caller discards the words that do not start with TYPED. The completion scripts contain this file and options.txt
# between single quotes, so neither may contain a single quote or two backslashes in a row.

set -f
typed=$1
shift

category=${1%%=*}
given=" "
target=
taker= # an option that takes the next word as its value, with "="
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

# Firmware files are selected by their extension. The program accepts only absolute paths.
print_firmware() # OPTION, PATH as far as typed
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

# Prints the name of an option, or the words of its value once the "=" is typed.
offer() # OPTION WORD..., a row of options.txt
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
    # shellcheck disable=SC2086  # a row is a list of words
    [ "$place" != "$category" ] || offer $row
done <<END
@OPTIONS@
END
