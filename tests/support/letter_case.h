// Words in another letter case.

#pragma once

#include <cctype>
#include <string>

// The text with capitals for small letters and small letters for capitals.
inline std::string withCaseSwapped(std::string text)
{
    for (char& letter : text)
    {
        const auto code = static_cast<unsigned char>(letter);
        letter = static_cast<char>(std::isupper(code) ? std::tolower(code) : std::toupper(code));
    }
    return text;
}
