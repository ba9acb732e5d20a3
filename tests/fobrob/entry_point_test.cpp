#include "fobrob/category.h"
#include "fobrob/general.h"
#include "fobrob/option_table.h"
#include "support/unit.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace
{

const char* const hint = "To get help how to use Fobrob, add --help or -h as options.\n";

enum class Use
{
    category,
    general,
    inner,
};

struct Row
{
    const char* name;
    int argument; // no_argument, required_argument or optional_argument
    int code;
    Use use;
};

// Every long option, in the order of the table.
constexpr Row rows[] = {
    {"wlanpower", optional_argument, 0, Use::inner},
    {"wlanstartuppower", optional_argument, 1, Use::inner},
    {"gsmpower", optional_argument, 2, Use::inner},
    {"gsmstartuppower", optional_argument, 3, Use::inner},
    {"gpspower", optional_argument, 4, Use::inner},
    {"gpsstartuppower", optional_argument, 5, Use::inner},
    {"bluetoothpower", optional_argument, 6, Use::inner},
    {"bluetoothstartuppower", optional_argument, 7, Use::inner},
    {"buzzer", no_argument, 20, Use::category},
    {"version", optional_argument, 9, Use::category},
    {"temperature", optional_argument, 10, Use::category},
    {"power", optional_argument, 11, Use::category},
    {"heater", no_argument, 12, Use::category},
    {"about", optional_argument, 13, Use::category},
    {"led", no_argument, 14, Use::category},
    {"can", optional_argument, 15, Use::category},
    {"digitalio", optional_argument, 16, Use::category},
    {"onoff", no_argument, 18, Use::category},
    {"touch", no_argument, 50, Use::category},
    {"telematics", no_argument, 49, Use::category},
    {"advanced", no_argument, 19, Use::category},
    {"help", no_argument, 35, Use::general},
    {"list", no_argument, 34, Use::general},
    {"frequency", optional_argument, 21, Use::inner},
    {"volume", optional_argument, 22, Use::inner},
    {"status", optional_argument, 23, Use::inner},
    {"dutycycle", optional_argument, 36, Use::inner},
    {"color", optional_argument, 37, Use::inner},
    {"pulses", optional_argument, 38, Use::inner},
    {"idletime", optional_argument, 39, Use::inner},
    {"startup", optional_argument, 40, Use::inner},
    {"baudrate", optional_argument, 24, Use::inner},
    {"vchannel1", optional_argument, 25, Use::inner},
    {"vchannel2", optional_argument, 26, Use::inner},
    {"vchannel3", optional_argument, 27, Use::inner},
    {"vchannel4", optional_argument, 28, Use::inner},
    {"extfan", optional_argument, 29, Use::inner},
    {"update", required_argument, 30, Use::inner},
    {"verify", required_argument, 52, Use::inner},
    {"shutdown", no_argument, 31, Use::inner},
    {"factory", no_argument, 32, Use::inner},
    {"filepath", required_argument, 33, Use::inner},
    {"force", no_argument, 53, Use::inner},
    {"rescue_mode_next_boot", no_argument, 63, Use::inner},
    {"factory_reset", no_argument, 64, Use::inner},
    {"system_mode", no_argument, 65, Use::inner},
    {"boot_completed", no_argument, 66, Use::inner},
    {"shortpress", optional_argument, 41, Use::inner},
    {"longpress_time", optional_argument, 43, Use::inner},
    {"longpress", optional_argument, 42, Use::inner},
    {"onoff_signal_time", optional_argument, 45, Use::inner},
    {"onoff_signal", optional_argument, 44, Use::inner},
    {"always_on", optional_argument, 46, Use::inner},
    {"unit_startup", optional_argument, 47, Use::inner},
    {"suspend_max_time", optional_argument, 48, Use::inner},
    {"mode", optional_argument, 54, Use::inner},
    {"setting", required_argument, 55, Use::inner},
    {"value", optional_argument, 56, Use::inner},
    {"eeprom", required_argument, 57, Use::inner},
    {"backlight", no_argument, 58, Use::category},
    {"intensity", optional_argument, 17, Use::inner},
    {"automatic", optional_argument, 59, Use::inner},
    {"led_dimming", optional_argument, 60, Use::inner},
    {"lightsensor", no_argument, 61, Use::category},
    {"illuminance", no_argument, 62, Use::inner},
};

std::string dashed(const Row& row)
{
    return std::string("--") + row.name;
}

// Expects that getopt_long prints `diagnostic`, the program prints the hint, and no device operation is
// called.
void expectDiagnosticAndHint(const std::string& arguments, const std::string& diagnostic)
{
    SCOPED_TRACE(arguments);
    Unit unit;
    const Result result = unit.runExpectingErrors(arguments);
    EXPECT_EQ(result.output, hint);
    EXPECT_NE(result.errors.find(diagnostic), std::string::npos) << result.errors;
    EXPECT_EQ(result.calls, Calls{});
}

void expectHint(const std::string& arguments)
{
    SCOPED_TRACE(arguments);
    Unit unit;
    const Result result = unit.run(arguments);
    EXPECT_EQ(result.output, hint);
    EXPECT_EQ(result.calls, Calls{});
}

TEST(OptionTable, HasEveryOptionInOrder)
{
    const option* entry = longOptions;
    for (const Row& row : rows)
    {
        SCOPED_TRACE(row.name);
        ASSERT_STREQ(entry->name, row.name);
        EXPECT_EQ(entry->has_arg, row.argument);
        EXPECT_EQ(entry->flag, nullptr);
        EXPECT_EQ(entry->val, row.code);
        ++entry;
    }
    EXPECT_EQ(entry - longOptions, 65);
    EXPECT_EQ(entry->name, nullptr);
    EXPECT_EQ(entry->has_arg, 0);
    EXPECT_EQ(entry->flag, nullptr);
    EXPECT_EQ(entry->val, 0);
}

TEST(OptionTable, GivesEachOptionAUniqueCode)
{
    std::set<int> codes{8}; // unused
    for (const Row& row : rows)
        EXPECT_TRUE(codes.insert(row.code).second) << row.name;
}

TEST(OptionTable, HasTwoShortOptionsWithoutArguments)
{
    EXPECT_STREQ(shortOptions, "hv");
}

TEST(OptionTable, HasAMarkerForAMissingArgument)
{
    EXPECT_STREQ(noArgument(), "noArgument");
}

// An empty name is an abbreviation of every option, so getopt_long lists the whole table.
TEST(OptionTable, IsParsedByTheProgram)
{
    std::string all = "possibilities:";
    for (const Row& row : rows)
        all += " '" + dashed(row) + "'";
    expectDiagnosticAndHint("--=x", all + "\n");
}

TEST(OptionTable, IsParsedByTheCategories)
{
    std::string all = "possibilities:";
    for (const Row& row : rows)
        all += " '" + dashed(row) + "'";
    Unit unit;
    EXPECT_NE(unit.runExpectingErrors("--lightsensor --=x").errors.find(all + "\n"), std::string::npos);
}

TEST(EntryPoint, PrintsAHintWithoutAnOption)
{
    expectHint("");
    expectHint("stray");
    expectHint("-");
    expectHint("--");
    expectHint("-- --version");
    Unit unit;
    EXPECT_EQ(unit.run(std::vector<std::string>{""}).output, hint);
}

TEST(EntryPoint, PrintsAHintIfTheFirstOptionIsNotACategory)
{
    for (const Row& row : rows)
        if (row.use == Use::inner)
            expectHint(dashed(row) + (row.argument == required_argument ? "=100" : ""));
}

TEST(EntryPoint, PrintsAHintIfTheFirstOptionIsNotACategoryAndHasAValue)
{
    for (const Row& row : rows)
        if (row.use == Use::inner && row.argument == optional_argument)
            expectHint(dashed(row) + "=100");
}

TEST(EntryPoint, PrintsAHintIfACategoryIsNotTheFirstOption)
{
    expectHint("--frequency=100 --buzzer");
    expectHint("--rescue_mode_next_boot --advanced");
}

TEST(EntryPoint, RejectsAValueForAnOptionThatTakesNone)
{
    for (const Row& row : rows)
        if (row.argument == no_argument)
            expectDiagnosticAndHint(dashed(row) + "=5",
                                    "option '" + dashed(row) + "' doesn't allow an argument");
}

TEST(EntryPoint, RejectsAnEmptyValueForAnOptionThatTakesNone)
{
    expectDiagnosticAndHint("--buzzer=", "option '--buzzer' doesn't allow an argument");
}

TEST(EntryPoint, RequiresTheValueOfAnOptionThatNeedsOne)
{
    for (const Row& row : rows)
        if (row.argument == required_argument)
            expectDiagnosticAndHint(dashed(row), "option '" + dashed(row) + "' requires an argument");
}

TEST(EntryPoint, RejectsUnknownOptions)
{
    expectDiagnosticAndHint("--bogus", "unrecognized option '--bogus'");
    expectDiagnosticAndHint("--bogus --version", "unrecognized option '--bogus'");
    expectDiagnosticAndHint("-x", "invalid option -- 'x'");
    expectDiagnosticAndHint("-xh", "invalid option -- 'x'");
    expectDiagnosticAndHint("-?", "invalid option -- '?'");
    expectDiagnosticAndHint("-list", "invalid option -- 'l'");
}

TEST(EntryPoint, MatchesOptionsCaseSensitively)
{
    expectDiagnosticAndHint("--Version", "unrecognized option '--Version'");
    expectDiagnosticAndHint("--HELP", "unrecognized option '--HELP'");
    expectDiagnosticAndHint("-H", "invalid option -- 'H'");
    expectDiagnosticAndHint("-V", "invalid option -- 'V'");
}

TEST(EntryPoint, RejectsAnAmbiguousAbbreviation)
{
    expectDiagnosticAndHint("--l", "option '--l' is ambiguous; possibilities: '--led' '--list' "
                                   "'--longpress_time' '--longpress' '--led_dimming' '--lightsensor'\n");
    expectDiagnosticAndHint("--ver", "option '--ver' is ambiguous; possibilities: '--version' '--verify'\n");
    expectDiagnosticAndHint("--onof=1", "option '--onof=1' is ambiguous; possibilities: '--onoff' "
                                        "'--onoff_signal_time' '--onoff_signal'\n");
}

TEST(EntryPoint, AcceptsAnUnambiguousAbbreviation)
{
    Unit unit;
    EXPECT_EQ(unit.run("--vers").output, unit.run("--version").output);
    EXPECT_EQ(unit.run("--vers=ss").output, unit.run("--version=ss").output);
    EXPECT_EQ(unit.run("--lig").output, "Illuminance: 320\n");
    EXPECT_EQ(unit.run("--hea --temp").output, unit.run("--heater --temperature").output);
    EXPECT_EQ(unit.run("--lis").output, unit.run("--list").output);
    EXPECT_EQ(unit.run("--hel").output, unit.run("--help").output);
}

TEST(EntryPoint, PrefersAnExactNameToALongerOne)
{
    Unit unit;
    EXPECT_EQ(unit.run("--led").calls.front(), "GetFrontLED() = handle");
    EXPECT_EQ(unit.run("--onoff --longpress").calls[1], "Config_getLongButtonPressAction([2]) = 0");
    EXPECT_EQ(unit.run("--onoff --onoff_signal").calls[1], "Config_getOnOffSigAction([2]) = 0");
}

TEST(EntryPoint, IgnoresWordsThatAreNotOptions)
{
    Unit unit;
    const Result result = unit.run("stray --version");
    EXPECT_EQ(result.output, unit.run("--version").output);
    EXPECT_EQ(result.calls.front(), "GetAuxVersion() = handle");
    EXPECT_EQ(unit.run("one --lightsensor two --illuminance three").output, "Illuminance: 320\n");
}

TEST(EntryPoint, DispatchesToEveryCategory)
{
    const struct Case
    {
        const char* category;
        const char* title;
    } cases[] = {
        {"--about", "Category - About\n"},
        {"--advanced", "Category - Advanced\n"},
        {"--backlight", "Category - Backlight\n"},
        {"--buzzer", "Category - Buzzer\n"},
        {"--can", "Category - CAN\n"},
        {"--digitalio", "Category - Digital IO\n"},
        {"--heater", "Category - Heater\n"},
        {"--led", "Category - LED\n"},
        {"--lightsensor", "Category - Lightsensor\n"},
        {"--onoff", "Category - ONOFF\n"},
        {"--power", "Category - Power\n"},
        {"--telematics", "Category - Telematics\n"},
        {"--temperature", "Category - Temperature\n"},
        {"--touch", "Category - Touch\n"},
        {"--version", "Category - Version\n"},
    };
    const auto isCategory = [](const Row& row) { return row.use == Use::category; };
    EXPECT_EQ(std::ranges::count_if(rows, isCategory), std::ssize(cases));
    Unit unit;
    for (const Case& c : cases)
        EXPECT_TRUE(unit.run(std::string(c.category) + " --help").output.starts_with(c.title)) << c.category;
}

TEST(EntryPoint, RunsOnlyOneCategory)
{
    Unit unit;
    const Result result = unit.run("--lightsensor --illuminance --buzzer --version");
    EXPECT_EQ(result.output, "Illuminance: 320\n");
    EXPECT_EQ(result.calls, unit.run("--lightsensor").calls);
}

// A value requires an equals sign. A word after a space is ignored.
TEST(EntryPoint, TreatsAnEmptyValueAndALaterWordAsNoValue)
{
    const std::pair<std::string, std::string> categories[] = {
        {"--about", " EEPROM"},  {"--can", " CAN1"},        {"--digitalio", " DI1"},
        {"--power", " current"}, {"--temperature", " PCB"}, {"--version", " FPGA"}};
    Unit unit;
    for (const auto& [category, word] : categories)
    {
        const Result bare = unit.run(category);
        for (const std::string& noValue :
             {std::string("="), std::string("=noArgument"), std::string("=NOARGUMENT"), word})
        {
            SCOPED_TRACE(category + noValue);
            const Result result = unit.run(category + noValue);
            EXPECT_EQ(result.output, bare.output);
            EXPECT_EQ(result.calls, bare.calls);
        }
    }
}

TEST(EntryPoint, PassesTheValueToTheCategory)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about").output, "Invalid argument: Category argument could not be found. "
                                          "Valid are: EEPROM, Diagnostic and ADC.\n");
    EXPECT_TRUE(unit.run("--about=EEPROM").calls[4].starts_with("About_getUnitSerial("));
    EXPECT_EQ(unit.run("--can=CAN0").output, "CAN device 0 baud rate: 250\n");
    EXPECT_EQ(unit.run("--power=current --extfan").calls[2], "Power_getExtFanPowerStatus([0]) = 0");
    EXPECT_EQ(unit.run("--temperature=PCB").output, "PCB temp=34\n");
    EXPECT_EQ(unit.run("--digitalio=DI2").output, "Digital input 2: 0\n");
    EXPECT_EQ(unit.run("--version=ss").output, "SSVersion: 2.7.1.0\n");
}

