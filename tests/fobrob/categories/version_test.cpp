#include "support/unit.h"

namespace
{

const char* const help =
    "Category - Version\n"
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
    "--version=\tOSVersion\tOS release.\n";

const char* const refusal = "Error: Version does not take any more options.\n";

const char* const all = "fobrob 2.9.0.0\n"
                        "FPGAVersion: 1.4.0.2\n"
                        "FrontVersion: 1.2.0.0\n"
                        "SSVersion: 2.7.1.0\n"
                        "QVAuxVersion: 2.11.0.0\n"
                        "QVAuxDrvVersion: 2.3.0.1\n"
                        "OSVersion: 3.1.4.0\n";

// The items in the order of their reading.
const struct
{
    const char* argument;
    const char* otherCase;
    const char* key;
    const char* operation;
    const char* call;
    const char* line;
    const char* label;
    const char* failureLabel;
} items[] = {
    {"FPGA", "fpga", "fpga", "AuxVersion_getFPGAVersion", "AuxVersion_getFPGAVersion([1], [4], [0], [2]) = 0",
     "FPGAVersion: 1.4.0.2\n", "FPGAVersion: ", "getFPGAVersion: "},
    {"FRONT", "Front", "front", "AuxVersion_getFrontVersion",
     "AuxVersion_getFrontVersion([1], [2], [0], [0]) = 0", "FrontVersion: 1.2.0.0\n",
     "FrontVersion: ", "getFrontVersion: "},
    {"SS", "sS", "ss", "AuxVersion_getSSVersion", "AuxVersion_getSSVersion([2], [7], [1], [0]) = 0",
     "SSVersion: 2.7.1.0\n", "SSVersion: ", "getSSVersion: "},
    {"QVAuxAPI", "qvauxapi", "api", "AuxVersion_getQVAuxVersion",
     "AuxVersion_getQVAuxVersion([2], [11], [0], [0]) = 0", "QVAuxVersion: 2.11.0.0\n",
     "QVAuxVersion: ", "getQVAuxVersion: "},
    {"QVAuxDrv", "QVAUXDRV", "driver", "AuxVersion_getQVAuxDrvVersion",
     "AuxVersion_getQVAuxDrvVersion([2], [3], [0], [1]) = 0", "QVAuxDrvVersion: 2.3.0.1\n",
     "QVAuxDrvVersion: ", "getQVAuxDrvVersion: "},
    {"OSVersion", "osversion", "os", "AuxVersion_getOSVersion",
     "AuxVersion_getOSVersion([3], [1], [4], [0]) = 0", "OSVersion: 3.1.4.0\n",
     "OSVersion: ", "getOSVersion: "},
};

// The output for all items with `other` in the place of one line.
std::string allBut(const std::string& line, const std::string& other)
{
    std::string text = all;
    const std::size_t start = text.find("\n" + line) + 1;
    return text.replace(start, line.size(), other);
}

TEST(Version, ReadsEveryItemBehindTheProgramsOwnVersion)
{
    Unit unit;
    const Result result = unit.run("--version");
    EXPECT_EQ(result.output, all);
    Calls expected{"GetAuxVersion() = handle"};
    for (const auto& item : items)
        expected.push_back(item.call);
    expected.push_back("AuxVersion_release() = 0");
    EXPECT_EQ(result.calls, expected);
}

TEST(Version, ReadsOneItemWhateverTheCaseOfItsName)
{
    for (const auto& item : items)
        for (const char* argument : {item.argument, item.otherCase})
        {
            SCOPED_TRACE(argument);
            Unit unit;
            const Result result = unit.run(std::string("--version=") + argument);
            EXPECT_EQ(result.output, item.line);
            EXPECT_EQ(result.calls,
                      (Calls{"GetAuxVersion() = handle", item.call, "AuxVersion_release() = 0"}));
        }
}

TEST(Version, TakesNoValueForAllItems)
{
    Unit unit;
    EXPECT_EQ(unit.run("--version=").output, all);
    EXPECT_EQ(unit.run("--version=noArgument").output, all);
    EXPECT_EQ(unit.run("--version=NoArgument").output, all);
    EXPECT_EQ(unit.run("--version FPGA").output, all);
}

TEST(Version, PrintsNumbersOfEightBits)
{
    for (const auto& item : items)
        for (const char* version : {"1.12.0.3", "255.255.255.255", "0.0.0.0", "65.10.48.127"})
        {
            SCOPED_TRACE(std::string(item.argument) + " " + version);
            Unit unit;
            unit.set(std::string("/versions/") + item.key, version);
            EXPECT_EQ(unit.run(std::string("--version=") + item.argument).output,
                      std::string(item.label) + version + "\n");
        }
}

TEST(Version, AcceptsTheSettingsAndShowsNothing)
{
    for (const char* argument : {"QVSettings", "qvsettings", "QVSETTINGS"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::string("--version=") + argument);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.calls, (Calls{"GetAuxVersion() = handle", "AuxVersion_release() = 0"}));
    }
}

