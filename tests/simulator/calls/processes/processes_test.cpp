// Concurrent calls to one unit by many processes.

#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/children.h"

#include <functional>
#include <gmock/gmock.h>

namespace
{

using nlohmann::json;

constexpr int processes = 16;

void inManyProcesses(const std::function<void()>& calls)
{
    std::vector<int> children;
    for (int i = 0; i < processes; ++i)
        children.push_back(startChild(calls));
    waitForAll(children);
}

TEST(Processes, BootTheUnitOnce)
{
    const CalledUnit unit(R"({"boot": {"running": false}, "diagnostic": {"powerCycles": 7}})");
    inManyProcesses(
        []
        {
            std::uint16_t volume = 0;
            Buzzer_getVolume(GetBuzzer(), &volume);
        });
    EXPECT_EQ(unit["/diagnostic/powerCycles"], 8);
}

TEST(Processes, WriteCompleteLinesToTheTrace)
{
    const CalledUnit unit(json{{"errorTexts", {{"77", std::string(3000, 'x')}}}}.dump());
    constexpr int callsOfEach = 100;
    inManyProcesses(
        []
        {
            for (int call = 0; call < callsOfEach; ++call)
                GetErrorStringA(77);
        });
    const Calls calls = unit.calls();
    EXPECT_EQ(calls.size(), static_cast<std::size_t>(processes * callsOfEach));
    EXPECT_THAT(calls, testing::Each("GetErrorStringA(77) = \"" + std::string(3000, 'x') + "\""));
}

} // namespace
