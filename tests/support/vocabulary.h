// What the program accepts on its command line, determined by running it.

#pragma once

#include <map>
#include <set>
#include <string>

using Words = std::set<std::string>;

// Maps each category and each of its options ("--led", "--led --color") to what may follow it: "" if it may
// be given without a value, "=" if it may have a value, and the accepted words in lowercase.
using Vocabulary = std::map<std::string, Words>;

// Tries the categories and options that completions/options.txt lists. The test fails if the program has
// others.
Vocabulary vocabularyOfTheProgram();
