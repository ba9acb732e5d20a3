#include "simulator/call/call.h"
#include "simulator/firmware/firmware_job.h"

#include <set>

using namespace document;
using namespace simulator;

namespace
{

// Callers keep the pointers, so no text is ever deleted.
const char* keep(const std::string& text)
{
    static std::set<std::string> texts;
    return texts.insert(text).first->c_str();
}

const char* errorText(const Unit& unit, ApiError code)
{
    const auto found = unit.errorTexts.find(std::to_string(code));
    if (found != unit.errorTexts.end())
        return found->second ? keep(*found->second) : nullptr;
    const char* const text = textOfCode(code);
    if (!text)
        return keep("Error " + std::to_string(code));
    const std::string line = firmwareErrorLine(code);
    return line.empty() ? text : keep(text + line);
}

// Implements an operation whose texts do not depend on the unit.
const char* constantText(const char* operation, std::uint32_t code, const char* text)
{
    const auto lookup = [=](const Unit&) { return text; };
    return textCall(operation, code, lookup, text);
}

} // namespace

const char* GetErrorStringA(ApiError code)
{
    const char* const text = textOfCode(code);
    const auto lookup = [=](const Unit& unit) { return errorText(unit, code); };
    return textCall(__func__, code, lookup, text ? text : "Unknown error");
}

const char* GetStartupReasonStringA(std::uint16_t reason)
{
    return constantText(__func__, reason, textOfStartupReason(reason));
}

const char* GetHwErrorStatusStringA(std::uint16_t status)
{
    return constantText(__func__, status, textOfHwErrorStatus(status));
}