TEST(EntryPoint, PrintsTheGeneralHelp)
{
    Unit unit;
    const std::string usage = unit.run("--help").output;
    EXPECT_NE(usage.find("This is the console version of QVSettings"), std::string::npos);
    for (const char* arguments : {"-h", "-hv", "-h -v", "-hx", "-h --version", "--help --list", "stray -h"})
        EXPECT_EQ(unit.run(arguments).output, usage) << arguments;
}

TEST(EntryPoint, PrintsTheProgramVersion)
{
    Unit unit;
    const std::string version = unit.run("-v").output;
    EXPECT_TRUE(version.starts_with("fobrob 2.9.0.0\n"));
    for (const char* arguments : {"-vh", "-v -h", "-vx", "-v --help", "-v --bogus", "stray -v"})
        EXPECT_EQ(unit.run(arguments).output, version) << arguments;
}

TEST(EntryPoint, PrintsTheOptionList)
{
    Unit unit;
    const std::string list = unit.run("--list").output;
    EXPECT_TRUE(list.starts_with("List with the available categories"));
    for (const char* arguments : {"--list --help", "--list --bogus", "--list -v", "stray --list"})
        EXPECT_EQ(unit.run(arguments).output, list) << arguments;
}

TEST(EntryPoint, CallsNoDeviceOperationForTheGeneralOptions)
{
    Unit unit;
    for (const char* arguments : {"-h", "--help", "-v", "--list"})
        EXPECT_EQ(unit.run(arguments).calls, Calls{}) << arguments;
}

