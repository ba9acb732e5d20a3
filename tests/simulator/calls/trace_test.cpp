#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

TEST(Trace, RecordsArgumentsAndResultsInOrder)
{
    const CalledUnit unit;
    const BuzzerHandle buzzer = GetBuzzer();
    std::uint16_t frequency = 0;
    EXPECT_EQ(Buzzer_setFrequency(buzzer, 800), 0u);
    EXPECT_EQ(Buzzer_getFrequency(buzzer, &frequency), 0u);
    EXPECT_EQ(Buzzer_setFrequency(buzzer, 699), 5u);
    EXPECT_STREQ(GetErrorStringA(5), "The value is out of range");
    EXPECT_EQ(Buzzer_release(buzzer), 0u);
    EXPECT_EQ(unit.calls(),
              (Calls{"GetBuzzer() = handle", "Buzzer_setFrequency(800) = 0", "Buzzer_getFrequency([800]) = 0",
                     "Buzzer_setFrequency(699) = 5", "GetErrorStringA(5) = \"The value is out of range\"",
                     "Buzzer_release() = 0"}));
}

TEST(Trace, RecordsEveryTypeOfArgument)
{
    const CalledUnit unit(R"({"diagnostic": {"cpuTemperature": -7}, "adc": {"24VIN": 0.1}})");
    std::int16_t low = 0, high = 0, temperature = 0;
    std::int32_t status = 0;
    std::uint8_t duty = 0, bytes[4] = {};
    double number = 0;
    DiagnosticTimer timer{};
    Diagnostic_getMinMaxTemp(GetDiagnostic(), &low, &high);
    Diagnostic_getPMTemp(GetDiagnostic(), 0, &temperature, &status);
    Diagnostic_getTimer(GetDiagnostic(), &timer);
    Adc_getVoltage(GetAdc(), 0, &number);
    FrontLED_setSignal(GetFrontLED(), 12.5, 30);
    FrontLED_getSignal(GetFrontLED(), &number, &duty);
    Config_setHeatingTempLimit(GetConfig(), -25);
    Config_setExtOnOffSigTrigTime(GetConfig(), 4294967295);
    QVAuxPrivate_getEepromData(GetQVAuxPrivate(), 0, bytes, sizeof bytes);
    Backlight_startAutomaticBL(GetBacklight());
    Calls calls = unit.calls();
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("Get"); });
    EXPECT_EQ(calls,
              (Calls{"Diagnostic_getMinMaxTemp([-21], [76]) = 0", "Diagnostic_getPMTemp(0, [-7], [0]) = 0",
                     "Diagnostic_getTimer([184213, 20144, 312, 96520, 4211, 87, 0]) = 0",
                     "Adc_getVoltage(0, [0.1]) = 0", "FrontLED_setSignal(12.5, 30) = 0",
                     "FrontLED_getSignal([12.5], [30]) = 0", "Config_setHeatingTempLimit(-25) = 0",
                     "Config_setExtOnOffSigTrigTime(4294967295) = 0",
                     "QVAuxPrivate_getEepromData(0, [...], 4) = 0", "Backlight_startAutomaticBL() = 0"}));
}

TEST(Trace, RecordsTheStatusOfAFirmwareJob)
{
    const CalledUnit unit(R"({"firmware": {"pace": 0}})");
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    UpgradeStatus status{};
    FirmwareUpgrade_startSSUpgrade(upgrade, "none.hex", 0);
    while (status.error == 0 && FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1) == 0)
        continue;
    FirmwareUpgrade_getUpgradeStatus(nullptr, &status, 0);
    EXPECT_EQ(unit.calls(),
              (Calls{"GetFirmwareUpgrade() = handle", "FirmwareUpgrade_startSSUpgrade(\"none.hex\", 0) = 0",
                     "FirmwareUpgrade_getUpgradeStatus([0, 0, 0], 1) = 0",
                     "FirmwareUpgrade_getUpgradeStatus([1, 16, 0], 1) = 0",
                     "FirmwareUpgrade_getUpgradeStatus([2, 33, 82], 1) = 0",
                     "FirmwareUpgrade_getUpgradeStatus([], 0) = 3"}));
}

TEST(Trace, RecordsOnlyTheWrittenPartOfATruncatedText)
{
    const CalledUnit unit(R"({"about": {"unitSerial": "ABCD"}})");
    char buffer[16];
    About_getUnitSerial(GetAbout(), buffer, 3);
    About_getUnitSerial(GetAbout(), buffer, 16);
    About_getUnitSerial(nullptr, buffer, 16);
    About_getUnitSerial(GetAbout(), nullptr, 16);
    Calls calls = unit.calls();
    std::erase(calls, "GetAbout() = handle");
    EXPECT_EQ(calls,
              (Calls{R"(About_getUnitSerial(["ABC"], 3) = 0)", R"(About_getUnitSerial(["ABCD"], 16) = 0)",
                     "About_getUnitSerial([], 16) = 3", "About_getUnitSerial([], 16) = 4"}));
}

