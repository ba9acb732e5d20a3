// A simulated unit for one test, and runs of the program on it.

#pragma once

#include "support/process.h"
#include "support/text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

// The output and the calls of one run of the program. The run itself checks that the exit status is 0.
struct Result
{
    std::string output;
    std::string errors;             // standard error
    std::vector<std::string> calls; // of the device API, as in the call trace
};

using Calls = std::vector<std::string>;

// Returns the calls of a run that obtains a handle of `module`, makes `calls` and releases the handle.
Calls callsOn(const std::string& module, const Calls& calls = {});

// The program with the given arguments, separated by spaces, on the unit file `unit`.
Command programOn(const std::string& unit, const std::string& arguments);
Command programOn(const std::string& unit, const std::vector<std::string>& arguments);

// Runs the command as "$@" of a shell script.
Command throughShell(const std::string& script, Command command);

// The program under test and the libraries that it is run with. They are in this build directory, or in the
// one that FOBROB_BUILD names. FOBROB_RUNNER is a command prefix for the program, such as an emulator.
std::string buildDirectory();
std::string programPath();
std::string simulatorDirectory();
std::string otherLibraryDirectory();    // a device library with only a light sensor
std::string namelessLibraryDirectory(); // the simulated unit without a SONAME
std::string noWait();                   // preloaded into the program: sleep() returns at once
std::string standIns();                 // preloaded before it: controls getuid(), sleep() and the clock

// Returns whether `long` has 64 bits in the program under test. If not, its maximum is 2147483647.
bool isProgram64Bit();

// Runs commands as the user nobody, if the tests run as root. nobody may be unable to read the build
// directory, so the commands use copies of the program and the simulated unit.
class Nobody
{
public:
    Nobody();
    Outcome run(Command command) const;

private:
    TemporaryDirectory copies;
};

class Unit
{
public:
    // A healthy unit, except for the keys in the JSON text `keys`.
    explicit Unit(const std::string& keys = "{}");

    // Runs the program on the unit. Standard error must stay empty.
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

    // Cuts the power, so that the next run is in the next boot.
    void cutPower();

    std::string file() const;
    nlohmann::json content() const;

    std::string input;   // what the next runs find on standard input
    unsigned userId = 0; // whom the next runs take the user for
    TemporaryDirectory directory;

private:
    Result finish(const Command& command);
};

// Runs a command that finds the program, on the unit, under the names `fobrob` and `fobrob-sim`.
Outcome runOn(const Unit& unit, const std::vector<std::string>& words,
              std::map<std::string, std::string> environment = {});

// The file of the name "buzzer", "general", "list" and so on in tests/data/help/.
std::string helpScreen(const std::string& name);
