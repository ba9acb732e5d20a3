#include "support/unit.h"

#include <gmock/gmock.h>

#include <span>

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

const char* const help = "Category - About\n"
                         "This category is used to get information which is stored in the EEPROM, such as\n"
                         "Unit Serial, ADC values, power cycles etc. Based on the argument passed to the \n"
                         "option, different information will be printed.\n"
                         "\n"
                         "Usage\n"
                         "It is not possible to combine several arguments to get more information with one\n"
                         "call. This category must be passed an argument. The table below contains the \n"
                         "available arguments.\n"
                         "\n"
                         "CATEGORY\tARG\t\tNOTE\n"
                         "--about=\tEEPROM\t\tGet information stored in EEPROM.\n"
                         "--about=\tRawEEPROM\t\tGet RAW EEPROM data.\n"
                         "--about=\tDiagnostic\tGet diagnostic information.\n"
                         "--about=\tADC\t\tGet ADC information.\n";

const char* const refusal = "Error: Version should not take any more options.\n";

const char* const noSuchReport =
    "Invalid argument: Category argument could not be found. Valid are: EEPROM, Diagnostic and ADC.\n";

const char* const noSuchEeprom = "Invalid argument: EEPROM argument should be ICM, or ADDON.\n";

const char* const mainEeprom = "SN=QX2500417;PCB=P0148832;ART=90-20017-11;DATE=2025-03-18;HW=C2;REV=R4\n";
const char* const addOnEeprom = "SN=T0031290;ART=20-10611-01;DATE=2025-02-04;HW=B1\n";

enum class Unsupported
{
    isReported,
    isLeftOut
};

// What a report says of one call, on a healthy unit and where the call fails.
struct Field
{
    const char* operation; // null: no call
    const char* text;      // lines and all
    const char* failureLabel = "";
    Unsupported unsupported = Unsupported::isReported;
    const char* notFitted = nullptr; // instead of a failure with code 18
    unsigned earlierCalls = 0;       // of the same operation in the report
};

constexpr auto isReported = Unsupported::isReported;
constexpr auto isLeftOut = Unsupported::isLeftOut;

constexpr Field eepromFields[] = {
    {"About_getUnitSerial", "Unit serial=QX2500417\n", "getUnitSerial: "},
    {"About_getMainPCBSerial", "Main PCB serial=P0148832\n", "getMainPCBSerial: "},
    {"About_getMainPCBArt", "Main PCB article number=20-10452-03\n", "getMainPCBArt: "},
    {"About_getMainManufacturingDate", "Main manufacturing date=2025-03-18\n", "getMainManufacturingDate: "},
    {"About_getMainHWversion", "Main HW version=C2\n", "getMainHWversion: "},
    {"About_getMainProdRev", "Main prod rev=R4\n", "getMainProdRev: "},
    {"About_getMainProdArtNr", "Main prod art nr=90-20017-11\n", "getMainProdArtNr: "},
    {"About_getNrOfCANConnections", "Number of CAN connections=4\n", "getNrOfCANConnections: "},
    {"About_getNrOfETHConnections", "Number of ethernet connections=2\n", "getNrOfETHConnections: "},
    {"About_getNrOfSerialConnections", "Number of serial connections=3\n", "getNrOfSerialConnections: "},
    {"About_getNrOfUSBConnections", "Number of USB connections=4\n", "getNrOfUSBConnections: "},
    {"About_getNrOfVideoConnections", "Number of video connections=4\n", "getNrOfVideoConnections: "},
    {"About_getNrOfDigIOConnections", "Nr of digital I/O connections=4\n",
     "getNrOfDigIOConnections: ", isLeftOut},
    {"About_getIsDisplayAvailable", "Display available: YES\n", "getIsDisplayAvailable: "},
    {"About_getIsTouchScreenAvailable", "TouchScreen available: YES\n", "getIsTouchScreenAvailable: "},
    {"About_getNrOfCfgInConnections", "Nr of Configurable inputs=6\n",
     "getNrOfCfgInConnections: ", isLeftOut},
    {"About_getNrOfPWMOutConnections", "Nr of PWM outputs=2\n", "getNrOfPWMOutInConnections: ", isLeftOut,
     "getNrOfPWMOutConnections: The board is not fitted\n"},
    {"About_getNrOfButtons", "Nr of configurable buttons=8\n", "getNrOfButtons: ", isLeftOut},
    {nullptr, "\nAddon/Telematics board:\n"},
    {"About_getAddOnPCBSerial", "Addon PCB serial=T0031290\n", "getAddOnPCBSerial: ", isLeftOut,
     "Addon PCB serial=N/A\n"},
    {"About_getAddOnPCBArt", "Addon board article number=20-10611-01\n", "getAddOnPCBArt: ", isLeftOut,
     "Addon board article number=N/A\n"},
    {"About_getAddOnManufacturingDate", "Addon manufacturing date=2025-02-04\n",
     "getAddOnManufacturingDate: ", isLeftOut, "Addon manufacturing date=N/A\n"},
    {"About_getAddOnHWversion", "Addon HW version=B1\n", "getAddOnHWversion: ", isLeftOut,
     "Addon HW version=N/A\n"},
    {"About_getIsBTMounted", "BT is mounted\n", "getIsBTMounted: ", isLeftOut, "BT is mounted: N/A\n"},
    {"About_getIsGPRSMounted", "GPRS is mounted\n", "getIsGPRSMounted: ", isLeftOut,
     "GPRS is mounted: N/A\n"},
    {"About_getIsGPSMounted", "GPS is mounted\n", "getIsGPSMounted: ", isLeftOut, "GPS is mounted: N/A\n"},
    {"About_getIsWLANMounted", "WLAN is mounted\n", "getIsWLANMounted: ", isLeftOut,
     "WLAN is mounted: N/A\n"},
};

