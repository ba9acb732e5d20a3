// The firmware work of the advanced category.

#include "fobrob/api_error.h"
#include "fobrob/categories/advanced.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>
#include <cstring>
#include <sys/stat.h>

struct FirmwareOperation
{
    const char* name; // as its failures are reported
    ApiError (*start)(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag);
    const char* success;
};

struct Target
{
    const char* word;
    const char* extension;
    bool needsDisplay; // the front microcontroller comes with it
    FirmwareOperation upgrade;
    FirmwareOperation verification;
};

static const Target targets[] = {
    {"SS",
     "hex",
     false,
     {"startSSUpgrade", lateBound<FirmwareUpgrade_startSSUpgrade>,
      "SS successfully upgraded. \n"
      "Please shut down the computer and cut the power in order for the update to take effect."},
     {"startSSVerification", lateBound<FirmwareUpgrade_startSSVerification>,
      "SS successfully verified. \n"
      "Please shut down the computer and cut the power in order to restart the SS."}},
    {"FPGA",
     "mcs",
     false,
     {"startFpgaUpgrade", lateBound<FirmwareUpgrade_startFpgaUpgrade>,
      "FPGA successfully upgraded. \n"
      "Please shut down the computer in order for the update to take effect."},
     {"startFpgaVerification", lateBound<FirmwareUpgrade_startFpgaVerification>,
      "FPGA successfully verified. \n"}},
    {"FRONT",
     "hex",
     true,
     {"startFrontUpgrade", lateBound<FirmwareUpgrade_startFrontUpgrade>,
      "Front successfully upgraded. \n"
      "Please shut down the computer in order for the update to take effect."},
     {"startFrontVerification", lateBound<FirmwareUpgrade_startFrontVerification>,
      "Front successfully verified. \n"
      "Please shut down the computer in order for the front uC to restart itself."}},
};

static const Word stateNames[] = {
    {QV_UPGRADE_INITIATING, "Initiating"},
    {QV_UPGRADE_PREPARING, "Preparing communication"},
    {QV_UPGRADE_READING_FILE, "Reading File"},
    {QV_UPGRADE_CONVERTING_FILE, "Converting file"},
    {QV_UPGRADE_FLASHING, "Flashing"},
    {QV_UPGRADE_VERIFYING, "Verifying"},
    {QV_UPGRADE_DONE, "Done"},
};

static const char* progressName(std::int32_t state)
{
    return state == QV_UPGRADE_DONE_WITH_ERROR ? "Done - ERROR" : textOf(stateNames, state, "Unknown state");
}

static const char* reportName(std::int32_t state)
{
    return state == QV_UPGRADE_DONE_WITH_ERROR ? "Complete with error"
                                               : textOf(stateNames, state, "Unknown state");
}

static const Target* findTarget(const char* word)
{
    for (const Target& target : targets)
        if (equalsIgnoringCase(word, target.word))
            return &target;
    return nullptr;
}

static bool hasDisplay(AboutHandle about)
{
    std::uint8_t available = 0;
    return About_getIsDisplayAvailable(about, &available) == QV_SUCCESS && available;
}

// What stands after the last dot, even one in the name of a folder; without a dot the whole path.
static const char* extensionOf(const char* path)
{
    const char* dot = std::strrchr(path, '.');
    return dot ? dot + 1 : path;
}

static bool checkFirmwareFile(const char* path, const char* expectedExtension)
{
    struct stat status = {};
    if (stat(path, &status) != 0)
    {
        printLine("File does not exist.");
        return false;
    }
    if (std::strcmp(extensionOf(path), expectedExtension) != 0)
    {
        printLine("File format is incorrect. Expected: .", expectedExtension);
        return false;
    }
    printLine("File format is correct.");
    return true;
}

// Called before each start. Nothing needs to be done there yet.
static void beforeUpgradeStart()
{
}

static void printUpgradeFailure(UpgradeStatus status)
{
    printLine("Update progress");
    printLine("Upgrade failed in state: ", reportName(status.state),
              ".\nError: ", GetErrorStringA(status.error));
}

// Follows the job to its end. The status call paces the loop. Its result is not looked at: a call that fails
// leaves the status as it was.
static bool monitorUpgrade(FirmwareUpgradeHandle upgrade)
{
    UpgradeStatus status = {};
    for (std::int32_t printedState = -1;;)
    {
        FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1);
        if (status.state != printedState)
        {
            printLine(progressName(status.state));
            printedState = status.state;
        }
        if (status.error != QV_SUCCESS)
        {
            printUpgradeFailure(status);
            return false;
        }
        // Without an error code, every state after the last working one is a success.
        if (status.state > QV_UPGRADE_VERIFYING)
            return true;
    }
}

void runFirmwareOperation(FirmwareUpgradeHandle upgrade, AboutHandle about)
{
    if (!advancedArgs.filepathGiven)
    {
        printLine("Invalid argument: No file path added");
        return;
    }
    const Target* target = findTarget(advancedArgs.targetValue);
    if (!target)
    {
        printLine("Invalid argument: Update argument should be SS, FPGA or Front.");
        return;
    }
    if (target->needsDisplay && !hasDisplay(about))
    {
        printLine("No FrontMCU present.");
        return;
    }
    if (!checkFirmwareFile(advancedArgs.filepathValue, target->extension) || !confirmOperation())
        return;

    const bool upgrading = advancedArgs.updateGiven;
    const FirmwareOperation& operation = upgrading ? target->upgrade : target->verification;
    printLine(upgrading ? "This upgrade can take a few minutes to perform."
                        : "This verification can take a few minutes to perform.");
    beforeUpgradeStart();
    if (succeeded(operation.name, operation.start(upgrade, advancedArgs.filepathValue, 0)) &&
        monitorUpgrade(upgrade))
        printLine(operation.success);
}
