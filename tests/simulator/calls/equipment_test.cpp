#include "operations.h"

namespace
{

using nlohmann::json;

TEST(Equipment, DisplayIsRequired)
{
    const CalledUnit unit(R"({"about": {"display": false}})");
    expectAll(operationsLike({"Backlight_*", "*FrontVersion", "*_startFront*"}), notSupported);
}

TEST(Equipment, TouchScreenIsRequired)
{
    const CalledUnit unit(R"({"about": {"touchScreen": false}})");
    expectAll(operationsLike({"TouchScreen_*"}), notSupported);
}

TEST(Equipment, CanIsRequired)
{
    const CalledUnit unit(R"({"about": {"canConnections": 0}})");
    expectAll(operationsLike({"CanSetting_*", "*CanPower*", "*CanStartupPower*"}), notSupported);
}

TEST(Equipment, CanChannelMustExist)
{
    const CalledUnit unit(R"({"about": {"canConnections": 2}})");
    for (const int channel : {0, 3, 4, 255})
        expectAll({operation(GetCanSetting, CanSetting_getBaudrate, channel, anyBuffer),
                   operation(GetCanSetting, CanSetting_setBaudrate, channel, 250)},
                  notSupported);
}

TEST(Equipment, UnlistedCanChannelHasTheDefaultBaudRate)
{
    const CalledUnit unit(R"({"about": {"canConnections": 255}, "can": {"baudrates": []}})");
    std::uint16_t baudrate = 0;
    EXPECT_EQ(CanSetting_getBaudrate(GetCanSetting(), 255, &baudrate), 0u);
    EXPECT_EQ(baudrate, 125);
    EXPECT_EQ(CanSetting_setBaudrate(GetCanSetting(), 3, 500), 0u);
    EXPECT_EQ(unit["/can/baudrates"], (json{125, 125, 500}));
}

TEST(Equipment, ListOfBaudRatesMayBeLongerOrShorterThanTheUnitHasChannels)
{
    const CalledUnit unit(R"({"about": {"canConnections": 4}, "can": {"baudrates": [250, 500]}})");
    std::uint16_t baudrate = 0;
    for (std::uint8_t channel = 1; channel <= 4; ++channel)
    {
        EXPECT_EQ(CanSetting_getBaudrate(GetCanSetting(), channel, &baudrate), 0u);
        EXPECT_EQ(baudrate, channel == 1 ? 250 : channel == 2 ? 500 : 125);
    }
    EXPECT_EQ(unit["/can/baudrates"], (json{250, 500}));
    EXPECT_EQ(CanSetting_setBaudrate(GetCanSetting(), 4, 1000), 0u);
    EXPECT_EQ(unit["/can/baudrates"], (json{250, 500, 125, 1000}));

    const CalledUnit small(R"({"about": {"canConnections": 1}, "can": {"baudrates": [250, 500]}})");
    EXPECT_EQ(CanSetting_getBaudrate(GetCanSetting(), 2, &baudrate), 2u);
    EXPECT_EQ(CanSetting_setBaudrate(GetCanSetting(), 1, 1000), 0u);
    EXPECT_EQ(small["/can/baudrates"], (json{1000, 500}));
}

TEST(Equipment, AddOnBoardIsRequired)
{
    const CalledUnit unit(R"({"addOnBoard": {"fitted": false}})");
    expectAll(operationsLike({"About_getAddOn*", "About_getIs*Mounted", "Telematics_*", "*Eeprom*"}),
              boardNotFitted);
}

TEST(Equipment, RadiosAreRequired)
{
    const CalledUnit unit(
        R"({"addOnBoard": {"wlan": false, "gprs": false, "gps": false, "bluetooth": false}})");
    expectAll(operationsLike({"Telematics_*"}), notSupported);
    expectAll(operationsLike({"About_getAddOn*", "About_getIs*Mounted"}), 0);
}

TEST(Equipment, OtherRadiosAreNotRequired)
{
    const CalledUnit unit(R"({"addOnBoard": {"gps": false}})");
    expectAll(operationsLike({"Telematics_?etGPS*"}), notSupported);
    expectAll(operationsLike({"Telematics_?etWLAN*", "Telematics_?etGPRS*", "Telematics_?etBT*"}), 0);
}

TEST(Equipment, MissingValuesAreNotSupported)
{
    const CalledUnit unit(R"({"about": {"digitalIoConnections": null, "configurableInputs": null,
                                        "pwmOutputs": null, "buttons": null},
                              "diagnostic": {"shutdownReason": null, "hwErrorStatus": null,
                                             "ssTemperature": null, "pcbTemperature": null,
                                             "boardTemperature": null},
                              "adc": {"VMAIN": null},
                              "digitalInputs": {"inputs": null}, "lightsensor": {"illuminance": null}})");
    expectAll(operationsLike({"About_getNrOfDigIO*", "About_getNrOfCfgIn*", "About_getNrOfPWMOut*",
                              "About_getNrOfButtons"}),
              notSupported);
    expectAll(operationsLike({"Diagnostic_getShutDownReason", "Diagnostic_getHwErrorStatus",
                              "Diagnostic_get??Temp", "Diagnostic_getPCBTemp"}),
              notSupported);
    expectAll(operationsLike({"Adc_*", "DigIO_*", "Lightsensor_*"}), notSupported);
}

} // namespace