constexpr Field diagnosticFields[] = {
    {"Diagnostic_getStartupReason", "StartupReason=Front button OK\n", "getStartupReason: ", isReported},
    {"Diagnostic_getShutDownReason", "ShutdownReason=No error OK\n", "getShutdownReason: ", isLeftOut},
    {"Diagnostic_getHwErrorStatus", "Hw error status=No error OK\n", "getHwErrorStatus: ", isLeftOut},
    {"Diagnostic_getTimer",
     "Run-time above 80C=0 min(s)\n"
     "Run-time between 40C-60C=96520 min(s)\n"
     "Run-time between 60C-70C=4211 min(s)\n"
     "Run-time between 70C-80C=87 min(s)\n"
     "Total heat time=312 min(s)\n"
     "Total run-time=184213 min(s)\n"
     "Total suspend time=20144 min(s)\n",
     "getTimer: ", isLeftOut},
    {"Diagnostic_getMinMaxTemp", "Min temp=-21, max temp=76\n", "getMinMaxTemp: ", isLeftOut},
    {"Diagnostic_getPowerCycles", "Power cycles=1342\n", "getPowerCycles: ", isLeftOut},
    {"Diagnostic_getSSTemp", "SS temp=31\n", "getSSTemp: ", isLeftOut},
    {"Diagnostic_getPCBTemp", "PCB temp=34\n", "getPCBTemp: ", isLeftOut},
    {"Diagnostic_getPMTemp", "CPU temp=48\n", "getPMTemp: ", isLeftOut},
    {"Diagnostic_getPMTemp", "CPU BOARD temp=39\n", "getPMTemp: ", isLeftOut, nullptr, 1},
};

constexpr Field adcFields[] = {
    {"Adc_getVoltage", "VOLTAGE_24VIN: Voltage=24.12\n", "VOLTAGE_24VIN: ", isLeftOut, nullptr, 0},
    {"Adc_getVoltage", "VOLTAGE_24V: Voltage=23.98\n", "VOLTAGE_24V: ", isLeftOut, nullptr, 1},
    {"Adc_getVoltage", "VOLTAGE_12V: Voltage=12.04\n", "VOLTAGE_12V: ", isLeftOut, nullptr, 2},
    {"Adc_getVoltage", "VOLTAGE_12VID: Voltage=12.01\n", "VOLTAGE_12VID: ", isLeftOut, nullptr, 3},
    {"Adc_getVoltage", "VOLTAGE_5V: Voltage=5.02\n", "VOLTAGE_5V: ", isLeftOut, nullptr, 4},
    {"Adc_getVoltage", "VOLTAGE_3V3: Voltage=3.31\n", "VOLTAGE_3V3: ", isLeftOut, nullptr, 5},
    {"Adc_getVoltage", "VOLTAGE_VTFT: Voltage=3.29\n", "VOLTAGE_VTFT: ", isLeftOut, nullptr, 6},
    {"Adc_getVoltage", "VOLTAGE_5VSTB: Voltage=5.04\n", "VOLTAGE_5VSTB: ", isLeftOut, nullptr, 7},
    {"Adc_getVoltage", "VOLTAGE_1V9: Voltage=1.91\n", "VOLTAGE_1V9: ", isLeftOut, nullptr, 8},
    {"Adc_getVoltage", "VOLTAGE_1V8: Voltage=1.8\n", "VOLTAGE_1V8: ", isLeftOut, nullptr, 9},
    {"Adc_getVoltage", "VOLTAGE_1V5: Voltage=1.5\n", "VOLTAGE_1V5: ", isLeftOut, nullptr, 10},
    {"Adc_getVoltage", "VOLTAGE_1V2: Voltage=1.2\n", "VOLTAGE_1V2: ", isLeftOut, nullptr, 11},
    {"Adc_getVoltage", "VOLTAGE_1V05: Voltage=1.05\n", "VOLTAGE_1V05: ", isLeftOut, nullptr, 12},
    {"Adc_getVoltage", "VOLTAGE_1V0: Voltage=1\n", "VOLTAGE_1V0: ", isLeftOut, nullptr, 13},
    {"Adc_getVoltage", "VOLTAGE_0V9: Voltage=0.9\n", "VOLTAGE_0V9: ", isLeftOut, nullptr, 14},
    {"Adc_getVoltage", "VOLTAGE_VREF_INT: Voltage=1.21\n", "VOLTAGE_VREF_INT: ", isLeftOut, nullptr, 15},
    {"Adc_getVoltage", "VOLTAGE_24V_BACKUP: Voltage=23.7\n", "VOLTAGE_24V_BACKUP: ", isLeftOut, nullptr, 16},
    {"Adc_getVoltage", "VOLTAGE_2V5: Voltage=2.5\n", "VOLTAGE_2V5: ", isLeftOut, nullptr, 17},
    {"Adc_getVoltage", "VOLTAGE_1V1: Voltage=1.102\n", "VOLTAGE_1V1: ", isLeftOut, nullptr, 18},
    {"Adc_getVoltage", "VOLTAGE_1V3_PER: Voltage=1.3\n", "VOLTAGE_1V3_PER: ", isLeftOut, nullptr, 19},
    {"Adc_getVoltage", "VOLTAGE_1V3_VDDA: Voltage=1.31\n", "VOLTAGE_1V3_VDDA: ", isLeftOut, nullptr, 20},
    {"Adc_getVoltage", "VOLTAGE_3V3STBY: Voltage=3.3\n", "VOLTAGE_3V3STBY: ", isLeftOut, nullptr, 21},
    {"Adc_getVoltage", "VOLTAGE_VPMIC: Voltage=4.21\n", "VOLTAGE_VPMIC: ", isLeftOut, nullptr, 22},
    {"Adc_getVoltage", "VOLTAGE_VMAIN: Voltage=11.96\n", "VOLTAGE_VMAIN: ", isLeftOut, nullptr, 23},
};