TEST(Trace, EscapesControlCharacters)
{
    const CalledUnit unit(json{{"errorTexts", {{"77", "a\nb\t\"c\"\\ \x7fß"}, {"78", nullptr}}}}.dump());
    GetErrorStringA(77);
    GetErrorStringA(78);
    FirmwareUpgrade_startSSUpgrade(nullptr, "new\n.hex", 7);
    FirmwareUpgrade_startSSUpgrade(nullptr, nullptr, 7);
    EXPECT_EQ(unit.calls(),
              (Calls{R"(GetErrorStringA(77) = "a\x0ab\x09\"c\"\\ \x7fß")", "GetErrorStringA(78) = null",
                     R"(FirmwareUpgrade_startSSUpgrade("new\x0a.hex", 7) = 3)",
                     "FirmwareUpgrade_startSSUpgrade(null, 7) = 4"}));
}

TEST(Trace, RecordsANullHandle)
{
    CalledUnit unit;
    unit.returnsNull("GetBuzzer");
    GetBuzzer();
    Buzzer_release(nullptr);
    EXPECT_EQ(unit.calls(), (Calls{"GetBuzzer() = null", "Buzzer_release() = 3"}));
}

TEST(Trace, RecordsNoResultsOfAFailedCall)
{
    CalledUnit unit;
    unit.fails("FrontLED_getSignal", 77);
    double frequency = 1;
    std::uint8_t duty = 2;
    FrontLED_getSignal(GetFrontLED(), &frequency, &duty);
    EXPECT_EQ(unit.calls().back(), "FrontLED_getSignal([], []) = 77");
}

// Only writes of up to PIPE_BUF bytes to a pipe are atomic.
TEST(Trace, HasOnlyWholeLinesInAPipe)
{
    const CalledUnit unit(json{{"errorTexts", {{"77", std::string(100000, 'x')}}}}.dump());
    ASSERT_EQ(mkfifo(unit.traceFile().c_str(), 0666), 0);
    const int reader = open(unit.traceFile().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    GetErrorStringA(77);
    GetErrorStringA(0);
    char text[70000];
    const ssize_t length = read(reader, text, sizeof text);
    close(reader);
    ASSERT_GE(length, 0);
    EXPECT_EQ(std::string(text, static_cast<std::size_t>(length)), "GetErrorStringA(0) = \"No error\"\n");
}

TEST(Trace, IsAppendedToTheFile)
{
    const CalledUnit unit;
    writeFile(unit.traceFile(), "before\n");
    GetAdc();
    EXPECT_EQ(unit.calls(), (Calls{"before", "GetAdc() = handle"}));
}

TEST(Trace, IsOffWithoutAFile)
{
    const CalledUnit unit;
    for (const auto& unset : {+[] { unsetenv("QVAUX_TRACE"); }, +[] { setenv("QVAUX_TRACE", "", 1); }})
    {
        unset();
        EXPECT_NE(GetAdc(), nullptr);
    }
    EXPECT_FALSE(fileExists(unit.traceFile()));
}

TEST(Trace, IsIgnoredIfItCannotBeWritten)
{
    const CalledUnit unit;
    for (const char* file : {"/none/trace", "/", "/dev/full"})
    {
        setenv("QVAUX_TRACE", file, 1);
        testing::internal::CaptureStderr();
        EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Trace, IsNotWrittenToAFileOfTheUnit)
{
    const std::string before = R"({"buzzer": {"volume": 5}})";
    for (const std::string suffix : {"", ".lock", ".job", ".new"})
    {
        const CalledUnit unit(before);
        const std::string companion = unit.file() + suffix;
        const std::string link = unit.directory / "link";
        const std::string hardLink = unit.directory / "hard-link";
        const std::string directory = unit.directory / "directory";
        std::filesystem::create_symlink(companion, link);
        std::filesystem::create_directory_symlink(".", directory);
        std::vector<std::string> traces = {companion, link, directory + "/unit.json" + suffix};
        if (suffix == "")
        {
            std::filesystem::create_hard_link(companion, hardLink);
            traces.push_back(hardLink);
        }
        for (const std::string& trace : traces)
        {
            SCOPED_TRACE(trace);
            setenv("QVAUX_TRACE", trace.c_str(), 1);
            testing::internal::CaptureStderr();
            std::uint16_t volume = 0;
            EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 0u);
            EXPECT_EQ(testing::internal::GetCapturedStderr(),
                      "libqv-aux2: " + trace + ": QVAUX_TRACE names a file of the unit\n");
            EXPECT_EQ(volume, 5);
            EXPECT_EQ(readFile(unit.file()), before);
            EXPECT_EQ(fileExists(companion), suffix == "");
        }
    }
}

} // namespace
