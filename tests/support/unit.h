// A simulated unit for one test, and runs of the program on it.

#pragma once

#include "support/process.h"
#include "support/text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

// The output and the device calls of one run of the program. Every run checks that the exit status is 0.
struct Result
{
    std::string output;
    std::string errors;             // standard error
    std::vector<std::string> calls; // the lines of the call trace
};

using Calls = std::vector<std::string>;

// Returns the calls of a run that obtains a handle of `module`, makes `calls` and releases the handle.
Calls callsOn(const std::string& module, const Calls& calls = {});

// Returns the command that runs the program with the given arguments on the unit file `unit`. In a string,
// the arguments are separated by spaces.
Command programOn(const std::string& unit, const std::string& arguments);
Command programOn(const std::string& unit, const std::vector<std::string>& arguments);

// Returns a command that runs the shell script. In the script, "$@" runs the given command.
Command throughShell(const std::string& script, Command command);

// The program under test and its libraries. They are in this build directory, or in the one that FOBROB_BUILD
// names. FOBROB_RUNNER is the command that runs the program, such as an emulator.
std::string buildDirectory();
std::string programPath();
std::string simulatorDirectory();
std::string partialLibraryDirectory();  // has a library with only the operations of the light sensor
std::string noSonameLibraryDirectory(); // has the simulated unit without a SONAME
std::string noWait();                   // preloaded into the program: sleep() returns at once
std::string libcInterposer();           // preloaded before it: controls getuid(), sleep() and the clock

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
    // A unit file with the JSON text `keys`. Missing keys have the defaults of a healthy unit.
    explicit Unit(const std::string& keys = "{}");

    // Runs the program on the unit. Standard error must stay empty.
    Result run(const std::string& arguments);
    Result run(const std::vector<std::string>& arguments);

    // Runs the program on the unit. Standard error must not be empty.
    Result runExpectingErrors(const std::string& arguments);

    // Returns the value at a path such as "/buzzer/volume" in the unit's file, or null if it is not set.
    nlohmann::json operator[](const std::string& path) const;

    // Sets the value at a path in the unit's file.
    void set(const std::string& path, const nlohmann::json& value);

    // Makes every call of the operation fail with the code.
    void fails(const std::string& operation, unsigned code);

    // Makes one call of the operation fail, after `skip` calls that succeed.
    void failsOnce(const std::string& operation, unsigned code, unsigned skip = 0);

    // Makes the operation return success without doing anything.
    void ignores(const std::string& operation);

    // Makes the operation return a null handle or text.
    void returnsNull(const std::string& operation);

    // Shuts the unit down, so that the next run boots it.
    void shutDown();

    // Cuts the power, so that the next run is in the next boot.
    void cutPower();

    std::string file() const;
    nlohmann::json content() const;

    std::string input;   // standard input of the next runs
    unsigned userId = 0; // the user ID that getuid() returns in the next runs
    TemporaryDirectory directory;

private:
    Result finish(const Command& command);
};

// Runs a command in whose PATH `fobrob` and `fobrob-sim` both run the program on the unit.
Outcome runOn(const Unit& unit, const std::vector<std::string>& words,
              std::map<std::string, std::string> environment = {});

// Returns the content of the file NAME.txt in tests/data/help/.
std::string helpScreen(const std::string& name);
