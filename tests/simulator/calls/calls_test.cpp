#include "operations.h"

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

TEST(Calls, AreTestedForEveryDeclaredOperation)
{
    std::set<std::string> tested = {"GetErrorStringA", "GetStartupReasonStringA", "GetHwErrorStatusStringA"};
    for (const auto& operations : {everyOperation(), everyRelease()})
        for (const Operation& checked : operations)
            tested.insert({checked.name, "Get" + moduleOf(checked.name)});

    std::set<std::string> declared;
    const std::string identifier = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    std::string header;
    for (const std::string& line : splitLines(readFile(PROJECT_FOLDER "/src/device/qv_aux2.h")))
        if (!line.starts_with("//"))
            header += line + "\n";
    for (auto bracket = header.find('('); bracket != std::string::npos;
         bracket = header.find('(', bracket + 1))
    {
        const auto begin = header.find_last_not_of(identifier, bracket - 1) + 1;
        const std::string name = header.substr(begin, bracket - begin);
        if (name.starts_with("Get") || name.find('_') != std::string::npos)
            declared.insert(name);
    }
    EXPECT_EQ(tested, declared);
}

} // namespace
