// String functions.

#pragma once

#include <string>
#include <vector>

// Appends a newline to each line and concatenates them.
std::string lines(const std::vector<std::string>& list);

// Splits the text into lines without newlines.
std::vector<std::string> splitLines(const std::string& text);

// Returns the rest of the line that begins with `label`.
std::string valueAfter(const std::string& text, const std::string& label);

// Replaces every `what` with `with`.
std::string replaced(std::string text, const std::string& what, const std::string& with);

// Returns the first group of every match of `pattern` in `text`.
std::vector<std::string> matches(const std::string& pattern, const std::string& text);
