#include "simulator/call/call.h"
#include "simulator/firmware/firmware_job.h"

#include <set>

namespace
{

// Callers keep the texts, so none is ever given up.
const char* kept(const std::string& text)
{
    static std::set<std::string> texts;
    return texts.insert(text).first->c_str();
}

// What the unit's file says of the code, else what the unit says by itself.
const char* errorText(ApiError code)
{
    try
    {
        const auto& texts = currentUnit().errorTexts;
        const auto found = texts.find(std::to_string(code));
        if (found != texts.end())
            return found->second ? kept(*found->second) : nullptr;
    }
    catch (const std::exception&)
    {
        // The failure that is being explained has already said so.
    }
    const char* text = textOfCode(code);
    return kept(text ? text + placeOfFirmwareFailure(code) : "Error " + std::to_string(code));
}

} // namespace

const char* GetErrorStringA(ApiError code)
{
    return answerText(__func__, code, errorText(code));
}

const char* GetStartupReasonStringA(std::uint16_t reason)
{
    return answerText(__func__, reason, textOfStartupReason(reason));
}

const char* GetHwErrorStatusStringA(std::uint16_t status)
{
    return answerText(__func__, status, textOfHwErrorStatus(status));
}
