// Parses the source of the manual pages.

#pragma once

#include "support/process.h"
#include "support/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

inline std::string manualPage(const std::string& name)
{
    return readFile(PROJECT_DIRECTORY "/man/" + name);
}

// Returns the text without mdoc escapes.
inline std::string unescaped(std::string text)
{
    const std::pair<const char*, const char*> escapes[] = {{"\\-", "-"}, {"\\(dq", "\""}, {" Ns Ar ", ""}};
    for (const auto& [escape, plain] : escapes)
        text = replaced(text, escape, plain);
    return text;
}

using Cells = std::vector<std::string>;

// Returns the cells of a table row. Returns none if the line is the header row or not a table row.
inline Cells cellsOf(const std::string& line)
{
    const std::string item = ".It ";
    const std::string separator = " Ta ";
    if (!line.starts_with(item) || line.starts_with(item + "Em ") || line.find(separator) == line.npos)
        return {};
    Cells cells;
    std::string rest = unescaped(line.substr(item.size()));
    for (auto at = rest.find(separator); at != rest.npos; at = rest.find(separator))
    {
        cells.push_back(rest.substr(0, at));
        rest.erase(0, at + separator.size());
    }
    cells.push_back(rest);
    return cells;
}

// Returns the section with the given heading line, up to the next heading.
inline std::string sectionOf(const std::string& manual, const std::string& heading)
{
    const auto begin = manual.find(heading + "\n");
    EXPECT_NE(begin, manual.npos) << heading;
    const auto end = std::min(manual.find("\n.Sh ", begin), manual.find("\n.Ss ", begin));
    return manual.substr(begin, end - begin);
}
