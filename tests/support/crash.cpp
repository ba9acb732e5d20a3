#include "support/crash.h"

#include "support/process.h"
#include "support/text.h"

#include <csignal>
#include <cstdint>
#include <dlfcn.h>
#include <execinfo.h>
#include <map>
#include <sstream>

namespace
{

Crash* recorded = nullptr;

void record(int signal)
{
    recorded->count = backtrace(recorded->frames, static_cast<int>(std::size(recorded->frames)));
    std::signal(signal, SIG_DFL);
    raise(signal);
}

std::string hexadecimal(std::uintptr_t number)
{
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

// Returns the name of a function without its parameters and template arguments.
std::string withoutArguments(const std::string& name)
{
    std::string plain;
    int depth = 0;
    for (const char c : replaced(name, "(anonymous namespace)::", ""))
    {
        if (c == '<' || c == '(')
            ++depth;
        if (depth == 0)
            plain += c;
        if (c == '>' || c == ')')
            --depth;
    }
    return plain;
}

// addr2line also finds functions that are not exported. Starting it takes long, so the names are cached.
std::string functionAt(void* address)
{
    static std::map<void*, std::string> known;
    if (const auto found = known.find(address); found != known.end())
        return found->second;
    Dl_info info{};
    std::string name = "?";
    if (dladdr(address, &info) != 0)
    {
        // This is the return address. The call may be the last instruction of the function.
        const auto offset =
            reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(info.dli_fbase) - 1;
        const Outcome outcome =
            runCommand({.words = {"addr2line", "-f", "-C", "-e", info.dli_fname, hexadecimal(offset)},
                        .environment = {{"PATH", "/usr/bin:/bin"}}});
        name = withoutArguments(splitLines(outcome.output + "\n").front());
    }
    return known[address] = name;
}

} // namespace

void recordCrash(Crash& crash)
{
    backtrace(crash.frames, 1); // The first call allocates memory.
    crash.count = 0;
    recorded = &crash;
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, record);
}

std::vector<std::string> functionsOf(const Crash& crash)
{
    std::vector<std::string> names;
    for (int i = 0; i < crash.count; ++i)
        names.push_back(functionAt(crash.frames[i]));
    return names;
}
