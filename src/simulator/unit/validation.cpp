#include "simulator/unit/validation.h"

#include "document/diagnostic.h"
#include "document/hex_digits.h"
#include "simulator/call/operations.h"

#include <charconv>
#include <limits>
#include <string>
#include <vector>

namespace simulator
{

using document::EepromImage;
using document::Fault;
using document::Firmware;
using document::KeyPath;

namespace
{

void validateFault(const std::string& operation, const Fault& fault, const KeyPath& path)
{
    const bool hasNulByte = operation.find('\0') != std::string::npos; // dlsym() would stop there
    if (hasNulByte || !isOperation(operation))
        path.fail("unknown operation");
    const bool returnsPointer = operation.starts_with("Get");
    const bool hasCode = fault.code != QV_SUCCESS;
    if (returnsPointer && (!fault.null || hasCode || fault.ignored))
        path.fail("expected \"null\": true and no other fault");
    if (!returnsPointer && fault.null)
        path.fail("\"null\" is only for operations that return a handle or a text");
    if (!returnsPointer && hasCode == fault.ignored)
        path.fail("expected either a code other than 0 or \"ignored\": true");
}

void validateEeprom(const EepromImage& image, const KeyPath& path)
{
    const std::size_t size = image.text.size() + image.hex.size() / 2;
    if (size > QV_EEPROM_SIZE)
        path.fail("expected at most " + std::to_string(QV_EEPROM_SIZE) +
                  " bytes in \"text\" and \"hex\", got " + std::to_string(size));
}

void validateFirmware(const Firmware& firmware, const KeyPath& path)
{
    constexpr std::size_t digits = 64; // of a SHA-256 digest
    std::vector<std::uint8_t> bytes;
    const std::string& digest = firmware.digest;
    if (!digest.empty() && (digest.size() != digits || !document::appendBytes(bytes, digest)))
        KeyPath{&path, "digest"}.failExpecting("64 hexadecimal digits or an empty string", digest);
}

bool isCode(const std::string& text)
{
    ApiError code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    return error == std::errc() && std::to_string(code) == text;
}

} // namespace

void validate(const document::Unit& unit)
{
    const KeyPath root;
    const KeyPath eeprom{&root, "eeprom"};
    validateEeprom(unit.eeprom.main, KeyPath{&eeprom, "main"});
    validateEeprom(unit.eeprom.addOn, KeyPath{&eeprom, "addOn"});
    const KeyPath firmware{&root, "firmware"};
    validateFirmware(unit.firmware.ss, KeyPath{&firmware, "ss"});
    validateFirmware(unit.firmware.fpga, KeyPath{&firmware, "fpga"});
    validateFirmware(unit.firmware.front, KeyPath{&firmware, "front"});
    const KeyPath faults{&root, "faults"};
    for (const auto& [operation, fault] : unit.faults)
        validateFault(operation, fault, KeyPath{&faults, operation});
    const KeyPath errorTexts{&root, "errorTexts"};
    for (const auto& [code, text] : unit.errorTexts)
        if (!isCode(code))
            KeyPath{&errorTexts, code}.fail("expected an error code from 0 to " +
                                            std::to_string(std::numeric_limits<ApiError>::max()));
}

} // namespace simulator
