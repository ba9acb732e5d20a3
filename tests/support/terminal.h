// Runs a command on a pseudo-terminal and sends input to it.

#pragma once

#include "support/process.h"

#include <gtest/gtest.h>
#include <string>

// Returns whether a pseudo-terminal can be opened. This fails in a chroot without /dev/pts.
bool isTerminalAvailable();

#define SKIP_WITHOUT_TERMINAL()                                                                              \
    if (!isTerminalAvailable())                                                                              \
    GTEST_SKIP() << "no terminal is available"

class Terminal
{
public:
    explicit Terminal(const Command& command);

    // Kills the command if it is still running.
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // Reads until the complete line `line` has been printed. Returns false if that takes more than 30
    // seconds, or if the command exits first.
    bool waitFor(const std::string& line);

    void type(const std::string& text);

    // Reads until the command exits. Returns its wait status.
    int end();

    // Closes the terminal. Returns the command's wait status.
    int hangUp();

    // Everything that has been read, including the echoed input, without carriage returns.
    const std::string& screen() const
    {
        return text;
    }

private:
    bool readMore(int milliseconds);
    int waitForExit();

    int master = -1;
    int child = -1;
    std::string text;
};
