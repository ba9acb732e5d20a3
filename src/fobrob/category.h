// What all categories share: the handler contract, option parsing, and reading or setting values.

#pragma once

#include "fobrob/option_table.h"

#include <cstddef>
#include <span>

// A category handler processes the rest of the command line and prints all output of the run. `argument` is
// the value of the category option, or noArgument(). The handler continues the getopt_long parse that the
// dispatcher started; the parse is never reset. The return value is ignored.
//
// A handler releases its module handles before it returns. After --help or an error in the command line, it
// may return without releasing them.
using CategoryHandler = int(const char* argument, int argc, char** argv, const char* shortOptions,
                            const option* longOptions, int longIndex);

// Returns the value that represents a missing value.
constexpr const char* noArgument()
{
    return "noArgument";
}

// Returns the value of the option that was parsed last, or noArgument() if the value is missing or empty.
const char* givenValue();

// Returns whether `text` and `word` are equal, ignoring case.
bool equalsIgnoringCase(const char* text, const char* word);

// Returns the decimal number at the start of `text`, or 0 if there is none. A number that does not fit is
// clamped to the range of long.
long parseNumber(const char* text);

// An option of a category. Recording it sets `*given` to true and `*value` to its value. `value` is null for
// an option that takes none.
struct CategoryOption
{
    OptionCode code;
    bool* given;
    const char** value;
};

// What happens to the value of an option if the option is repeated without a value.
enum class RepeatWithoutValue
{
    clearsValue,
    keepsValue,
};

// Records the option that was parsed last; `code` is its code. Returns false if it is not one of `options`.
bool recordOption(std::span<const CategoryOption> options, int code, RepeatWithoutValue repeat);

// The options that followed the category option.
struct ParsedOptions
{
    bool help = false;          // --help was given; parsing stopped there
    bool anyGiven = false;      // an option of the category was given
    bool invalidOption = false; // any other option was given

    bool showAll() const
    {
        return !anyGiven && !invalidOption;
    }

    bool onlyInvalidOptions() const
    {
        return !anyGiven && invalidOption;
    }
};

// Parses the rest of the command line and records the options that are in `options`. Prints
// `invalidOptionLine` for every other option, unless it is null.
ParsedOptions parseOptions(int argc, char** argv, int longIndex, std::span<const CategoryOption> options,
                           RepeatWithoutValue repeat = RepeatWithoutValue::clearsValue,
                           const char* invalidOptionLine = nullptr);

// Returns whether `value` is a request to read the setting. Any other value sets it.
bool isReadRequest(const char* value);

// Calls `read` or `set`, depending on `value`.
template <typename Handle>
void readOrSet(Handle module, const char* value, void (*read)(Handle), void (*set)(Handle, const char*))
{
    if (isReadRequest(value))
        read(module);
    else
        set(module, value);
}

// The same for functions that take the setting as an argument.
template <typename Handle, typename Setting>
void readOrSet(Handle module, const Setting& setting, const char* value, void (*read)(Handle, const Setting&),
               void (*set)(Handle, const Setting&, const char*))
{
    if (isReadRequest(value))
        read(module, setting);
    else
        set(module, setting, value);
}

// Returns whether the value of the category option selects the item `name`. noArgument() selects every item.
bool isSelected(const char* argument, const char* name);

// Calls `show` for each selected item. Returns false if there is none.
template <typename Handle, typename Item, std::size_t count>
bool showSelected(Handle module, const char* argument, const Item (&items)[count],
                  void (*show)(Handle, const Item&))
{
    bool anyShown = false;
    for (const Item& item : items)
        if (isSelected(argument, item.argument))
        {
            show(module, item);
            anyShown = true;
        }
    return anyShown;
}
