#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

const char* const help =
    "Category - Telematics\n"
    "Use this category to adjust the settings of the Telematics board functionality, such as: wlan power, gsm/gprs startup power etc. \n"
    "\n"
    "Usage\n"
    "The category should not be passed an argument. If no option is used, all available\n"
    "information about the OnOff functionality will be printed. It is possible to combine \n"
    "several options to get more information with one call. See the table below for \n"
    "available arguments and examples.\n"
    "\n"
    "An examples how options can be combined:\n"
    "Ex1: ./Fobrob --telematics --wlanpower=ENABLED --wlanstartuppower=ENABLED\n"
    "\n"
    "Category\tArg\tOption\t\tArg\t\tNote\n"
    "--telematics\t\t\t\t\t\t\tShow information about Telematics configuration.\n"
    "--telematics\t\t\t--wlanpower\t\t\tGet current wlan power status.\n"
    "--telematics\t\t\t--wlanstartuppower\t\t\tGet current wlan startup power status.\n"
    "--telematics\t\t\t--gsmpower\t\t\tGet current GSM/GPRS power status\n"
    "--telematics\t\t\t--gsmstartuppower\t\t\tGet current GSM/GPRS startup power status\n"
    "--telematics\t\t\t--bluetoothpower\t\t\tGet current bluetooth power status.\n"
    "--telematics\t\t\t--bluetoothstartuppower\t\t\tGet current bluetooth startup power status.\n"
    "--telematics\t\t\t--gpspower\t\t\tGet current GPS power status\n"
    "--telematics\t\t\t--gpsstartuppower\t\t\tGet current GPS startup power status\n"
    "\n"
    "--telematics\t\t\t--wlanpower=\tENABLED/DISABLED\tSet wlan power state.\n"
    "--telematics\t\t\t--wlanstartuppower=\tENABLED/DISABLED\tSet wlan startup power state.\n"
    "--telematics\t\t\t--gsmpower=\tENABLED/DISABLED\tSet GSM/GPRS power state.\n"
    "--telematics\t\t\t--gsmstartuppower=\tENABLED/DISABLED\tSet GSM/GPRS startup power state.\n"
    "--telematics\t\t\t--bluetoothpower=\tENABLED/DISABLED\tSet bluetooth power state.\n"
    "--telematics\t\t\t--bluetoothstartuppower=\tENABLED/DISABLED\tSet bluetooth startup power state.\n"
    "--telematics\t\t\t--gpspower=\tENABLED/DISABLED\tSet GPS power state.\n"
    "--telematics\t\t\t--gpsstartuppower=\tENABLED/DISABLED\tSet GPS startup power state.\n";

struct Setting
{
    std::string option;
    std::string operation; // behind "Telematics_get" and "Telematics_set"
    std::string readLabel;
    std::string setLabel;
    std::string getReport;
    std::string setReport;
    std::string place;   // in the unit file
    std::string mounted; // whether its radio is there
};

// In the order of the work.
const Setting settings[] = {
    {"--wlanpower", "WLANPowerStatus", "WLAN Power status: ", "WLAN power set to: ", "getWLANPowerStatus: ",
     "setWLANPowerStatus: ", "/telematics/wlan/power", "/addOnBoard/wlan"},
    {"--wlanstartuppower", "WLANStartUpPowerStatus",
     "WLAN Startup Power status: ", "WLAN startup power set to: ", "getWLANStartI[PowerStatus: ",
     "setWLANStartupPowerStatus: ", "/telematics/wlan/startupPower", "/addOnBoard/wlan"},
    {"--gsmpower", "GPRSPowerStatus", "GSM Power status: ", "GSM power set to: ", "getGPRSPowerStatus: ",
     "setGPRSPowerStatus: ", "/telematics/gprs/power", "/addOnBoard/gprs"},
    {"--gsmstartuppower", "GPRSStartUpPowerStatus",
     "GSM Startup Power status: ", "GSM startup power set to: ", "getGPRSStartUpPowerStatus: ",
     "setGPRSStartupPowerStatus: ", "/telematics/gprs/startupPower", "/addOnBoard/gprs"},
    {"--gpspower", "GPSPowerStatus", "GPS Power status: ", "GPS power set to: ", "getGPSPowerStatus: ",
     "setGPSPowerStatus: ", "/telematics/gps/power", "/addOnBoard/gps"},
    {"--gpsstartuppower", "GPSStartUpPowerStatus", "GPS Startup Power status: ", "GPS startup power set to: ",
     "getGPSStartUpPowerStatus: ", "setGPSStartUpPowerStatus: ", "/telematics/gps/startupPower",
     "/addOnBoard/gps"},
    {"--bluetoothpower", "BTPowerStatus", "Bluetooth Power status: ", "Bluetooth power set to: ",
     "getBTPowerStatus: ", "setBTPowerStatus: ", "/telematics/bluetooth/power", "/addOnBoard/bluetooth"},
    {"--bluetoothstartuppower", "BTStartUpPowerStatus",
     "Bluetooth Startup Power status: ", "Bluetooth startup power set to: ", "getBTStartUpPowerStatus: ",
     "setBTStartUpPowerStatus: ", "/telematics/bluetooth/startupPower", "/addOnBoard/bluetooth"},
};

