#include "support/text.h"

#include <regex>
#include <sstream>

std::string lines(const std::vector<std::string>& list)
{
    std::string text;
    for (const std::string& line : list)
        text += line + "\n";
    return text;
}

std::vector<std::string> splitLines(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> list;
    for (std::string line; std::getline(stream, line);)
        list.push_back(line);
    return list;
}

std::string valueAfter(const std::string& text, const std::string& label)
{
    const std::size_t line = ("\n" + text).find("\n" + label);
    if (line == std::string::npos)
        return "no line " + label;
    const std::size_t value = line + label.size();
    return text.substr(value, text.find('\n', value) - value);
}

std::string replaced(std::string text, const std::string& what, const std::string& with)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != text.npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

std::vector<std::string> matches(const std::string& pattern, const std::string& text)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.push_back((*match)[1]);
    return found;
}
