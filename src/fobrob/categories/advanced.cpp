#include "fobrob/api_error.h"
#include "fobrob/categories/firmware.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>
#include <unistd.h>

namespace
{

struct
{
    bool filepathGiven = false;
    const char* filepathValue = noArgument();
    bool updateGiven = false;
    bool verifyGiven = false;
    bool forceGiven = false;
    const char* targetValue = noArgument(); // of --update or --verify, whichever came last
    bool factoryGiven = false;
    bool shutdownGiven = false;
    bool rescueModeGiven = false;
    bool factoryResetGiven = false;
    bool systemModeGiven = false;
    bool bootCompletedGiven = false;
} advancedArgs;

const CategoryOption advancedOptions[] = {
    {OPT_UPDATE, &advancedArgs.updateGiven, &advancedArgs.targetValue},
    {OPT_VERIFY, &advancedArgs.verifyGiven, &advancedArgs.targetValue},
    {OPT_SHUTDOWN, &advancedArgs.shutdownGiven, nullptr},
    {OPT_FACTORY, &advancedArgs.factoryGiven, nullptr},
    {OPT_FILEPATH, &advancedArgs.filepathGiven, &advancedArgs.filepathValue},
    {OPT_FORCE, &advancedArgs.forceGiven, nullptr},
    {OPT_RESCUE_MODE_NEXT_BOOT, &advancedArgs.rescueModeGiven, nullptr},
    {OPT_FACTORY_RESET, &advancedArgs.factoryResetGiven, nullptr},
    {OPT_SYSTEM_MODE, &advancedArgs.systemModeGiven, nullptr},
    {OPT_BOOT_COMPLETED, &advancedArgs.bootCompletedGiven, nullptr},
};

void printAdvancedHelp()
{
    printLine(
        "Category - Advanced\n"
        "This category is used to perform advanced settings, such as: update the System \n"
        "Supervisor firmware, shutdown the unit or reset to factory settings.\n"
        "\n"
        "Usage\n"
        "The category should not be passed an argument. There are six options available:\n"
        "--update, --verify, --filepath, --shutdown, --factory and --force.\n"
        "The options that can and must be combined are: --update and --verify with --filepath. --force is optional.\n"
        "See the table below for available arguments.\n"
        "\n"
        "Update notes\n"
        "To update the System Supervisor, the FPGA or the Front, the filepath option must be used and the argument "
        "must point to the file which will be used. Once the \n"
        "filepath has been added, it is checked if it is valid and that the file extension is correct.\n"
        "The --force option disables the confirmation question - could be used when scripting.\n"
        "\n"
        " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
        "--advanced\t\t--update=\tSS\t--filepath=\t[File path]\t--force\n"
        "Update the system supervisor. Don't ask questions.\n"
        "--advanced\t\t--update=\tFPGA\t--filepath=\t[File path]\n"
        "Update the FPGA.\n"
        "--advanced\t\t--verify=\tSS\t--filepath=\t[File path]\n"
        "Verify the system supervisor.\n"
        "--advanced\t\t--verify=\tFPGA\t--filepath=\t[File path]\n"
        "Verify the FPGA.\n"
        "--advanced\t\t--verify=\tFront\t--filepath=\t[File path]\n"
        "Verify the front microcontroller.\n"
        "--advanced\t\t--rescue_mode_next_boot\t[--factory_reset]\t\tNext boot will be in rescue mode.\n"
        "--advanced\t\t--system_mode\t\t\tReturn current system mode.\n"
        "--advanced\t\t--boot_completed\t\t\tAcknowledge boot completed to System Supervisor.\n"
        "\t\t\t\t\t\t\n"
        "--advanced\t\t--shutdown\t\t\t\t\t\tShutdown the unit.\n"
        "--advanced\t\t--factory\t\t\t\t\t\tReset the System Supervisor settings to default values.");
}

void showSystemMode()
{
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    std::int32_t mode = 0;
    if (succeeded("Failed to get system mode", QVAuxPrivate_getSystemMode(privateAccess, &mode)))
        printLine("System mode: ", mode);
    QVAuxPrivate_release(privateAccess);
}

void acknowledgeBoot()
{
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    if (succeeded("Failed to mark boot completed",
                  QVAuxPrivate_writeSsRegister(privateAccess, QV_SS_BOOT_COMPLETED)))
        printLine("Boot completed successfully.");
    QVAuxPrivate_release(privateAccess);
}

void bootIntoRescueMode()
{
    const ConfigHandle config = GetConfig();
    const QvBootMode mode =
        advancedArgs.factoryResetGiven ? QV_BOOT_RESCUE_WITH_FACTORY_RESET : QV_BOOT_RESCUE;
    if (succeeded("setNextBootMode", Config_setNextBootMode(config, mode)))
        printLine("BootMode set to rescue mode. Shutdown (power off) the device and restart it");
    Config_release(config);
}

void shutDown(FirmwareUpgradeHandle upgrade)
{
    printLine("Shutdown the unit");
    reportFailure("shutDown", FirmwareUpgrade_shutDown(upgrade));
}

void resetToFactorySettings()
{
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    if (!privateAccess)
    {
        printLine("Initialization error. Settings are not reset.");
        return;
    }
    const ApiError result = QVAuxPrivate_writeSsRegister(privateAccess, QV_SS_RESTORE_DEFAULTS);
    QVAuxPrivate_release(privateAccess);
    if (succeeded("Factory reset failed", result))
        printLine("Factory reset completed.");
}

bool isFirmwareRequested()
{
    return advancedArgs.updateGiven || advancedArgs.verifyGiven;
}

// If both are given, --update takes precedence over --verify.
FirmwareRequest firmwareRequest()
{
    return {
        .upgrade = advancedArgs.updateGiven,
        .target = advancedArgs.targetValue,
        .path = advancedArgs.filepathGiven ? advancedArgs.filepathValue : nullptr,
        .force = advancedArgs.forceGiven,
    };
}

enum class Action
{
    systemMode,
    bootCompleted,
    rescueMode,
    firmware,
    shutdown,
    factory,
    none,
};

// Returns the first of these actions that was requested. No other action is performed.
Action chooseAction()
{
    if (advancedArgs.systemModeGiven)
        return Action::systemMode;
    if (advancedArgs.bootCompletedGiven)
        return Action::bootCompleted;
    if (advancedArgs.rescueModeGiven)
        return Action::rescueMode;
    if (isFirmwareRequested())
        return Action::firmware;
    if (advancedArgs.shutdownGiven)
        return Action::shutdown;
    if (advancedArgs.factoryGiven)
        return Action::factory;
    return Action::none;
}

void runAction(Action action, FirmwareUpgradeHandle upgrade, AboutHandle about)
{
    switch (action)
    {
    case Action::systemMode:
        showSystemMode();
        break;
    case Action::bootCompleted:
        acknowledgeBoot();
        break;
    case Action::rescueMode:
        bootIntoRescueMode();
        break;
    case Action::firmware:
        runFirmwareOperation(upgrade, about, firmwareRequest());
        break;
    case Action::shutdown:
        shutDown(upgrade);
        break;
    case Action::factory:
        resetToFactorySettings();
        break;
    case Action::none:
        printLine("Invalid argument: Use --help option to get information about the available arguments.");
        break;
    }
}

// Returns false if an option ends the command: --help, or a file path that is not absolute.
bool parseAdvancedOptions(int argc, char** argv, int longIndex)
{
    for (int code; (code = nextOption(argc, argv, longIndex)) != endOfOptions;)
    {
        if (code == OPT_HELP)
        {
            printAdvancedHelp();
            return false;
        }
        recordOption(advancedOptions, code, RepeatWithoutValue::clearsValue);
        if (code == OPT_FILEPATH && *advancedArgs.filepathValue != '/')
        {
            printLine("Please enter the full path to the file and not a relative path");
            return false;
        }
    }
    return true;
}

constexpr unsigned finalDelay = 100; // seconds

} // namespace

int handleAdvanced(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    const AboutHandle about = GetAbout();
    advancedArgs = {};
    if (!parseAdvancedOptions(argc, argv, longIndex))
        return 0;

    const Action action = chooseAction();
    if (action == Action::firmware && getuid() != 0)
    {
        printLine("This feature requires superuser privileges");
        return 0;
    }
    runAction(action, upgrade, about);

    // Intentional: --update and --verify cause the delay even if another action took precedence.
    if (isFirmwareRequested())
        sleep(finalDelay);
    About_release(about);
    return static_cast<int>(FirmwareUpgrade_release(upgrade));
}
