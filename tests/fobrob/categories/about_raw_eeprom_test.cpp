// The report of --about=RawEEPROM.

#include "support/category_calls.h"

namespace
{

const std::string error = "Error: Version should not take any more options.\n";

const char* const noSuchEeprom = "Invalid argument: EEPROM argument should be ICM, or ADDON.\n";

const char* const mainEeprom = "SN=QX2500417;PCB=P0148832;ART=90-20017-11;DATE=2025-03-18;HW=C2;REV=R4\n";
const char* const addOnEeprom = "SN=T0031290;ART=20-10611-01;DATE=2025-02-04;HW=B1\n";

TEST(AboutRawEeprom, UsesTheLastEepromOption)
{
    const struct
    {
        const char* option;
        const char* output;
        const char* call;
    } cases[] = {
        {"--eeprom=ICM", mainEeprom, "QVAuxPrivate_getEepromData(0, [...], 4095) = 0"},
        {"--eeprom=icm", mainEeprom, "QVAuxPrivate_getEepromData(0, [...], 4095) = 0"},
        {"--eeprom=ADDON", addOnEeprom, "QVAuxPrivate_getEepromData(1, [...], 4095) = 0"},
        {"--eeprom=addon", addOnEeprom, "QVAuxPrivate_getEepromData(1, [...], 4095) = 0"},
        {"--eeprom AddOn", addOnEeprom, "QVAuxPrivate_getEepromData(1, [...], 4095) = 0"},
        {"--eeprom=ICM --eeprom=ADDON", addOnEeprom, "QVAuxPrivate_getEepromData(1, [...], 4095) = 0"},
        {"--eeprom=xyz --eeprom=ICM", mainEeprom, "QVAuxPrivate_getEepromData(0, [...], 4095) = 0"},
    };
    for (const auto& [option, output, call] : cases)
    {
        SCOPED_TRACE(option);
        Unit unit;
        const Result result = unit.run(std::string("--about=RawEEPROM ") + option);
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.calls, callsOf("--about", {call}));
    }
}

TEST(AboutRawEeprom, RejectsAnUnknownEepromWithoutReading)
{
    for (const char* option : {"--eeprom=xyz", "--eeprom=", "--eeprom=noArgument", "--eeprom=ADD",
                               "--eeprom=ICM2", "--eeprom=0", "--eeprom=ADDON --eeprom="})
    {
        SCOPED_TRACE(option);
        Unit unit;
        const Result result = unit.run(std::string("--about=RawEEPROM ") + option);
        EXPECT_EQ(result.output, noSuchEeprom);
        EXPECT_EQ(result.calls, callsOf("--about"));
    }
}

TEST(AboutRawEeprom, RequiresAValueForItsOption)
{
    Unit unit;
    const Result result = unit.runExpectingErrors("--about=RawEEPROM --eeprom");
    EXPECT_EQ(result.output, error + mainEeprom);
    EXPECT_NE(result.errors.find("option '--eeprom' requires an argument"), std::string::npos);
}

TEST(AboutRawEeprom, IsPrintedAfterTheErrorsOfOtherOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=RawEEPROM --frequency --eeprom=ADDON -h").output,
              error + error + addOnEeprom);
}

TEST(AboutRawEeprom, IsPrintedAfterTheDiagnosticOfAnUnknownOption)
{
    Unit unit;
    const Result result = unit.runExpectingErrors("--about=RawEEPROM --bogus");
    EXPECT_EQ(result.output, error + mainEeprom);
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
}

TEST(AboutRawEeprom, ReportsThatAMissingAddOnBoardHasNoEeprom)
{
    Unit unit(R"({"addOnBoard": {"fitted": false}})");
    EXPECT_EQ(unit.run("--about=RawEEPROM --eeprom=ADDON").output,
              "getEepromData: The board is not fitted\n");
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, mainEeprom);
}

TEST(AboutRawEeprom, PrintsNothingForAnErasedEeprom)
{
    Unit blank(R"({"eeprom": {"main": {"text": ""}}})");
    EXPECT_EQ(blank.run("--about=RawEEPROM").output, "");
    Unit onlyTheFirstByte(R"({"eeprom": {"main": {"text": "", "hex": "FF414243", "fill": 65}}})");
    EXPECT_EQ(onlyTheFirstByte.run("--about=RawEEPROM").output, "");
}

TEST(AboutRawEeprom, StopsBeforeTheFirstErasedByte)
{
    // Byte 4094 is the last one that is read.
    for (const std::size_t length : {1u, 2u, 4092u, 4093u, 4094u})
    {
        SCOPED_TRACE(length);
        Unit unit(R"({"eeprom": {"main": {"hex": "FF", "fill": 66}}})");
        unit.set("/eeprom/main/text", std::string(length, 'A'));
        EXPECT_EQ(unit.run("--about=RawEEPROM").output, std::string(length, 'A'));
    }
}

TEST(AboutRawEeprom, PrintsAnEepromWithoutAnErasedByteToTheEndOfTheBuffer)
{
    Unit unit(R"({"eeprom": {"main": {"text": "begin", "fill": 65}}})");
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, "begin" + std::string(4090, 'A') + std::string(1, '\0'));
}

TEST(AboutRawEeprom, DoesNotReadTheLastByteOfTheEeprom)
{
    Unit unit(R"({"eeprom": {"main": {"hex": "FF"}}})");
    unit.set("/eeprom/main/text", std::string(4095, 'A'));
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, std::string(4095, 'A') + std::string(1, '\0'));
}

TEST(AboutRawEeprom, PrintsZeroBytesAndControlCharactersUnchanged)
{
    Unit unit(R"({"eeprom": {"addOn": {"text": "", "hex": "0041000A0D1B007F80FE00"}}})");
    EXPECT_EQ(unit.run("--about=RawEEPROM --eeprom=ADDON").output,
              std::string("\0A\0\n\r\x1b\0\x7f\x80\xfe\0", 11));
}

TEST(AboutRawEeprom, IsWrittenWithOneWrite)
{
    Unit full(R"({"eeprom": {"main": {"text": "line\nline\n", "fill": 10}}})");
    EXPECT_EQ(writesOf(programOn(full.file(), "--about=RawEEPROM")),
              (std::vector<std::string>{"line\nline\n" + std::string(4085, '\n') + std::string(1, '\0')}));
    Unit erasedAtTheEnd(R"({"eeprom": {"main": {"hex": "FF"}}})");
    erasedAtTheEnd.set("/eeprom/main/text", std::string(4094, 'A'));
    EXPECT_EQ(writesOf(programOn(erasedAtTheEnd.file(), "--about=RawEEPROM")),
              (std::vector<std::string>{std::string(4094, 'A')}));
}

} // namespace
