// Problems that an error code cannot explain, on standard error.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace simulator
{

// Writes each problem as one line of at most 1 KiB. Control characters are escaped, and the middle of a text
// that is too long is left out. Takes no memory, throws nothing, raises no signal, and keeps errno.
class ProblemReport
{
public:
    // Does nothing if the problem is the one that was reported last: every further call would report it
    // again.
    void report(std::string_view problem) noexcept;

private:
    using Line = std::array<char, 1024>;

    static std::size_t format(std::string_view problem, Line& line);

    Line last{};
    std::size_t lastLength = 0;
};

} // namespace simulator
