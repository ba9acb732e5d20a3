#include "document/version.h"

#include <charconv>

namespace document
{

std::string toText(const Version& version)
{
    std::string text;
    for (const std::uint8_t number : version.numbers)
        text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

std::optional<Version> consumeVersion(std::string_view& text)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    Version version;
    for (std::size_t i = 0; i < version.numbers.size(); ++i)
    {
        if (i > 0 && (at == end || *at++ != '.'))
            return std::nullopt;
        const auto [next, error] = std::from_chars(at, end, version.numbers[i]);
        if (error != std::errc())
            return std::nullopt;
        at = next;
    }
    text = std::string_view(at, static_cast<std::size_t>(end - at));
    return version;
}

} // namespace document
