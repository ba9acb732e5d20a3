#include "simulator/call/problems.h"

#include "simulator/store/blocked_signals.h"

#include <algorithm>
#include <unistd.h>

namespace simulator
{

namespace
{

constexpr std::string_view prefix = "libqv-aux2: ";
constexpr std::string_view omission = "...";

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::size_t escapedSize(char character)
{
    return isControl(character) ? 4 : 1;
}

// Appends the escaped text, which must fit. Returns the new end.
char* append(char* end, std::string_view text)
{
    constexpr const char* digits = "0123456789abcdef";
    for (const char character : text)
    {
        if (isControl(character))
        {
            const auto byte = static_cast<unsigned char>(character);
            end = std::ranges::copy(std::string_view("\\x"), end).out;
            *end++ = digits[byte >> 4];
            *end++ = digits[byte & 0xF];
        }
        else
            *end++ = character;
    }
    return end;
}

// Returns the longest beginning of the text that has at most `size` bytes when escaped.
std::string_view beginningOf(std::string_view text, std::size_t size)
{
    std::size_t length = 0;
    for (std::size_t used = 0; length < text.size(); ++length)
    {
        used += escapedSize(text[length]);
        if (used > size)
            break;
    }
    while (length < text.size() && length > 0 && isContinuationByte(text[length]))
        --length;
    return text.substr(0, length);
}

// Returns the longest end of the text that has at most `size` bytes when escaped.
std::string_view endOf(std::string_view text, std::size_t size)
{
    std::size_t begin = text.size();
    for (std::size_t used = 0; begin > 0; --begin)
    {
        used += escapedSize(text[begin - 1]);
        if (used > size)
            break;
    }
    while (begin < text.size() && isContinuationByte(text[begin]))
        ++begin;
    return text.substr(begin);
}

} // namespace

std::size_t ProblemReport::format(std::string_view problem, Line& line)
{
    const std::size_t space = line.size() - prefix.size() - 1;
    char* end = append(line.data(), prefix);
    if (beginningOf(problem, space).size() == problem.size())
        end = append(end, problem);
    else
    {
        const std::size_t half = (space - omission.size()) / 2;
        end = append(end, beginningOf(problem, half));
        end = append(end, omission);
        end = append(end, endOf(problem, half));
    }
    *end++ = '\n';
    return static_cast<std::size_t>(end - line.data());
}

void ProblemReport::report(std::string_view problem) noexcept
{
    Line line;
    const std::size_t length = format(problem, line);
    if (std::string_view(line.data(), length) == std::string_view(last.data(), lastLength))
        return;
    last = line;
    lastLength = length;
    const BlockedSignals blocked;
    if (::write(STDERR_FILENO, line.data(), length) < 0)
        return;
}

} // namespace simulator
