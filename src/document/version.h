// The version of a software or firmware component: four numbers from 0 to 255.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace document
{

struct Version
{
    std::array<std::uint8_t, 4> numbers{}; // major, minor, release, build

    bool operator==(const Version&) const = default;
};

// Returns "major.minor.release.build".
std::string toText(const Version& version);

// Parses the version at the beginning of `text` and removes it from `text`. If there is none, returns nothing
// and leaves `text` unchanged.
std::optional<Version> consumeVersion(std::string_view& text);

} // namespace document
