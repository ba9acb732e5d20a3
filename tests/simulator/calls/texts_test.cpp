#include "operations.h"

namespace
{

TEST(Texts, ExistForEveryCode)
{
    const CalledUnit unit;
    EXPECT_STREQ(GetErrorStringA(0), "No error");
    EXPECT_STREQ(GetErrorStringA(3), "The module handle is not valid");
    EXPECT_STREQ(GetErrorStringA(4294967295), "Error 4294967295");
    EXPECT_STREQ(GetStartupReasonStringA(0x55), "Front button");
    EXPECT_STREQ(GetStartupReasonStringA(0x56), "Unknown start-up reason");
    EXPECT_STREQ(GetHwErrorStatusStringA(131), "Main supply failed");
    EXPECT_STREQ(GetHwErrorStatusStringA(65535), "Unknown hardware status");
}

TEST(Texts, StayValidWhenTheyAreReplaced)
{
    CalledUnit unit(R"({"errorTexts": {"77": "one text"}})");
    const char* const first = GetErrorStringA(77);
    unit.set("/errorTexts/77", "another text");
    const char* const second = GetErrorStringA(77);
    unit.set("/errorTexts/77", nullptr);
    EXPECT_EQ(GetErrorStringA(77), nullptr);
    EXPECT_STREQ(first, "one text");
    EXPECT_STREQ(second, "another text");
}

TEST(Texts, AndHandlesAreAvailableFromAnInvalidUnit)
{
    const CalledUnit unit(R"({"adc": {"24V": 1e999}})");
    testing::internal::CaptureStderr();
    EXPECT_STREQ(GetErrorStringA(66), "The unit file is not valid");
    EXPECT_STREQ(GetStartupReasonStringA(0), "Power was applied");
    expectAll(everyRelease(), 0);
    for (const Operation& checked : everyOperation())
        EXPECT_EQ(checked.call(checked.acquire()), 66u) << checked.name;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "libqv-aux2: " + unit.file() + ": number overflow parsing '1e999'\n");
}

} // namespace
