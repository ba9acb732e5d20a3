// One child process: what it is given, what became of it.

#pragma once

#include <map>
#include <string>
#include <vector>

struct Command
{
    std::vector<std::string> words;                   // the executable and its arguments
    std::map<std::string, std::string> environment{}; // all of it
    std::string input{};                              // what standard input holds
    bool unprivileged = false;                        // runs as nobody, if the tests run as root
};

struct Outcome
{
    std::string output;
    std::string errors;
    int status;           // as waitpid tells it; 0 is a normal end with exit status 0
    double processorTime; // seconds, of the user and the system
};

// -1 where a signal ended it.
int exitStatus(const Outcome& outcome);

// A command that does not end within two minutes is killed.
Outcome runCommand(const Command& command);

// Starts the command without waiting for it, with nothing on standard input. Its output goes to the file
// `output`. Gives its process id.
int startCommand(const Command& command, const std::string& output = "/dev/null");

// Turns this process into the command. Its standard input and output stay as they are.
[[noreturn]] void executeCommand(const Command& command);

// What the command wrote on standard output, write by write, each up to 64 KiB. It finds no input.
std::vector<std::string> writesOf(const Command& command);

// A folder of its own, removed with the object. Anybody may write into it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string operator/(const std::string& name) const
    {
        return path + "/" + name;
    }

    std::string path;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& content);
bool fileExists(const std::string& path);