std::string getting(const Setting& setting, const std::string& status)
{
    return "Telematics_get" + setting.operation + "([" + status + "]) = 0";
}

std::string changing(const Setting& setting, const std::string& status)
{
    return "Telematics_set" + setting.operation + "(" + status + ") = 0";
}

TEST(Telematics, ReadsAllEightSettingsInOrder)
{
    Unit unit(R"({"telematics": {"wlan": {"power": true, "startupPower": false},
                                 "gprs": {"power": false, "startupPower": true},
                                 "gps": {"power": false, "startupPower": false},
                                 "bluetooth": {"power": true, "startupPower": true}}})");
    const Result result = unit.run("--telematics");
    EXPECT_EQ(result.output,
              lines({"WLAN Power status: ENABLED", "WLAN Startup Power status: DISABLED",
                     "GSM Power status: DISABLED", "GSM Startup Power status: ENABLED",
                     "GPS Power status: DISABLED", "GPS Startup Power status: DISABLED",
                     "Bluetooth Power status: ENABLED", "Bluetooth Startup Power status: ENABLED"}));
    EXPECT_EQ(
        result.calls,
        callsOn("Telematics",
                {"Telematics_getWLANPowerStatus([1]) = 0", "Telematics_getWLANStartUpPowerStatus([0]) = 0",
                 "Telematics_getGPRSPowerStatus([0]) = 0", "Telematics_getGPRSStartUpPowerStatus([1]) = 0",
                 "Telematics_getGPSPowerStatus([0]) = 0", "Telematics_getGPSStartUpPowerStatus([0]) = 0",
                 "Telematics_getBTPowerStatus([1]) = 0", "Telematics_getBTStartUpPowerStatus([1]) = 0"}));
}

TEST(Telematics, ReadsOneSettingAlone)
{
    for (const Setting& each : settings)
        for (const char* noValue : {"", "=", "=noArgument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(each.option + noValue);
            Unit unit(R"({"telematics": {"wlan": {}, "gprs": {}, "gps": {}, "bluetooth": {}}})");
            unit.set(each.place, false);
            const Result result = unit.run("--telematics " + each.option + noValue);
            EXPECT_EQ(result.output, each.readLabel + "DISABLED\n");
            EXPECT_EQ(result.calls, callsOn("Telematics", {getting(each, "0")}));
        }
}

TEST(Telematics, NamesEveryStatus)
{
    Unit unit(R"({"telematics": {"wlan": {}, "gprs": {}, "gps": {}, "bluetooth": {}}})");
    for (const Setting& each : settings)
    {
        SCOPED_TRACE(each.option);
        unit.set(each.place, 1);
        EXPECT_EQ(unit.run("--telematics " + each.option).output, each.readLabel + "ENABLED\n");
        for (const int status : {2, -1, 10, 256})
        {
            unit.set(each.place, status);
            EXPECT_EQ(unit.run("--telematics " + each.option).output, each.readLabel + "UNDEFINED STATUS\n");
        }
    }
}

TEST(Telematics, SwitchesOneSettingAloneInAnyCase)
{
    const struct
    {
        std::string word;
        std::string sent;
        bool kept;
    } cases[] = {{"DISABLED", "0", false}, {"ENABLED", "1", true}};
    for (const Setting& each : settings)
    {
        Unit unit;
        for (const auto& [word, sent, kept] : cases)
            for (const std::string& typed : {word, withCaseSwapped(word)})
            {
                SCOPED_TRACE(each.option + "=" + typed);
                const Result result = unit.run("--telematics " + each.option + "=" + typed);
                EXPECT_EQ(result.output, each.setLabel + word + "\n");
                EXPECT_EQ(result.calls, callsOn("Telematics", {changing(each, sent)}));
                EXPECT_EQ(unit[each.place], kept);
            }
    }
}

TEST(Telematics, SwitchesEverythingInItsOwnOrder)
{
    std::string options, output;
    Calls work;
    for (const Setting& each : settings)
    {
        options = " " + each.option + "=Disabled" + options;
        output += each.setLabel + "DISABLED\n";
        work.push_back(changing(each, "0"));
    }
    Unit unit;
    const Result result = unit.run("--telematics" + options);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.calls, callsOn("Telematics", work));
}

