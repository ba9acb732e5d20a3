// The report of --about=EEPROM. command_lines.cpp lists all fields in order.

#include "support/category_calls.h"
#include "support/text.h"

#include <gmock/gmock.h>

#include <span>

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

struct TextField
{
    const char* path;
    const char* operation;
    const char* label;
};

constexpr TextField textFields[] = {
    {"/about/unitSerial", "About_getUnitSerial", "Unit serial="},
    {"/about/mainPcbSerial", "About_getMainPCBSerial", "Main PCB serial="},
    {"/about/mainPcbArticle", "About_getMainPCBArt", "Main PCB article number="},
    {"/about/mainManufacturingDate", "About_getMainManufacturingDate", "Main manufacturing date="},
    {"/about/mainHwVersion", "About_getMainHWversion", "Main HW version="},
    {"/about/mainProductRevision", "About_getMainProdRev", "Main prod rev="},
    {"/about/mainProductArticle", "About_getMainProdArtNr", "Main prod art nr="},
    {"/addOnBoard/pcbSerial", "About_getAddOnPCBSerial", "Addon PCB serial="},
    {"/addOnBoard/pcbArticle", "About_getAddOnPCBArt", "Addon board article number="},
    {"/addOnBoard/manufacturingDate", "About_getAddOnManufacturingDate", "Addon manufacturing date="},
    {"/addOnBoard/hwVersion", "About_getAddOnHWversion", "Addon HW version="},
};

TEST(AboutEeprom, PrintsTextsOfEveryLengthUpToTheBuffer)
{
    for (const auto& [path, operation, label] : textFields)
        for (const std::size_t length : {0u, 1u, 254u, 255u, 256u})
        {
            SCOPED_TRACE(label + std::to_string(length));
            Unit unit;
            unit.set(path, std::string(length, 'x'));
            EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, label), std::string(length, 'x'));
        }
}

TEST(AboutEeprom, PrintsATextWithoutATerminator)
{
    for (const auto& [path, operation, label] : textFields)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.set(path, std::string(256, 'x') + "never seen");
        EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, label), std::string(256, 'x'));
    }
}

TEST(AboutEeprom, DoesNotPrintALongTextIntoTheNextField)
{
    Unit unit;
    unit.set("/about/unitSerial", std::string(300, 'x'));
    unit.ignores("About_getMainPCBSerial");
    const std::string output = unit.run("--about=EEPROM").output;
    EXPECT_EQ(valueAfter(output, "Main PCB serial="), "");
    EXPECT_EQ(valueAfter(output, "Main PCB article number="), "20-10452-03");
}

TEST(AboutEeprom, PrintsATextUpToItsFirstZeroByte)
{
    Unit unit;
    unit.set("/about/unitSerial", std::string("QX\0rest", 7));
    EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, "Unit serial="), "QX");
}

TEST(AboutEeprom, PrintsUtf8Unchanged)
{
    Unit unit(R"({"about": {"unitSerial": "Ä-1 µ"}, "faults": {"About_getMainPCBSerial": {"code": 77}},
                  "errorTexts": {"77": "Zu heiß"}})");
    const std::string output = unit.run("--about=EEPROM").output;
    EXPECT_EQ(valueAfter(output, "Unit serial="), "Ä-1 µ");
    EXPECT_EQ(valueAfter(output, "getMainPCBSerial: "), "Zu heiß");
}

TEST(AboutEeprom, PrintsAFormatStringUnchanged)
{
    for (const auto& [path, operation, label] : textFields)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.set(path, "100 % %d%s%n%%");
        EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, label), "100 % %d%s%n%%");
    }
}

struct CountField
{
    const char* key;
    const char* operation;
    const char* label;
};

