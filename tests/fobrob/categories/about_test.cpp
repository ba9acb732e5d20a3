#include "support/category_calls.h"
#include "support/letter_case.h"

#include <gmock/gmock.h>

namespace
{

const std::string error = "Error: Version should not take any more options.\n";

const char* const noSuchReport =
    "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic and ADC.\n";

class AboutReport : public testing::TestWithParam<const char*>
{
protected:
    Unit unit;
    const std::string arguments = std::string("--about=") + GetParam();
    const std::string report = unit.run(arguments).output;
};

INSTANTIATE_TEST_SUITE_P(About, AboutReport, testing::Values("EEPROM", "Diagnostic", "ADC"),
                         [](const auto& test) { return test.param; });

TEST_P(AboutReport, IsAcceptedInAnyCase)
{
    EXPECT_EQ(unit.run(inLowercase(arguments)).output, report);
    EXPECT_EQ(unit.run("--about=" + withCaseSwapped(GetParam())).output, report);
}

TEST_P(AboutReport, IgnoresTheOptionOfTheRawReport)
{
    EXPECT_EQ(unit.run(arguments + " --eeprom=addon").output, report);
    EXPECT_EQ(unit.run(arguments + " --eeprom=xyz").output, report);
    EXPECT_EQ(unit.run(arguments + " --eeprom=").output, report);
}

TEST_P(AboutReport, IsPrintedAfterTheErrorsOfOtherOptions)
{
    EXPECT_EQ(unit.run(arguments + " --frequency").output, error + report);
    EXPECT_EQ(unit.run(arguments + " -h --volume=3 -v").output, error + error + error + report);
}

TEST_P(AboutReport, IsWrittenLineByLine)
{
    std::string written;
    for (const std::string& write : writesOf(programOn(unit.file(), arguments)))
    {
        EXPECT_EQ(write.find('\n'), write.size() - 1) << write;
        written += write;
    }
    EXPECT_EQ(written, report);
}

TEST(About, RejectsAMissingReport)
{
    for (const char* arguments : {"--about", "--about=", "--about=noArgument", "--about EEPROM"})
    {
        SCOPED_TRACE(arguments);
        Unit unit;
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, noSuchReport);
        EXPECT_EQ(result.calls, callsOf("--about"));
    }
}

TEST(About, RejectsAnUnknownReport)
{
    for (const char* argument : {"xyz", "EEPRO", "EEPROM1", "Diagnostics", "Raw"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        EXPECT_EQ(unit.run(std::string("--about=") + argument).output, noSuchReport);
    }
}

TEST(About, RejectsAMissingReportWithTheOptionOfTheRawReport)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about --eeprom=ICM").output, noSuchReport);
}

} // namespace
