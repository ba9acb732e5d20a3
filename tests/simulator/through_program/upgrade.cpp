#include "upgrade.h"

#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>

namespace
{

std::string failed(const std::string& begins, const std::string& progress, const std::string& state,
                   const std::string& error)
{
    return begins + progress.substr(0, progress.find(state + "\n")) +
           lines({state, "Update progress", "Upgrade failed in state: " + state + ".", "Error: " + error});
}

} // namespace

std::string upgradeFailed(const std::string& state, const std::string& error)
{
    return failed(upgradeBegins, upgradeProgress, state, error);
}

std::string verificationFailed(const std::string& state, const std::string& error)
{
    return failed(verificationBegins, verificationProgress, state, error);
}

std::string upgrade(FirmwareUnit& unit, const std::string& text)
{
    writeFile(unit.hex, text);
    return unit.run("--advanced --update=SS --force --filepath=" + unit.hex).output;
}

std::string verify(FirmwareUnit& unit, const std::string& text)
{
    writeFile(unit.hex, text);
    return unit.run("--advanced --verify=SS --force --filepath=" + unit.hex).output;
}

Running::Running(const Command& command, const std::string& output) : process(startCommand(command, output))
{
}

Running::~Running()
{
    if (process > 0)
        kill();
}

void Running::kill()
{
    ::kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    process = 0;
}

bool becomesTrue(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < deadline)
    {
        if (condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}
