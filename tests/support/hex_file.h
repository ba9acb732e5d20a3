// Generates firmware files in Intel HEX format.

#pragma once

#include <cstdint>
#include <string>

// Returns pseudo-random bytes that depend only on `seed`.
std::string randomBytes(std::size_t size, unsigned seed = 1);

// Returns a record with its checksum and a newline. `address` and `type` are truncated to their fields;
// `data` must be shorter than 256 bytes.
std::string hexRecord(unsigned type, unsigned address, const std::string& data);

const std::string hexEnd = ":00000001FF\n";

// Returns data records for `content`, starting at `address`, with `recordSize` bytes each. An extended linear
// address record precedes the first one and each multiple of 64 KiB. There is no end record.
std::string hexData(const std::string& content, std::uint32_t address = 0, std::size_t recordSize = 16);

// Returns the same records and an end record.
std::string hexFile(const std::string& content, std::uint32_t address = 0, std::size_t recordSize = 16);