constexpr CountField freshCounts[] = {
    {"canConnections", "About_getNrOfCANConnections", "Number of CAN connections="},
    {"ethernetConnections", "About_getNrOfETHConnections", "Number of ethernet connections="},
    {"serialConnections", "About_getNrOfSerialConnections", "Number of serial connections="},
    {"usbConnections", "About_getNrOfUSBConnections", "Number of USB connections="},
    {"videoConnections", "About_getNrOfVideoConnections", "Number of video connections="},
};

// If the unit writes no count, that of the previous field is printed.
constexpr CountField keptCounts[] = {
    {"digitalIoConnections", "About_getNrOfDigIOConnections", "Nr of digital I/O connections="},
    {"configurableInputs", "About_getNrOfCfgInConnections", "Nr of Configurable inputs="},
    {"pwmOutputs", "About_getNrOfPWMOutConnections", "Nr of PWM outputs="},
};

TEST(AboutEeprom, PrintsCountsAsUnsigned8BitNumbers)
{
    for (const auto& counts :
         {std::span<const CountField>(freshCounts), std::span<const CountField>(keptCounts)})
        for (const auto& [key, operation, label] : counts)
            for (const int count : {0, 65, 128, 255})
            {
                SCOPED_TRACE(label + std::to_string(count));
                Unit unit;
                unit.set(std::string("/about/") + key, count);
                EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, label), std::to_string(count));
            }
}

TEST(AboutEeprom, RepeatsThePreviousCountIfALaterOneIsNotWritten)
{
    const char* const countsBefore[] = {"/about/videoConnections", "/about/digitalIoConnections",
                                        "/about/configurableInputs"};
    for (std::size_t i = 0; i < std::size(keptCounts); ++i)
    {
        SCOPED_TRACE(keptCounts[i].label);
        Unit unit;
        unit.set(countsBefore[i], 17);
        unit.ignores(keptCounts[i].operation);
        EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, keptCounts[i].label), "17");
    }
}

TEST(AboutEeprom, RepeatsTheLastWrittenCount)
{
    Unit unit(R"({"about": {"videoConnections": 9, "digitalIoConnections": null}})");
    unit.fails("About_getNrOfCfgInConnections", 77);
    unit.ignores("About_getNrOfPWMOutConnections");
    EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, "Nr of PWM outputs="), "9");

    Unit nothingWritten;
    for (const char* operation : {"About_getNrOfVideoConnections", "About_getNrOfDigIOConnections",
                                  "About_getNrOfCfgInConnections", "About_getNrOfPWMOutConnections"})
        nothingWritten.ignores(operation);
    const std::string output = nothingWritten.run("--about=EEPROM").output;
    for (const CountField& count : keptCounts)
        EXPECT_EQ(valueAfter(output, count.label), "255");
}

TEST(AboutEeprom, PrintsTheNumberOfButtonsAsSigned)
{
    for (const char* buttons : {"0", "-1", "256", "2147483647", "-2147483648"})
    {
        SCOPED_TRACE(buttons);
        Unit unit(std::string(R"({"about": {"buttons": )") + buttons + "}}");
        EXPECT_EQ(valueAfter(unit.run("--about=EEPROM").output, "Nr of configurable buttons="), buttons);
    }
}

TEST(AboutEeprom, OmitsTheCountsThatTheUnitDoesNotSupport)
{
    Unit unit(R"({"about": {"digitalIoConnections": null, "configurableInputs": null,
                            "pwmOutputs": null, "buttons": null}})");
    const Result result = unit.run("--about=EEPROM");
    EXPECT_THAT(result.output, HasSubstr("Number of video connections=4\n"
                                         "Display available: YES\n"
                                         "TouchScreen available: YES\n"
                                         "\n"
                                         "Addon/Telematics board:\n"));
    EXPECT_THAT(result.calls, Not(Contains(StartsWith("GetErrorStringA"))));
}

