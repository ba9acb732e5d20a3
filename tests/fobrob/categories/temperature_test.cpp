#include "support/unit.h"

namespace
{

const char* const all = "SS temp=31\n"
                        "PCB temp=34\n"
                        "CPU temp=48\n"
                        "CPU BOARD temp=39\n";

TEST(Temperature, IgnoresTheStatusOfASensor)
{
    Unit unit(R"({"diagnostic": {"sensorStatus": 7}})");
    EXPECT_EQ(unit.run("--temperature").output, all);
    EXPECT_EQ(unit.run("--temperature=CPU").output, "CPU temp=48\n");
    EXPECT_EQ(unit.run("--temperature=BOARD").output, "CPU BOARD temp=39\n");
    EXPECT_NE(unit.run("--about=Diagnostic").output.find("\nCPU temp=48\nCPU BOARD temp=39\n"),
              std::string::npos);
}

TEST(Temperature, PrintsSigned16BitNumbers)
{
    Unit unit(R"({"diagnostic": {"ssTemperature": -5, "pcbTemperature": -32768,
                                 "cpuTemperature": 32767, "boardTemperature": 0}})");
    EXPECT_EQ(unit.run("--temperature").output,
              lines({"SS temp=-5", "PCB temp=-32768", "CPU temp=32767", "CPU BOARD temp=0"}));
}

TEST(Temperature, RejectsOtherArgumentsWithoutReading)
{
    for (const char* argument : {"GPU", "CPUBOARD", "S", "SSS", "0"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::string("--temperature=") + argument);
        EXPECT_EQ(result.output, "Invalid argument: Could not find the specified argument.\n");
        EXPECT_EQ(result.calls, callsOn("Diagnostic"));
    }
}

TEST(Temperature, ReportsAMissingSensor)
{
    const struct
    {
        std::string key;
        std::string line;
        std::string report;
    } sensors[] = {
        {"ssTemperature", "SS temp=31\n", "getSSTemp"},
        {"pcbTemperature", "PCB temp=34\n", "getPCBTemp"},
        {"cpuTemperature", "CPU temp=48\n", "getPMTemp"},
        {"boardTemperature", "CPU BOARD temp=39\n", "getPMTemp"},
    };
    for (const auto& [key, line, report] : sensors)
    {
        SCOPED_TRACE(key);
        Unit unit;
        unit.set("/diagnostic/" + key, nullptr);
        EXPECT_EQ(unit.run("--temperature").output,
                  replaced(all, line, report + ": Not supported by this unit\n"));
    }
}

TEST(Temperature, WritesEachLineAfterItsCall)
{
    const Unit unit;
    EXPECT_EQ(
        writesOf(programOn(unit.file(), "--temperature")),
        (std::vector<std::string>{"SS temp=31\n", "PCB temp=34\n", "CPU temp=48\n", "CPU BOARD temp=39\n"}));
}

} // namespace
