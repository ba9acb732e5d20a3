// Runs the whole program on a command line and a device that answers as it likes, and holds it to the
// promises that it always keeps.
//
// An input is the words of the command line, one a line; behind a zero byte what standard input holds; behind
// another the script of the device. All but the words may be missing.

#include "device.h"
#include "promise.h"

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

// The program's own main, under another name.
int programMain(int argc, char** argv);

// Where the linker puts the program's variables.
extern std::uint64_t program_state_begin[];
extern std::uint64_t program_state_end[];

namespace
{

// What the program finds in the world around it, and what it leaves there.
struct World
{
    std::string output;
    std::optional<std::size_t> silentFrom; // how long the output was when a null text silenced it
    std::string errors;
    std::string_view input;
    bool root;
    bool waited;
    std::jmp_buf end;
};

World world;

// Whether the program is the caller, and not the fuzzer beside it.
thread_local bool running = false;

ssize_t append(void* text, const char* bytes, std::size_t count)
{
    static_cast<std::string*>(text)->append(bytes, count);
    return static_cast<ssize_t>(count);
}

ssize_t takeInput(void*, char* bytes, std::size_t count)
{
    checkPrinted();
    count = std::min(count, world.input.size());
    std::memcpy(bytes, world.input.data(), count);
    world.input.remove_prefix(count);
    return static_cast<ssize_t>(count);
}

// The three streams, until the program has ended.
class Streams
{
public:
    Streams() : own{stdin, stdout, stderr}
    {
        stdin = fopencookie(nullptr, "r", {takeInput, nullptr, nullptr, nullptr});
        stdout = fopencookie(&world.output, "w", {nullptr, append, nullptr, nullptr});
        stderr = fopencookie(&world.errors, "w", {nullptr, append, nullptr, nullptr});
    }

