#include "fobrob/settings.h"
#include "support/letter_case.h"
#include "support/unit.h"

namespace
{

// A setting of a radio, with its paths in the unit's file.
struct RadioSetting
{
    std::string option;
    std::string operation; // "Telematics_setWLANPowerStatus"
    std::string readLabel; // "WLAN Power status: "
    std::string setLabel;
    std::string readReport; // "getWLANPowerStatus: "
    std::string setReport;
    std::string key;
    std::string mountedKey;
};

// Returns the text up to and including the first colon and space.
std::string label(const std::string& output)
{
    return output.substr(0, output.find(": ") + 2);
}

std::vector<RadioSetting> radioSettings()
{
    const std::string radios[] = {"wlan", "gprs", "gps", "bluetooth"};
    std::vector<RadioSetting> all;
    for (const Setting& setting : settingsOf("Telematics"))
    {
        const Step& change = setting.change.front();
        const std::string& radio = radios[all.size() / 2];
        all.push_back({setting.option, change.operation(), label(setting.read.output), label(change.output),
                       setting.read.report + ": ", change.report + ": ",
                       "/telematics/" + radio + (all.size() % 2 == 0 ? "/power" : "/startupPower"),
                       "/addOnBoard/" + radio});
    }
    return all;
}

const std::vector<RadioSetting> settings = radioSettings();

TEST(Telematics, PrintsEveryStatus)
{
    Unit unit(R"({"telematics": {"wlan": {}, "gprs": {}, "gps": {}, "bluetooth": {}}})");
    for (const RadioSetting& each : settings)
    {
        SCOPED_TRACE(each.option);
        unit.set(each.key, 1);
        EXPECT_EQ(unit.run("--telematics " + each.option).output, each.readLabel + "ENABLED\n");
        for (const int status : {2, -1, 10, 256})
        {
            unit.set(each.key, status);
            EXPECT_EQ(unit.run("--telematics " + each.option).output, each.readLabel + "UNDEFINED STATUS\n");
        }
    }
}

TEST(Telematics, AcceptsItsWordsInAnyCase)
{
    const struct
    {
        std::string word;
        std::string sent;
        bool stored;
    } cases[] = {{"DISABLED", "0", false}, {"ENABLED", "1", true}};
    for (const RadioSetting& each : settings)
    {
        Unit unit;
        for (const auto& [word, sent, stored] : cases)
            for (const std::string& typed : {word, withCaseSwapped(word)})
            {
                SCOPED_TRACE(each.option + "=" + typed);
                const Result result = unit.run("--telematics " + each.option + "=" + typed);
                EXPECT_EQ(result.output, each.setLabel + word + "\n");
                EXPECT_EQ(result.calls, callsOn("Telematics", {each.operation + "(" + sent + ") = 0"}));
                EXPECT_EQ(unit[each.key], stored);
            }
    }
}

TEST(Telematics, RejectsOtherWordsAndContinues)
{
    Unit unit;
    for (const char* word : {"on", "off", "Enable", "Disable", "1", "0", "10", "ENABLED."})
        for (const RadioSetting& each : settings)
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

TEST(Telematics, ReportsAnErrorForEveryOperationWithoutTheBoard)
{
    Unit unit(R"({"addOnBoard": {"fitted": false, "gps": false}})");
    std::string output;
    for (const RadioSetting& each : settings)
        output += each.readReport + "The board is not fitted\n";
    EXPECT_EQ(unit.run("--telematics").output, output);
    for (const RadioSetting& each : settings)
        EXPECT_EQ(unit.run("--telematics " + each.option + "=DISABLED").output,
                  each.setReport + "The board is not fitted\n");
}

TEST(Telematics, ReportsARadioThatIsNotMounted)
{
    for (const char* radio :
         {"/addOnBoard/wlan", "/addOnBoard/gprs", "/addOnBoard/gps", "/addOnBoard/bluetooth"})
    {
        SCOPED_TRACE(radio);
        Unit unit(R"({"addOnBoard": {}})");
        unit.set(radio, false);
        std::string options, reading, switching;
        for (const RadioSetting& each : settings)
        {
            const bool isMissing = each.mountedKey == radio;
            options += " " + each.option + "=DISABLED";
            reading +=
                isMissing ? each.readReport + "Not supported by this unit\n" : each.readLabel + "ENABLED\n";
            switching +=
                isMissing ? each.setReport + "Not supported by this unit\n" : each.setLabel + "DISABLED\n";
        }
        EXPECT_EQ(unit.run("--telematics").output, reading);
        EXPECT_EQ(unit.run("--telematics" + options).output, switching);
    }
}

TEST(Telematics, AppliesStartupPowerAtTheNextBoot)
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
