// Runs a command at a pseudo-terminal and types at it.

#pragma once

#include "support/process.h"

#include <gtest/gtest.h>
#include <string>

// Returns whether a pseudo-terminal can be opened. It cannot in a chroot without /dev/pts.
bool isTerminalAvailable();

#define SKIP_WITHOUT_TERMINAL()                                                                              \
    if (!isTerminalAvailable())                                                                              \
    GTEST_SKIP() << "no terminal is available"

class Terminal
{
public:
    explicit Terminal(const Command& command);

    // Kills the command if it still runs.
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // Reads until the line `line` is complete. Returns false if it does not come within half a minute, or if
    // the command ends without it.
    bool sees(const std::string& line);

    void type(const std::string& text);

    // Reads until the command ends. Returns its wait status.
    int end();

    // Closes the terminal. Returns the command's wait status.
    int hangUp();

    // Everything on the screen so far, including the echo of what was typed, with plain newlines.
    const std::string& screen() const
    {
        return text;
    }

private:
    bool readMore(int milliseconds);
    int statusAtTheEnd();

    int master = -1;
    int child = -1;
    std::string text;
};
