#include "simulator/firmware/intel_hex.h"

#include "document/hex_digits.h"

#include <algorithm>
#include <numeric>

namespace simulator
{

namespace
{

enum RecordType : std::uint8_t
{
    data = 0,
    endOfFile = 1,
    extendedSegment = 2,
    startSegment = 3,
    extendedLinear = 4,
    startLinear = 5,
};

std::string_view trimRight(std::string_view line)
{
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
        line.remove_suffix(1);
    return line;
}

// Decodes the bytes after the colon. Returns false if the line is not a colon and pairs of hexadecimal
// digits.
bool decode(std::string_view line, std::vector<std::uint8_t>& bytes)
{
    bytes.clear();
    return !line.empty() && line.front() == ':' && document::appendBytes(bytes, line.substr(1));
}

// Returns whether a record of the type may have `length` data bytes.
bool isValidLength(std::uint8_t type, std::size_t length)
{
    switch (type)
    {
    case endOfFile:
        return length == 0;
    case extendedSegment:
    case extendedLinear:
        return length == 2;
    case startSegment:
    case startLinear:
        return length == 4;
    default:
        return true;
    }
}

// A length byte, two address bytes and a type byte precede the data; a checksum byte follows it.
constexpr std::size_t headerSize = 4;
constexpr std::size_t overhead = headerSize + 1;

Code readRecord(const std::vector<std::uint8_t>& bytes, HexRecord& record)
{
    if (bytes.size() < overhead || bytes.size() != overhead + bytes[0])
        return firmwareBadLength;
    if (std::accumulate(bytes.begin(), bytes.end(), 0u) % 256 != 0)
        return firmwareBadChecksum;
    record.address = static_cast<std::uint16_t>(bytes[1] << 8 | bytes[2]);
    record.type = bytes[3];
    record.data.assign(bytes.begin() + headerSize, bytes.end() - 1);
    return isValidLength(record.type, record.data.size()) ? success : firmwareBadLength;
}

std::uint32_t bigEndian(const std::vector<std::uint8_t>& bytes)
{
    return static_cast<std::uint32_t>(bytes[0] << 8 | bytes[1]);
}

// Appends the data records, in file order, with their full addresses.
HexError collectData(const std::vector<HexRecord>& records, std::vector<HexBlock>& blocks)
{
    std::uint32_t base = 0;
    for (const HexRecord& record : records)
    {
        switch (record.type)
        {
        case data:
            if (!record.data.empty())
                blocks.push_back({base + record.address, record.data});
            break;
        case extendedSegment:
            base = bigEndian(record.data) << 4;
            break;
        case extendedLinear:
            base = bigEndian(record.data) << 16;
            break;
        case startSegment:
        case startLinear:
        case endOfFile:
            break;
        default:
            return {firmwareUnknownRecord, record.line};
        }
    }
    return {};
}

std::uint64_t endOf(const HexBlock& block)
{
    return std::uint64_t{block.address} + block.data.size();
}

} // namespace

HexError readHex(std::string_view text, std::vector<HexRecord>& records)
{
    std::vector<std::uint8_t> bytes;
    bool ended = false;
    for (std::size_t line = 1; !text.empty(); ++line)
    {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view content = trimRight(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (content.empty())
            continue;
        if (ended)
            return {firmwareContinues, line};
        if (!decode(content, bytes))
            return {firmwareNotHex, line};
        HexRecord record{};
        record.line = line;
        if (const Code code = readRecord(bytes, record); code != success)
            return {code, line};
        ended = record.type == endOfFile;
        records.push_back(std::move(record));
    }
    return {ended ? success : firmwareNoEnd, 0};
}

HexError convertHex(const std::vector<HexRecord>& records, std::vector<HexBlock>& blocks)
{
    std::vector<HexBlock> pieces;
    if (const HexError error = collectData(records, pieces); error.code != success)
        return error;
    if (pieces.empty())
        return {firmwareEmpty, 0};
    std::ranges::stable_sort(pieces, {}, &HexBlock::address);

    for (HexBlock& piece : pieces)
    {
        if (endOf(piece) > std::uint64_t{1} << 32)
            return {firmwareTooLarge, 0};
        if (!blocks.empty() && piece.address < endOf(blocks.back()))
            return {firmwareOverlap, 0};
        if (!blocks.empty() && piece.address == endOf(blocks.back()))
            blocks.back().data.insert(blocks.back().data.end(), piece.data.begin(), piece.data.end());
        else
            blocks.push_back(std::move(piece));
    }
    return {};
}

} // namespace simulator
