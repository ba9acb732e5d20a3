// Child processes and their files.

#pragma once

#include <map>
#include <string>
#include <vector>

struct Command
{
    std::vector<std::string> words;                   // the executable and its arguments
    std::map<std::string, std::string> environment{}; // all of it
    std::string input{};                              // the content of standard input
    bool unprivileged = false;                        // runs as nobody, if the tests run as root
};

struct Outcome
{
    std::string output;
    std::string errors;
    int status;           // the wait status
    double processorTime; // seconds, of the user and the system
};

// Returns -1 if a signal ended the process.
int exitStatus(const Outcome& outcome);

// Runs the command to its end. It is killed after two minutes.
Outcome runCommand(const Command& command);

// Starts the command with an empty standard input and appends its output to the file `output`. Returns its
// process id.
int startCommand(const Command& command, const std::string& output = "/dev/null");

// Replaces this process by the command, which keeps standard input and output.
[[noreturn]] void executeCommand(const Command& command);

// Returns the writes of the command to standard output, each up to 64 KiB. Standard input is empty.
std::vector<std::string> writesOf(const Command& command);

// A temporary directory that is removed with the object. All users may write to it.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string operator/(const std::string& name) const
    {
        return path + "/" + name;
    }

    std::string path;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& content);
bool fileExists(const std::string& path);
