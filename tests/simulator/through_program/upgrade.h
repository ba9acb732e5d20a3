// Upgrades and verifications of the System Supervisor with the program, and their output.

#pragma once

#include "support/firmware_unit.h"

#include <functional>

inline const char* const upgradeBegins =
    "File format is correct.\nThis upgrade can take a few minutes to perform.\n";
inline const char* const verificationBegins =
    "File format is correct.\nThis verification can take a few minutes to perform.\n";

inline const std::string upgraded =
    upgradeBegins + upgradeProgress +
    "SS successfully upgraded. \n"
    "Please shut down the computer and cut the power in order for the update to take effect.\n";
inline const std::string verified =
    verificationBegins + verificationProgress +
    "SS successfully verified. \n"
    "Please shut down the computer and cut the power in order to restart the SS.\n";

// Return the output of a job that fails in the state.
std::string upgradeFailed(const std::string& state, const std::string& error);
std::string verificationFailed(const std::string& state, const std::string& error);

inline const std::string differs =
    verificationFailed("Verifying", "The firmware in the target differs from the file");

// Run the job on a file with this content. Return the output.
std::string upgrade(FirmwareUnit& unit, const std::string& text);
std::string verify(FirmwareUnit& unit, const std::string& text);

// A command that runs in the background. The destructor kills it.
class Running
{
public:
    Running(const Command& command, const std::string& output);
    ~Running();
    void kill();

private:
    int process;
};

// Waits until the condition is true. Returns false after 30 seconds.
bool becomesTrue(const std::function<bool()>& condition);
