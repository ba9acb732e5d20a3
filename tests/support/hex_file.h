// Firmware files in Intel HEX.

#pragma once

#include <cstdint>
#include <string>

// `size` bytes that look random and are the same for the same `seed`.
std::string randomBytes(std::size_t size, unsigned seed = 1);

// One record with its checksum and a newline. `address` and `type` are cut to the record's fields; `data` is
// shorter than 256 bytes.
std::string hexRecord(unsigned type, unsigned address, const std::string& data);

const std::string hexEnd = ":00000001FF\n";

// The data records of `content` from `address` on, `recordSize` bytes each, with an extended linear record
// before the first and at each 64 KiB. The end record is the caller's.
std::string hexData(const std::string& content, std::uint32_t address = 0, std::size_t recordSize = 16);

// A whole file.
std::string hexFile(const std::string& content, std::uint32_t address = 0, std::size_t recordSize = 16);
