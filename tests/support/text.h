// Texts, taken apart and put together.

#pragma once

#include <string>
#include <vector>

// The lines, each with its newline.
std::string lines(const std::vector<std::string>& list);

// The lines of the text, without their newlines.
std::vector<std::string> splitLines(const std::string& text);

// The rest of the line that begins with `label`.
std::string valueAfter(const std::string& text, const std::string& label);

// The text with `with` for each `what`.
std::string replaced(std::string text, const std::string& what, const std::string& with);

// What `pattern` has in its first parentheses, wherever it fits `text`.
std::vector<std::string> matches(const std::string& pattern, const std::string& text);
