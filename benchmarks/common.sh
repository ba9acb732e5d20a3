# Shared by the benchmarks: builds the stripped program and an instant device library, and measures commands. A
# benchmark sets `preset` and sources this file.
#
# Commands run in an environment that contains only the variables in `environment`. Instructions are counted from exec
# to exit. The numbers of instructions and system calls and the memory are the same in every run on one machine. Wall
# times depend on the load of the machine.
# shellcheck shell=sh
set -eu
cd "$(dirname "$0")/.."

tools/install-packages build benchmarks
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target fobrob >/dev/null

work=build/benchmarks/$preset
fobrob=$work/bin/fobrob
environment=LD_LIBRARY_PATH=$work
rm -rf "$work"
mkdir -p "$work"
cmake --install "build/$preset" --prefix "$work" --strip >/dev/null

# Each operation returns success immediately and writes no results. The only exception is the number of CAN channels,
# which is 4, so that there are channels to read and set.
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

# A row for each command that reads values: the row of the floor, and the arguments of fobrob. Together, the commands
# read every value.
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

in_environment() # command
{
    # shellcheck disable=SC2086  # one word per variable
    env -i $environment "$@"
}

instructions() # command
{
    in_environment valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
        sed -n 's/.*Collected : //p'
}

# Prints the first quartile of the wall time of each command, over 200 rounds. In each round, all commands run once in
# random order, so that load on the machine affects all of them and none benefits from caches that it has just filled.
# The slower runs mostly measure other processes.
microseconds() # commands
{
    printf '%s\n' "$@" >"$work/commands"
    for _ in $(seq 200); do
        shuf "$work/commands" | in_environment xargs -d '\n' hyperfine --shell=none --style none --ignore-failure --runs 1 \
            --export-csv "$work/times.csv" >"$work/hyperfine.log" 2>&1 || cat "$work/hyperfine.log" >&2
        sed 1d "$work/times.csv"
    done | sort -t , -k2g >"$work/times"
    awk -F , 'NR == FNR { time[$1, ++count[$1]] = $2 * 1000000; next } { printf "%d\n", time[$0, 50] }' \
        "$work/times" "$work/commands"
}

# The exit status of the benchmark: 1 if a row is over its budget.
over=0
exceeds() # budget
{
    echo "OVER BUDGET: $*"
    over=1
}
