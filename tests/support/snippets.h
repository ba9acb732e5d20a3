// What documents in Markdown show.

#pragma once

#include <string>
#include <vector>

// What stands indented in the document, part by part.
std::vector<std::string> snippets(const std::string& document);
