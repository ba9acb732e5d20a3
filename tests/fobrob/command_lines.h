// Command lines of every category with each device call that they make: one row per call.

#pragma once

#include "support/unit.h"

#include <map>
#include <optional>

struct Step
{
    std::string call;   // "Buzzer_getFrequency([1234])"; empty for text that needs no call
    std::string output; // what is printed if the call succeeds
    std::string report; // "getFrequency", what its failure is reported as

    std::optional<std::string> unwritten = std::nullopt; // printed if the call succeeds and writes no result

    // The exceptions.
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
    std::string keys; // of the unit that it runs on
    std::vector<Step> steps;
    bool hasRelatedChanges = false; // later calls read what earlier ones have changed
};

struct CommandLines
{
    std::string category;                // "Buzzer"
    std::vector<CommandLine> all;        // read or change everything that the category has
    std::vector<CommandLine> parts = {}; // one thing
};

// Names a row in the output of a test.
inline void PrintTo(const CommandLines& row, std::ostream* stream)
{
    *stream << row.category;
}

std::vector<CommandLines> everyCommandLine();

// The failures of a run by the index of the step: a code and its text, which may be missing.
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

// What a run prints and calls if some of its calls fail.
Expected expectedOf(const CommandLine& line, const Failures& failures = {});
