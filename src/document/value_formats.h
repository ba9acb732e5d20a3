// Formats of values in a document whose plain form would be hard to read. A format refers to the field of a
// record and must not outlive it.

#pragma once

#include <cstdint>
#include <span>

namespace document
{

// 0 and 1 are written as false and true, and any other number as a number. Both forms can be read.
template <typename Integer>
struct Flag
{
    Integer& value;
};

// clang 14 needs these deduction guides for aggregates.
template <typename Integer>
Flag(Integer&) -> Flag<Integer>;

struct Name
{
    std::int32_t value;
    const char* text;
};

// A value with a name is written as its name, and any other value as a number. Both forms can be read.
template <typename Integer>
struct Named
{
    Integer& value;
    std::span<const Name> names;
};

template <typename Integer>
Named(Integer&, std::span<const Name>) -> Named<Integer>;

// A string of hexadecimal digits, two per byte.
template <typename Text>
struct HexDigits
{
    Text& text;
};

template <typename Text>
HexDigits(Text&) -> HexDigits<Text>;

} // namespace document
