// Child processes and temporary files.

#pragma once

#include <map>
#include <string>
#include <vector>

struct Command
{
    std::vector<std::string> words;                   // the executable and its arguments
    std::map<std::string, std::string> environment{}; // nothing else is inherited
    std::string input{};                              // the content of standard input
    bool unprivileged = false;                        // runs as nobody, if the tests run as root
};

struct Outcome
{
    std::string output;
    std::string errors;
    int status;           // the wait status
    double processorTime; // seconds, user and system
};

// Returns the exit status, or -1 if a signal ended the process.
int exitStatus(const Outcome& outcome);

// Runs the command until it exits. It is killed after two minutes.
Outcome runCommand(const Command& command);

// Starts the command with an empty standard input and appends its output to the file `output`. Returns its
// process ID.
int startCommand(const Command& command, const std::string& output = "/dev/null");

// Replaces this process with the command. The standard streams stay open.
[[noreturn]] void executeCommand(const Command& command);

// Runs the command with an empty standard input. Returns what each of its writes to standard output
// contained, up to 64 KiB each.
std::vector<std::string> writesOf(const Command& command);

// A temporary directory that all users can write to. The destructor removes it.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();

    // Returns a directory in memory, if possible. On a disk, each change of a unit takes longer.
    static TemporaryDirectory inMemory();

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string operator/(const std::string& name) const
    {
        return path + "/" + name;
    }

    std::string path;

private:
    explicit TemporaryDirectory(const std::string& parent);
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& content);

// Returns true for a dangling symbolic link too.
bool fileExists(const std::string& path);
