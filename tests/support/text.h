// Functions for texts.

#pragma once

#include <string>
#include <vector>

// Joins the lines; each gets a newline.
std::string lines(const std::vector<std::string>& list);

// Returns the lines of the text, without newlines.
std::vector<std::string> splitLines(const std::string& text);

// Returns the rest of the line that begins with `label`.
std::string valueAfter(const std::string& text, const std::string& label);

// Replaces each `what` by `with`.
std::string replaced(std::string text, const std::string& what, const std::string& with);

// Returns the first group of every match of `pattern` in `text`.
std::vector<std::string> matches(const std::string& pattern, const std::string& text);
