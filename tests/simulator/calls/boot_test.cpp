#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <filesystem>

namespace
{

using nlohmann::json;

void shutDown()
{
    EXPECT_EQ(FirmwareUpgrade_shutDown(GetFirmwareUpgrade()), 0u);
}

// Makes a call that accesses the unit, so that it boots.
void callTheUnit()
{
    std::uint16_t volume = 0;
    EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 0u);
}

void reboot()
{
    shutDown();
    callTheUnit();
}

TEST(Boot, HappensAtTheNextCallAfterAShutdown)
{
    const CalledUnit unit(R"({"diagnostic": {"powerCycles": 7}})");
    shutDown();
    EXPECT_EQ(unit["/boot/running"], false);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 7);
    callTheUnit();
    EXPECT_EQ(unit["/boot/running"], true);
    EXPECT_EQ(unit["/boot/completed"], false);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
}

TEST(Boot, HappensEvenIfTheCallFails)
{
    CalledUnit unit(R"({"boot": {"running": false}, "buzzer": {"volume": 5}})");
    unit.fails("Buzzer_setVolume", 77);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 77u);
    EXPECT_EQ(unit["/boot/running"], true);
    EXPECT_EQ(unit["/buzzer/volume"], 5);
}

TEST(Boot, HappensEvenIfTheNextCallIsAShutdown)
{
    const CalledUnit unit(R"({"diagnostic": {"powerCycles": 7}})");
    shutDown();
    shutDown();
    EXPECT_EQ(unit["/boot/running"], false);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
}

TEST(Boot, HappensAfterAPowerCut)
{
    CalledUnit unit(R"({"diagnostic": {"powerCycles": 7}, "boot": {"nextMode": "rescue"},
                        "config": {"startupPower": {"video": 5}}, "touch": {"profile": "mouse next boot"}})");
    unit.cutPower();
    callTheUnit();
    callTheUnit();
    EXPECT_EQ(
        unit["/boot"],
        (json{{"powerCut", false}, {"completed", false}, {"systemMode", "rescue"}, {"nextMode", "normal"}}));
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
    EXPECT_EQ(unit["/power/video"], 5);
    EXPECT_EQ(unit["/touch/profile"], "mouse");
}

TEST(Boot, HappensOnceAfterAShutdownAndAPowerCut)
{
    CalledUnit unit(R"({"diagnostic": {"powerCycles": 7}})");
    shutDown();
    unit.cutPower();
    callTheUnit();
    callTheUnit();
    EXPECT_EQ(unit["/boot/running"], true);
    EXPECT_EQ(unit["/boot/powerCut"], false);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
}

TEST(Boot, DoesNotHappenAfterAPowerCutIfTheUnitCannotBeSaved)
{
    CalledUnit unit(R"({"diagnostic": {"powerCycles": 7}})");
    unit.cutPower();
    std::filesystem::create_directory(unit.file() + ".new");
    std::uint16_t volume = 0;
    EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 67u);
    EXPECT_EQ(unit["/boot/powerCut"], true);
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 7);
}

TEST(Boot, WrapsThePowerCycleCounter)
{
    const CalledUnit unit(R"({"diagnostic": {"powerCycles": 65535}})");
    reboot();
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 0);
}

TEST(Boot, AppliesTheStartUpPower)
{
    const CalledUnit unit(R"({"config": {"startupPower": {"video": 5, "can": false, "externalFan": true}},
                              "power": {"video": 15, "can": true, "externalFan": false}})");
    reboot();
    EXPECT_EQ(unit["/power"], (json{{"video", 5}, {"can", false}, {"externalFan", true}}));
    EXPECT_EQ(unit["/config/startupPower"], unit["/power"]);
}

TEST(Boot, AppliesTheStartUpPowerOfEveryRadio)
{
    for (const std::string radio : {"wlan", "gprs", "gps", "bluetooth"})
        for (const bool power : {false, true})
        {
            const CalledUnit unit(
                json{{"telematics", {{radio, {{"power", !power}, {"startupPower", power}}}}}}.dump());
            reboot();
            EXPECT_EQ(unit["/telematics"], (json{{radio, {{"power", power}, {"startupPower", power}}}}));
        }
}

TEST(Boot, AppliesTheTouchProfileOfTheNextBoot)
{
    const std::pair<const char*, const char*> cases[] = {
        {"mouse next boot", "mouse"}, {"touch next boot", "touch"}, {"mouse", "mouse"}, {"touch", "touch"}};
    for (const auto& [before, after] : cases)
    {
        const CalledUnit unit(json{{"touch", {{"profile", before}}}}.dump());
        reboot();
        EXPECT_EQ(unit["/touch/profile"], after);
    }
}

TEST(Boot, AppliesTheNextBootModeOnce)
{
    const CalledUnit unit;
    std::int32_t mode = 4711;
    EXPECT_EQ(Config_setNextBootMode(GetConfig(), 3), 0u);
    EXPECT_EQ(QVAuxPrivate_getSystemMode(GetQVAuxPrivate(), &mode), 0u);
    EXPECT_EQ(mode, 0);
    shutDown();
    EXPECT_EQ(QVAuxPrivate_getSystemMode(GetQVAuxPrivate(), &mode), 0u);
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(
        unit["/boot"],
        (json{{"running", true}, {"completed", false}, {"systemMode", "rescue"}, {"nextMode", "normal"}}));
    shutDown();
    EXPECT_EQ(QVAuxPrivate_getSystemMode(GetQVAuxPrivate(), &mode), 0u);
    EXPECT_EQ(mode, 0);
}