TEST(Version, RefusesAnotherItemWithoutReading)
{
    for (const char* argument : {"XYZ", "QVAux", "FPGAVersion", "OS", "QVSetting"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::string("--version=") + argument);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, (Calls{"GetAuxVersion() = handle", "AuxVersion_release() = 0"}));
    }
}

TEST(Version, RefusesEachFurtherOptionAndReadsAllTheSame)
{
    Unit unit;
    EXPECT_EQ(unit.run("--version --frequency").output, std::string(refusal) + all);
    EXPECT_EQ(unit.run("--version -h --volume=3 -v").output, std::string(refusal) + refusal + refusal + all);
    EXPECT_EQ(unit.run("--version=SS --version=FPGA").output, std::string(refusal) + "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(unit.run("--version=XYZ --volume").output, std::string(refusal) + "Invalid argument\n");
    EXPECT_EQ(unit.run("--version=QVSettings --volume").output, refusal);
}

TEST(Version, EndsItsOptionsAtTwoHyphens)
{
    Unit unit;
    EXPECT_EQ(unit.run("--version=FPGA -- --help --volume").output, "FPGAVersion: 1.4.0.2\n");
}

TEST(Version, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--version=FPGA --bogus");
    EXPECT_EQ(result.output, std::string(refusal) + "FPGAVersion: 1.4.0.2\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
}

TEST(Version, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    for (const char* arguments : {"--version --help", "--version=FPGA --help", "--version=XYZ --help"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetAuxVersion() = handle"}));
    }
}

TEST(Version, ShowsItsHelpAfterRefusedOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--version --volume --help --frequency").output, std::string(refusal) + help);
}

TEST(Version, ReportsAFailedItemAndReadsTheOthers)
{
    for (const auto& item : items)
    {
        SCOPED_TRACE(item.argument);
        Unit unit;
        unit.fails(item.operation, 77);
        const Result result = unit.run("--version");
        EXPECT_EQ(result.output, allBut(item.line, std::string(item.failureLabel) + "Error 77\n"));
        EXPECT_EQ(result.calls.back(), "AuxVersion_release() = 0");
    }
}

TEST(Version, ReportsAFailureOfTheOneItemAlone)
{
    for (const auto& item : items)
    {
        SCOPED_TRACE(item.argument);
        Unit unit;
        unit.fails(item.operation, 77);
        const Result result = unit.run(std::string("--version=") + item.argument);
        EXPECT_EQ(result.output, std::string(item.failureLabel) + "Error 77\n");
        EXPECT_EQ(result.calls,
                  (Calls{"GetAuxVersion() = handle", std::string(item.operation) + "([], [], [], []) = 77",
                         "GetErrorStringA(77) = \"Error 77\"", "AuxVersion_release() = 0"}));
    }
}

TEST(Version, ReportsThatAUnitWithoutDisplayHasNoFront)
{
    Unit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(unit.run("--version").output,
              allBut("FrontVersion: 1.2.0.0\n", "getFrontVersion: Not supported by this unit\n"));
}

TEST(Version, FallsSilentWhereTheErrorHasNoText)
{
    for (const auto& item : items)
    {
        SCOPED_TRACE(item.argument);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails(item.operation, 77);
        const Result result = unit.run("--version");
        const std::string everything = all;
        EXPECT_EQ(result.output, everything.substr(0, everything.find(std::string("\n") + item.label) + 1) +
                                     item.failureLabel);
        EXPECT_EQ(result.calls.size(), 9u);
        EXPECT_EQ(result.calls.back(), "AuxVersion_release() = 0");
    }
}

TEST(Version, PrintsZeroesWhereNothingWasWritten)
{
    for (const auto& item : items)
    {
        SCOPED_TRACE(item.argument);
        Unit unit;
        unit.ignores(item.operation);
        EXPECT_EQ(unit.run("--version").output, allBut(item.line, std::string(item.label) + "0.0.0.0\n"));
    }
}

TEST(Version, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetAuxVersion");
    const Result result = unit.run("--version=FPGA");
    EXPECT_EQ(result.output, "getFPGAVersion: The module handle is not valid\n");
    EXPECT_EQ(result.calls.back(), "AuxVersion_release() = 3");
}

} // namespace
