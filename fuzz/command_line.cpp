// Fuzzes the program: runs it with arbitrary command lines on a scripted device, and checks the guarantees
// that hold for every run.
//
// An input has three parts, separated by null bytes: the arguments of the command line, one per line;
// standard input; the script of the device. The second and the third part are optional.

#include "device.h"
#include "expect.h"

#include <algorithm>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <getopt.h>
#include <memory>
#include <optional>
#include <span>
#include <stdio_ext.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

// The program's main(), renamed by the build.
int programMain(int argc, char** argv);

// The program's variables, as program_state.ld groups them.
extern std::uint64_t program_state_begin[];
extern std::uint64_t program_state_end[];

namespace
{

// The environment of one run of the program: its input, its output and its user.
struct Environment
{
    std::string output;
    std::optional<std::size_t> suppressedAt; // length of the output when a null text suppressed the rest
    std::string errors;
    std::string_view input;
    bool root;
    bool slept;
    std::jmp_buf exit;
};

Environment environment;

// Whether the program is the caller of the wrapped functions. The fuzzer and its threads call them, too.
thread_local bool programRunning = false;

ssize_t appendTo(void* text, const char* bytes, std::size_t count)
{
    static_cast<std::string*>(text)->append(bytes, count);
    return static_cast<ssize_t>(count);
}

ssize_t readInput(void*, char* bytes, std::size_t count)
{
    checkOutputSoFar();
    count = std::min(count, environment.input.size());
    std::memcpy(bytes, environment.input.data(), count);
    environment.input.remove_prefix(count);
    return static_cast<ssize_t>(count);
}

// Redirects the three standard streams to the environment.
class RedirectedStreams
{
public:
    RedirectedStreams() : original{stdin, stdout, stderr}
    {
        stdin = fopencookie(nullptr, "r", {readInput, nullptr, nullptr, nullptr});
        stdout = fopencookie(&environment.output, "w", {nullptr, appendTo, nullptr, nullptr});
        stderr = fopencookie(&environment.errors, "w", {nullptr, appendTo, nullptr, nullptr});
    }

