// Between the unit and its file's JSON.

#pragma once

#include "document/json.h"
#include "document/unit.h"

#include <stdexcept>

// Something in the file that no unit has, with its place: "/buzzer/volume: not a whole number from 0 to
// 65535".
struct BadUnit : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// Keys that are missing keep their defaults. Throws BadUnit for an unknown key, one that stands
// twice, or an unfit value.
Unit unitFromJson(const Json& file);

Json unitToJson(const Unit& unit);

// Brings what changed from `before` to `after` into `file` and leaves the rest of it as it stands.
void updateJson(Json& file, const Json& before, const Json& after);