TEST(AboutEeprom, PrintsNoForMissingEquipment)
{
    Unit unit(R"({"about": {"display": false, "touchScreen": false}})");
    EXPECT_THAT(unit.run("--about=EEPROM").output, HasSubstr("\n"
                                                             "Display available: NO\n"
                                                             "TouchScreen available: NO\n"));
}

TEST(AboutEeprom, PrintsTheDisplayAndTheTouchScreenIndependently)
{
    Unit unit(R"({"about": {"display": true, "touchScreen": false}})");
    EXPECT_THAT(unit.run("--about=EEPROM").output, HasSubstr("\n"
                                                             "Display available: YES\n"
                                                             "TouchScreen available: NO\n"));
}

TEST(AboutEeprom, PrintsEveryNonzeroFlagAsYes)
{
    for (const int flag : {2, 128, 255})
    {
        SCOPED_TRACE(flag);
        Unit unit;
        unit.set("/about", {{"display", flag}, {"touchScreen", flag}});
        unit.set("/addOnBoard", {{"bluetooth", flag}, {"gprs", flag}, {"gps", flag}, {"wlan", flag}});
        const Result result = unit.run("--about=EEPROM");
        EXPECT_EQ(result.output, Unit().run("--about=EEPROM").output);
        EXPECT_THAT(result.calls, Contains("About_getIsWLANMounted([" + std::to_string(flag) + "]) = 0"));
    }
}

constexpr struct
{
    const char* key;
    const char* operation;
    const char* mounted;
    const char* notMounted;
} radios[] = {
    {"bluetooth", "About_getIsBTMounted", "\nBT is mounted\n", "\nBT is not mounted\n"},
    {"gprs", "About_getIsGPRSMounted", "\nGPRS is mounted\n", "\nGPRS is not mounted\n"},
    {"gps", "About_getIsGPSMounted", "\nGPS is mounted\n", "\nGPS is not mounted\n"},
    {"wlan", "About_getIsWLANMounted", "\nWLAN is mounted\n", "\nWLAN is not mounted\n"},
};

TEST(AboutEeprom, PrintsWhichRadioIsNotMounted)
{
    for (const auto& missing : radios)
    {
        SCOPED_TRACE(missing.key);
        Unit unit;
        unit.set(std::string("/addOnBoard/") + missing.key, false);
        const std::string output = unit.run("--about=EEPROM").output;
        for (const auto& radio : radios)
            EXPECT_THAT(output, HasSubstr(&radio == &missing ? radio.notMounted : radio.mounted));
    }
}

TEST(AboutEeprom, PrintsNotAvailableForEveryFieldOfAMissingAddOnBoard)
{
    Unit unit(R"({"addOnBoard": {"fitted": false}})");
    const Result result = unit.run("--about=EEPROM");
    EXPECT_THAT(result.output, EndsWith("Nr of configurable buttons=8\n"
                                        "\n"
                                        "Addon/Telematics board:\n"
                                        "Addon PCB serial=N/A\n"
                                        "Addon board article number=N/A\n"
                                        "Addon manufacturing date=N/A\n"
                                        "Addon HW version=N/A\n"
                                        "BT is mounted: N/A\n"
                                        "GPRS is mounted: N/A\n"
                                        "GPS is mounted: N/A\n"
                                        "WLAN is mounted: N/A\n"));
    EXPECT_THAT(result.calls, Not(Contains(StartsWith("GetErrorStringA"))));
}

TEST(AboutEeprom, OmitsEveryFieldOfAnUnsupportedAddOnBoard)
{
    Unit unit;
    for (const TextField& field : std::span(textFields).last(4))
        unit.fails(field.operation, 2);
    for (const auto& radio : radios)
        unit.fails(radio.operation, 2);
    const Result result = unit.run("--about=EEPROM");
    EXPECT_THAT(result.output, EndsWith("Nr of configurable buttons=8\n\nAddon/Telematics board:\n"));
    EXPECT_THAT(result.calls, Not(Contains(StartsWith("GetErrorStringA"))));
}

} // namespace
