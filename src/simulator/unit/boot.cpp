#include "simulator/unit/boot.h"

namespace
{

constexpr std::int32_t normalBoot = 0;
constexpr std::int32_t rescueBootWithFactoryReset = 4;
constexpr std::int32_t normalMode = 0;
constexpr std::int32_t rescueMode = 1;

// Identity, equipment, counters and firmware are not settings.
void resetSettings(Unit& unit)
{
    unit.buzzer = {};
    unit.backlight = {};
    unit.frontLed = {};
    unit.can = {};
    unit.touch = {};
    unit.telematics = {};
    unit.config = {};
}

void applyFirmware(Firmware& firmware, Version& version)
{
    if (firmware.nextVersion)
        version = *firmware.nextVersion;
    firmware.nextVersion.reset();
}

void applyStartupPower(Radio& radio)
{
    radio.power = radio.startupPower;
}

void startUp(Unit& unit)
{
    if (unit.boot.nextMode == rescueBootWithFactoryReset)
        resetSettings(unit);
    unit.boot.systemMode = unit.boot.nextMode == normalBoot ? normalMode : rescueMode;
    unit.boot.nextMode = normalBoot;
    unit.boot.running = true;
    unit.boot.completed = false;
    ++unit.diagnostic.powerCycles;

    unit.power = unit.config.startupPower;
    applyStartupPower(unit.telematics.wlan);
    applyStartupPower(unit.telematics.gprs);
    applyStartupPower(unit.telematics.gps);
    applyStartupPower(unit.telematics.bluetooth);

    // The profiles 0 and 1 are 2 and 3 from the next boot on.
    if (unit.touch.profile == 0 || unit.touch.profile == 1)
        unit.touch.profile += 2;

    applyFirmware(unit.firmware.ss, unit.versions.ss);
    applyFirmware(unit.firmware.fpga, unit.versions.fpga);
    applyFirmware(unit.firmware.front, unit.versions.front);
}

} // namespace

bool isStartUpDue(const Unit& unit)
{
    return !unit.boot.running;
}

void startUpIfDue(Unit& unit)
{
    if (isStartUpDue(unit))
        startUp(unit);
}