TEST(Telematics, ReadsAndSwitchesInOneRun)
{
    Unit unit;
    EXPECT_EQ(unit.run("--telematics --bluetoothpower=Disabled --gpspower= --wlanstartuppower").output,
              lines({"WLAN Startup Power status: ENABLED", "GPS Power status: ENABLED",
                     "Bluetooth power set to: DISABLED"}));
}

TEST(Telematics, KeepsAValueThroughABareRepetition)
{
    Unit unit;
    for (const Setting& each : settings)
        for (const char* noValue : {"", "="})
        {
            SCOPED_TRACE(each.option + noValue);
            const std::string again = " " + each.option + noValue;
            EXPECT_EQ(unit.run("--telematics " + each.option + "=DISABLED" + again).output,
                      each.setLabel + "DISABLED\n");
        }
}

TEST(Telematics, TakesTheLastOfRepeatedValues)
{
    Unit unit;
    EXPECT_EQ(unit.run("--telematics --gsmpower=ENABLED --gsmpower=DISABLED").output,
              "GSM power set to: DISABLED\n");
    EXPECT_EQ(unit.run("--telematics --gsmpower=ENABLED --gsmpower=noargument").output,
              "GSM Power status: DISABLED\n");
}

TEST(Telematics, RefusesOtherWordsAndGoesOn)
{
    Unit unit;
    for (const char* word : {"on", "off", "Enable", "Disable", "1", "0", "10", "ENABLED."})
        for (const Setting& each : settings)
        {
            SCOPED_TRACE(each.option + "=" + word);
            const Result result = unit.run("--telematics " + each.option + "=" + word);
            EXPECT_EQ(result.output, "Invalid argument: The state argument is not valid.\n");
            EXPECT_EQ(result.calls, callsOn("Telematics", {}));
        }
    EXPECT_EQ(
        unit.run("--telematics --wlanpower=on --gsmpower=DISABLED --gpspower=off --bluetoothpower").output,
        lines({"Invalid argument: The state argument is not valid.", "GSM power set to: DISABLED",
               "Invalid argument: The state argument is not valid.", "Bluetooth Power status: ENABLED"}));
}

TEST(Telematics, ReportsAFailedReadingAndGoesOn)
{
    for (const Setting& failing : settings)
    {
        SCOPED_TRACE(failing.operation);
        Unit unit;
        unit.fails("Telematics_get" + failing.operation, 77);
        std::string output;
        for (const Setting& each : settings)
            output += &each == &failing ? each.getReport + "Error 77\n" : each.readLabel + "ENABLED\n";
        EXPECT_EQ(unit.run("--telematics").output, output);
        EXPECT_EQ(unit.run("--telematics " + failing.option).output, failing.getReport + "Error 77\n");
    }
}

TEST(Telematics, ReportsAFailedSwitchingAndGoesOn)
{
    std::string options;
    for (const Setting& each : settings)
        options += " " + each.option + "=DISABLED";
    for (const Setting& failing : settings)
    {
        SCOPED_TRACE(failing.operation);
        Unit unit;
        unit.fails("Telematics_set" + failing.operation, 77);
        std::string output;
        for (const Setting& each : settings)
            output += &each == &failing ? each.setReport + "Error 77\n" : each.setLabel + "DISABLED\n";
        EXPECT_EQ(unit.run("--telematics" + options).output, output);
        EXPECT_EQ(unit.run("--telematics " + failing.option).output, failing.readLabel + "ENABLED\n");
    }
}

TEST(Telematics, TracesAFailedSwitching)
{
    Unit unit;
    unit.fails("Telematics_setBTPowerStatus", 77);
    EXPECT_EQ(
        unit.run("--telematics --bluetoothpower=ENABLED").calls,
        callsOn("Telematics", {"Telematics_setBTPowerStatus(1) = 77", "GetErrorStringA(77) = \"Error 77\""}));
}

TEST(Telematics, FallsSilentWhereTheErrorHasNoText)
{
    for (const Setting& each : settings)
    {
        SCOPED_TRACE(each.operation);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails("Telematics_get" + each.operation, 77);
        unit.fails("Telematics_set" + each.operation, 77);
        EXPECT_EQ(unit.run("--telematics " + each.option).output, each.getReport);
        const Result result = unit.run("--telematics " + each.option + "=DISABLED");
        EXPECT_EQ(result.output, each.setReport);
        EXPECT_EQ(result.calls.back(), "Telematics_release() = 0");
    }
}

TEST(Telematics, ReportsEverythingOnAUnitWithoutTheBoard)
{
    Unit unit(R"({"addOnBoard": {"fitted": false, "gps": false}})");
    std::string output;
    for (const Setting& each : settings)
        output += each.getReport + "The board is not fitted\n";
    EXPECT_EQ(unit.run("--telematics").output, output);
    for (const Setting& each : settings)
        EXPECT_EQ(unit.run("--telematics " + each.option + "=DISABLED").output,
                  each.setReport + "The board is not fitted\n");
}

