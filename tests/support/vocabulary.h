// What the program accepts on its command line, as its runs show it.

#pragma once

#include <map>
#include <set>
#include <string>

using Words = std::set<std::string>;

// By category and by option of a category ("--led", "--led --color"), what may follow it: "" if it may be
// given alone, "=" if a value may follow, and the words that the value may be, in lowercase.
using Vocabulary = std::map<std::string, Words>;

// The categories and their options are those of completions/options.txt. Reports a failure of the test if the
// program has others.
Vocabulary vocabularyOfTheProgram();
