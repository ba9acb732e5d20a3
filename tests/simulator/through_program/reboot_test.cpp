#include "support/unit.h"

#include <algorithm>

namespace
{

// All these settings differ from the defaults.
const char* const changed = R"({
    "buzzer": {"frequency": 800, "volume": 5, "enabled": true},
    "backlight": {"intensity": 7, "automatic": true, "filter": [2, 3, 4, 5], "ledDimming": true},
    "frontLed": {"frequency": 2.5, "dutyCycle": 10, "color": "red", "pulses": 3, "idleTime": 9, "startup": false},
    "can": {"baudrates": [125, 125, 125, 125]},
    "config": {"shortPressAction": "none", "longPressAction": "none", "longPressTime": 1000,
               "onOffSignalAction": "suspend", "onOffSignalTime": 9, "powerOnStartup": true,
               "startupTrigger": 1, "suspendMaxTime": 7, "heatingLimit": 3,
               "startupPower": {"video": 0, "can": false, "externalFan": true}},
    "touch": {"profile": "mouse", "rightClickTime": 1},
    "telematics": {"wlan": {"power": false, "startupPower": false},
                   "gprs": {"power": false, "startupPower": false},
                   "gps": {"power": false, "startupPower": false},
                   "bluetooth": {"power": false, "startupPower": false}}
})";

// Returns the lines that the categories print for all settings.
std::vector<std::string> settings(Unit& unit)
{
    std::vector<std::string> lines;
    for (const char* category : {"--buzzer", "--backlight", "--led", "--can", "--onoff", "--power=Current",
                                 "--power=Startup", "--telematics", "--touch --mode",
                                 "--touch --setting=TS_RIGHT_CLICK_TIME", "--heater --temperature"})
        for (const std::string& line : splitLines(unit.run(category).output))
            lines.push_back(line);
    return lines;
}

TEST(Reboot, HappensInTheNextProcess)
{
    Unit unit(R"({"diagnostic": {"powerCycles": 7}})");
    unit.shutDown();
    EXPECT_EQ(unit["/boot/running"], false);
    unit.run("--buzzer --volume");
    unit.run("--buzzer --volume");
    EXPECT_EQ(unit["/boot/running"], true);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
}

TEST(Reboot, CountsAPowerCycleAtTheNextCall)
{
    Unit unit(R"({"diagnostic": {"powerCycles": 10}})");
    unit.run("--advanced --shutdown");
    EXPECT_EQ(unit["/boot/running"], false);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 10);
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/boot/running"], true);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 11);
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 11);
}

TEST(Reboot, CountsAPowerCycleIfTheNextCallIsAShutdown)
{
    Unit unit(R"({"diagnostic": {"powerCycles": 10}})");
    unit.shutDown();
    unit.shutDown();
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 11);
}

TEST(Reboot, DoesNotHappenIfTheShutdownFails)
{
    Unit unit;
    unit.fails("FirmwareUpgrade_shutDown", 77);
    unit.run("--advanced --shutdown");
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/diagnostic/powerCycles"], nullptr);
}

TEST(Reboot, EntersRescueModeOnce)
{
    Unit unit;
    unit.run("--advanced --rescue_mode_next_boot");
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 0\n");
    unit.shutDown();
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 1\n");
    unit.shutDown();
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 0\n");
}

TEST(Reboot, KeepsEverySetting)
{
    Unit unit(changed);
    unit.shutDown();
    const auto before = settings(unit);
    unit.shutDown();
    EXPECT_EQ(settings(unit), before);
    unit.run("--advanced --rescue_mode_next_boot");
    unit.shutDown();
    EXPECT_EQ(settings(unit), before);
}

TEST(Reboot, RestoresDefaultsAfterAFactoryReset)
{
    Unit fresh;
    fresh.shutDown();
    Unit unit(changed);
    unit.shutDown();
    const auto before = settings(unit);
    unit.run("--advanced --rescue_mode_next_boot --factory_reset");
    EXPECT_EQ(settings(unit), before);
    for (const std::string& line : settings(fresh))
        EXPECT_EQ(std::ranges::count(before, line), 0) << line;
    unit.shutDown();
    EXPECT_EQ(settings(unit), settings(fresh));
    EXPECT_EQ(unit.run("--advanced --system_mode").output, "System mode: 1\n");
}

TEST(Reboot, ResetsSettingsOnlyOnce)
{
    Unit unit;
    unit.run("--advanced --rescue_mode_next_boot --factory_reset");
    unit.shutDown();
    unit.run("--buzzer --frequency=800");
    unit.shutDown();
    EXPECT_EQ(unit.run("--buzzer --frequency").output, "Buzzer Frequency: 800\n");
}

TEST(Reboot, ResetsOnlySettings)
{
    const std::string digest(64, '1');
    Unit unit(R"({"about": {"unitSerial": "QX1"}, "versions": {"ss": "9.9.9.9"},
                  "diagnostic": {"powerCycles": 10, "totalRunTime": 5},
                  "firmware": {"ss": {"digest": ")" +
              digest + R"(", "bytes": 3}}})");
    unit.run("--advanced --rescue_mode_next_boot --factory_reset");
    unit.shutDown();
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/about/unitSerial"], "QX1");
    EXPECT_EQ(unit["/versions/ss"], "9.9.9.9");
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 11);
    EXPECT_EQ(unit["/diagnostic/totalRunTime"], 5);
    EXPECT_EQ(unit["/firmware/ss/digest"], digest);
}

TEST(Reboot, AppliesTheLastRequestedMode)
{
    Unit unit(changed);
    unit.run("--advanced --rescue_mode_next_boot --factory_reset");
    unit.run("--advanced --rescue_mode_next_boot");
    unit.shutDown();
    EXPECT_EQ(unit.run("--buzzer --frequency").output, "Buzzer Frequency: 800\n");
}

TEST(Reboot, MustBeCompletedEachTime)
{
    Unit unit;
    unit.shutDown();
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/boot/completed"], false);
    unit.run("--advanced --boot_completed");
    EXPECT_EQ(unit["/boot/completed"], true);
    unit.shutDown();
    unit.run("--lightsensor");
    EXPECT_EQ(unit["/boot/completed"], false);
}

TEST(Reboot, IsNotNeededToResetTheSystemSupervisor)
{
    Unit unit(changed);
    unit.shutDown();
    Unit fresh;
    fresh.shutDown();
    const std::string buzzer = unit.run("--buzzer").output;
    unit.run("--advanced --factory");
    EXPECT_EQ(unit.run("--onoff").output, fresh.run("--onoff").output);
    EXPECT_EQ(unit.run("--heater --temperature").output, fresh.run("--heater --temperature").output);
    EXPECT_EQ(unit.run("--buzzer").output, buzzer);
    EXPECT_EQ(unit["/touch/rightClickTime"], 1);
    EXPECT_EQ(unit["/power/video"], 0);
}

} // namespace
