# Prints the words that can be completed at the cursor, one per line: sh -c SCRIPT COMMAND TYPED WORD...
#
# COMMAND is fobrob or fobrob-sim, TYPED the part of the current word before the cursor. The WORDs are the words before
# it. A tab and a description, which may be empty, follow each word. The caller discards the words that do not start
# with TYPED. The completion scripts contain this file and options.txt between single quotes, so neither may contain a
# single quote or two backslashes in a row.

set -f
typed=$1
shift

first="--help --list -h -v"
case $0 in
*fobrob-sim) if [ "${1-}" = --no-wait ]; then shift; else first="$first --no-wait"; fi ;;
esac

category=${1%%=*}
given=" "
target=
pending= # an option that takes the next word as its value, with "="
for word; do
    word=$pending$word
    pending=
    case $word in
    --eeprom | --setting | --update | --verify | --filepath) pending=$word= ;;
    --update=* | --verify=*) target=${word#*=} ;;
    esac
    [ -n "$pending" ] || given="$given${word%%=*} "
done
typed=$pending$typed

print_lines() # LINE...
{
    for line; do
        printf "%s\t%s\n" "${line#"$pending"}" "$description"
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

# Prints the name of an option with the description, or the words of its value once the "=" is typed. A name with "="
# also shows the range.
offer() # OPTION WORD..., a row of options.txt without its description
{
    option=$1
    name=${1%%=*}
    range=
    shift
    case $* in
    "<firmware>") ;;
    "<"*)
        range=$*
        range=${range#<}
        range=", ${range%>}"
        shift $#
        ;;
    esac
    case $typed in
    "$name="*)
        description=
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
    *=) ;;
    *) print_lines "$name" ;;
    esac
    case $option in
    *=*) description=$description$range && print_lines "$name=" ;;
    esac
}

offer_general() # OPTION...
{
    for option; do
        case $option in
        --help | -h) description="help" ;;
        --list) description="list all options" ;;
        -v) description="version of the program" ;;
        --no-wait) description="skip the wait of firmware commands, for development only" ;;
        esac
        offer "$option"
    done
}

# shellcheck disable=SC2086  # a list of words
[ -n "$category" ] || offer_general $first
while IFS= read -r row; do
    case $row in
    "" | "#"*) continue ;;
    " "*) place=$heading ;;
    *)
        place=
        heading=${row%%[= ]*}
        [ "$heading" != "$category" ] || offer_general --help
        ;;
    esac
    [ "$place" = "$category" ] || continue
    description=${row##* # }
    # shellcheck disable=SC2086  # a row is a list of words
    offer ${row% # *}
done <<END
@OPTIONS@
END
