#include "support/unit.h"

namespace
{

const char* const help =
    "Category - Lightsensor\n"
    "This category is used to perform lightsensor settings, such as: reading lightsensor illuminance. \n"
    "\n"
    "Usage\n"
    "\n"
    "\n"
    " CATEGORY\tARG\tOPTION\t\tARG\tOPTION\t\tARG\n"
    "--lightsensor\t\t--illuminance\t\n"
    "Get illuminance.\n";

TEST(Lightsensor, ReadsTheIlluminanceByDefault)
{
    Unit unit(R"({"lightsensor": {"illuminance": 320}})");
    const Result result = unit.run("--lightsensor");
    EXPECT_EQ(result.output, "Illuminance: 320\n");
    EXPECT_EQ(result.calls, (Calls{"GetLightsensor() = handle", "Lightsensor_getIlluminance([320]) = 0",
                                   "Lightsensor_release() = 0"}));
}

TEST(Lightsensor, ReadsTheIlluminanceOnRequest)
{
    Unit unit(R"({"lightsensor": {"illuminance": 12}})");
    for (const char* arguments : {"--lightsensor --illuminance", "--lightsensor --illuminance --illuminance"})
    {
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, "Illuminance: 12\n");
        EXPECT_EQ(result.calls, callsOn("Lightsensor", {"Lightsensor_getIlluminance([12]) = 0"}));
    }
}

TEST(Lightsensor, RefusesManyForeignOptionsOnce)
{
    Unit unit;
    EXPECT_EQ(unit.run("--lightsensor --frequency --wlanpower --rescue_mode_next_boot -v").output,
              "Invalid argument\n");
}

TEST(Lightsensor, PrintsTheHighestIlluminanceUnsigned)
{
    Unit unit(R"({"lightsensor": {"illuminance": 65535}})");
    EXPECT_EQ(unit.run("--lightsensor").output, "Illuminance: 65535\n");
}

TEST(Lightsensor, RefusesAForeignOptionWithoutReading)
{
    Unit unit;
    const Result result = unit.run("--lightsensor --frequency");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_EQ(result.calls, (Calls{"GetLightsensor() = handle", "Lightsensor_release() = 0"}));
}

TEST(Lightsensor, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.run("--lightsensor --illuminance --frequency").output, "Illuminance: 320\n");
    EXPECT_EQ(unit.run("--lightsensor --frequency --illuminance").output, "Illuminance: 320\n");
    EXPECT_EQ(unit.run("--lightsensor --illuminance -h").output, "Illuminance: 320\n");
    EXPECT_EQ(unit.run("--lightsensor -v --illuminance").output, "Illuminance: 320\n");
}

TEST(Lightsensor, RefusesTheShortOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--lightsensor -h").output, "Invalid argument\n");
    EXPECT_EQ(unit.run("--lightsensor -v").output, "Invalid argument\n");
}

TEST(Lightsensor, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--lightsensor --bogus");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_EQ(result.errors, programPath() + ": unrecognized option '--bogus'\n");
}

TEST(Lightsensor, LetsAnUnknownOptionThroughBesideItsOwn)
{
    Unit unit;
    EXPECT_EQ(unit.runComplaining("--lightsensor --bogus --illuminance").output, "Illuminance: 320\n");
}

TEST(Lightsensor, RefusesAValueForItsOption)
{
    Unit unit;
    const Result result = unit.runComplaining("--lightsensor --illuminance=5");
    EXPECT_EQ(result.output, "Invalid argument\n");
    EXPECT_EQ(result.calls, (Calls{"GetLightsensor() = handle", "Lightsensor_release() = 0"}));
}

TEST(Lightsensor, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--lightsensor --help --bogus");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetLightsensor() = handle"}));
}

TEST(Lightsensor, ShowsItsHelpAfterOtherOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--lightsensor --frequency --help").output, help);
    EXPECT_EQ(unit.run("--lightsensor --illuminance --help").output, help);
}

TEST(Lightsensor, ReportsAFailedReadingAndReleases)
{
    Unit unit;
    unit.fails("Lightsensor_getIlluminance", 77);
    const Result result = unit.run("--lightsensor");
    EXPECT_EQ(unit.run("--lightsensor --illuminance --frequency").output, "getIlluminance: Error 77\n");
    EXPECT_EQ(result.output, "getIlluminance: Error 77\n");
    EXPECT_EQ(result.calls, (Calls{"GetLightsensor() = handle", "Lightsensor_getIlluminance([]) = 77",
                                   "GetErrorStringA(77) = \"Error 77\"", "Lightsensor_release() = 0"}));
}

TEST(Lightsensor, FallsSilentWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.fails("Lightsensor_getIlluminance", 77);
    const Result result = unit.run("--lightsensor");
    EXPECT_EQ(result.output, "getIlluminance: ");
    EXPECT_EQ(result.calls.back(), "Lightsensor_release() = 0");
}

TEST(Lightsensor, PrintsZeroWhereNothingWasWritten)
{
    Unit unit;
    unit.ignores("Lightsensor_getIlluminance");
    EXPECT_EQ(unit.run("--lightsensor").output, "Illuminance: 0\n");
}

TEST(Lightsensor, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetLightsensor");
    const Result result = unit.run("--lightsensor");
    EXPECT_EQ(result.output, "getIlluminance: The module handle is not valid\n");
}

} // namespace
