// The equipment that a unit needs for an operation.

#pragma once

#include "document/unit.h"
#include "simulator/unit/codes.h"

namespace simulator
{

// Returns success, or the error code of the operation if the unit lacks the equipment.
using Requirement = ApiError (*)(const document::Unit&);

inline ApiError requireNothing(const document::Unit&)
{
    return success;
}

inline ApiError supportedIf(bool fitted)
{
    return fitted ? success : notSupported;
}

inline ApiError requireDisplay(const document::Unit& unit)
{
    return supportedIf(unit.about.display);
}

// The front microcontroller is part of the display.
inline ApiError requireFront(const document::Unit& unit)
{
    return requireDisplay(unit);
}

inline ApiError requireTouchScreen(const document::Unit& unit)
{
    return supportedIf(unit.about.touchScreen);
}

inline ApiError requireCan(const document::Unit& unit)
{
    return supportedIf(unit.about.canConnections > 0);
}

inline ApiError requireAddOnBoard(const document::Unit& unit)
{
    return unit.addOnBoard.fitted ? success : boardNotFitted;
}

// The radios are on the add-on board.
inline ApiError requireRadio(const document::Unit& unit, bool mounted)
{
    const ApiError code = requireAddOnBoard(unit);
    return code == success ? supportedIf(mounted) : code;
}

inline ApiError requireWlan(const document::Unit& unit)
{
    return requireRadio(unit, unit.addOnBoard.wlan);
}

inline ApiError requireGprs(const document::Unit& unit)
{
    return requireRadio(unit, unit.addOnBoard.gprs);
}

inline ApiError requireGps(const document::Unit& unit)
{
    return requireRadio(unit, unit.addOnBoard.gps);
}

inline ApiError requireBluetooth(const document::Unit& unit)
{
    return requireRadio(unit, unit.addOnBoard.bluetooth);
}

// Returns a function that runs `work` if the unit meets the requirement, and fails otherwise.
template <typename Work>
auto requiring(Requirement requirement, Work work)
{
    return [=](auto& unit) -> ApiError
    {
        if (const ApiError code = requirement(unit); code != success)
            return code;
        return work(unit);
    };
}

} // namespace simulator
