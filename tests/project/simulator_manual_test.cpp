#include "support/manual_page.h"
#include "support/unit.h"

#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>
#include <map>

namespace
{

// A key of the unit file in the manual.
struct ListedKey
{
    std::string type;
    std::string value; // the default
};

// Returns the keys in the tables of the manual, by path. A heading such as "/power, /config/startupPower"
// lists the objects that its table describes.
std::map<std::string, ListedKey> listedKeys()
{
    std::map<std::string, ListedKey> keys;
    std::vector<std::string> objects;
    for (const std::string& line : splitLines(manualPage("fobrob-sim.1")))
    {
        if (line.starts_with(".Sh ") || line.starts_with(".Ss "))
            objects = matches(R"((?:^\.Ss|,) (/[\w/]*))", line);
        const Cells cells = cellsOf(line);
        for (const std::string& object : objects)
            if (cells.size() > 2)
                keys[(object == "/" ? "" : object) + "/" + cells[0].substr(std::strlen("Va "))] = {cells[1],
                                                                                                   cells[2]};
    }
    return keys;
}

using Values = std::map<std::string, nlohmann::json>;

void addValues(const nlohmann::json& json, const std::string& path, Values& values)
{
    if (!json.is_object() || json.empty())
        values[path] = json;
    else
        for (const auto& [key, value] : json.items())
            addValues(value, path + "/" + key, values);
}

// Returns the values in a newly created unit file.
Values defaultValues()
{
    Unit unit;
    std::filesystem::remove(unit.file());
    unit.run("--buzzer");
    Values values;
    addValues(unit.content(), "", values);
    return values;
}

// The limits of a type and an invalid value, as JSON.
struct TypeSample
{
    const char* lowest;
    const char* highest;
    const char* invalid;
};

const std::map<std::string, TypeSample> typeSamples = {
    {"uint8", {"0", "255", "256"}},
    {"uint16", {"0", "65535", "65536"}},
    {"uint32", {"0", "4294967295", "4294967296"}},
    {"uint64", {"0", "18446744073709551615", "-1"}},
    {"int16", {"-32768", "32767", "32768"}},
    {"int32", {"-2147483648", "2147483647", "2147483648"}},
    {"number", {"-1e300", "1e300", "true"}},
    {"boolean", {"false", "true", "0"}},
    {"flag (uint8)", {"0", "255", "256"}},
    {"flag (int32)", {"-2147483648", "2147483647", "2147483648"}},
    {"name (int32)", {"-2147483648", "2147483647", "2147483648"}},
    {"string", {R"("")", R"("any text")", "0"}},
    {"digest", {R"("")", R"("ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff")", R"("ff")"}},
    {"hex string", {R"("")", R"("00fF")", R"("0g")"}},
    {"version", {R"("0.0.0.0")", R"("255.255.255.255")", R"("1.2.3.256")"}},
    {"list of 4 int32", {"[0, 0, 0, -2147483648]", "[0, 0, 0, 2147483647]", "[0, 0, 0]"}},
    {"list of uint16", {"[]", "[65535]", "[65536]"}},
    {"list of objects", {"[]", "[{}]", "[0]"}},
    {"object", {"{}", "{}", "[]"}},
};

TEST(ManualOfTheSimulatedUnit, ListsEveryKeyWithItsDefault)
{
    Values listed;
    for (const auto& [path, key] : listedKeys())
        listed[path] = key.value == "see below" ? nlohmann::json() : nlohmann::json::parse(key.value);
    Values expected = defaultValues();
    for (const char* tooLong : {"/eeprom/main/text", "/eeprom/addOn/text"})
        expected.at(tooLong) = nullptr;
    EXPECT_THAT(listed, testing::ContainerEq(expected));
}

TEST(ManualOfTheSimulatedUnit, HasTheTypeOfEveryKey)
{
    const std::string orNull = " or null";
    const char* const null = "null";
    const auto set = [](Unit& unit, const std::string& path, const char* value)
    { unit.set(path, nlohmann::json::parse(value)); };
    const auto expectRejected = [&](const std::string& path, const char* value)
    {
        Unit unit;
        set(unit, path, value);
        EXPECT_THAT(unit.runExpectingErrors("--lightsensor").errors, testing::HasSubstr(path)) << value;
    };
    Unit lowest;
    Unit highest;
    for (const auto& [path, key] : listedKeys())
    {
        const bool nullable = key.type.ends_with(orNull);
        const TypeSample& sample = typeSamples.at(key.type.substr(0, key.type.find(orNull)));
        set(lowest, path, nullable ? null : sample.lowest);
        set(highest, path, sample.highest);
        expectRejected(path, sample.invalid);
        if (!nullable)
            expectRejected(path, null);
    }
    lowest.run("--lightsensor");
    highest.run("--lightsensor");
}

TEST(ManualOfTheSimulatedUnit, ListsTheTextOfEveryErrorCode)
{
    std::map<unsigned, std::string> texts;
    const std::string section = sectionOf(manualPage("fobrob-sim.1"), ".Sh ERROR CODES");
    const std::string list = section.substr(0, section.find("\n.El"));
    for (const std::string& entry : matches(R"(\n\.It (\d+\n[^\n]+))", list))
        texts[static_cast<unsigned>(std::stoul(entry))] = entry.substr(entry.find('\n') + 1);
    texts.erase(0); // 0 is never an error

    // Each of these operations prints the text of one code, so one run prints several.
    const char* const failing[] = {"WLANPower", "WLANStartUpPower", "GPRSPower", "GPRSStartUpPower",
                                   "GPSPower",  "GPSStartUpPower",  "BTPower",   "BTStartUpPower"};
    std::map<unsigned, std::string> printed;
    for (unsigned code = 1; code < 128;)
    {
        Unit unit;
        const unsigned first = code;
        for (const std::string name : failing)
            unit.fails("Telematics_get" + name + "Status", code++);
        const auto reasons = matches(": ([^\n]+)", unit.run("--telematics").output);
        ASSERT_THAT(reasons, testing::SizeIs(std::size(failing)));
        for (std::size_t i = 0; i < reasons.size(); ++i)
            if (const unsigned shown = first + static_cast<unsigned>(i);
                reasons[i] != "Error " + std::to_string(shown))
                printed[shown] = reasons[i];
    }
    EXPECT_THAT(texts, testing::ContainerEq(printed));
}

} // namespace
