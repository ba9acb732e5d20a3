#include "simulator/unit/boot.h"

namespace simulator
{

using document::Firmware;
using document::Radio;
using document::Unit;
using document::Version;

namespace
{

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

void applyTouchProfile(document::Touch& touch)
{
    if (touch.profile == QV_TOUCH_MOUSE_NEXT_BOOT)
        touch.profile = QV_TOUCH_MOUSE;
    else if (touch.profile == QV_TOUCH_TOUCH_NEXT_BOOT)
        touch.profile = QV_TOUCH_TOUCH;
}

// A shutdown does not restart the System Supervisor: only a power cut does.
void applyFirmwares(Unit& unit)
{
    applyFirmware(unit.firmware.fpga, unit.versions.fpga);
    applyFirmware(unit.firmware.front, unit.versions.front);
    if (unit.boot.powerCut)
        applyFirmware(unit.firmware.ss, unit.versions.ss);
}

void boot(Unit& unit)
{
    if (unit.boot.nextMode == QV_BOOT_RESCUE_WITH_FACTORY_RESET)
        resetSettings(unit);
    unit.boot.systemMode = unit.boot.nextMode == QV_BOOT_NORMAL ? QV_SYSTEM_NORMAL : QV_SYSTEM_RESCUE;
    unit.boot.nextMode = QV_BOOT_NORMAL;
    unit.boot.running = true;
    unit.boot.completed = false;
    ++unit.diagnostic.powerCycles;

    unit.power = unit.config.startupPower;
    applyStartupPower(unit.telematics.wlan);
    applyStartupPower(unit.telematics.gprs);
    applyStartupPower(unit.telematics.gps);
    applyStartupPower(unit.telematics.bluetooth);

    applyTouchProfile(unit.touch);
    applyFirmwares(unit);
    unit.boot.powerCut = false;
}

} // namespace

bool isBootDue(const Unit& unit)
{
    return !unit.boot.running || unit.boot.powerCut;
}

void bootIfDue(Unit& unit)
{
    if (isBootDue(unit))
        boot(unit);
}

} // namespace simulator
