// The code blocks in Markdown documents.

#pragma once

#include <string>
#include <vector>

// Returns the indented code blocks of the document, without their indentation.
std::vector<std::string> snippets(const std::string& document);