std::string textOf(std::span<const Field> fields)
{
    std::string text;
    for (const Field& field : fields)
        text += field.text;
    return text;
}

// The calls of a run that made `reported` for its report.
Calls callsAround(const Calls& reported)
{
    Calls calls{"GetAdc() = handle", "GetAbout() = handle", "GetDiagnostic() = handle",
                "GetQVAuxPrivate() = handle"};
    calls.insert(calls.end(), reported.begin(), reported.end());
    for (const char* release : {"QVAuxPrivate_release() = 0", "Adc_release() = 0", "Diagnostic_release() = 0",
                                "About_release() = 0"})
        calls.push_back(release);
    return calls;
}

struct Report
{
    const char* argument;
    const char* otherCase;
    std::span<const Field> fields;
};

void PrintTo(const Report& report, std::ostream* stream)
{
    *stream << report.argument;
}

class AboutReport : public testing::TestWithParam<Report>
{
protected:
    std::string run(Unit& unit)
    {
        return unit.run(arguments).output;
    }

    // Sees what the report says where one call fails with the code: `instead` of the field, the rest as ever.
    template <typename Instead>
    void expectAtEachFailure(unsigned code, Instead instead)
    {
        for (std::size_t i = 0; i < fields.size(); ++i)
        {
            const Field& field = fields[i];
            if (!field.operation)
                continue;
            SCOPED_TRACE(field.text);
            Unit unit;
            unit.failsOnce(field.operation, code, field.earlierCalls);
            EXPECT_EQ(run(unit), textOf(fields.first(i)) + instead(field) + textOf(fields.subspan(i + 1)));
        }
    }

    const std::span<const Field> fields = GetParam().fields;
    const std::string arguments = std::string("--about=") + GetParam().argument;
};

INSTANTIATE_TEST_SUITE_P(About, AboutReport,
                         testing::Values(Report{"EEPROM", "eeprom", eepromFields},
                                         Report{"Diagnostic", "diagnostic", diagnosticFields},
                                         Report{"ADC", "adc", adcFields}),
                         [](const auto& report) { return report.param.argument; });

TEST_P(AboutReport, PrintsEveryFieldInItsOrder)
{
    Unit unit;
    EXPECT_EQ(run(unit), textOf(fields));
}

TEST_P(AboutReport, IsFoundWhateverTheCaseOfItsName)
{
    Unit unit;
    EXPECT_EQ(unit.run(std::string("--about=") + GetParam().otherCase).output, textOf(fields));
}

TEST_P(AboutReport, PrintsAFailureInThePlaceOfItsField)
{
    expectAtEachFailure(77,
                        [](const Field& field) { return std::string(field.failureLabel) + "Error 77\n"; });
}

TEST_P(AboutReport, LeavesOutWhatTheUnitDoesNotSupportOrReportsIt)
{
    expectAtEachFailure(2,
                        [](const Field& field)
                        {
                            return field.unsupported == isLeftOut
                                       ? std::string()
                                       : std::string(field.failureLabel) + "Not supported by this unit\n";
                        });
}

TEST_P(AboutReport, TellsABoardThatIsNotFittedFromAFailureWhereItCan)
{
    expectAtEachFailure(18,
                        [](const Field& field)
                        {
                            return field.notFitted
                                       ? std::string(field.notFitted)
                                       : std::string(field.failureLabel) + "The board is not fitted\n";
                        });
}

TEST_P(AboutReport, FallsSilentWhereAnErrorHasNoTextButGoesOnReading)
{
    Unit healthy;
    const std::size_t callsOfAHealthyRun = healthy.run(arguments).calls.size();
    for (std::size_t i = 0; i < fields.size(); ++i)
    {
        const Field& field = fields[i];
        if (!field.operation)
            continue;
        SCOPED_TRACE(field.text);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.failsOnce(field.operation, 77, field.earlierCalls);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, textOf(fields.first(i)) + field.failureLabel);
        EXPECT_EQ(result.calls.back(), "About_release() = 0");
        EXPECT_GE(result.calls.size(), callsOfAHealthyRun);
    }
}

TEST_P(AboutReport, IgnoresTheOptionForTheRawReport)
{
    Unit unit;
    EXPECT_EQ(unit.run(arguments + " --eeprom=addon").output, textOf(fields));
    EXPECT_EQ(unit.run(arguments + " --eeprom=xyz").output, textOf(fields));
    EXPECT_EQ(unit.run(arguments + " --eeprom=").output, textOf(fields));
}

TEST_P(AboutReport, RefusesEachFurtherOptionAndReportsAllTheSame)
{
    Unit unit;
    EXPECT_EQ(unit.run(arguments + " --frequency").output, refusal + textOf(fields));
    EXPECT_EQ(unit.run(arguments + " -h --volume=3 -v").output,
              std::string(refusal) + refusal + refusal + textOf(fields));
}

TEST_P(AboutReport, WritesEachLineAsSoonAsItIsKnown)
{
    const Unit unit;
    std::string written;
    for (const std::string& write : writesOf(programOn(unit.file(), arguments)))
    {
        EXPECT_EQ(write.find('\n'), write.size() - 1) << write;
        written += write;
    }
    EXPECT_EQ(written, textOf(fields));
}

// The category.

