// A simulated unit of a test's own, and the program run on it.

#pragma once

#include "support/process.h"
#include "support/text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

// What one run of the program printed and called. The exit status is always 0 and is checked by the run.
struct Result
{
    std::string output;
    std::string errors;             // standard error
    std::vector<std::string> calls; // of the device API, as the call trace tells them
};

using Calls = std::vector<std::string>;

// The calls of a run that obtains the handle of `module`, makes `calls` and gives the handle back.
Calls callsOn(const std::string& module, const Calls& calls = {});

// The program with the arguments that stand in `arguments` between blanks, on the unit file `unit`.
Command programOn(const std::string& unit, const std::string& arguments);
Command programOn(const std::string& unit, const std::vector<std::string>& arguments);

// The command as "$@" of a shell script.
Command throughShell(const std::string& script, Command command);

// Where the program under test is found, and what stands in for the world around it. All of it is in one
// build folder: this one, or the one that FOBROB_BUILD names. FOBROB_RUNNER has the words to put before the
// program.
std::string buildFolder();
std::string programPath();
std::string simulatorFolder();
std::string otherLibraryFolder();    // a device library that has a light sensor and nothing else
std::string namelessLibraryFolder(); // the simulated unit as a library that does not tell its name
std::string standIns();              // loaded before the program

// Whether the program under test has numbers (`long`) of 64 bits, or such of 32 that stop at 2147483647.
bool isProgram64Bit();

// Runs commands as nobody, if the tests run as root. Nobody may not look into every build folder, so these
// are on copies of the program and the simulated unit.
class Nobody
{
public:
    Nobody();
    Outcome run(Command command) const;

private:
    TemporaryFolder copies;
};

class Unit
{
public:
    // A healthy unit but for the keys in the JSON text `keys`.
    explicit Unit(const std::string& keys = "{}");

    // Runs the program on the unit. Nothing may come on standard error.
    Result run(const std::string& arguments);
    Result run(const std::vector<std::string>& arguments);

    // The same for a run that is to complain on standard error.
    Result runComplaining(const std::string& arguments);

    // What the unit's file holds at a place like "/buzzer/volume"; null when it does not mention it.
    nlohmann::json operator[](const std::string& place) const;

    // Writes a value into the unit's file.
    void set(const std::string& place, const nlohmann::json& value);

    // Faults. An operation fails with a code, in the `times` calls behind the first `skip`; does nothing and
    // says that it succeeded; gives no handle or text.
    void fails(const std::string& operation, unsigned code);
    void failsOnce(const std::string& operation, unsigned code, unsigned skip = 0);
    void ignores(const std::string& operation);
    void givesNull(const std::string& operation);

    // Ends this boot, so that the next run is in the next one.
    void shutDown();

    std::string file() const;
    nlohmann::json content() const;

    std::string input;   // what the next runs find on standard input
    unsigned userId = 0; // whom the next runs take the user for
    TemporaryFolder folder;

private:
    Result finish(const Command& command);
};

// Runs a command that finds the program, on the unit, under the names `fobrob` and `fobrob-sim`.
Outcome runOn(const Unit& unit, const std::vector<std::string>& words,
              std::map<std::string, std::string> environment = {});

// The file of the name "buzzer", "general", "list" and so on in tests/data/help/.
std::string helpScreen(const std::string& name);