TEST(EntryPoint, ExitsWithSuccessIfAHandlerFails)
{
    Unit unit; // every run checks the exit status
    unit.fails("Buzzer_release", 77);
    EXPECT_EQ(unit.run("--buzzer --volume").calls.back(), "Buzzer_release() = 77");
}

TEST(ProgramName, IsTheLastPartOfThePath)
{
    const struct Case
    {
        const char* path;
        const char* name;
    } cases[] = {
        {"fobrob", "fobrob"}, {"/usr/bin/fobrob", "fobrob"}, {"./other", "other"}, {"a/b/", ""}, {"", ""},
    };
    for (const Case& c : cases)
    {
        setProgramName(c.path);
        EXPECT_STREQ(program_name, c.name) << c.path;
    }
}

// Runs the program under the path `path`.
Outcome runAs(const std::string& path, const std::string& arguments)
{
    const Unit unit;
    Command command = programOn(unit.file(), arguments);
    std::ranges::replace(command.words, programPath(), path);
    return runCommand(command);
}

TEST(ProgramName, IsTheSameForACopyWithAnotherName)
{
    const TemporaryDirectory directory;
    std::filesystem::copy_file(programPath(), directory / "settings");
    const Outcome version = runAs(directory / "settings", "-v");
    EXPECT_TRUE(version.output.starts_with("fobrob 2.9.0.0\n"));
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(runAs(directory / "settings", "--version").output.starts_with("fobrob 2.9.0.0\n"));
}

TEST(ProgramName, IsTheSameForASymbolicLink)
{
    const TemporaryDirectory directory;
    std::filesystem::create_symlink(programPath(), directory / "link");
    EXPECT_TRUE(runAs(directory / "link", "-v").output.starts_with("fobrob 2.9.0.0\n"));
    EXPECT_EQ(runAs(directory / "link", "").output, hint);
}

} // namespace