TEST(About, FindsNoReportWithoutAValue)
{
    for (const char* arguments : {"--about", "--about=", "--about=noArgument", "--about EEPROM"})
    {
        SCOPED_TRACE(arguments);
        Unit unit;
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, noSuchReport);
        EXPECT_EQ(result.calls, callsAround({}));
    }
}

TEST(About, FindsNoReportOfAnotherName)
{
    for (const char* argument : {"xyz", "EEPRO", "EEPROM1", "Diagnostics", "Raw"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        EXPECT_EQ(unit.run(std::string("--about=") + argument).output, noSuchReport);
    }
}

TEST(About, FindsNoReportEvenWithTheOptionForTheRawReport)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about --eeprom=ICM").output, noSuchReport);
}

TEST(About, RefusesFurtherOptionsWithoutAReportToo)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about --frequency").output, std::string(refusal) + noSuchReport);
    EXPECT_EQ(unit.run("--about=xyz --about=ADC").output, std::string(refusal) + noSuchReport);
}

TEST(About, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--about=RawEEPROM --bogus");
    EXPECT_EQ(result.output, std::string(refusal) + mainEeprom);
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
}

TEST(About, RefusesTheOptionForTheRawReportThatLacksItsValue)
{
    Unit unit;
    const Result result = unit.runComplaining("--about=RawEEPROM --eeprom");
    EXPECT_EQ(result.output, std::string(refusal) + mainEeprom);
    EXPECT_NE(result.errors.find("option '--eeprom' requires an argument"), std::string::npos);
}

TEST(About, ShowsItsHelpBeforeItAsksForAnyModule)
{
    Unit unit;
    for (const char* arguments : {"--about --help", "--about=EEPROM --help", "--about=xyz --help",
                                  "--about=RawEEPROM --eeprom=ADDON --help --frequency"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, Calls{});
    }
}

TEST(About, ShowsItsHelpAfterRefusedOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=ADC --volume --help --frequency").output, std::string(refusal) + help);
}

TEST(About, UsesHandlesThatAreNull)
{
    const struct
    {
        const char* module;
        const char* argument;
        const char* output; // its first line
        const char* release;
    } cases[] = {
        {"GetAbout", "EEPROM", "getUnitSerial: The module handle is not valid\n", "About_release() = 3"},
        {"GetQVAuxPrivate", "RawEEPROM", "getEepromData: The module handle is not valid\n",
         "QVAuxPrivate_release() = 3"},
        {"GetDiagnostic", "Diagnostic", "getStartupReason: The module handle is not valid\n",
         "Diagnostic_release() = 3"},
        {"GetAdc", "ADC", "VOLTAGE_24VIN: The module handle is not valid\n", "Adc_release() = 3"},
    };
    for (const auto& [module, argument, output, release] : cases)
    {
        SCOPED_TRACE(module);
        Unit unit;
        unit.givesNull(module);
        const Result result = unit.run(std::string("--about=") + argument);
        EXPECT_THAT(result.output, StartsWith(output));
        EXPECT_THAT(result.calls, Contains(release));
    }
}

TEST(About, TakesNoNoticeOfAFailedRelease)
{
    Unit unit;
    for (const char* release : {"QVAuxPrivate_release", "Adc_release", "Diagnostic_release", "About_release"})
        unit.fails(release, 77);
    const Result result = unit.run("--about=RawEEPROM");
    EXPECT_EQ(result.output, mainEeprom);
    EXPECT_EQ(result.calls.back(), "About_release() = 77");
}

// The EEPROM report.

TEST(AboutEeprom, ReadsTheFieldsInTheirOrder)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=EEPROM").calls,
              callsAround({"About_getUnitSerial([\"QX2500417\"], 256) = 0",
                           "About_getMainPCBSerial([\"P0148832\"], 256) = 0",
                           "About_getMainPCBArt([\"20-10452-03\"], 256) = 0",
                           "About_getMainManufacturingDate([\"2025-03-18\"], 256) = 0",
                           "About_getMainHWversion([\"C2\"], 256) = 0",
                           "About_getMainProdRev([\"R4\"], 256) = 0",
                           "About_getMainProdArtNr([\"90-20017-11\"], 256) = 0",
                           "About_getNrOfCANConnections([4]) = 0",
                           "About_getNrOfETHConnections([2]) = 0",
                           "About_getNrOfSerialConnections([3]) = 0",
                           "About_getNrOfUSBConnections([4]) = 0",
                           "About_getNrOfVideoConnections([4]) = 0",
                           "About_getNrOfDigIOConnections([4]) = 0",
                           "About_getIsDisplayAvailable([1]) = 0",
                           "About_getIsTouchScreenAvailable([1]) = 0",
                           "About_getNrOfCfgInConnections([6]) = 0",
                           "About_getNrOfPWMOutConnections([2]) = 0",
                           "About_getNrOfButtons([8]) = 0",
                           "About_getAddOnPCBSerial([\"T0031290\"], 256) = 0",
                           "About_getAddOnPCBArt([\"20-10611-01\"], 256) = 0",
                           "About_getAddOnManufacturingDate([\"2025-02-04\"], 256) = 0",
                           "About_getAddOnHWversion([\"B1\"], 256) = 0",
                           "About_getIsBTMounted([1]) = 0",
                           "About_getIsGPRSMounted([1]) = 0",
                           "About_getIsGPSMounted([1]) = 0",
                           "About_getIsWLANMounted([1]) = 0"}));
}

