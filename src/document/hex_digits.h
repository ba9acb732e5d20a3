// Bytes written as pairs of hexadecimal digits, in firmware files and in the unit's file.

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

// False when `text` is anything but such pairs. Some may have been appended by then.
bool appendBytes(std::vector<std::uint8_t>& bytes, std::string_view text);
