#include "support/snippets.h"

#include "support/process.h"
#include "support/text.h"

#include <algorithm>

std::vector<std::string> snippets(const std::string& document)
{
    const std::string indent(4, ' ');
    std::vector<std::string> parts;
    bool inside = false;
    for (const std::string& line : splitLines(readFile(document)))
    {
        const bool indented = line.starts_with(indent);
        if (indented && !inside)
            parts.emplace_back();
        inside = indented || (inside && line.empty());
        if (inside)
            parts.back() += line.substr(std::min(indent.size(), line.size())) + "\n";
    }
    for (std::string& part : parts)
        part.erase(part.find_last_not_of('\n') + 2);
    return parts;
}
