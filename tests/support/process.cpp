#include "support/process.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr unsigned timeLimit = 120; // seconds
constexpr unsigned nobody = 65534;

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

void redirect(int descriptor, const std::string& path, int flags)
{
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, descriptor) < 0)
        _exit(126);
    close(file);
}

// Does not return.
void become(const Command& command, const std::string& input, const std::string& output,
            const std::string& errors)
{
    redirect(STDIN_FILENO, input, O_RDONLY);
    redirect(STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_APPEND);
    redirect(STDERR_FILENO, errors, O_WRONLY | O_CREAT | O_APPEND);
    if (command.unprivileged && getuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
        _exit(126);

    std::vector<std::string> words = command.words;
    std::vector<std::string> variables;
    for (const auto& [name, value] : command.environment)
        variables.push_back(name + "=" + value);
    alarm(timeLimit);
    execvpe(words.front().c_str(), pointersTo(words).data(), pointersTo(variables).data());
    _exit(127);
}

int startChild(const Command& command, const std::string& input, const std::string& output,
               const std::string& errors)
{
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no process for " + command.words.front());
    if (child == 0)
        become(command, input, output, errors);
    return child;
}

} // namespace

Outcome runCommand(const Command& command)
{
    const TemporaryFolder folder;
    writeFile(folder / "input", command.input);
    const pid_t child = startChild(command, folder / "input", folder / "output", folder / "errors");
    Outcome outcome{};
    waitpid(child, &outcome.status, 0);
    outcome.output = readFile(folder / "output");
    outcome.errors = readFile(folder / "errors");
    return outcome;
}

int startCommand(const Command& command)
{
    return startChild(command, "/dev/null", "/dev/null", "/dev/null");
}

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = std::filesystem::temp_directory_path() / "fobrob-test-XXXXXX";
    if (!mkdtemp(pattern.data()) || chmod(pattern.c_str(), 0777) != 0)
        throw std::runtime_error("no temporary folder");
    path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    if (file.peek() != std::ifstream::traits_type::eof())
        content << file.rdbuf();
    return content.str();
}

void writeFile(const std::string& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush())
        throw std::runtime_error("can not write " + path);
}

bool fileExists(const std::string& path)
{
    return std::filesystem::exists(std::filesystem::symlink_status(path));
}
