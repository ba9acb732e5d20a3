// The report of --about=Diagnostic. command_lines.cpp lists all fields in order.

#include "support/category_calls.h"
#include "support/text.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

TEST(AboutDiagnostic, PrintsOkOrErrorAfterTheStartupReason)
{
    const struct
    {
        unsigned reason;
        const char* line;
    } cases[] = {
        {0x00, "Power was applied OK"},
        {0x55, "Front button OK"},
        {0xAA, "On/off signal OK"},
        {0xF0, "Wake up from suspend OK"},
        {0x0F, "Watchdog ERROR"},
        {0x01, "Unknown start-up reason ERROR"},
        {0x54, "Unknown start-up reason ERROR"},
        {0x56, "Unknown start-up reason ERROR"},
        {0xA9, "Unknown start-up reason ERROR"},
        {0xAB, "Unknown start-up reason ERROR"},
        {0xEF, "Unknown start-up reason ERROR"},
        {0xF1, "Unknown start-up reason ERROR"},
        {0xFF, "Unknown start-up reason ERROR"},
        {0x100, "Unknown start-up reason ERROR"},
        {0x155, "Unknown start-up reason ERROR"},
        {0xFFFF, "Unknown start-up reason ERROR"},
    };
    for (const auto& [reason, line] : cases)
    {
        SCOPED_TRACE(reason);
        Unit unit;
        unit.set("/diagnostic/startupReason", reason);
        EXPECT_EQ(valueAfter(unit.run("--about=Diagnostic").output, "StartupReason="), line);
    }
}

TEST(AboutDiagnostic, PrintsOkOrErrorAfterTheShutdownReason)
{
    Unit unit;
    unit.set("/diagnostic/shutdownReason", 31);
    EXPECT_EQ(valueAfter(unit.run("--about=Diagnostic").output, "ShutdownReason="), "No error OK");
    for (const unsigned reason : {0u, 1u, 30u, 32u, 255u, 287u, 65535u})
    {
        SCOPED_TRACE(reason);
        unit.set("/diagnostic/shutdownReason", reason);
        EXPECT_EQ(valueAfter(unit.run("--about=Diagnostic").output, "ShutdownReason="),
                  "Serious error ERROR");
    }
}

TEST(AboutDiagnostic, PrintsOkOrErrorAfterTheHardwareStatus)
{
    const struct
    {
        unsigned status;
        const char* line;
    } cases[] = {
        {0, "No error OK"},
        {1, "Unknown hardware status OK"},
        {64, "Temperature was high OK"},
        {129, "Unknown hardware status OK"},
        {130, "Real-time clock lost its time OK"},
        {131, "Main supply failed ERROR"},
        {132, "EEPROM failed ERROR"},
        {256, "Unknown hardware status ERROR"},
        {65535, "Unknown hardware status ERROR"},
    };
    for (const auto& [status, line] : cases)
    {
        SCOPED_TRACE(status);
        Unit unit;
        unit.set("/diagnostic/hwErrorStatus", status);
        EXPECT_EQ(valueAfter(unit.run("--about=Diagnostic").output, "Hw error status="), line);
    }
}

TEST(AboutDiagnostic, SuppressesOutputIfTheStartupReasonHasNoText)
{
    Unit unit;
    unit.returnsNull("GetStartupReasonStringA");
    const Result result = unit.run("--about=Diagnostic");
    EXPECT_EQ(result.output, "StartupReason=");
    EXPECT_THAT(result.calls, Contains("Diagnostic_getPMTemp(1, [39], [0]) = 0"));
    EXPECT_EQ(result.calls.back(), "About_release() = 0");
}

TEST(AboutDiagnostic, SuppressesOutputIfTheHardwareStatusHasNoText)
{
    Unit unit;
    unit.returnsNull("GetHwErrorStatusStringA");
    const Result result = unit.run("--about=Diagnostic");
    EXPECT_EQ(result.output, "StartupReason=Front button OK\n"
                             "ShutdownReason=No error OK\n"
                             "Hw error status=");
    EXPECT_THAT(result.calls, Contains("Diagnostic_getPMTemp(1, [39], [0]) = 0"));
}

TEST(AboutDiagnostic, PrintsUnsignedCounters)
{
    Unit unit(R"({"diagnostic": {"totalRunTime": 4294967295, "totalSuspendTime": 4294967294,
                                 "totalHeatTime": 4294967293, "runTime40To60": 4294967292,
                                 "runTime60To70": 4294967291, "runTime70To80": 4294967290,
                                 "runTimeAbove80": 4294967289, "powerCycles": 65535}})");
    EXPECT_THAT(unit.run("--about=Diagnostic").output,
                HasSubstr("\n"
                          "Run-time above 80C=4294967289 min(s)\n"
                          "Run-time between 40C-60C=4294967292 min(s)\n"
                          "Run-time between 60C-70C=4294967291 min(s)\n"
                          "Run-time between 70C-80C=4294967290 min(s)\n"
                          "Total heat time=4294967293 min(s)\n"
                          "Total run-time=4294967295 min(s)\n"
                          "Total suspend time=4294967294 min(s)\n"
                          "Min temp=-21, max temp=76\n"
                          "Power cycles=65535\n"));
}

TEST(AboutDiagnostic, PrintsSignedTemperatures)
{
    Unit unit(R"({"diagnostic": {"minimumTemperature": -32768, "maximumTemperature": 32767,
                                 "ssTemperature": -5, "pcbTemperature": 0,
                                 "cpuTemperature": -32768, "boardTemperature": 32767}})");
    EXPECT_THAT(unit.run("--about=Diagnostic").output, EndsWith("\n"
                                                                "Min temp=-32768, max temp=32767\n"
                                                                "Power cycles=1342\n"
                                                                "SS temp=-5\n"
                                                                "PCB temp=0\n"
                                                                "CPU temp=-32768\n"
                                                                "CPU BOARD temp=32767\n"));
}

TEST(AboutDiagnostic, RepeatsThePreviousTemperatureIfOneIsNotWritten)
{
    Unit unit;
    unit.ignores("Diagnostic_getPCBTemp");
    unit.ignores("Diagnostic_getPMTemp");
    EXPECT_THAT(unit.run("--about=Diagnostic").output, EndsWith("\n"
                                                                "SS temp=31\n"
                                                                "PCB temp=31\n"
                                                                "CPU temp=31\n"
                                                                "CPU BOARD temp=31\n"));
}

TEST(AboutDiagnostic, OmitsWhatTheUnitDoesNotSupport)
{
    Unit unit(R"({"diagnostic": {"shutdownReason": null, "hwErrorStatus": null, "ssTemperature": null,
                                 "pcbTemperature": null, "cpuTemperature": null,
                                 "boardTemperature": null}})");
    unit.fails("Diagnostic_getTimer", 2);
    unit.fails("Diagnostic_getMinMaxTemp", 2);
    unit.fails("Diagnostic_getPowerCycles", 2);
    const Result result = unit.run("--about=Diagnostic");
    EXPECT_EQ(result.output, "StartupReason=Front button OK\n");
    EXPECT_THAT(result.calls, Not(Contains(StartsWith("GetErrorStringA"))));
}

} // namespace
