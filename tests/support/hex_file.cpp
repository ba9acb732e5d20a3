#include "support/hex_file.h"

#include <algorithm>
#include <random>

namespace
{

constexpr std::size_t segment = 0x10000; // bytes that an extended linear address record covers

void appendByte(std::string& text, unsigned byte)
{
    const char* const digits = "0123456789ABCDEF";
    text += digits[byte >> 4 & 15];
    text += digits[byte & 15];
}

std::string bytePair(unsigned value)
{
    return {static_cast<char>(value >> 8 & 255), static_cast<char>(value & 255)};
}

} // namespace

std::string randomBytes(std::size_t size, unsigned seed)
{
    std::minstd_rand engine(seed);
    std::string bytes(size, '\0');
    std::ranges::generate(bytes, [&] { return static_cast<char>(engine() >> 8 & 255); });
    return bytes;
}

std::string hexRecord(unsigned type, unsigned address, const std::string& data)
{
    const std::string bytes =
        static_cast<char>(data.size()) + bytePair(address) + static_cast<char>(type) + data;
    std::string text = ":";
    unsigned sum = 0;
    for (const char c : bytes)
    {
        const auto byte = static_cast<unsigned char>(c);
        appendByte(text, byte);
        sum += byte;
    }
    appendByte(text, 0 - sum);
    return text + "\n";
}

std::string hexData(const std::string& content, std::uint32_t address, std::size_t recordSize)
{
    std::string text;
    for (std::size_t done = 0; done < content.size();)
    {
        const std::size_t current = address + done;
        if (done == 0 || current % segment == 0)
            text += hexRecord(4, 0, bytePair(static_cast<unsigned>(current / segment)));
        const std::size_t count = std::min(recordSize, segment - current % segment);
        text += hexRecord(0, static_cast<unsigned>(current % segment), content.substr(done, count));
        done += count;
    }
    return text;
}

std::string hexFile(const std::string& content, std::uint32_t address, std::size_t recordSize)
{
    return hexData(content, address, recordSize) + hexEnd;
}
