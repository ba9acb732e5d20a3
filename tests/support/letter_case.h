// Functions that change the case of letters.

#pragma once

#include <algorithm>
#include <cctype>
#include <string>

inline std::string inLowercase(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

inline std::string inUppercase(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// Swaps uppercase and lowercase letters.
inline std::string withCaseSwapped(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) {
                               return static_cast<char>(std::isupper(c) ? std::tolower(c) : std::toupper(c));
                           });
    return text;
}
