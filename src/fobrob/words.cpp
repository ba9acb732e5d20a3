#include "fobrob/words.h"

#include "fobrob/category.h"

const char* nameOf(std::span<const NamedValue> values, std::int32_t value, const char* fallback)
{
    for (const NamedValue& row : values)
        if (row.value == value)
            return row.name;
    return fallback;
}

std::int32_t valueOf(std::span<const NamedValue> values, const char* name, std::int32_t fallback)
{
    for (const NamedValue& row : values)
        if (equalsIgnoringCase(name, row.name))
            return row.value;
    return fallback;
}