TEST(Telematics, ReportsTheOneRadioThatIsNotMounted)
{
    for (const char* radio :
         {"/addOnBoard/wlan", "/addOnBoard/gprs", "/addOnBoard/gps", "/addOnBoard/bluetooth"})
    {
        SCOPED_TRACE(radio);
        Unit unit(R"({"addOnBoard": {}})");
        unit.set(radio, false);
        std::string options, reading, switching;
        for (const Setting& each : settings)
        {
            const bool absent = each.mounted == radio;
            options += " " + each.option + "=DISABLED";
            reading +=
                absent ? each.getReport + "Not supported by this unit\n" : each.readLabel + "ENABLED\n";
            switching +=
                absent ? each.setReport + "Not supported by this unit\n" : each.setLabel + "DISABLED\n";
        }
        EXPECT_EQ(unit.run("--telematics").output, reading);
        EXPECT_EQ(unit.run("--telematics" + options).output, switching);
    }
}

TEST(Telematics, ShowsEverythingDisabledWhereNothingWasWritten)
{
    Unit unit;
    std::string output;
    for (const Setting& each : settings)
    {
        unit.ignores("Telematics_get" + each.operation);
        output += each.readLabel + "DISABLED\n";
    }
    EXPECT_EQ(unit.run("--telematics").output, output);
}

TEST(Telematics, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetTelematics");
    EXPECT_EQ(unit.run("--telematics --wlanpower --gpspower=ENABLED").output,
              lines({"getWLANPowerStatus: The module handle is not valid",
                     "setGPSPowerStatus: The module handle is not valid"}));
}

TEST(Telematics, RefusesAForeignOptionWithoutReading)
{
    Unit unit;
    for (const char* options : {"--frequency", "--power=current", "-h", "-v", "--frequency --volume"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run(std::string("--telematics ") + options);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("Telematics", {}));
    }
}

TEST(Telematics, LetsAForeignOptionThroughBesideItsOwn)
{
    Unit unit;
    for (const Setting& each : settings)
    {
        EXPECT_EQ(unit.run("--telematics --frequency " + each.option).output, each.readLabel + "ENABLED\n");
        EXPECT_EQ(unit.run("--telematics " + each.option + " -h").output, each.readLabel + "ENABLED\n");
    }
}

TEST(Telematics, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result alone = unit.runComplaining("--telematics --bogus");
    EXPECT_EQ(alone.output, "Invalid argument\n");
    EXPECT_EQ(alone.calls, callsOn("Telematics", {}));
    EXPECT_THAT(alone.errors, testing::HasSubstr("unrecognized option '--bogus'"));
    EXPECT_EQ(unit.runComplaining("--telematics --bogus --gpspower=DISABLED").output,
              "GPS power set to: DISABLED\n");
}

TEST(Telematics, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    const Result result = unit.run("--telematics --help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetTelematics() = handle"}));
}

TEST(Telematics, ShowsItsHelpInsteadOfAnyWork)
{
    Unit unit;
    for (const char* options : {"--wlanpower=DISABLED --help", "--help --gpspower", "--frequency --help"})
    {
        SCOPED_TRACE(options);
        const Result result = unit.run(std::string("--telematics ") + options);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetTelematics() = handle"}));
    }
}

TEST(Telematics, StartupPowerComesIntoForceAtTheNextBoot)
{
    Unit unit;
    unit.run("--telematics --wlanstartuppower=DISABLED --gpsstartuppower=DISABLED");
    unit.run("--telematics --gsmpower=DISABLED --bluetoothpower=DISABLED --bluetoothstartuppower=DISABLED");
    EXPECT_EQ(unit.run("--telematics").output,
              lines({"WLAN Power status: ENABLED", "WLAN Startup Power status: DISABLED",
                     "GSM Power status: DISABLED", "GSM Startup Power status: ENABLED",
                     "GPS Power status: ENABLED", "GPS Startup Power status: DISABLED",
                     "Bluetooth Power status: DISABLED", "Bluetooth Startup Power status: DISABLED"}));
    unit.shutDown();
    EXPECT_EQ(unit.run("--telematics").output,
              lines({"WLAN Power status: DISABLED", "WLAN Startup Power status: DISABLED",
                     "GSM Power status: ENABLED", "GSM Startup Power status: ENABLED",
                     "GPS Power status: DISABLED", "GPS Startup Power status: DISABLED",
                     "Bluetooth Power status: DISABLED", "Bluetooth Startup Power status: DISABLED"}));
}

} // namespace
