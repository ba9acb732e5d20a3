#include "document/hex_digits.h"

#include <array>

namespace document
{

namespace
{

constexpr std::uint8_t notADigit = 0xFF;

constexpr std::array<std::uint8_t, 256> digitValues = []
{
    std::array<std::uint8_t, 256> values{};
    values.fill(notADigit);
    for (unsigned i = 0; i < 10; ++i)
        values['0' + i] = static_cast<std::uint8_t>(i);
    for (unsigned i = 0; i < 6; ++i)
        values['A' + i] = values['a' + i] = static_cast<std::uint8_t>(10 + i);
    return values;
}();

} // namespace

bool appendBytes(std::vector<std::uint8_t>& bytes, std::string_view digits)
{
    if (digits.size() % 2 != 0)
        return false;
    for (std::size_t i = 0; i < digits.size(); i += 2)
    {
        const std::uint8_t high = digitValues[static_cast<unsigned char>(digits[i])];
        const std::uint8_t low = digitValues[static_cast<unsigned char>(digits[i + 1])];
        if (high == notADigit || low == notADigit)
            return false;
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return true;
}

} // namespace document
