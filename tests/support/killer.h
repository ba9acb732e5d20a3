// Kills a command at a given system call.

#pragma once

#include "support/process.h"

// Runs the command and kills it at its `stop`-th stop. A system call has two stops, one at its entry and one
// at its exit. Returns false if the command ends earlier.
bool killAtSystemCall(const Command& command, unsigned stop);
