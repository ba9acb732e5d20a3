// The version of a part of the unit.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// "major.minor.release.build" in the unit's file and in firmware.
struct Version
{
    std::array<std::uint8_t, 4> numbers{};

    bool operator==(const Version&) const = default;
};

std::string toText(const Version& version);

// The version at the beginning of `text`, which is then what stands behind it.
std::optional<Version> takeVersion(std::string_view& text);
