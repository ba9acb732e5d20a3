#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/general.h"
#include "fobrob/handlers.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"

#include <cstdint>
#include <cstdio>

namespace
{

struct VersionItem
{
    const char* argument;
    const char* label;
    const char* operation;
    ApiError (*get)(AuxVersionHandle, std::uint8_t* major, std::uint8_t* minor, std::uint8_t* release,
                    std::uint8_t* build);
};

const VersionItem items[] = {
    {"FPGA", "FPGAVersion: ", "getFPGAVersion", lateBound<AuxVersion_getFPGAVersion>},
    {"FRONT", "FrontVersion: ", "getFrontVersion", lateBound<AuxVersion_getFrontVersion>},
    {"SS", "SSVersion: ", "getSSVersion", lateBound<AuxVersion_getSSVersion>},
    {"QVAuxAPI", "QVAuxVersion: ", "getQVAuxVersion", lateBound<AuxVersion_getQVAuxVersion>},
    {"QVAuxDrv", "QVAuxDrvVersion: ", "getQVAuxDrvVersion", lateBound<AuxVersion_getQVAuxDrvVersion>},
    {"OSVersion", "OSVersion: ", "getOSVersion", lateBound<AuxVersion_getOSVersion>},
};

void printVersionHelp()
{
    printLine("Category - Version\n"
              "This category is used to get information about the installed software. Not only \n"
              "installed software, but also which software release that is loaded to the hardware.\n"
              "\n"
              "Usage\n"
              "It is not possible to combine several arguments to get more information with one \n"
              "call. If no argument is passed to the category option, information from all the \n"
              "possible arguments will be printed. To get specific information, use one of the \n"
              "available arguments shown in the list below.\n"
              "\n"
              "CATEGORY\tARG\t\tNOTE\n"
              "--version\t\t\tShow all version numbers.\n"
              "--version=\tFPGA\t\tFPGA release.\n"
              "--version=\tFront\t\tFront release.\n"
              "--version=\tSS\t\tSystem supervisor release.\n"
              "--version=\tQVAuxAPI\tQVAux API release.\n"
              "--version=\tQVAuxDrv\tQVAux Driver release.\n"
              "--version=\tOSVersion\tOS release.");
}

void showVersion(AuxVersionHandle version, const VersionItem& item)
{
    std::uint8_t major = 0;
    std::uint8_t minor = 0;
    std::uint8_t release = 0;
    std::uint8_t build = 0;
    if (succeeded(item.operation, item.get(version, &major, &minor, &release, &build)))
        printLine(item.label, major, ".", minor, ".", release, ".", build);
}

} // namespace

int handleVersion(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    const AuxVersionHandle version = GetAuxVersion();
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, {}, RepeatWithoutValue::clearsValue,
                                              "Error: Version does not take any more options.");
    if (parsed.help)
    {
        printVersionHelp();
        return 0;
    }

    if (isReadRequest(argument))
    {
        printProgramVersionLine();
        std::fflush(stdout);
    }
    // Intentional: "QVSettings" is accepted and prints nothing.
    if (!showSelected(version, argument, items, showVersion) && !equalsIgnoringCase(argument, "QVSettings"))
        printLine("Invalid argument");
    return static_cast<int>(AuxVersion_release(version));
}
