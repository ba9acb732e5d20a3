#include "support/unit.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

using nlohmann::json;

namespace
{

std::string fromEnvironment(const char* name, const char* fallback)
{
    const char* value = std::getenv(name);
    return value && *value ? value : fallback;
}

std::vector<std::string> split(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

} // namespace

Calls callsOn(const std::string& module, const Calls& calls)
{
    Calls all = {"Get" + module + "() = handle"};
    all.insert(all.end(), calls.begin(), calls.end());
    all.push_back(module + "_release() = 0");
    return all;
}

std::string buildDirectory()
{
    return fromEnvironment("FOBROB_BUILD", BUILD_DIRECTORY);
}

std::string programPath()
{
    return buildDirectory() + "/fobrob";
}

std::string simulatorDirectory()
{
    return buildDirectory() + "/simulator";
}

std::string partialLibraryDirectory()
{
    return buildDirectory() + "/tests/partial";
}

std::string noSonameLibraryDirectory()
{
    return buildDirectory() + "/tests/no-soname";
}

std::string noWait()
{
    return simulatorDirectory() + "/no-wait.so";
}

std::string libcInterposer()
{
    return buildDirectory() + "/tests/libc-interposer.so";
}

bool isProgram64Bit()
{
    return readFile(programPath()).at(4) == 2; // the class byte of its ELF header
}

Command programOn(const std::string& unit, const std::vector<std::string>& arguments)
{
    Command command{split(fromEnvironment("FOBROB_RUNNER", ""))};
    command.words.push_back(programPath());
    command.words.insert(command.words.end(), arguments.begin(), arguments.end());
    command.environment = {{"LD_LIBRARY_PATH", simulatorDirectory()},
                           {"LD_PRELOAD", libcInterposer() + ":" + noWait()},
                           {"QVAUX_UNIT", unit}};
    return command;
}

Command programOn(const std::string& unit, const std::string& arguments)
{
    return programOn(unit, split(arguments));
}

Command throughShell(const std::string& script, Command command)
{
    // The interposer must not be preloaded into the shell, which may be for another processor.
    const std::vector<std::string> shell = {
        "/bin/sh", "-c", script, "sh", "env", "LD_PRELOAD=" + command.environment["LD_PRELOAD"]};
    command.words.insert(command.words.begin(), shell.begin(), shell.end());
    command.environment.erase("LD_PRELOAD");
    return command;
}

Nobody::Nobody()
{
    std::filesystem::copy(programPath(), copies / "fobrob");
    std::filesystem::copy(simulatorDirectory() + "/libqv-aux2.so.2.11", copies / "libqv-aux2.so.2.11");
    std::filesystem::copy(noWait(), copies / "no-wait.so");
    std::filesystem::copy(libcInterposer(), copies / "libc-interposer.so");
}

Outcome Nobody::run(Command command) const
{
    std::ranges::replace(command.words, programPath(), copies / "fobrob");
    command.environment["LD_LIBRARY_PATH"] = copies.path;
    command.environment["LD_PRELOAD"] = copies / "libc-interposer.so" + ":" + copies / "no-wait.so";
    command.unprivileged = true;
    return runCommand(command);
}

Unit::Unit(const std::string& keys)
{
    writeFile(file(), keys);
}

std::string Unit::file() const
{
    return directory / "unit.json";
}

Result Unit::finish(const Command& command)
{
    const std::string trace = directory / "trace";
    writeFile(trace, "");
    Command traced = command;
    traced.environment["QVAUX_TRACE"] = trace;
    traced.environment["FAKE_UID"] = std::to_string(userId);
    traced.input = input;
    const Outcome outcome = runCommand(traced);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    return {outcome.output, outcome.errors, splitLines(readFile(trace))};
}

Result Unit::run(const std::vector<std::string>& arguments)
{
    Result result = finish(programOn(file(), arguments));
    EXPECT_EQ(result.errors, "");
    return result;
}

Result Unit::run(const std::string& arguments)
{
    return run(split(arguments));
}

Result Unit::runExpectingErrors(const std::string& arguments)
{
    Result result = finish(programOn(file(), arguments));
    EXPECT_NE(result.errors, "");
    return result;
}

json Unit::content() const
{
    return json::parse(readFile(file()));
}

json Unit::operator[](const std::string& path) const
{
    const json unit = content();
    const json::json_pointer pointer(path);
    return unit.contains(pointer) ? unit.at(pointer) : json();
}

void Unit::set(const std::string& path, const json& value)
{
    // A JSON pointer would treat the numeric keys of new objects as array indexes.
    std::vector<std::string> keys;
    for (json::json_pointer at(path); !at.empty(); at.pop_back())
        keys.insert(keys.begin(), at.back());
    json unit = content();
    json* at = &unit;
    for (const std::string& key : keys)
        at = at->is_array() ? &at->at(std::stoul(key)) : &(*at)[key];
    *at = value;
    writeFile(file(), unit.dump(2));
}

void Unit::fails(const std::string& operation, unsigned code)
{
    set("/faults/" + operation, {{"code", code}});
}

void Unit::failsOnce(const std::string& operation, unsigned code, unsigned skip)
{
    set("/faults/" + operation, {{"code", code}, {"skip", skip}, {"times", 1}});
}

void Unit::ignores(const std::string& operation)
{
    set("/faults/" + operation, {{"ignored", true}});
}

void Unit::returnsNull(const std::string& operation)
{
    set("/faults/" + operation, {{"null", true}});
}

void Unit::shutDown()
{
    run("--advanced --shutdown");
}

void Unit::cutPower()
{
    set("/boot/powerCut", true);
}

// The libraries must not be preloaded into the command, which may be for another processor.
Outcome runOn(const Unit& unit, const std::vector<std::string>& words,
              std::map<std::string, std::string> environment)
{
    Command program = programOn(unit.file(), "");
    environment.insert(program.environment.extract("QVAUX_UNIT"));
    std::string starter = "#!/bin/sh\nexec env";
    for (const auto& [name, value] : program.environment)
        starter += " '" + name + "=" + value + "'";
    for (const std::string& word : program.words)
        starter += " '" + word + "'";
    const TemporaryDirectory bin;
    writeFile(bin / "fobrob", starter + " \"$@\"\n");
    const std::string simulator = readFile(PROJECT_DIRECTORY "/src/simulator/fobrob-sim.in");
    writeFile(bin / "fobrob-sim",
              replaced(replaced(simulator, "@simulator_directory@", BUILD_DIRECTORY "/simulator"),
                       "@search_path@", "$PATH"));
    for (const std::string name : {"fobrob", "fobrob-sim"})
        std::filesystem::permissions(bin / name, std::filesystem::perms::all);
    environment.insert({"PATH", bin.path + ":/usr/bin:/bin"});
    return runCommand({.words = words, .environment = environment});
}

std::string helpScreen(const std::string& name)
{
    return readFile(PROJECT_DIRECTORY "/tests/data/help/" + name + ".txt");
}
