// Command lines of every category, with their device calls and output: one row per call.

#pragma once

#include "support/unit.h"

#include <map>
#include <optional>

struct Step
{
    std::string call;   // "Buzzer_getFrequency([1234])"; empty for text that needs no call
    std::string output; // what is printed if the call succeeds
    std::string report; // "getFrequency", the name under which a failure is reported

    std::optional<std::string> unwritten = std::nullopt; // printed if the call succeeds and writes no result

    // Only some steps need these.
    std::string afterReport = "";                           // printed after the report
    std::size_t skips = 0;                                  // how many of the next steps a failure skips
    std::string followedBy = "";                            // the call that follows a success
    std::optional<std::string> notSupported = std::nullopt; // printed instead of a report for code 2
    std::optional<std::string> notFitted = std::nullopt;    // printed instead of a report for code 18
    std::string notFittedReport = report;                   // "report" for code 18

    // "Buzzer_getFrequency"
    std::string operation() const
    {
        return call.substr(0, call.find('('));
    }
};

struct CommandLine
{
    std::string arguments;
    std::string keys; // content of the unit file
    std::vector<Step> steps;
    bool hasRelatedChanges = false; // later calls read values that earlier calls have changed
};

struct CommandLines
{
    std::string category;                // "Buzzer"
    std::vector<CommandLine> all;        // each reads or changes everything in the category
    std::vector<CommandLine> parts = {}; // each reads or changes one thing
};

// Prints a row in the messages of failed tests.
inline void PrintTo(const CommandLines& row, std::ostream* stream)
{
    *stream << row.category;
}

std::vector<CommandLines> everyCommandLine();

// The failures of a run, by the index of the step: an error code and its text, if it has one.
struct Failure
{
    unsigned code;
    std::optional<std::string> text;
};
using Failures = std::map<std::size_t, Failure>;

struct Expected
{
    std::string output;
    Calls calls;
};

// Returns the output and the calls of a run in which the given calls fail.
Expected expectedOf(const CommandLine& line, const Failures& failures = {});
