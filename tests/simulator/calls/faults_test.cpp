#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

namespace
{

using nlohmann::json;

// What `calls` readings of the volume answer, one after the other.
std::vector<ApiError> readVolume(int calls)
{
    const BuzzerHandle buzzer = GetBuzzer();
    std::vector<ApiError> codes;
    for (int i = 0; i < calls; ++i)
    {
        std::uint16_t volume = 0;
        codes.push_back(Buzzer_getVolume(buzzer, &volume));
    }
    return codes;
}

TEST(Faults, FailEveryCallAndLeaveTheFileAlone)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    const std::string before = readFile(unit.file());
    EXPECT_EQ(readVolume(3), (std::vector<ApiError>{77, 77, 77}));
    EXPECT_EQ(readFile(unit.file()), before);
}

TEST(Faults, FailFromTheNthCallOn)
{
    const CalledUnit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "skip": 2}}})");
    EXPECT_EQ(readVolume(5), (std::vector<ApiError>{0, 0, 77, 77, 77}));
    EXPECT_EQ(unit["/faults/Buzzer_getVolume"], (json{{"code", 77}, {"skip", 0}}));
}

TEST(Faults, FailOnce)
{
    const CalledUnit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "times": 1}}})");
    EXPECT_EQ(readVolume(3), (std::vector<ApiError>{77, 0, 0}));
    EXPECT_EQ(unit["/faults/Buzzer_getVolume"], (json{{"code", 77}, {"times", 0}}));
}

TEST(Faults, FailSomeTimesBehindSomeCalls)
{
    const CalledUnit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "skip": 1, "times": 2}}})");
    EXPECT_EQ(readVolume(5), (std::vector<ApiError>{0, 77, 77, 0, 0}));
}

TEST(Faults, FailNeverWithZeroTimes)
{
    const CalledUnit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "times": 0}}})");
    EXPECT_EQ(readVolume(2), (std::vector<ApiError>{0, 0}));
}

TEST(Faults, FailForeverWithoutANumberOfTimes)
{
    const CalledUnit unit(R"({"faults": {"Buzzer_getVolume": {"code": 77, "times": null}}})");
    EXPECT_EQ(readVolume(2), (std::vector<ApiError>{77, 77}));
}

TEST(Faults, ReachNoOtherOperation)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    std::uint16_t frequency = 0;
    EXPECT_EQ(Buzzer_getFrequency(GetBuzzer(), &frequency), 0u);
    EXPECT_EQ(frequency, 2500);
}

TEST(Faults, WriteNoResultOfAFailedReading)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    std::uint16_t volume = 4711;
    EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 77u);
    EXPECT_EQ(volume, 4711);
}

TEST(Faults, ChangeNothingInAFailedChange)
{
    CalledUnit unit;
    unit.failsOnce("Buzzer_setVolume", 77);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 77u);
    EXPECT_EQ(unit["/buzzer"], json());
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Faults, SucceedWithoutWritingOrChangingAnything)
{
    CalledUnit unit;
    unit.ignores("Buzzer_getVolume");
    unit.ignores("Buzzer_setVolume");
    std::uint16_t volume = 4711;
    EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 0u);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
    EXPECT_EQ(volume, 4711);
    EXPECT_EQ(unit["/buzzer"], json());
    EXPECT_EQ(unit.calls()[1], "Buzzer_getVolume([]) = 0");
}

TEST(Faults, AnswerAnyCode)
{
    CalledUnit unit;
    for (const ApiError code : {1u, 3u, 66u, 255u, 65536u, 4294967295u})
    {
        unit.fails("Buzzer_getVolume", code);
        EXPECT_EQ(readVolume(1).front(), code);
    }
}

TEST(Faults, ComeBeforeWhatIsWrongWithTheCall)
{
    CalledUnit unit;
    unit.fails("Buzzer_setVolume", 77);
    unit.fails("Buzzer_release", 78);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 2001), 77u);
    EXPECT_EQ(Buzzer_setVolume(nullptr, 40), 77u);
    EXPECT_EQ(Buzzer_release(nullptr), 78u);
}

TEST(Faults, KeepTheHandleThatCouldNotBeReleased)
{
    CalledUnit unit;
    unit.failsOnce("Buzzer_release", 77);
    const BuzzerHandle buzzer = GetBuzzer();
    EXPECT_EQ(Buzzer_release(buzzer), 77u);
    EXPECT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
    EXPECT_EQ(Buzzer_release(buzzer), 0u);
    EXPECT_EQ(Buzzer_release(buzzer), 3u);
}

TEST(Faults, GiveANullHandleAlwaysOrOnce)
{
    CalledUnit unit;
    unit.givesNull("GetBuzzer");
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_NE(GetAdc(), nullptr);
    unit.set("/faults/GetBuzzer", {{"null", true}, {"skip", 1}, {"times", 1}});
    EXPECT_NE(GetBuzzer(), nullptr);
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_NE(GetBuzzer(), nullptr);
    EXPECT_EQ(unit["/faults/GetBuzzer/times"], 0);
}

TEST(Faults, GiveANullText)
{
    CalledUnit unit;
    unit.givesNull("GetErrorStringA");
    unit.givesNull("GetStartupReasonStringA");
    unit.givesNull("GetHwErrorStatusStringA");
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_EQ(GetStartupReasonStringA(0), nullptr);
    EXPECT_EQ(GetHwErrorStatusStringA(0), nullptr);
}

TEST(Faults, GiveANullTextOnce)
{
    CalledUnit unit;
    unit.set("/faults/GetErrorStringA", {{"null", true}, {"times", 1}});
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_STREQ(GetErrorStringA(3), "The module handle is not valid");
}

TEST(Faults, GiveACodeNoTextOrAnother)
{
    const CalledUnit unit(R"({"errorTexts": {"3": null, "77": "Zu heiß", "78": ""}})");
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_STREQ(GetErrorStringA(77), "Zu heiß");
    EXPECT_STREQ(GetErrorStringA(78), "");
    EXPECT_STREQ(GetErrorStringA(79), "Error 79");
}

TEST(Faults, AreOverWhenTheFileNoLongerAsksForThem)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(readVolume(1).front(), 77u);
    unit.set("/faults", json::object());
    EXPECT_EQ(readVolume(1).front(), 0u);
}

TEST(Faults, StayOverABoot)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(FirmwareUpgrade_shutDown(GetFirmwareUpgrade()), 0u);
    EXPECT_EQ(readVolume(2), (std::vector<ApiError>{77, 77}));
    EXPECT_EQ(unit["/boot/running"], true);
}

} // namespace
