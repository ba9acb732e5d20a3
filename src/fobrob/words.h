// Tables that translate between device values and words.

#pragma once

#include "device/qv_aux2.h"

#include <cstdint>
#include <span>

struct NamedValue
{
    std::int32_t value;
    char name[56]; // not a pointer, which would need a relocation at every start
};

// Returns the first name of `value`, or `fallback` if the table has none.
const char* nameOf(std::span<const NamedValue> values, std::int32_t value, const char* fallback);

// Returns the value of the first row whose name equals `name`, ignoring case, or `fallback` if there is none.
std::int32_t valueOf(std::span<const NamedValue> values, const char* name, std::int32_t fallback);

constexpr NamedValue enableDisable[] = {{QV_ENABLED, "Enable"}, {QV_DISABLED, "Disable"}};
constexpr NamedValue enabledDisabled[] = {{QV_ENABLED, "Enabled"}, {QV_DISABLED, "Disabled"}};

// The fallback of valueOf() for both tables.
constexpr std::int32_t noSuchState = -1;
