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
    const char* text = textOfCode(code);
    return keep(text ? text + firmwareErrorLine(code) : "Error " + std::to_string(code));
}

} // namespace

const char* GetErrorStringA(ApiError code)
{
    return textCall(__func__, code, [=](const Unit& unit) { return errorText(unit, code); });
}

const char* GetStartupReasonStringA(std::uint16_t reason)
{
    return textCall(__func__, reason, [=](const Unit&) { return textOfStartupReason(reason); });
}

const char* GetHwErrorStatusStringA(std::uint16_t status)
{
    return textCall(__func__, status, [=](const Unit&) { return textOfHwErrorStatus(status); });
}