struct TextField
{
    const char* place;
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

// The line of the output that begins with `label`, without it and the newline.
std::string valueBehind(const std::string& output, const std::string& label)
{
    const std::size_t start = ("\n" + output).find("\n" + label);
    if (start == std::string::npos)
        return "no line " + label;
    const std::size_t value = start + label.size();
    return output.substr(value, output.find('\n', value) - value);
}

TEST(AboutEeprom, PrintsTextsOfEveryLengthThatTheDeviceCanGive)
{
    for (const auto& [place, operation, label] : textFields)
        for (const std::size_t length : {0u, 1u, 254u, 255u, 256u})
        {
            SCOPED_TRACE(label + std::to_string(length));
            Unit unit;
            unit.set(place, std::string(length, 'x'));
            EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), std::string(length, 'x'));
        }
}

TEST(AboutEeprom, PrintsATextThatComesWithoutItsTerminator)
{
    for (const auto& [place, operation, label] : textFields)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.set(place, std::string(256, 'x') + "never seen");
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), std::string(256, 'x'));
    }
}

TEST(AboutEeprom, ShowsNothingOfALongTextInTheNextField)
{
    Unit unit;
    unit.set("/about/unitSerial", std::string(300, 'x'));
    unit.ignores("About_getMainPCBSerial");
    const std::string output = unit.run("--about=EEPROM").output;
    EXPECT_EQ(valueBehind(output, "Main PCB serial="), "");
    EXPECT_EQ(valueBehind(output, "Main PCB article number="), "20-10452-03");
}

TEST(AboutEeprom, PrintsATextUpToItsFirstZeroByte)
{
    Unit unit;
    unit.set("/about/unitSerial", std::string("QX\0rest", 7));
    EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, "Unit serial="), "QX");
}

TEST(AboutEeprom, PrintsLettersBeyondThoseOfEnglish)
{
    Unit unit(R"({"about": {"unitSerial": "Ä-1 µ"}, "faults": {"About_getMainPCBSerial": {"code": 77}},
                  "errorTexts": {"77": "Zu heiß"}})");
    const std::string output = unit.run("--about=EEPROM").output;
    EXPECT_EQ(valueBehind(output, "Unit serial="), "Ä-1 µ");
    EXPECT_EQ(valueBehind(output, "getMainPCBSerial: "), "Zu heiß");
}

TEST(AboutEeprom, PrintsATextThatLooksLikeAFormat)
{
    for (const auto& [place, operation, label] : textFields)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.set(place, "100 % %d%s%n%%");
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), "100 % %d%s%n%%");
    }
}

TEST(AboutEeprom, PrintsAnEmptyTextWhereNoneWasWritten)
{
    for (const auto& [place, operation, label] : textFields)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.ignores(operation);
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), "");
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

// Their count keeps what the count before left in it.
constexpr CountField keptCounts[] = {
    {"digitalIoConnections", "About_getNrOfDigIOConnections", "Nr of digital I/O connections="},
    {"configurableInputs", "About_getNrOfCfgInConnections", "Nr of Configurable inputs="},
    {"pwmOutputs", "About_getNrOfPWMOutConnections", "Nr of PWM outputs="},
};

TEST(AboutEeprom, PrintsCountsAsNumbersOfEightBits)
{
    for (const auto& counts :
         {std::span<const CountField>(freshCounts), std::span<const CountField>(keptCounts)})
        for (const auto& [key, operation, label] : counts)
            for (const int count : {0, 65, 128, 255})
            {
                SCOPED_TRACE(label + std::to_string(count));
                Unit unit;
                unit.set(std::string("/about/") + key, count);
                EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), std::to_string(count));
            }
}

TEST(AboutEeprom, Prints255ForACountOfConnectionsThatWasNotWritten)
{
    for (const auto& [key, operation, label] : freshCounts)
    {
        SCOPED_TRACE(label);
        Unit unit;
        unit.ignores(operation);
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, label), "255");
    }
}

TEST(AboutEeprom, RepeatsTheCountBeforeForALaterCountThatWasNotWritten)
{
    const char* const countsBefore[] = {"/about/videoConnections", "/about/digitalIoConnections",
                                        "/about/configurableInputs"};
    for (std::size_t i = 0; i < std::size(keptCounts); ++i)
    {
        SCOPED_TRACE(keptCounts[i].label);
        Unit unit;
        unit.set(countsBefore[i], 17);
        unit.ignores(keptCounts[i].operation);
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, keptCounts[i].label), "17");
    }
}

TEST(AboutEeprom, RepeatsTheLastCountThatWasWrittenAtAll)
{
    Unit unit(R"({"about": {"videoConnections": 9, "digitalIoConnections": null}})");
    unit.fails("About_getNrOfCfgInConnections", 77);
    unit.ignores("About_getNrOfPWMOutConnections");
    EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, "Nr of PWM outputs="), "9");

    Unit nothingWritten;
    for (const char* operation : {"About_getNrOfVideoConnections", "About_getNrOfDigIOConnections",
                                  "About_getNrOfCfgInConnections", "About_getNrOfPWMOutConnections"})
        nothingWritten.ignores(operation);
    const std::string output = nothingWritten.run("--about=EEPROM").output;
    for (const CountField& count : keptCounts)
        EXPECT_EQ(valueBehind(output, count.label), "255");
}

TEST(AboutEeprom, PrintsTheButtonsAsASignedNumber)
{
    for (const char* buttons : {"0", "-1", "256", "2147483647", "-2147483648"})
    {
        SCOPED_TRACE(buttons);
        Unit unit(std::string(R"({"about": {"buttons": )") + buttons + "}}");
        EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, "Nr of configurable buttons="), buttons);
    }
}

TEST(AboutEeprom, PrintsNoButtonsWhereTheirNumberWasNotWritten)
{
    Unit unit;
    unit.ignores("About_getNrOfButtons");
    EXPECT_EQ(valueBehind(unit.run("--about=EEPROM").output, "Nr of configurable buttons="), "0");
}

TEST(AboutEeprom, LeavesOutTheCountsThatTheUnitLacks)
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

