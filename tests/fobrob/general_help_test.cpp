#include "fobrob/general.h"
#include "support/unit.h"

namespace
{

std::vector<std::string> linesPrinted(const std::string& arguments)
{
    Unit unit;
    return splitLines(unit.run(arguments).output);
}

TEST(GeneralHelp, IsPrintedByteForByte)
{
    Unit unit;
    EXPECT_EQ(unit.run("-h").output, helpScreen("general"));
    EXPECT_EQ(unit.run("--help").output, helpScreen("general"));
}

TEST(GeneralHelp, EndsWithAnEmptyLine)
{
    const std::vector<std::string> printed = linesPrinted("-h");
    ASSERT_EQ(printed.size(), 25u);
    EXPECT_EQ(printed.back(), "");
}

TEST(GeneralHelp, PadsItsIntroductionTo275Characters)
{
    const std::vector<std::string> printed = linesPrinted("-h");
    EXPECT_EQ((printed.at(7) + "\n" + printed.at(8) + "\n" + printed.at(9)).size(), 275u);
}

TEST(GeneralHelp, HasABannerWithLinesOfEqualLength)
{
    const std::vector<std::string> printed = linesPrinted("-h");
    for (std::size_t line = 0; line < 6; ++line)
        EXPECT_EQ(printed.at(line).size(), 49u) << printed.at(line);
    EXPECT_EQ(printed.at(6), "");
}

TEST(GeneralHelp, DrawsItsBannerInAscii)
{
    const std::string words = "Console edition";
    std::vector<std::string> printed = linesPrinted("-h");
    ASSERT_EQ(printed.at(5).substr(0, 24 + words.size()), std::string(24, ' ') + words);
    printed[5].erase(24, words.size());
    for (std::size_t line = 0; line < 6; ++line)
        EXPECT_EQ(printed[line].find_first_not_of(" _/\\|(),'`"), std::string::npos) << printed[line];
}

TEST(ProgramVersion, IsPrintedByteForByte)
{
    Unit unit;
    EXPECT_EQ(unit.run("-v").output, "fobrob 2.9.0.0\n"
                                     "\n"
                                     "Fobrob is the property of the Fobrob project.\n"
                                     "\n"
                                     "Written by the Fobrob project.\n");
}

TEST(ProgramVersion, HasFourNumbers)
{
    EXPECT_EQ(programVersionMajor(), 2);
    EXPECT_EQ(programVersionMinor(), 9);
    EXPECT_EQ(programVersionRelease(), 0);
    EXPECT_EQ(programVersionBuild(), 0);
}

TEST(ProgramVersion, ExitsWithSuccess)
{
    program_name = "fobrob";
    EXPECT_EXIT(printVersion(), testing::ExitedWithCode(0), "");
}

TEST(OptionList, IsPrintedByteForByte)
{
    Unit unit;
    EXPECT_EQ(unit.run("--list").output, helpScreen("list"));
}

TEST(OptionList, Has197Lines)
{
    const std::vector<std::string> printed = linesPrinted("--list");
    ASSERT_EQ(printed.size(), 197u);
    EXPECT_EQ(printed.front(),
              "List with the available categories, arguments and options which can be used with Fobrob.");
    EXPECT_EQ(printed.back(),
              "--telematics\t\t\t--gpsstartuppower=\tENABLED/DISABLED\tSet GPS startup power state.");
    EXPECT_EQ(printed[29], "\t\t\t\t\t\t");
    EXPECT_EQ(printed[58], "\t\t\t\t");
}

TEST(OptionList, HasItsSectionsInOrder)
{
    std::vector<std::string> heads;
    for (const std::string& line : linesPrinted("--list"))
        if (line.starts_with("-") && !line.starts_with("--"))
            heads.push_back(line);
    EXPECT_EQ(heads,
              (std::vector<std::string>{"-ABOUT", "-ADVANCED", "-BACKLIGHT", "-BUZZER", "-CAN", "-DIGITAL IO",
                                        "-TEMPERATURE", "-HEATER", "-POWER", "-LED", "-LIGHTSENSOR",
                                        "-ON/OFF", "-VERSION", "-TOUCH", "-TELEMATICS (optional)"}));
}

// The exception is the help of --can, which is written line by line.
TEST(GeneralTexts, AreWrittenWithOneWrite)
{
    Unit unit;
    for (const char* arguments :
         {"-h", "--help", "--list", "-v", "--version --help", "--temperature --help", "--power --help",
          "--heater --help", "--about --help", "--led --help", "--digitalio --help", "--onoff --help",
          "--advanced --help", "--buzzer --help", "--telematics --help", "--touch --help",
          "--backlight --help", "--lightsensor --help"})
    {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(writesOf(programOn(unit.file(), arguments)),
                  std::vector<std::string>{unit.run(arguments).output});
    }
}

// Write errors are ignored.
TEST(GeneralTexts, ExitWithSuccessIfTheyCannotBeWritten)
{
    const Unit unit;
    for (const char* arguments :
         {"-h", "--list", "-v", "", "--version", "--lightsensor", "--about=EEPROM", "--about=RawEEPROM"})
    {
        const Outcome outcome =
            runCommand(throughShell("exec \"$@\" >/dev/full", programOn(unit.file(), arguments)));
        EXPECT_EQ(outcome.status, 0) << arguments;
        EXPECT_EQ(outcome.errors, "") << arguments;
    }
}

} // namespace
