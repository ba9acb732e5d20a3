#include "support/process.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <sstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/socket.h>
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
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

int openForOutput(const std::string& path)
{
    return open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

void redirect(int descriptor, int file)
{
    if (file < 0 || dup2(file, descriptor) < 0)
        _exit(126);
    close(file);
}

// The descriptor `output` becomes the child's standard output and is closed here.
int startChild(const Command& command, const std::string& input, int output, const std::string& errors)
{
    const pid_t child = fork();
    if (child == 0)
    {
        redirect(STDIN_FILENO, open(input.c_str(), O_RDONLY));
        redirect(STDOUT_FILENO, output);
        redirect(STDERR_FILENO, openForOutput(errors));
        executeCommand(command);
    }
    close(output);
    if (child < 0)
        throw std::runtime_error("cannot start " + command.words.front());
    return child;
}

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

void executeCommand(const Command& command)
{
    if (command.unprivileged && getuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
        _exit(126);

    std::vector<std::string> words = command.words;
    std::vector<std::string> variables;
    for (const auto& [name, value] : command.environment)
        variables.push_back(name + "=" + value);
    // Where an executable that measures its coverage writes its counters, and its complaints about that.
    for (const char* name : {"GCOV_PREFIX", "GCOV_ERROR_FILE"})
        if (const char* value = std::getenv(name))
            variables.push_back(std::string(name) + "=" + value);
    alarm(timeLimit);
    execvpe(words.front().c_str(), pointersTo(words).data(), pointersTo(variables).data());
    _exit(127);
}

int exitStatus(const Outcome& outcome)
{
    return WIFEXITED(outcome.status) ? WEXITSTATUS(outcome.status) : -1;
}

Outcome runCommand(const Command& command)
{
    const TemporaryDirectory directory;
    writeFile(directory / "input", command.input);
    const pid_t child =
        startChild(command, directory / "input", openForOutput(directory / "output"), directory / "errors");
    Outcome outcome{};
    rusage used{};
    wait4(child, &outcome.status, 0, &used);
    outcome.processorTime = seconds(used.ru_utime) + seconds(used.ru_stime);
    outcome.output = readFile(directory / "output");
    outcome.errors = readFile(directory / "errors");
    return outcome;
}

int startCommand(const Command& command, const std::string& output)
{
    return startChild(command, "/dev/null", openForOutput(output), "/dev/null");
}

std::vector<std::string> writesOf(const Command& command)
{
    int ends[2]; // of a socket that preserves write boundaries
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("cannot create a socket for " + command.words.front());
    const pid_t child = startChild(command, "/dev/null", ends[1], "/dev/null");
    std::vector<std::string> writes;
    std::string packet(65536, '\0');
    for (ssize_t length; (length = read(ends[0], packet.data(), packet.size())) > 0;)
        writes.push_back(packet.substr(0, static_cast<std::size_t>(length)));
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return writes;
}

TemporaryDirectory::TemporaryDirectory() : TemporaryDirectory(std::filesystem::temp_directory_path().string())
{
}

TemporaryDirectory TemporaryDirectory::inMemory()
{
    const std::string memory = "/dev/shm";
    return TemporaryDirectory(
        std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path().string());
}

TemporaryDirectory::TemporaryDirectory(const std::string& parent)
{
    std::string pattern = parent + "/fobrob-test-XXXXXX";
    if (!mkdtemp(pattern.data()) || chmod(pattern.c_str(), 0777) != 0)
        throw std::runtime_error("cannot create a temporary directory");
    path = pattern;
}

TemporaryDirectory::~TemporaryDirectory()
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
        throw std::runtime_error("cannot write " + path);
}

bool fileExists(const std::string& path)
{
    return std::filesystem::exists(std::filesystem::symlink_status(path));
}