TEST(AboutEeprom, SaysWhatIsNotAvailable)
{
    Unit unit(R"({"about": {"display": false, "touchScreen": false}})");
    EXPECT_THAT(unit.run("--about=EEPROM").output, HasSubstr("\n"
                                                             "Display available: NO\n"
                                                             "TouchScreen available: NO\n"));
}

TEST(AboutEeprom, TellsTheDisplayFromTheTouchScreen)
{
    Unit unit(R"({"about": {"display": true, "touchScreen": false}})");
    EXPECT_THAT(unit.run("--about=EEPROM").output, HasSubstr("\n"
                                                             "Display available: YES\n"
                                                             "TouchScreen available: NO\n"));
}

TEST(AboutEeprom, TakesNothingForAvailableThatWasNotWritten)
{
    Unit touchless;
    touchless.ignores("About_getIsTouchScreenAvailable");
    EXPECT_THAT(touchless.run("--about=EEPROM").output,
                HasSubstr("\nDisplay available: YES\nTouchScreen available: NO\n"));
    Unit blind;
    blind.ignores("About_getIsDisplayAvailable");
    EXPECT_THAT(blind.run("--about=EEPROM").output,
                HasSubstr("\nDisplay available: NO\nTouchScreen available: YES\n"));
}

TEST(AboutEeprom, TakesEveryFlagButZeroForYes)
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

TEST(AboutEeprom, SaysWhichRadioIsNotMounted)
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

TEST(AboutEeprom, TakesNoRadioForMountedThatWasNotWritten)
{
    for (const auto& radio : radios)
    {
        SCOPED_TRACE(radio.key);
        Unit unit;
        unit.ignores(radio.operation);
        EXPECT_THAT(unit.run("--about=EEPROM").output, HasSubstr(radio.notMounted));
    }
}

TEST(AboutEeprom, SaysNotApplicableForEveryFieldOfAMissingAddOnBoard)
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

TEST(AboutEeprom, LeavesOutEveryFieldOfAnAddOnBoardThatIsNotSupported)
{
    Unit unit;
    for (const Field& field : std::span(eepromFields).last(8))
        unit.fails(field.operation, 2);
    const Result result = unit.run("--about=EEPROM");
    EXPECT_THAT(result.output, EndsWith("Nr of configurable buttons=8\n\nAddon/Telematics board:\n"));
    EXPECT_THAT(result.calls, Not(Contains(StartsWith("GetErrorStringA"))));
}

TEST(AboutEeprom, ReportsEveryFieldOfAUnitOfWhichNothingCanBeRead)
{
    Unit unit;
    std::string expected;
    for (const Field& field : eepromFields)
        if (field.operation)
        {
            unit.fails(field.operation, 77);
            expected += std::string(field.failureLabel) + "Error 77\n";
        }
        else
            expected += field.text;
    EXPECT_EQ(unit.run("--about=EEPROM").output, expected);
}

// The raw report.

TEST(AboutRawEeprom, PrintsTheMainBoardAsItIs)
{
    Unit unit;
    const Result result = unit.run("--about=RawEEPROM");
    EXPECT_EQ(result.output, mainEeprom);
    EXPECT_EQ(result.calls, callsAround({"QVAuxPrivate_getEepromData(0, [...], 4095) = 0"}));
}

TEST(AboutRawEeprom, IsFoundWhateverTheCaseOfItsName)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=rAwEePrOm").output, mainEeprom);
    EXPECT_EQ(unit.run("--about=rawEEPROM").output, mainEeprom);
}

TEST(AboutRawEeprom, ReadsTheEepromThatTheOptionNames)
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
        EXPECT_EQ(result.calls, callsAround({call}));
    }
}

TEST(AboutRawEeprom, RefusesAnotherEepromWithoutReading)
{
    for (const char* option : {"--eeprom=xyz", "--eeprom=", "--eeprom=noArgument", "--eeprom=ADD",
                               "--eeprom=ICM2", "--eeprom=0", "--eeprom=ADDON --eeprom="})
    {
        SCOPED_TRACE(option);
        Unit unit;
        const Result result = unit.run(std::string("--about=RawEEPROM ") + option);
        EXPECT_EQ(result.output, noSuchEeprom);
        EXPECT_EQ(result.calls, callsAround({}));
    }
}

TEST(AboutRawEeprom, RefusesFurtherOptionsAndReadsAllTheSame)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=RawEEPROM --frequency --eeprom=ADDON -h").output,
              std::string(refusal) + refusal + addOnEeprom);
}

TEST(AboutRawEeprom, ReportsEveryFailure)
{
    for (const auto& [code, text] : {std::pair{2u, "Not supported by this unit"},
                                     std::pair{18u, "The board is not fitted"}, std::pair{77u, "Error 77"}})
    {
        SCOPED_TRACE(code);
        Unit unit;
        unit.fails("QVAuxPrivate_getEepromData", code);
        const Result result = unit.run("--about=RawEEPROM");
        EXPECT_EQ(result.output, std::string("getEepromData: ") + text + "\n");
        EXPECT_EQ(result.calls,
                  callsAround({"QVAuxPrivate_getEepromData(0, [], 4095) = " + std::to_string(code),
                               "GetErrorStringA(" + std::to_string(code) + ") = \"" + text + "\""}));
    }
}

TEST(AboutRawEeprom, ReportsThatAMissingAddOnBoardHasNoEeprom)
{
    Unit unit(R"({"addOnBoard": {"fitted": false}})");
    EXPECT_EQ(unit.run("--about=RawEEPROM --eeprom=ADDON").output,
              "getEepromData: The board is not fitted\n");
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, mainEeprom);
}

