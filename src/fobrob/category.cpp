#include "fobrob/category.h"

#include "fobrob/output.h"

#include <cstdlib>
#include <strings.h>

namespace
{

bool hasValue()
{
    return optarg && *optarg;
}

} // namespace

const char* givenValue()
{
    return hasValue() ? optarg : noArgument();
}

bool equalsIgnoringCase(const char* text, const char* word)
{
    return strcasecmp(text, word) == 0;
}

long parseNumber(const char* text)
{
    return std::strtol(text, nullptr, 10);
}

bool recordOption(std::span<const CategoryOption> options, int code, RepeatWithoutValue repeat)
{
    for (const CategoryOption& option : options)
    {
        if (option.code != code)
            continue;
        *option.given = true;
        if (option.value && (hasValue() || repeat == RepeatWithoutValue::clearsValue))
            *option.value = givenValue();
        return true;
    }
    return false;
}

ParsedOptions parseOptions(int argc, char** argv, int longIndex, std::span<const CategoryOption> options,
                           RepeatWithoutValue repeat, const char* invalidOptionLine)
{
    ParsedOptions parsed;
    for (int code; (code = nextOption(argc, argv, longIndex)) != endOfOptions;)
    {
        if (code == OPT_HELP)
        {
            parsed.help = true;
            return parsed;
        }
        if (recordOption(options, code, repeat))
        {
            parsed.anyGiven = true;
            continue;
        }
        parsed.invalidOption = true;
        if (invalidOptionLine)
            printLine(invalidOptionLine);
    }
    return parsed;
}

bool isReadRequest(const char* value)
{
    return equalsIgnoringCase(value, noArgument());
}

bool isSelected(const char* argument, const char* name)
{
    return isReadRequest(argument) || equalsIgnoringCase(argument, name);
}
