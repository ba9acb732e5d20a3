// The upgrade and the verification of each target, with their output and calls.

#pragma once

#include "device/qv_aux2.h"
#include "support/category_calls.h"
#include "support/firmware_unit.h"

inline const std::string upgradeQuestion =
    "This operation may cause harm to your device.\nDo you wish to continue [yes/no]?\n";
inline const std::string verificationQuestion = "Do you wish to continue [yes/no]?\n";
inline const std::string fileCorrect = "File format is correct.\n";
inline const std::string upgradeBegins = "This upgrade can take a few minutes to perform.\n";
inline const std::string verificationBegins = "This verification can take a few minutes to perform.\n";
inline const std::string ssUpgraded =
    "SS successfully upgraded. \n"
    "Please shut down the computer and cut the power in order for the update to take effect.\n";

// Returns all calls of a run: the handles, `calls`, the wait after every job, and the releases.
inline Calls wholeRun(const Calls& calls)
{
    Calls all = calls;
    all.push_back("sleep(100)");
    return callsOf("--advanced", all);
}

// Returns statuses for the key /firmware/statuses. The unit repeats the last one.
inline nlohmann::json script(std::initializer_list<UpgradeStatus> list)
{
    nlohmann::json statuses = nlohmann::json::array();
    for (const auto& [state, second, error] : list)
        statuses.push_back({{"state", state}, {"second", second}, {"error", error}});
    return statuses;
}

// Returns statuses with these states and no error.
inline nlohmann::json states(std::initializer_list<int> list)
{
    nlohmann::json statuses = nlohmann::json::array();
    for (const int state : list)
        statuses.push_back({{"state", state}});
    return statuses;
}

struct Job
{
    const char* options;   // "--update=SS"
    const char* extension; // "hex"
    const char* operation; // "startSSUpgrade"
    const char* success;

    bool upgrades() const
    {
        return std::string(options).starts_with("--update");
    }

    bool isForFront() const
    {
        return std::string(options).ends_with("Front");
    }

    std::string file(const FirmwareUnit& unit) const
    {
        return std::string(extension) == "mcs" ? unit.mcs : unit.hex;
    }

    Result run(FirmwareUnit& unit) const
    {
        return unit.run("--advanced " + std::string(options) + " --filepath=" + file(unit));
    }

    // Returns the output before the job is started.
    std::string beginning() const
    {
        return upgrades() ? fileCorrect + upgradeQuestion + upgradeBegins
                          : fileCorrect + verificationQuestion + verificationBegins;
    }

    // Returns the calls up to the one that starts the job and returns `code`.
    Calls start(const FirmwareUnit& unit, unsigned code) const
    {
        Calls calls;
        if (isForFront())
            calls.push_back("About_getIsDisplayAvailable([1]) = 0");
        calls.push_back("FirmwareUpgrade_" + std::string(operation) + "(\"" + file(unit) +
                        "\", 0) = " + std::to_string(code));
        return calls;
    }
};

inline const Job jobs[] = {
    {"--update=SS", "hex", "startSSUpgrade",
     "SS successfully upgraded. \n"
     "Please shut down the computer and cut the power in order for the update to take effect.\n"},
    {"--update=FPGA", "mcs", "startFpgaUpgrade",
     "FPGA successfully upgraded. \n"
     "Please shut down the computer in order for the update to take effect.\n"},
    {"--update=Front", "hex", "startFrontUpgrade",
     "Front successfully upgraded. \n"
     "Please shut down the computer in order for the update to take effect.\n"},
    {"--verify=SS", "hex", "startSSVerification",
     "SS successfully verified. \n"
     "Please shut down the computer and cut the power in order to restart the SS.\n"},
    {"--verify=FPGA", "mcs", "startFpgaVerification", "FPGA successfully verified. \n\n"},
    {"--verify=Front", "hex", "startFrontVerification",
     "Front successfully verified. \n"
     "Please shut down the computer in order for the front uC to restart itself.\n"},
};