TEST(AboutRawEeprom, FallsSilentWhereTheErrorHasNoText)
{
    Unit unit;
    unit.fails("QVAuxPrivate_getEepromData", 77);
    unit.givesNull("GetErrorStringA");
    const Result result = unit.run("--about=RawEEPROM");
    EXPECT_EQ(result.output, "getEepromData: ");
    EXPECT_EQ(result.calls.back(), "About_release() = 0");
}

TEST(AboutRawEeprom, PrintsNothingOfAnErasedEeprom)
{
    Unit blank(R"({"eeprom": {"main": {"text": ""}}})");
    EXPECT_EQ(blank.run("--about=RawEEPROM").output, "");
    Unit onlyTheFirstByte(R"({"eeprom": {"main": {"text": "", "hex": "FF414243", "fill": 65}}})");
    EXPECT_EQ(onlyTheFirstByte.run("--about=RawEEPROM").output, "");
}

TEST(AboutRawEeprom, StopsBeforeTheFirstErasedByteWhereverItIs)
{
    // The last byte that is read is number 4094, counted from 0.
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

TEST(AboutRawEeprom, NeverReadsTheLastByteOfTheEeprom)
{
    Unit unit(R"({"eeprom": {"main": {"hex": "FF"}}})");
    unit.set("/eeprom/main/text", std::string(4095, 'A'));
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, std::string(4095, 'A') + std::string(1, '\0'));
}

TEST(AboutRawEeprom, PrintsZeroBytesAndControlCharactersAsTheyAre)
{
    Unit unit(R"({"eeprom": {"addOn": {"text": "", "hex": "0041000A0D1B007F80FE00"}}})");
    EXPECT_EQ(unit.run("--about=RawEEPROM --eeprom=ADDON").output,
              std::string("\0A\0\n\r\x1b\0\x7f\x80\xfe\0", 11));
}

TEST(AboutRawEeprom, PrintsZeroesWhereNothingWasWritten)
{
    Unit unit;
    unit.ignores("QVAuxPrivate_getEepromData");
    EXPECT_EQ(unit.run("--about=RawEEPROM").output, std::string(4096, '\0'));
}

TEST(AboutRawEeprom, WritesAllBytesAtOnce)
{
    Unit full(R"({"eeprom": {"main": {"text": "line\nline\n", "fill": 10}}})");
    EXPECT_EQ(writesOf(programOn(full.file(), "--about=RawEEPROM")),
              (std::vector<std::string>{"line\nline\n" + std::string(4085, '\n') + std::string(1, '\0')}));
    Unit erasedAtTheEnd(R"({"eeprom": {"main": {"hex": "FF"}}})");
    erasedAtTheEnd.set("/eeprom/main/text", std::string(4094, 'A'));
    EXPECT_EQ(writesOf(programOn(erasedAtTheEnd.file(), "--about=RawEEPROM")),
              (std::vector<std::string>{std::string(4094, 'A')}));
}

// The diagnostic report.

TEST(AboutDiagnostic, ReadsTheFieldsInTheirOrder)
{
    Unit unit;
    EXPECT_EQ(unit.run("--about=DIAGNOSTIC").calls,
              callsAround(
                  {"Diagnostic_getStartupReason([85]) = 0", "GetStartupReasonStringA(85) = \"Front button\"",
                   "Diagnostic_getShutDownReason([31]) = 0", "Diagnostic_getHwErrorStatus([0]) = 0",
                   "GetHwErrorStatusStringA(0) = \"No error\"",
                   "Diagnostic_getTimer([184213, 20144, 312, 96520, 4211, 87, 0]) = 0",
                   "Diagnostic_getMinMaxTemp([-21], [76]) = 0", "Diagnostic_getPowerCycles([1342]) = 0",
                   "Diagnostic_getSSTemp([31]) = 0", "Diagnostic_getPCBTemp([34]) = 0",
                   "Diagnostic_getPMTemp(0, [48], [0]) = 0", "Diagnostic_getPMTemp(1, [39], [0]) = 0"}));
}

TEST(AboutDiagnostic, JudgesTheStartupReason)
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
        EXPECT_EQ(valueBehind(unit.run("--about=Diagnostic").output, "StartupReason="), line);
    }
}

TEST(AboutDiagnostic, JudgesTheShutdownReason)
{
    Unit unit;
    unit.set("/diagnostic/shutdownReason", 31);
    EXPECT_EQ(valueBehind(unit.run("--about=Diagnostic").output, "ShutdownReason="), "No error OK");
    for (const unsigned reason : {0u, 1u, 30u, 32u, 255u, 287u, 65535u})
    {
        SCOPED_TRACE(reason);
        unit.set("/diagnostic/shutdownReason", reason);
        EXPECT_EQ(valueBehind(unit.run("--about=Diagnostic").output, "ShutdownReason="),
                  "Serious error ERROR");
    }
}

TEST(AboutDiagnostic, JudgesTheHardwareStatus)
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
        EXPECT_EQ(valueBehind(unit.run("--about=Diagnostic").output, "Hw error status="), line);
    }
}

TEST(AboutDiagnostic, FallsSilentWhereTheStartupReasonHasNoText)
{
    Unit unit;
    unit.givesNull("GetStartupReasonStringA");
    const Result result = unit.run("--about=Diagnostic");
    EXPECT_EQ(result.output, "StartupReason=");
    EXPECT_THAT(result.calls, Contains("Diagnostic_getPMTemp(1, [39], [0]) = 0"));
    EXPECT_EQ(result.calls.back(), "About_release() = 0");
}