    ~Streams()
    {
        std::fclose(stdin);
        std::fclose(stdout);
        std::fclose(stderr);
        stdin = own[0];
        stdout = own[1];
        stderr = own[2];
    }

private:
    std::FILE* own[3];
};

// By words that the sanitizers do not watch, for what lies around the variables is out of bounds to them.
__attribute__((no_sanitize("address"))) void restoreProgramState()
{
    static volatile std::uint64_t* const begin = program_state_begin;
    static const auto count = static_cast<std::size_t>(program_state_end - begin);
    static std::uint64_t* start = nullptr;
    if (!start)
    {
        start = new std::uint64_t[count];
        for (std::size_t i = 0; i < count; ++i)
            start[i] = begin[i];
    }
    for (std::size_t i = 0; i < count; ++i)
        begin[i] = start[i];
}

// The part of `text` before the first `separator`; it and the separator are taken away.
std::string_view takePart(std::string_view& text, char separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

// Each word in memory of its own, so that nothing can be read behind it.
struct CommandLine
{
    explicit CommandLine(std::string_view lines)
    {
        add("fobrob");
        while (!lines.empty())
            add(takePart(lines, '\n'));
        pointers.push_back(nullptr);
    }

    void add(std::string_view word)
    {
        words.push_back(std::make_unique<char[]>(word.size() + 1));
        std::ranges::copy(word, words.back().get());
        pointers.push_back(words.back().get());
    }

    bool mayHold(std::string_view beginning) const
    {
        return std::ranges::any_of(words, [&](const auto& word)
                                   { return std::string_view(word.get()).starts_with(beginning); });
    }

    // What stands behind the equals signs.
    std::vector<const char*> values() const
    {
        std::vector<const char*> found;
        for (const auto& word : words)
            if (const char* sign = std::strchr(word.get(), '='))
                found.push_back(sign + 1);
        return found;
    }

    std::vector<std::unique_ptr<char[]>> words;
    std::vector<char*> pointers; // null behind the last
};

int runProgram(CommandLine& line)
{
    restoreProgramState();
    optind = 0; // begins anew
    optarg = nullptr;
    const Streams streams;
    int status = 0;
    running = true;
    if (setjmp(world.end) == 0)
        status = programMain(static_cast<int>(line.words.size()), line.pointers.data());
    running = false;
    return status;
}

bool hasLine(std::string_view text, std::string_view beginning)
{
    return text.starts_with(beginning) || text.find("\n" + std::string(beginning)) != text.npos;
}

bool showsCategoryHelp()
{
    return !device.readRawEeprom && hasLine(world.output, "Category - ");
}

// The general help and the list, the version, the refusal of a line that begins with no category.
bool showsGeneralText()
{
    return !device.readRawEeprom && (hasLine(world.output, "To get specific category information: ") ||
                                     hasLine(world.output, "Fobrob is the property of ") ||
                                     hasLine(world.output, "To get help how to use Fobrob, "));
}

// The ways out on which the handles stay with the program. The CAN category has given one back by then.
bool keepsHandles()
{
    return showsCategoryHelp() || world.output == "This feature requires superuser privileges\n" ||
           world.output == "Please enter the full path to the file and not a relative path\n";
}

// Settings are changed by values, and by the advanced category.
void checkChanges(const CommandLine& line)
{
    promise(!showsCategoryHelp() || !device.changed, "help changes nothing");
    promise(!showsGeneralText() || device.handles.empty(), "general texts ask the device for nothing");
    promise(!device.changed || !device.values.empty() || line.mayHold("--ad"), "reading changes nothing");
}

void checkHandles()
{
    const bool mayKeepNull = hasLine(world.output, "Initialization error.");
    const bool keeps = keepsHandles();
    const bool can = hasLine(world.output, "Category - CAN");
    for (const GivenHandle& handle : device.handles)
    {
        const bool isCount = can && std::string_view(handle.module) == "About";
        if (keeps)
            promise(handle.released == isCount, "help and refusals give no handle back");
        else
            promise(handle.released || (handle.null && mayKeepNull), "every handle is given back");
    }
}

// Whole lines, until a null text leaves one unfinished.
void checkOutput()
{
    if (world.silentFrom)
        promise(world.output.size() == *world.silentFrom, "nothing is printed after a null text");
    else if (device.gaveNullText)
    {
        promise(!world.output.ends_with('\n'), "a null text silences standard output");
        world.silentFrom = world.output.size();
    }
    else if (!device.readRawEeprom)
        promise(world.output.empty() || world.output.ends_with('\n'), "every line has its newline");
}

// getopt_long alone writes there.
void checkErrors()
{
    for (std::string_view errors = world.errors; !errors.empty();)
        promise(takePart(errors, '\n').starts_with("fobrob: "), "failures are not told on standard error");
}

} // namespace

void checkPrinted()
{
    promise(__fpending(stdout) == 0 || device.readRawEeprom, "a line is written when it is finished");
    checkOutput();
}

// What the program calls in the C library, stood in for while it runs.

extern "C"
{

    [[noreturn]] void __real_exit(int status);
    uid_t __real_getuid();
    int __real_fputs_unlocked(const char* text, std::FILE* stream);
    unsigned __real_sleep(unsigned seconds);
    int __real_stat64(const char* path, struct stat* status);

    [[noreturn]] void __wrap_exit(int status)
    {
        if (!running)
            __real_exit(status);
        promise(status == 0, "the exit status is 0");
        std::longjmp(world.end, 1);
    }

    uid_t __wrap_getuid()
    {
        if (!running)
            return __real_getuid();
        return world.root ? 0 : 1000;
    }

    // The sanitizer looks at the texts that fputs is handed, and not at these.
    int __wrap_fputs_unlocked(const char* text, std::FILE* stream)
    {
        return running ? std::fputs(text, stream) : __real_fputs_unlocked(text, stream);
    }

    unsigned __wrap_sleep(unsigned seconds)
    {
        if (!running)
            return __real_sleep(seconds);
        checkPrinted();
        promise(seconds == 100 && !world.waited, "the program waits 100 seconds, once");
        world.waited = true;
        return 0;
    }

    // A folder or file is there or is not.
    int __wrap_stat64(const char* path, struct stat* status)
    {
        if (!running)
            return __real_stat64(path, status);
        return scripted() % 4 == 3 ? -1 : 0;
    }

} // extern "C"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    std::string_view rest(reinterpret_cast<const char*>(bytes), size);
    CommandLine line(takePart(rest, '\0'));
    world.output.clear();
    world.silentFrom.reset();
    world.errors.clear();
    world.waited = false;
    world.input = takePart(rest, '\0');
    const std::string_view answered = world.input.substr(0, world.input.find('\n'));

    device = {{bytes + size - rest.size(), rest.size()}, line.values()};
    world.root = scripted() % 8 != 7;
    device.firmwareAllowed = world.root && (answered == "yes" || line.mayHold("--fo"));

    promise(runProgram(line) == 0, "the exit status is 0");
    checkChanges(line);
    checkHandles();
    checkOutput();
    checkErrors();
    return 0;
}
