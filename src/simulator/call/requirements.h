// What operations need the unit to have.

#pragma once

#include "simulator/call/call.h"

inline ApiError supportedIf(bool fitted)
{
    return fitted ? success : notSupported;
}

inline ApiError displayNeeded(const Unit& unit)
{
    return supportedIf(unit.about.display);
}

// The front microcontroller comes with the display.
inline ApiError frontNeeded(const Unit& unit)
{
    return displayNeeded(unit);
}

inline ApiError touchScreenNeeded(const Unit& unit)
{
    return supportedIf(unit.about.touchScreen);
}

inline ApiError canNeeded(const Unit& unit)
{
    return supportedIf(unit.about.canConnections > 0);
}

inline ApiError addOnBoardNeeded(const Unit& unit)
{
    return unit.addOnBoard.fitted ? success : boardNotFitted;
}

// A radio is on the add-on board, when both are there.
inline ApiError radioNeeded(const Unit& unit, bool mounted)
{
    return unit.addOnBoard.fitted ? supportedIf(mounted) : boardNotFitted;
}

inline ApiError wlanNeeded(const Unit& unit)
{
    return radioNeeded(unit, unit.addOnBoard.wlan);
}

inline ApiError gprsNeeded(const Unit& unit)
{
    return radioNeeded(unit, unit.addOnBoard.gprs);
}

inline ApiError gpsNeeded(const Unit& unit)
{
    return radioNeeded(unit, unit.addOnBoard.gps);
}

inline ApiError bluetoothNeeded(const Unit& unit)
{
    return radioNeeded(unit, unit.addOnBoard.bluetooth);
}
