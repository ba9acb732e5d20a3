#include "operations.h"
#include "support/listed_operations.h"

#include <set>

namespace
{

// Advances the firmware job until it fails because its file does not exist.
void finishFirmwareJob()
{
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    UpgradeStatus status{};
    while (status.error == 0 && FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 0) == 0)
        continue;
    FirmwareUpgrade_release(upgrade);
}

TEST(Calls, SucceedForEveryOperationOnAHealthyUnit)
{
    const CalledUnit unit(R"({"firmware": {"pace": 0}})");
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
        {
            EXPECT_EQ(checked.call(checked.acquire()), 0u) << checked.name;
            if (checked.name.starts_with("FirmwareUpgrade_start"))
                finishFirmwareJob();
        }
}

TEST(Calls, AreTestedForEveryListedOperation)
{
    std::set<std::string> tested = {"GetErrorStringA", "GetStartupReasonStringA", "GetHwErrorStatusStringA"};
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
            tested.insert({checked.name, "Get" + moduleOf(checked.name)});

    EXPECT_EQ(tested, listedOperations());
}

} // namespace
