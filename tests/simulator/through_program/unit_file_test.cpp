#include "support/unit.h"

#include <filesystem>

namespace
{

using nlohmann::json;

TEST(UnitFile, GainsOnlyChangedKeys)
{
    Unit unit("{}");
    unit.run("--buzzer --volume=40");
    EXPECT_EQ(readFile(unit.file()), "{\n  \"buzzer\": {\n    \"volume\": 40\n  }\n}\n");
    unit.run("--onoff --longpress=noaction");
    EXPECT_EQ(unit.content(),
              (json{{"buzzer", {{"volume", 40}}}, {"config", {{"longPressAction", "none"}}}}));
}

TEST(UnitFile, KeepsItsLayoutWhenChanged)
{
    Unit unit;
    writeFile(unit.file(), R"({
  "lightsensor": {
    "illuminance": null
  },
  "backlight": {
    "ledDimming": 1,
    "intensity": 7,
    "automatic": 0
  },
  "frontLed": {
    "color": 2,
    "frequency": 3
  },
  "about": {
    "unitSerial": "Zähler \"7\"",
    "buttons": 3
  },
  "adc": {},
  "buzzer": {
    "volume": 5,
    "frequency": 800
  }
}
)");
    const std::string before = readFile(unit.file());
    unit.run("--buzzer --volume=40");
    unit.run("--backlight --intensity=8");
    std::string expected = before;
    expected.replace(expected.find("\"volume\": 5"), 11, "\"volume\": 40");
    expected.replace(expected.find("\"intensity\": 7"), 14, "\"intensity\": 8");
    EXPECT_EQ(readFile(unit.file()), expected);
}

TEST(UnitFile, IsEquivalentWhetherEmptyOrComplete)
{
    Unit empty("{}");
    Unit full;
    std::filesystem::remove(full.file());
    for (const char* arguments : {"--about", "--version", "--temperature", "--digitalio", "--lightsensor",
                                  "--buzzer", "--backlight", "--led", "--can", "--heater", "--power",
                                  "--onoff", "--touch", "--telematics", "--advanced --status"})
    {
        const Result result = empty.run(arguments);
        EXPECT_FALSE(result.calls.empty()) << arguments;
        EXPECT_EQ(full.run(arguments).output, result.output);
        EXPECT_EQ(full.run(arguments).calls, result.calls);
    }
}

TEST(UnitFile, CanBeCopiedToAnotherUnit)
{
    Unit one;
    one.run("--buzzer --volume=40");
    one.run("--led --color=blue --frequency=2.5");
    one.run("--telematics --gpspower=disable");
    Unit other(readFile(one.file()));
    EXPECT_EQ(other.run("--buzzer").output, one.run("--buzzer").output);
    EXPECT_EQ(other.run("--led").output, one.run("--led").output);
    EXPECT_EQ(other.run("--telematics").output, one.run("--telematics").output);
    EXPECT_EQ(readFile(other.file()), readFile(one.file()));
}

} // namespace
