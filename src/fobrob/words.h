// Tables of words for the device's values, one for both directions.

#pragma once

#include "device/qv_aux2.h"

#include <cstdint>
#include <span>

struct Word
{
    std::int32_t value;
    char text[56]; // in its place, for each pointer in a table is adjusted at every start
};

// The text of `value`, or `otherwise` when the table has none.
const char* textOf(std::span<const Word> words, std::int32_t value, const char* otherwise);

// The value of `text` in any case, or `otherwise` when the table has none. The first match counts.
std::int32_t valueOf(std::span<const Word> words, const char* text, std::int32_t otherwise);

constexpr std::int32_t noSuchState = -1;
constexpr Word enableDisable[] = {{QV_ENABLED, "Enable"}, {QV_DISABLED, "Disable"}};
constexpr Word enabledDisabled[] = {{QV_ENABLED, "Enabled"}, {QV_DISABLED, "Disabled"}};
