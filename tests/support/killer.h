// Kills a command at a system call of its choice.

#pragma once

#include "support/process.h"

// Runs the command up to its `stop`-th stop and kills it there; every system call is two stops, one before it
// and one behind it. False when the command came to its end before.
bool killAtSystemCall(const Command& command, unsigned stop);
