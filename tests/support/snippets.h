// The examples in Markdown documents.

#pragma once

#include <string>
#include <vector>

// Returns the indented blocks of the document.
std::vector<std::string> snippets(const std::string& document);
