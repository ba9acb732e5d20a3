// Writes problems that an error code cannot explain to standard error.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace simulator
{

// Writes each problem as one line of at most 1 KiB. Escapes control characters, and omits the middle of a
// text that is too long. Allocates no memory, raises no signal, and preserves errno.
class ProblemReport
{
public:
    // Does nothing if the last report was the same, because the problem usually affects all further calls.
    void report(std::string_view problem) noexcept;

private:
    using Line = std::array<char, 1024>;

    static std::size_t format(std::string_view problem, Line& line);

    Line last{};
    std::size_t lastLength = 0;
};

} // namespace simulator
