#include "support/unit.h"

namespace
{

TEST(Version, PrintsUnsigned8BitNumbers)
{
    const struct
    {
        std::string argument;
        std::string key;
        std::string label;
    } items[] = {
        {"FPGA", "fpga", "FPGAVersion: "},
        {"FRONT", "front", "FrontVersion: "},
        {"SS", "ss", "SSVersion: "},
        {"QVAuxAPI", "api", "QVAuxVersion: "},
        {"QVAuxDrv", "driver", "QVAuxDrvVersion: "},
        {"OSVersion", "os", "OSVersion: "},
    };
    for (const auto& [argument, key, label] : items)
        for (const std::string version : {"1.12.0.3", "255.255.255.255", "0.0.0.0", "65.10.48.127"})
        {
            SCOPED_TRACE(argument + " " + version);
            Unit unit;
            unit.set("/versions/" + key, version);
            EXPECT_EQ(unit.run("--version=" + argument).output, label + version + "\n");
        }
}

TEST(Version, RejectsOtherArgumentsWithoutReading)
{
    for (const char* argument : {"XYZ", "QVAux", "FPGAVersion", "OS", "QVSetting"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::string("--version=") + argument);
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("AuxVersion"));
    }
}

TEST(Version, StopsReadingOptionsAtTwoHyphens)
{
    Unit unit;
    EXPECT_EQ(unit.run("--version=FPGA -- --help --volume").output, "FPGAVersion: 1.4.0.2\n");
}

TEST(Version, ReportsThatAUnitWithoutADisplayHasNoFrontMicrocontroller)
{
    Unit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(unit.run("--version").output,
              lines({"fobrob 2.9.0.0", "FPGAVersion: 1.4.0.2", "getFrontVersion: Not supported by this unit",
                     "SSVersion: 2.7.1.0", "QVAuxVersion: 2.11.0.0", "QVAuxDrvVersion: 2.3.0.1",
                     "OSVersion: 3.1.4.0"}));
}

} // namespace
