// Bytes as pairs of hexadecimal digits, in documents and in firmware files.

#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace document
{

// Decodes `digits`, two digits of either case per byte, and appends the bytes. Returns false if `digits` has
// an odd length or contains another character; the bytes before the error may have been appended.
bool appendBytes(std::vector<std::uint8_t>& bytes, std::string_view digits);

} // namespace document
