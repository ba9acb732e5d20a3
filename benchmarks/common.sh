# What the benchmarks share: the stripped program, the instant device library, and the measurements. Sourced by
# them, with `preset` set.
#
# Everything runs in the same empty environment, but for what `surroundings` says. Instructions are those from
# exec to exit and repeat, system calls and memory too; wall times depend on what else the machine does.
# shellcheck shell=sh
set -eu
cd "$(dirname "$0")/.."

tools/install-packages build benchmarks
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target fobrob >/dev/null

work=build/benchmarks/$preset
fobrob=$work/bin/fobrob
surroundings=LD_LIBRARY_PATH=$work
rm -rf "$work"
mkdir -p "$work"
cmake --install "build/$preset" --prefix "$work" --strip >/dev/null

# Every operation succeeds at once and writes nothing; but the unit has four CAN channels, so that there are
# channels to read and to set.
make_instant_library() # compiler
{
    {
        echo 'int nothing(void); int nothing(void) { return 0; }'
        echo 'const char* no_text(void); const char* no_text(void) { return ""; }'
        for operation in $(tools/device-operations); do
            case $operation in
            About_getNrOfCANConnections) ;;
            *StringA) echo "const char* $operation(void) __attribute__((alias(\"no_text\")));" ;;
            *) echo "int $operation(void) __attribute__((alias(\"nothing\")));" ;;
            esac
        done
        echo 'int About_getNrOfCANConnections(const void* about, unsigned char* count);'
        echo 'int About_getNrOfCANConnections(const void* about, unsigned char* count)'
        echo '{ (void)about; *count = 4; return 0; }'
    } >"$work/instant.c"
    library=$work/libqv-aux2.so.2.11
    "$1" -O2 -fPIC -shared -Wl,-soname,libqv-aux2.so.2.11 -o "$library" "$work/instant.c"
}

# The command lines that read everything there is, each behind the name of its floor.
read_rows()
{
    cat <<'END'
lightsensor --lightsensor
buzzer --buzzer
backlight --backlight
led --led
can --can
heater --heater --temperature
power_current --power=current
power_startup --power=startup
onoff --onoff
touch --touch
telematics --telematics
version --version
temperature --temperature
digitalio --digitalio
about_eeprom --about=EEPROM
about_raw_eeprom --about=RawEEPROM
about_diagnostic --about=Diagnostic
about_adc --about=ADC
system_mode --advanced --system_mode
END
}

alone() # command
{
    # shellcheck disable=SC2086  # one word a variable
    env -i $surroundings "$@"
}

instructions() # command
{
    alone valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
        sed -n 's/.*Collected : //p'
}

# Two hundred rounds, in each of which every command runs once, in any order: a moment in which the machine is busy
# meets them all, and none finds the caches as it left them. Of each command, the time that a quarter of its runs stay
# below: the others met something else.
microseconds() # commands; prints a line for each
{
    printf '%s\n' "$@" >"$work/commands"
    for _ in $(seq 200); do
        shuf "$work/commands" | alone xargs -d '\n' hyperfine --shell=none --style none --ignore-failure --runs 1 \
            --export-csv "$work/times.csv" >"$work/hyperfine.log" 2>&1 || cat "$work/hyperfine.log" >&2
        sed 1d "$work/times.csv"
    done | sort -t , -k2g >"$work/times"
    awk -F , 'NR == FNR { time[$1, ++count[$1]] = $2 * 1000000; next } { printf "%d\n", time[$0, 50] }' \
        "$work/times" "$work/commands"
}

# One row is over its budget.
over=0
exceeds() # what
{
    echo "OVER BUDGET: $*"
    over=1
}
