// The settings of each category, one row per option. The option reads the setting if it has no value, and
// changes it otherwise.

#pragma once

#include "fobrob/command_lines.h"

struct Setting
{
    std::string option; // "--frequency"
    Step read;
    std::string value; // differs from the unit's; empty if the option alone cannot change the setting
    std::vector<Step> change;
    std::string newOutput; // printed when it is read after the change
};

// What happens to the value of an option that is repeated without a value.
enum class RepeatedOption
{
    clearsValue,
    keepsValue,
};

struct SettingsCategory
{
    std::string name;              // "Buzzer"
    std::string category;          // "--buzzer"
    std::string keys;              // content of the unit file
    std::vector<Setting> settings; // in the order in which they are processed
    RepeatedOption repeated = RepeatedOption::clearsValue;
    bool changesLastUntilReboot = false;
};

// Prints a row in the messages of failed tests.
inline void PrintTo(const SettingsCategory& row, std::ostream* stream)
{
    *stream << row.name;
}

const std::vector<SettingsCategory>& settingsCategories();

// Returns the settings of the category with this name, such as "Buzzer".
const std::vector<Setting>& settingsOf(const std::string& name);
