// The settings that are read by an option and changed by its value: one row per option.

#pragma once

#include "fobrob/command_lines.h"

struct Setting
{
    std::string option; // "--frequency"
    Step read;
    std::string value; // another one than the unit has; empty if the option alone cannot change the setting
    std::vector<Step> change;
    std::string newOutput; // of reading it after the change
};

// What an option that is repeated without a value does to the value before.
enum class RepeatedOption
{
    clearsValue,
    keepsValue,
};

struct SettingsCategory
{
    std::string name;              // "Buzzer"
    std::string category;          // "--buzzer"
    std::string keys;              // of the unit that the rows are for
    std::vector<Setting> settings; // in the order in which they are processed
    RepeatedOption repeated = RepeatedOption::clearsValue;
    bool changesLastUntilReboot = false;
};

// Names a row in the output of a test.
inline void PrintTo(const SettingsCategory& row, std::ostream* stream)
{
    *stream << row.name;
}

const std::vector<SettingsCategory>& settingsCategories();

// Those of the category of the name.
const std::vector<Setting>& settingsOf(const std::string& name);
