#include "fobrob/categories/firmware.h"

#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"
#include "fobrob/words.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace
{

struct FirmwareOperation
{
    const char* name; // of the operation, in error messages
    ApiError (*start)(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag);
    const char* success;
};

struct Target
{
    const char* word;
    const char* extension;
    bool needsDisplay; // a unit without a display has no front microcontroller
    FirmwareOperation upgrade;
    FirmwareOperation verification;
};

const Target targets[] = {
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

const NamedValue stateNames[] = {
    {QV_UPGRADE_INITIATING, "Initiating"},
    {QV_UPGRADE_PREPARING, "Preparing communication"},
    {QV_UPGRADE_READING_FILE, "Reading File"},
    {QV_UPGRADE_CONVERTING_FILE, "Converting file"},
    {QV_UPGRADE_FLASHING, "Flashing"},
    {QV_UPGRADE_VERIFYING, "Verifying"},
    {QV_UPGRADE_DONE, "Done"},
};

// Values of the `flag` argument of the device operations.
constexpr std::int32_t noFlags = 0;
constexpr std::int32_t waitForStatus = 1;

const char* progressName(std::int32_t state)
{
    return state == QV_UPGRADE_DONE_WITH_ERROR ? "Done - ERROR" : nameOf(stateNames, state, "Unknown state");
}

const char* reportName(std::int32_t state)
{
    return state == QV_UPGRADE_DONE_WITH_ERROR ? "Complete with error"
                                               : nameOf(stateNames, state, "Unknown state");
}

const Target* findTarget(const char* word)
{
    for (const Target& target : targets)
        if (equalsIgnoringCase(word, target.word))
            return &target;
    return nullptr;
}

bool hasDisplay(AboutHandle about)
{
    std::uint8_t available = 0;
    return About_getIsDisplayAvailable(about, &available) == QV_SUCCESS && available;
}

// Returns the part after the last dot, or the whole path if there is no dot. The dot may be in the name of a
// directory.
const char* extensionOf(const char* path)
{
    const char* dot = std::strrchr(path, '.');
    return dot ? dot + 1 : path;
}

bool checkFirmwareFile(const char* path, const char* expectedExtension)
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

// Reads one line from standard input and returns whether it is "yes". Stops reading after `maxLength`
// characters, because the input may never end.
bool isAnswerYes()
{
    constexpr char yes[] = {'y', 'e', 's'};
    constexpr std::size_t maxLength = 65536;
    std::size_t length = 0;
    bool matches = true;
    for (int c = std::getchar(); c != EOF && c != '\n' && length < maxLength; c = std::getchar())
    {
        matches = matches && length < sizeof yes && c == yes[length];
        ++length;
    }
    return matches && length == sizeof yes;
}

// Returns whether the operation is forced or confirmed. Only the answer "yes" confirms it.
bool confirmOperation(const FirmwareRequest& request)
{
    if (request.force)
        return true;
    if (request.upgrade)
        printLine("This operation may cause harm to your device.\nDo you wish to continue [yes/no]?");
    else
        printLine("Do you wish to continue [yes/no]?");
    if (isAnswerYes())
        return true;
    printLine(request.upgrade ? "Upgrade aborted." : "Verify aborted.");
    return false;
}

// Called before each job is started. Does nothing yet.
void beforeUpgradeStart()
{
}

void printUpgradeFailure(UpgradeStatus status)
{
    printLine("Update progress");
    printLine("Upgrade failed in state: ", reportName(status.state),
              ".\nError: ", GetErrorStringA(status.error));
}

// Prints the states of the job until it ends. Returns whether it succeeded. The loop has no delay because the
// status call blocks until there is a new status. The result of the call is ignored: a call that fails leaves
// `status` unchanged.
bool monitorUpgrade(FirmwareUpgradeHandle upgrade)
{
    UpgradeStatus status = {};
    for (std::int32_t printedState = -1;;)
    {
        FirmwareUpgrade_getUpgradeStatus(upgrade, &status, waitForStatus);
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
        // Intentional: without an error code, every state after QV_UPGRADE_VERIFYING is a success, even
        // QV_UPGRADE_DONE_WITH_ERROR.
        if (status.state > QV_UPGRADE_VERIFYING)
            return true;
    }
}

void runJob(FirmwareUpgradeHandle upgrade, const Target& target, const FirmwareRequest& request)
{
    const FirmwareOperation& operation = request.upgrade ? target.upgrade : target.verification;
    printLine(request.upgrade ? "This upgrade can take a few minutes to perform."
                              : "This verification can take a few minutes to perform.");
    beforeUpgradeStart();
    if (succeeded(operation.name, operation.start(upgrade, request.path, noFlags)) && monitorUpgrade(upgrade))
        printLine(operation.success);
}

} // namespace

void runFirmwareOperation(FirmwareUpgradeHandle upgrade, AboutHandle about, const FirmwareRequest& request)
{
    if (!request.path)
    {
        printLine("Invalid argument: No file path added");
        return;
    }
    const Target* target = findTarget(request.target);
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
    if (checkFirmwareFile(request.path, target->extension) && confirmOperation(request))
        runJob(upgrade, *target, request);
}
