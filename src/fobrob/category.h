// What every category is built from: the handler contract, its options, and reading or setting a value.

#pragma once

#include "fobrob/option_table.h"

#include <cstddef>
#include <span>

// A category handler processes the rest of the command line and prints all output of the run. `argument` is
// the value of the category option, or noArgument(). The handler continues the getopt_long parse that the
// dispatcher started; the parse is never reset. The result is ignored.
//
// A handler releases its module handles when it is done. If it returns early, after help or an error in the
// command line, they are left to the end of the process.
using CategoryHandler = int(const char* argument, int argc, char** argv, const char* shortOptions,
                            const option* longOptions, int longIndex);

// The value of an option that was given without one.
constexpr const char* noArgument()
{
    return "noArgument";
}

// Returns the value of the option parsed last, or noArgument() if it has none or an empty one.
const char* givenValue();

// Words on the command line are compared without regard to case.
bool equalsIgnoringCase(const char* text, const char* word);

// Returns the decimal number at the start of `text`, or 0 if there is none. A number that does not fit is
// clamped to the range of long.
long parseNumber(const char* text);

// An option of a category. It sets `*given` to true and `*value` to its value. `value` is null for an option
// that takes none.
struct CategoryOption
{
    OptionCode code;
    bool* given;
    const char** value;
};

// What becomes of an option's value if the option is repeated without one.
enum class RepeatWithoutValue
{
    clearsValue,
    keepsValue,
};

// Records the option parsed last, whose code is `code`. Returns false if it is not one of `options`.
bool recordOption(std::span<const CategoryOption> options, int code, RepeatWithoutValue repeat);

// The options that followed the category option.
struct ParsedOptions
{
    bool help = false;          // --help was given; nothing after it was parsed
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

// Parses the rest of the command line into `options`. Prints the line `refusal` for every option that is not
// one of them, unless it is null.
ParsedOptions parseOptions(int argc, char** argv, int longIndex, std::span<const CategoryOption> options,
                           RepeatWithoutValue repeat = RepeatWithoutValue::clearsValue,
                           const char* refusal = nullptr);

// Returns whether `value` requests that a setting be read. Any other value sets it.
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

// The same for one of several settings of a kind.
template <typename Handle, typename Setting>
void readOrSet(Handle module, const Setting& setting, const char* value, void (*read)(Handle, const Setting&),
               void (*set)(Handle, const Setting&, const char*))
{
    if (isReadRequest(value))
        read(module, setting);
    else
        set(module, setting, value);
}

// Returns whether the category's argument selects the item called `name`. noArgument() selects every item.
bool isSelected(const char* argument, const char* name);

// Calls `show` for each of `items` that is selected. Returns false if none is.
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