TEST(Boot, KeepsSettingsInRescueMode)
{
    const CalledUnit unit(R"({"boot": {"nextMode": "rescue"}, "buzzer": {"volume": 5},
                              "config": {"heatingLimit": 3}})");
    reboot();
    EXPECT_EQ(unit["/boot/systemMode"], "rescue");
    EXPECT_EQ(unit["/buzzer/volume"], 5);
    EXPECT_EQ(unit["/config/heatingLimit"], 3);
}

TEST(Boot, ResetsOnlySettingsOnRequest)
{
    const CalledUnit unit(R"({
        "boot": {"nextMode": "rescue with factory reset"},
        "buzzer": {"volume": 5}, "backlight": {"intensity": 5}, "frontLed": {"color": "red"},
        "can": {"baudrates": [5, 5, 5, 5]}, "touch": {"lowLevel": 5, "profile": "mouse"},
        "telematics": {"gps": {"power": false, "startupPower": false}},
        "config": {"heatingLimit": 5, "startupPower": {"video": 5}}, "power": {"video": 5},
        "about": {"unitSerial": "ABCD", "display": false}, "addOnBoard": {"gps": false},
        "eeprom": {"main": {"text": "ABCD"}}, "versions": {"ss": "5.5.5.5"},
        "diagnostic": {"totalRunTime": 5, "powerCycles": 7}, "adc": {"24V": 5},
        "firmware": {"pace": 5}, "faults": {"Buzzer_getTrigger": {"code": 77}}, "errorTexts": {"77": "text"}
    })");
    const json before = unit.content();
    reboot();
    json expected = before;
    expected["boot"] = {
        {"nextMode", "normal"}, {"systemMode", "rescue"}, {"running", true}, {"completed", false}};
    expected["buzzer"]["volume"] = 1000;
    expected["backlight"]["intensity"] = 200;
    expected["frontLed"]["color"] = "green";
    expected["can"]["baudrates"] = {250, 250, 500, 500};
    expected["touch"] = {{"lowLevel", 48}, {"profile", "touch"}};
    expected["telematics"]["gps"] = {{"power", true}, {"startupPower", true}};
    expected["config"] = {{"heatingLimit", -10}, {"startupPower", {{"video", 15}}}};
    expected["power"]["video"] = 15;
    expected["diagnostic"]["powerCycles"] = 8;
    EXPECT_EQ(unit.content(), expected);
}

TEST(Boot, IsAcknowledgedByARegisterCommand)
{
    const CalledUnit unit;
    reboot();
    EXPECT_EQ(unit["/boot/completed"], false);
    EXPECT_EQ(QVAuxPrivate_writeSsRegister(GetQVAuxPrivate(), 4, 6, 0xC3), 0u);
    EXPECT_EQ(unit["/boot/completed"], true);
}

const char* const flashedFirmware =
    R"({"firmware": {"ss": {"nextVersion": "9.8.7.6"}, "fpga": {"nextVersion": "1.1.1.1"},
                     "front": {"nextVersion": "2.2.2.2"}}})";

TEST(Boot, ActivatesFlashedFirmwareAfterAPowerCut)
{
    CalledUnit unit(flashedFirmware);
    unit.cutPower();
    callTheUnit();
    EXPECT_EQ(unit["/versions"], (json{{"ss", "9.8.7.6"}, {"fpga", "1.1.1.1"}, {"front", "2.2.2.2"}}));
    for (const char* target : {"ss", "fpga", "front"})
        EXPECT_EQ(unit["/firmware"][target], (json{{"nextVersion", nullptr}}));
}

TEST(Boot, ActivatesFlashedFirmwareAfterAShutdownExceptForTheSystemSupervisor)
{
    CalledUnit unit(flashedFirmware);
    reboot();
    EXPECT_EQ(unit["/versions"], (json{{"fpga", "1.1.1.1"}, {"front", "2.2.2.2"}}));
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], "9.8.7.6");
    unit.cutPower();
    callTheUnit();
    EXPECT_EQ(unit["/versions/ss"], "9.8.7.6");
    EXPECT_EQ(unit["/firmware/ss/nextVersion"], nullptr);
}

TEST(Boot, IsNotNeededToResetTheSystemSupervisor)
{
    const CalledUnit unit(R"({"config": {"heatingLimit": 5, "startupTrigger": 1}, "buzzer": {"volume": 5}})");
    EXPECT_EQ(QVAuxPrivate_writeSsRegister(GetQVAuxPrivate(), 3, 0x65, 1), 0u);
    EXPECT_EQ(unit["/config"], (json{{"heatingLimit", -10}, {"startupTrigger", 3}}));
    EXPECT_EQ(unit["/buzzer/volume"], 5);
}

} // namespace
