// A command at a terminal of its own, and the person in front of it.

#pragma once

#include "support/process.h"

#include <string>

class Terminal
{
public:
    explicit Terminal(const Command& command);

    // Kills the command if it still runs.
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // Reads along until the line `line` is complete. False when it has not come after half a minute, or the
    // command has ended without it.
    bool sees(const std::string& line);

    void type(const std::string& text);

    // Reads along to the command's end and gives its status as waitpid tells it.
    int end();

    // Goes away and gives the command's status as waitpid tells it.
    int hangUp();

    // Everything that has come, what was typed included, with plain newlines.
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