    ~RedirectedStreams()
    {
        std::fclose(stdin);
        std::fclose(stdout);
        std::fclose(stderr);
        stdin = original[0];
        stdout = original[1];
        stderr = original[2];
    }

private:
    std::FILE* original[3];
};

// Restores the initial values of the program's variables. AddressSanitizer is disabled here because its red
// zones between the variables are copied as well.
__attribute__((no_sanitize("address"))) void restoreProgramState()
{
    static volatile std::uint64_t* const begin = program_state_begin;
    static const auto count = static_cast<std::size_t>(program_state_end - begin);
    static std::uint64_t* initial = nullptr;
    if (!initial)
    {
        initial = new std::uint64_t[count];
        for (std::size_t i = 0; i < count; ++i)
            initial[i] = begin[i];
    }
    for (std::size_t i = 0; i < count; ++i)
        begin[i] = initial[i];
}

// Returns the part of `text` before the first separator, and removes both from `text`.
std::string_view removePart(std::string_view& text, char separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

// Each argument has its own allocation, so that AddressSanitizer detects reads past its end.
struct CommandLine
{
    explicit CommandLine(std::string_view lines)
    {
        add("fobrob");
        while (!lines.empty())
            add(removePart(lines, '\n'));
        pointers.push_back(nullptr);
    }

    void add(std::string_view argument)
    {
        arguments.push_back(std::make_unique<char[]>(argument.size() + 1));
        std::ranges::copy(argument, arguments.back().get());
        pointers.push_back(arguments.back().get());
    }

    bool hasPrefix(std::string_view prefix) const
    {
        return std::ranges::any_of(arguments, [&](const auto& argument)
                                   { return std::string_view(argument.get()).starts_with(prefix); });
    }

    std::vector<const char*> optionValues() const
    {
        std::vector<const char*> values;
        for (const auto& argument : arguments)
            if (const char* equalsSign = std::strchr(argument.get(), '='))
                values.push_back(equalsSign + 1);
        return values;
    }

    std::vector<std::unique_ptr<char[]>> arguments;
    std::vector<char*> pointers; // ends with null
};

int runProgram(CommandLine& line)
{
    restoreProgramState();
    optind = 0; // makes getopt start over
    optarg = nullptr;
    const RedirectedStreams streams;
    int status = 0;
    programRunning = true;
    if (setjmp(environment.exit) == 0)
        status = programMain(static_cast<int>(line.arguments.size()), line.pointers.data());
    programRunning = false;
    return status;
}

bool hasLine(std::string_view prefix)
{
    return environment.output.starts_with(prefix) ||
           environment.output.find("\n" + std::string(prefix)) != std::string::npos;
}

bool printedCategoryHelp()
{
    return !device.readRawEeprom && hasLine("Category - ");
}

// The general help, the list, the version, or the error for a command line that does not begin with a
// category.
bool printedGeneralText()
{
    return !device.readRawEeprom &&
           (hasLine("To get specific category information: ") || hasLine("Fobrob is the property of ") ||
            hasLine("To get help how to use Fobrob, "));
}

bool endedWithoutRelease()
{
    return printedCategoryHelp() || environment.output == "This feature requires superuser privileges\n" ||
           environment.output == "Please enter the full path to the file and not a relative path\n";
}

void checkChanges(const CommandLine& line)
{
    expect(!printedCategoryHelp() || !device.changed, "help changes nothing");
    expect(!printedGeneralText() || device.handles.empty(), "general texts need no device");
    // The options of the advanced category change the unit without a value.
    expect(!device.changed || !device.optionValues.empty() || line.hasPrefix("--ad"),
           "reading changes nothing");
}

void checkHandles()
{
    const bool mayKeepNull = hasLine("Initialization error.");
    const bool keepsHandles = endedWithoutRelease();
    // The CAN category counts the channels, and releases the handle for that, before it prints its help.
    const bool isCanHelp = hasLine("Category - CAN");
    for (const Handle& handle : device.handles)
    {
        const bool countedChannels = isCanHelp && std::string_view(handle.module) == "About";
        if (keepsHandles)
            expect(handle.released == countedChannels,
                   "help and the errors that end a run release no handle");
        else
            expect(handle.released || (handle.null && mayKeepNull), "every handle is released");
    }
}

void checkOutput()
{
    const std::string& output = environment.output;
    if (environment.suppressedAt)
        expect(output.size() == *environment.suppressedAt, "a null text suppresses all further output");
    else if (device.returnedNullText)
    {
        expect(!output.ends_with('\n'), "a null text suppresses the newline of its line");
        environment.suppressedAt = output.size();
    }
    else if (!device.readRawEeprom)
        expect(output.empty() || output.ends_with('\n'), "every line ends with a newline");
}

void checkErrors()
{
    for (std::string_view errors = environment.errors; !errors.empty();)
        expect(removePart(errors, '\n').starts_with("fobrob: "), "only getopt_long writes to standard error");
}

} // namespace

void checkOutputSoFar()
{
    expect(__fpending(stdout) == 0 || device.readRawEeprom, "every line is flushed");
    checkOutput();
}

// Functions of the C library that the linker wraps. They are replaced while the program runs.

extern "C"
{

    [[noreturn]] void __real_exit(int status);
    uid_t __real_getuid();
    int __real_fputs_unlocked(const char* text, std::FILE* stream);
    unsigned __real_sleep(unsigned seconds);
    int __real_stat64(const char* path, struct stat* status);

    [[noreturn]] void __wrap_exit(int status)
    {
        if (!programRunning)
            __real_exit(status);
        expect(status == 0, "the exit status is 0");
        std::longjmp(environment.exit, 1);
    }

    uid_t __wrap_getuid()
    {
        if (!programRunning)
            return __real_getuid();
        return environment.root ? 0 : 1000;
    }

    // AddressSanitizer checks the argument of fputs(), but not that of fputs_unlocked().
    int __wrap_fputs_unlocked(const char* text, std::FILE* stream)
    {
        return programRunning ? std::fputs(text, stream) : __real_fputs_unlocked(text, stream);
    }

    unsigned __wrap_sleep(unsigned seconds)
    {
        if (!programRunning)
            return __real_sleep(seconds);
        checkOutputSoFar();
        expect(seconds == 100, "the program sleeps for 100 seconds");
        expect(!environment.slept, "the program sleeps only once");
        environment.slept = true;
        return 0;
    }

    // The script decides whether the file exists.
    int __wrap_stat64(const char* path, struct stat* status)
    {
        if (!programRunning)
            return __real_stat64(path, status);
        return nextScriptByte() % 4 == 3 ? -1 : 0;
    }

} // extern "C"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    std::string_view rest(reinterpret_cast<const char*>(bytes), size);
    CommandLine line(removePart(rest, '\0'));
    environment.output.clear();
    environment.suppressedAt.reset();
    environment.errors.clear();
    environment.slept = false;
    environment.input = removePart(rest, '\0');
    const std::string_view answer = environment.input.substr(0, environment.input.find('\n'));

    device = {{bytes + size - rest.size(), rest.size()}, line.optionValues()};
    environment.root = nextScriptByte() % 8 != 7;
    device.firmwareAllowed = environment.root && (answer == "yes" || line.hasPrefix("--fo"));

    expect(runProgram(line) == 0, "the exit status is 0");
    checkChanges(line);
    checkHandles();
    checkOutput();
    checkErrors();
    return 0;
}
