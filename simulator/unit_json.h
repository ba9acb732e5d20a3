// Between the unit and its file's JSON.

#pragma once

#include "unit.h"

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>

// Something in the file that no unit has, with its place: "/buzzer/volume: not a number from 0 to 65535".
struct BadUnit : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// Keys that are missing keep their defaults. Throws BadUnit for an unknown key or an unfit value.
Unit unitFromJson(const nlohmann::ordered_json& file);

nlohmann::ordered_json unitToJson(const Unit& unit);

// Brings what changed from `before` to `after` into `file` and leaves the rest of it as it stands.
void updateJson(nlohmann::ordered_json& file, const nlohmann::ordered_json& before,
                const nlohmann::ordered_json& after);
