// Intel HEX, the format of every firmware file.

#pragma once

#include "simulator/unit/codes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// What is wrong with a file: `code` is success while nothing is.
struct HexFault
{
    Code code = success;
    std::size_t line = 0; // from 1; 0 where no single line is to blame
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

// Reads the records up to and with the end record. Checks format, lengths, checksums, and that there is an
// end record and nothing behind it.
HexFault readHex(std::string_view text, std::vector<HexRecord>& records);

// Brings the data records into blocks that rise and do not touch. Checks the record types, that no address is
// filled twice, and that there is data.
HexFault convertHex(const std::vector<HexRecord>& records, std::vector<HexBlock>& blocks);
