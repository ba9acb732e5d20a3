// What the program takes on its command line, as the program itself has it: which options a category has is
// read in the tables of src/, which words an option takes is tried out.

#pragma once

#include <map>
#include <set>
#include <string>

using Words = std::set<std::string>;

// By category and by option of a category ("--led", "--led --color"), what may stand behind it: "" where it
// may stand alone, "=" where a value may follow, and the words that the value may be, in small letters.
using Vocabulary = std::map<std::string, Words>;

Vocabulary vocabularyOfTheProgram();
