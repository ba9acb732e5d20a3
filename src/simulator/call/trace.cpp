#include "simulator/call/trace.h"

#include "simulator/call/problems.h"
#include "simulator/store/c_locale.h"
#include "simulator/store/store_error.h"
#include "simulator/store/unit_location.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace simulator
{

namespace
{

const char* tracePath()
{
    return ::secure_getenv("QVAUX_TRACE");
}

std::string quoted(const char* text, std::size_t length)
{
    std::string result = "\"";
    for (std::size_t i = 0; i < length; ++i)
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '"' || byte == '\\')
            result += '\\';
        if (byte >= 0x20 && byte != 0x7F)
        {
            result += text[i];
            continue;
        }
        char escape[5];
        std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned>(byte));
        result += escape;
    }
    return result + "\"";
}

// Returns whether the whole line fits into the file, as far as this is known before writing. A pipe accepts
// up to PIPE_BUF bytes atomically.
bool fits(const std::string& line, const File& file)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        return false;
    if (S_ISFIFO(status.st_mode))
        return line.size() <= PIPE_BUF;
    rlimit limit{};
    if (!S_ISREG(status.st_mode) || ::getrlimit(RLIMIT_FSIZE, &limit) != 0)
        return true;
    const auto end = static_cast<rlim_t>(status.st_size) + line.size();
    return limit.rlim_cur == RLIM_INFINITY || end <= limit.rlim_cur;
}

// Returns false, and reports the problem once, if `path` is a file of the unit.
bool mayTrace(const char* path)
{
    static ProblemReport problems;
    try
    {
        if (!isFileOfUnit(path))
            return true;
        problems.report(path + std::string(": QVAUX_TRACE names a file of the unit"));
    }
    catch (const StoreError&)
    {
        // The symbolic links of the path cannot be followed.
    }
    return false;
}

} // namespace

bool isTracing()
{
    return tracePath() && *tracePath();
}

void appendToTrace(const std::string& line)
{
    const char* const path = tracePath();
    if (!mayTrace(path))
        return;
    const File file = openFile(AT_FDCWD, path, O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK, 0666);
    if (file.isOpen() && fits(line, file))
        writeAll(file, line);
}

std::string traced(double value)
{
    char digits[32];
    const CLocale numbers;
    std::snprintf(digits, sizeof digits, "%.10g", value);
    return digits;
}

std::string traced(const char* text)
{
    return text ? quoted(text, std::strlen(text)) : "null";
}

std::string traced(const DiagnosticTimer& timer)
{
    std::string list;
    for (const std::uint32_t minutes :
         {timer.totalRunTime, timer.totalSuspendTime, timer.totalHeatTime, timer.runTime40To60,
          timer.runTime60To70, timer.runTime70To80, timer.runTimeAbove80})
        list += (list.empty() ? "" : ", ") + std::to_string(minutes);
    return list;
}

std::string traced(const UpgradeStatus& status)
{
    return std::to_string(status.state) + ", " + std::to_string(status.second) + ", " +
           std::to_string(status.error);
}

std::string tracedArgument(TextOut out, bool delivered)
{
    const std::string text = delivered ? quoted(out.buffer, ::strnlen(out.buffer, out.length)) : "";
    return "[" + text + "], " + std::to_string(out.length);
}

std::string tracedArgument(BytesOut out, bool delivered)
{
    return (delivered ? "[...], " : "[], ") + std::to_string(out.length);
}

} // namespace simulator
