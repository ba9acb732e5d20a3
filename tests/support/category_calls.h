// The calls that every run of a category makes around its work.

#pragma once

#include "support/unit.h"

// The calls of a command line of a healthy unit that makes the calls `work` between obtaining its handles and
// releasing them. The category is the first word of `commandLine`.
Calls callsOf(const std::string& commandLine, const Calls& work = {});

// The calls before its options are read, which are all that the help screen makes.
Calls callsBeforeOptions(const std::string& commandLine);