TEST(AboutDiagnostic, FallsSilentWhereTheHardwareStatusHasNoText)
{
    Unit unit;
    unit.givesNull("GetHwErrorStatusStringA");
    const Result result = unit.run("--about=Diagnostic");
    EXPECT_EQ(result.output, "StartupReason=Front button OK\n"
                             "ShutdownReason=No error OK\n"
                             "Hw error status=");
    EXPECT_THAT(result.calls, Contains("Diagnostic_getPMTemp(1, [39], [0]) = 0"));
}

TEST(AboutDiagnostic, FallsSilentWhereAnErrorHasNoText)
{
    Unit unit(R"({"diagnostic": {"shutdownReason": null}})");
    unit.fails("Diagnostic_getPowerCycles", 77);
    unit.givesNull("GetErrorStringA");
    EXPECT_EQ(unit.run("--about=Diagnostic").output, "StartupReason=Front button OK\n" +
                                                         textOf(std::span(diagnosticFields).subspan(2, 3)) +
                                                         "getPowerCycles: ");
}

TEST(AboutDiagnostic, PrintsTheHighestCounters)
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

TEST(AboutDiagnostic, PrintsZeroWhereNothingWasWritten)
{
    const char* const nothing = "StartupReason=Power was applied OK\n"
                                "ShutdownReason=Serious error ERROR\n"
                                "Hw error status=No error OK\n"
                                "Run-time above 80C=0 min(s)\n"
                                "Run-time between 40C-60C=0 min(s)\n"
                                "Run-time between 60C-70C=0 min(s)\n"
                                "Run-time between 70C-80C=0 min(s)\n"
                                "Total heat time=0 min(s)\n"
                                "Total run-time=0 min(s)\n"
                                "Total suspend time=0 min(s)\n"
                                "Min temp=0, max temp=0\n"
                                "Power cycles=0\n"
                                "SS temp=0\n"
                                "PCB temp=0\n"
                                "CPU temp=0\n"
                                "CPU BOARD temp=0\n";
    Unit unit;
    for (const Field& field : diagnosticFields)
        if (field.operation)
            unit.ignores(field.operation);
    EXPECT_EQ(unit.run("--about=Diagnostic").output, nothing);
}

TEST(AboutDiagnostic, RepeatsTheTemperatureBeforeForOneThatWasNotWritten)
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

TEST(AboutDiagnostic, LeavesOutWhatTheUnitLacks)
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

TEST(AboutDiagnostic, ReportsBothReadingsOfTheBoardThatFail)
{
    Unit unit;
    unit.fails("Diagnostic_getPMTemp", 77);
    EXPECT_THAT(unit.run("--about=Diagnostic").output,
                EndsWith("PCB temp=34\ngetPMTemp: Error 77\ngetPMTemp: Error 77\n"));
}

// The report of the voltages.

TEST(AboutAdc, ReadsTheChannelsInTheirOrder)
{
    Calls expected;
    for (const Field& field : adcFields)
    {
        const std::string text = field.text;
        const std::size_t volts = text.find('=') + 1;
        expected.push_back("Adc_getVoltage(" + std::to_string(expected.size()) + ", [" +
                           text.substr(volts, text.size() - volts - 1) + "]) = 0");
    }
    EXPECT_EQ(expected.size(), 24u);
    Unit unit;
    EXPECT_EQ(unit.run("--about=ADC").calls, callsAround(expected));
}

TEST(AboutAdc, PrintsSixSignificantDigits)
{
    const struct
    {
        double volts;
        const char* text;
    } cases[] = {
        {0, "0"},
        {5, "5"},
        {-0.5, "-0.5"},
        {24.123456, "24.1235"},
        {1.0000004, "1"},
        {100000, "100000"},
        {999999.5, "1e+06"},
        {1234567, "1.23457e+06"},
        {0.0001, "0.0001"},
        {0.000012345, "1.2345e-05"},
    };
    for (const auto& [volts, text] : cases)
    {
        SCOPED_TRACE(text);
        Unit unit;
        unit.set("/adc/24VIN", volts);
        EXPECT_EQ(valueBehind(unit.run("--about=ADC").output, "VOLTAGE_24VIN: Voltage="), text);
    }
}

TEST(AboutAdc, PrintsOnlyTheChannelsThatTheUnitHas)
{
    Unit unit;
    for (const char* name : {"24VIN",      "24V", "12VID", "5V",      "3V3",      "VTFT",    "5VSTB",
                             "1V9",        "1V8", "1V5",   "1V2",     "1V05",     "0V9",     "VREF_INT",
                             "24V_BACKUP", "2V5", "1V1",   "1V3_PER", "1V3_VDDA", "3V3STBY", "VPMIC"})
        unit.set(std::string("/adc/") + name, nullptr);
    const Result result = unit.run("--about=ADC");
    EXPECT_EQ(result.output, lines({"VOLTAGE_12V: Voltage=12.04", "VOLTAGE_1V0: Voltage=1",
                                    "VOLTAGE_VMAIN: Voltage=11.96"}));
    EXPECT_EQ(result.calls.size(), 32u);
}

TEST(AboutAdc, ReportsEveryChannelOfAUnitThatCanNotMeasure)
{
    Unit unit;
    unit.fails("Adc_getVoltage", 77);
    std::string expected;
    for (const Field& field : adcFields)
        expected += std::string(field.failureLabel) + "Error 77\n";
    EXPECT_EQ(unit.run("--about=ADC").output, expected);
}

TEST(AboutAdc, PrintsZeroWhereNothingWasWritten)
{
    Unit unit;
    unit.ignores("Adc_getVoltage");
    const std::string output = unit.run("--about=ADC").output;
    EXPECT_EQ(valueBehind(output, "VOLTAGE_24VIN: Voltage="), "0");
    EXPECT_EQ(valueBehind(output, "VOLTAGE_VMAIN: Voltage="), "0");
}

} // namespace
