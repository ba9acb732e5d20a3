#include "fobrob/categories/advanced.h"

#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/output.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

AdvancedArgs advancedArgs;

static const CategoryOption advancedOptions[] = {
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

constexpr unsigned closingWait = 100; // seconds

static void printAdvancedHelp()
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

static bool isAnswerYes()
{
    char* line = nullptr;
    std::size_t size = 0;
    ssize_t length = getline(&line, &size, stdin);
    if (length > 0 && line[length - 1] == '\n')
        --length;
    const bool yes = length == 3 && std::memcmp(line, "yes", 3) == 0;
    std::free(line);
    return yes;
}

bool confirmOperation()
{
    if (advancedArgs.forceGiven)
        return true;
    if (advancedArgs.updateGiven)
        printLine("This operation may cause harm to your device.\nDo you wish to continue [yes/no]?");
    else
        printLine("Do you wish to continue [yes/no]?");
    if (isAnswerYes())
        return true;
    printLine(advancedArgs.updateGiven ? "Upgrade aborted." : "Verify aborted.");
    return false;
}

static void showSystemMode()
{
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    std::int32_t mode = 0;
    if (succeeded("Failed to get system mode", QVAuxPrivate_getSystemMode(privateAccess, &mode)))
        printLine("System mode: ", mode);
    QVAuxPrivate_release(privateAccess);
}

static void acknowledgeBoot()
{
    const QVAuxPrivateHandle privateAccess = GetQVAuxPrivate();
    if (succeeded("Failed to mark boot completed",
                  QVAuxPrivate_writeSsRegister(privateAccess, QV_SS_BOOT_COMPLETED)))
        printLine("Boot completed successfully.");
    QVAuxPrivate_release(privateAccess);
}

static void bootIntoRescueMode()
{
    const ConfigHandle config = GetConfig();
    const QvBootMode mode =
        advancedArgs.factoryResetGiven ? QV_BOOT_RESCUE_WITH_FACTORY_RESET : QV_BOOT_RESCUE;
    if (succeeded("setNextBootMode", Config_setNextBootMode(config, mode)))
        printLine("BootMode set to rescue mode. Shutdown (power off) the device and restart it");
    Config_release(config);
}

static void shutDown(FirmwareUpgradeHandle upgrade)
{
    printLine("Shutdown the unit");
    reportFailure("shutDown", FirmwareUpgrade_shutDown(upgrade));
}

static void resetToFactorySettings()
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

static bool isFirmwareAsked()
{
    return advancedArgs.updateGiven || advancedArgs.verifyGiven;
}

// One action a call: the first of these that was asked for.
static Action chooseAction()
{
    if (advancedArgs.systemModeGiven)
        return Action::systemMode;
    if (advancedArgs.bootCompletedGiven)
        return Action::bootCompleted;
    if (advancedArgs.rescueModeGiven)
        return Action::rescueMode;
    if (isFirmwareAsked())
        return Action::firmware;
    if (advancedArgs.shutdownGiven)
        return Action::shutdown;
    if (advancedArgs.factoryGiven)
        return Action::factory;
    return Action::none;
}

static void perform(Action action, FirmwareUpgradeHandle upgrade, AboutHandle about)
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
        runFirmwareOperation(upgrade, about);
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

// Reads the options. False when one of them ended the call: --help, or a file path that is not absolute.
static bool readOptions(int argc, char** argv, int longIndex)
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

int handleAdvanced(const char*, int argc, char** argv, const char*, const option*, int longIndex)
{
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    const AboutHandle about = GetAbout();
    advancedArgs = {};
    if (!readOptions(argc, argv, longIndex))
        return 0;

    const Action action = chooseAction();
    if (action == Action::firmware && getuid() != 0)
    {
        printLine("This feature requires superuser privileges");
        return 0;
    }
    perform(action, upgrade, about);

    // Asking for firmware work brings the wait even where another action came before it.
    if (isFirmwareAsked())
        sleep(closingWait);
    About_release(about);
    return static_cast<int>(FirmwareUpgrade_release(upgrade));
}
