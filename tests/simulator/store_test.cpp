#include "support/unit.h"

namespace
{

TEST(Store, RemembersAcrossProcesses)
{
    Unit unit;
    EXPECT_EQ(unit.run("--buzzer --frequency=800").output, "Buzzer frequency set to: 800 Hz.\n");
    EXPECT_EQ(unit.run("--buzzer --frequency").output, "Buzzer Frequency: 800\n");
    EXPECT_EQ(unit["/buzzer/frequency"], 800);
}

} // namespace
