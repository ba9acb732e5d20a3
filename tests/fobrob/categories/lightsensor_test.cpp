#include "support/unit.h"

namespace
{

TEST(Lightsensor, ReadsTheIlluminanceOnRequest)
{
    Unit unit(R"({"lightsensor": {"illuminance": 12}})");
    for (const char* arguments : {"--lightsensor --illuminance", "--lightsensor --illuminance --illuminance"})
    {
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, "Illuminance: 12\n");
        EXPECT_EQ(result.calls, callsOn("Lightsensor", {"Lightsensor_getIlluminance([12]) = 0"}));
    }
}

TEST(Lightsensor, PrintsTheHighestIlluminanceUnsigned)
{
    Unit unit(R"({"lightsensor": {"illuminance": 65535}})");
    EXPECT_EQ(unit.run("--lightsensor").output, "Illuminance: 65535\n");
}

} // namespace
