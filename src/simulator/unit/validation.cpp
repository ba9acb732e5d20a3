#include "simulator/unit/validation.h"

#include "document/diagnostic.h"
#include "simulator/call/operations.h"

#include <charconv>
#include <limits>
#include <string>

namespace simulator
{

using document::Fault;
using document::KeyPath;

namespace
{

void validateFault(const std::string& operation, const Fault& fault, const KeyPath& path)
{
    if (!isOperation(operation))
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
