// The device calls that every run of a category makes before and after its work.

#pragma once

#include "support/unit.h"

// Returns the calls of `commandLine` on a healthy unit if it makes the calls `work` between obtaining its
// handles and releasing them. The first word of `commandLine` is the category.
Calls callsOf(const std::string& commandLine, const Calls& work = {});

// Returns the calls that are made before the options are parsed. A run with --help makes no others.
Calls callsBeforeOptions(const std::string& commandLine);
