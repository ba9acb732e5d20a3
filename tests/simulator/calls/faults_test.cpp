#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

namespace
{

using nlohmann::json;

// Returns the codes of consecutive calls.
std::vector<ApiError> readVolume(std::size_t calls)
{
    const BuzzerHandle buzzer = GetBuzzer();
    std::vector<ApiError> codes;
    for (std::size_t i = 0; i < calls; ++i)
    {
        std::uint16_t volume = 0;
        codes.push_back(Buzzer_getVolume(buzzer, &volume));
    }
    return codes;
}

TEST(Faults, AffectEveryCallWithoutChangingTheFile)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    const std::string before = readFile(unit.file());
    EXPECT_EQ(readVolume(3), (std::vector<ApiError>{77, 77, 77}));
    EXPECT_EQ(readFile(unit.file()), before);
}

TEST(Faults, AreCounted)
{
    const struct
    {
        json fault;
        std::vector<ApiError> codes; // of consecutive calls
        json after;
    } cases[] = {
        {{{"code", 77}, {"skip", 2}}, {0, 0, 77, 77, 77}, {{"code", 77}, {"skip", 0}}},
        {{{"code", 77}, {"times", 1}}, {77, 0, 0}, {{"code", 77}, {"times", 0}}},
        {{{"code", 77}, {"skip", 1}, {"times", 2}},
         {0, 77, 77, 0, 0},
         {{"code", 77}, {"skip", 0}, {"times", 0}}},
        {{{"code", 77}, {"times", 0}}, {0, 0}, {{"code", 77}, {"times", 0}}},
        {{{"code", 77}, {"times", nullptr}}, {77, 77}, {{"code", 77}, {"times", nullptr}}},
    };
    for (const auto& [fault, codes, after] : cases)
    {
        SCOPED_TRACE(fault);
        const CalledUnit unit(json{{"faults", {{"Buzzer_getVolume", fault}}}}.dump());
        EXPECT_EQ(readVolume(codes.size()), codes);
        EXPECT_EQ(unit["/faults/Buzzer_getVolume"], after);
    }
}

TEST(Faults, AffectNoOtherOperation)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    std::uint16_t frequency = 0;
    EXPECT_EQ(Buzzer_getFrequency(GetBuzzer(), &frequency), 0u);
    EXPECT_EQ(frequency, 2500);
}

TEST(Faults, LeaveResultsUnwritten)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    std::uint16_t volume = 4711;
    EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 77u);
    EXPECT_EQ(volume, 4711);
}

TEST(Faults, LeaveTheUnitUnchanged)
{
    CalledUnit unit;
    unit.failsOnce("Buzzer_setVolume", 77);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 77u);
    EXPECT_EQ(unit["/buzzer"], json());
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Faults, CanIgnoreACall)
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

TEST(Faults, CanHaveAnyCode)
{
    CalledUnit unit;
    for (const ApiError code : {1u, 3u, 66u, 255u, 65536u, 4294967295u})
    {
        unit.fails("Buzzer_getVolume", code);
        EXPECT_EQ(readVolume(1).front(), code);
    }
}

TEST(Faults, TakePrecedenceOverOtherErrors)
{
    CalledUnit unit;
    unit.fails("Buzzer_setVolume", 77);
    unit.fails("Buzzer_release", 78);
    EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 2001), 77u);
    EXPECT_EQ(Buzzer_setVolume(nullptr, 40), 77u);
    EXPECT_EQ(Buzzer_release(nullptr), 78u);
}

TEST(Faults, LeaveAHandleValidIfItsReleaseFails)
{
    CalledUnit unit;
    unit.failsOnce("Buzzer_release", 77);
    const BuzzerHandle buzzer = GetBuzzer();
    EXPECT_EQ(Buzzer_release(buzzer), 77u);
    EXPECT_EQ(Buzzer_setVolume(buzzer, 40), 0u);
    EXPECT_EQ(Buzzer_release(buzzer), 0u);
    EXPECT_EQ(Buzzer_release(buzzer), 3u);
}

TEST(Faults, CanReturnANullHandle)
{
    CalledUnit unit;
    unit.returnsNull("GetBuzzer");
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_NE(GetAdc(), nullptr);
    unit.set("/faults/GetBuzzer", {{"null", true}, {"skip", 1}, {"times", 1}});
    EXPECT_NE(GetBuzzer(), nullptr);
    EXPECT_EQ(GetBuzzer(), nullptr);
    EXPECT_NE(GetBuzzer(), nullptr);
    EXPECT_EQ(unit["/faults/GetBuzzer/times"], 0);
}

TEST(Faults, CanReturnANullText)
{
    CalledUnit unit;
    unit.returnsNull("GetErrorStringA");
    unit.returnsNull("GetStartupReasonStringA");
    unit.returnsNull("GetHwErrorStatusStringA");
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_EQ(GetStartupReasonStringA(0), nullptr);
    EXPECT_EQ(GetHwErrorStatusStringA(0), nullptr);
}

TEST(Faults, CanReturnANullTextOnce)
{
    CalledUnit unit;
    unit.set("/faults/GetErrorStringA", {{"null", true}, {"times", 1}});
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_STREQ(GetErrorStringA(3), "The module handle is not valid");
}

TEST(Faults, CanReplaceErrorTexts)
{
    const CalledUnit unit(R"({"errorTexts": {"3": null, "77": "Zu heiß", "78": ""}})");
    EXPECT_EQ(GetErrorStringA(3), nullptr);
    EXPECT_STREQ(GetErrorStringA(77), "Zu heiß");
    EXPECT_STREQ(GetErrorStringA(78), "");
    EXPECT_STREQ(GetErrorStringA(79), "Error 79");
}

TEST(Faults, EndWhenTheyAreRemovedFromTheFile)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(readVolume(1).front(), 77u);
    unit.set("/faults", json::object());
    EXPECT_EQ(readVolume(1).front(), 0u);
}

TEST(Faults, SurviveABoot)
{
    CalledUnit unit;
    unit.fails("Buzzer_getVolume", 77);
    EXPECT_EQ(FirmwareUpgrade_shutDown(GetFirmwareUpgrade()), 0u);
    EXPECT_EQ(readVolume(2), (std::vector<ApiError>{77, 77}));
    EXPECT_EQ(unit["/boot/running"], true);
}

} // namespace
