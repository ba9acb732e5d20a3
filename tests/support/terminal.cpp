#include "support/terminal.h"

#include <chrono>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

constexpr int timeLimit = 30000; // milliseconds

bool isTerminalAvailable()
{
    int master = -1;
    int slave = -1;
    if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0)
        return false;
    close(master);
    close(slave);
    return true;
}

Terminal::Terminal(const Command& command)
{
    child = forkpty(&master, nullptr, nullptr, nullptr);
    if (child < 0)
        throw std::runtime_error("cannot open a terminal for " + command.words.front());
    if (child == 0)
        executeCommand(command);
}

Terminal::~Terminal()
{
    if (master >= 0)
        close(master);
    if (child > 0)
    {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
}

// Returns false on a timeout, or if the terminal is closed.
bool Terminal::readMore(int milliseconds)
{
    pollfd ready{master, POLLIN, 0};
    if (milliseconds <= 0 || poll(&ready, 1, milliseconds) <= 0)
        return false;
    char block[4096];
    const ssize_t count = read(master, block, sizeof block);
    for (ssize_t i = 0; i < count; ++i)
        if (block[i] != '\r')
            text += block[i];
    return count > 0;
}

bool Terminal::waitFor(const std::string& line)
{
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + milliseconds(timeLimit);
    while (("\n" + text).find("\n" + line + "\n") == std::string::npos)
        if (!readMore(static_cast<int>(duration_cast<milliseconds>(deadline - steady_clock::now()).count())))
            return false;
    return true;
}

void Terminal::type(const std::string& typed)
{
    if (write(master, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size()))
        throw std::runtime_error("cannot type at the terminal");
}

int Terminal::end()
{
    while (readMore(timeLimit))
        continue;
    return waitForExit();
}

int Terminal::hangUp()
{
    close(master);
    master = -1;
    return waitForExit();
}

int Terminal::waitForExit()
{
    int status = -1;
    waitpid(child, &status, 0);
    child = -1;
    return status;
}
