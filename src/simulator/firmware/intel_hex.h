// Intel HEX, the format of firmware files.

#pragma once

#include "simulator/unit/codes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator
{

// The error in a file. There is none if `code` is success.
struct HexError
{
    Code code = success;
    std::size_t line = 0; // counted from 1; 0 if the error is not in a single line
};

struct HexRecord
{
    std::uint8_t type;
    std::uint16_t address;
    std::size_t line;
    std::vector<std::uint8_t> data;
};

// Bytes at consecutive addresses.
struct HexBlock
{
    std::uint32_t address;
    std::vector<std::uint8_t> data;
};

// Appends the records of the file, including the end record. Checks format, lengths and checksums, and that
// the file ends with an end record.
HexError readHex(std::string_view text, std::vector<HexRecord>& records);

// Merges the data records into blocks, sorted by address and with gaps between them. Checks the record types,
// and that there is data and no overlap.
HexError convertHex(const std::vector<HexRecord>& records, std::vector<HexBlock>& blocks);

} // namespace simulator
