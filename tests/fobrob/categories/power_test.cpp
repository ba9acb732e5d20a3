#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

const char* const modeRequired = "Invalid argument: Current or Startup must be selected.\n";

// A value of --power: the beginning of its lines, the names of its operations and its path in the unit's
// file.
struct Mode
{
    const char* name;
    std::string argument;
    std::string heading;
    std::string module;
    std::string suffix;
    std::string path;
};

std::ostream& operator<<(std::ostream& stream, const Mode& mode)
{
    return stream << mode.argument;
}

const Mode current = {"Current", "current", "Current - ", "Power_", "PowerStatus", "/power"};
const Mode startup = {
    "Startup", "startup", "Start-up - ", "Config_", "StartupPowerConfig", "/config/startupPower"};

class Power : public testing::TestWithParam<Mode>
{
protected:
    Unit unit;

    Result run(const std::string& options)
    {
        return unit.run("--power=" + GetParam().argument + " " + options);
    }

    // Return the name of an operation. `member` is "Video", "Can" or "ExtFan".
    static std::string get(const std::string& member)
    {
        return GetParam().module + "get" + member + GetParam().suffix;
    }

    static std::string set(const std::string& member)
    {
        return GetParam().module + "set" + member + GetParam().suffix;
    }

    // Returns a line of output.
    static std::string line(const std::string& text)
    {
        return GetParam().heading + text + "\n";
    }

    static std::string path(const std::string& key)
    {
        return GetParam().path + "/" + key;
    }

    // Returns all calls of a run that makes the calls `work`.
    static Calls within(Calls work)
    {
        work.insert(work.begin(), {"GetPower() = handle", "GetConfig() = handle"});
        work.insert(work.end(), {"Power_release() = 0", "Config_release() = 0"});
        return work;
    }
};

INSTANTIATE_TEST_SUITE_P(BothModes, Power, testing::Values(current, startup),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(Power, ChangesOneChannelAndKeepsTheOthers)
{
    for (const int mask : {0, 5, 10, 15})
        for (int channel = 1; channel <= 4; ++channel)
            for (const bool enable : {true, false})
            {
                const std::string word = enable ? "Enable" : "Disable";
                const std::string option = "--vchannel" + std::to_string(channel) + "=" + word;
                SCOPED_TRACE(option + " on " + std::to_string(mask));
                const int bit = 1 << (channel - 1);
                const int changed = enable ? mask | bit : mask & ~bit;
                unit.set(path("video"), mask);
                const Result result = run(option);
                EXPECT_EQ(result.output, line("Video channel " + std::to_string(channel) +
                                              " power status set to " + word + "."));
                EXPECT_EQ(result.calls, within({get("Video") + "([" + std::to_string(mask) + "]) = 0",
                                                set("Video") + "(" + std::to_string(changed) + ") = 0"}));
                EXPECT_EQ(unit[path("video")], changed);
            }
}

TEST_P(Power, ReadsTheMaskAgainForEachChannel)
{
    const Result result = run("--vchannel3 --vchannel2=Disable --vchannel1=Disable");
    EXPECT_EQ(result.output, line("Video channel 1 power status set to Disable.") +
                                 line("Video channel 2 power status set to Disable.") +
                                 line("Video channel 3 power status: Enabled."));
    EXPECT_EQ(result.calls,
              within({get("Video") + "([15]) = 0", set("Video") + "(14) = 0", get("Video") + "([14]) = 0",
                      set("Video") + "(12) = 0", get("Video") + "([12]) = 0"}));
}

TEST_P(Power, SendsTheUpperBitsOfTheMaskBackUnchanged)
{
    unit.set(path("video"), 0xF5);
    const Result result = run("--vchannel2=Enable --vchannel1=Disable");
    EXPECT_EQ(result.output, "setVideoPowerStatus: The value is out of range\n"
                             "setVideoPowerStatus: The value is out of range\n");
    EXPECT_THAT(result.calls,
                testing::IsSupersetOf({set("Video") + "(244) = 5", set("Video") + "(247) = 5"}));
}

TEST_P(Power, RejectsOtherWords)
{
    for (const char* word : {"maybe", "Enabled", "Disabled", "Enable.", "1", "0", "on"})
    {
        SCOPED_TRACE(word);
        const Result channel = run(std::string("--vchannel1=") + word);
        EXPECT_EQ(channel.output, "Invalid argument\n");
        EXPECT_EQ(channel.calls, within({get("Video") + "([15]) = 0"}));
        for (const char* option : {"--can=", "--extfan="})
        {
            const Result result = run(option + std::string(word));
            EXPECT_EQ(result.output, "Invalid argument\n");
            EXPECT_EQ(result.calls, within({}));
        }
    }
}

TEST_P(Power, ContinuesAfterARejectedWord)
{
    const Result result = run("--vchannel1=maybe --vchannel2=maybe --vchannel3=Disable --can=maybe --extfan");
    EXPECT_EQ(result.output, "Invalid argument\n"
                             "Invalid argument\n" +
                                 line("Video channel 3 power status set to Disable.") + "Invalid argument\n" +
                                 line("External fan power status: Disabled."));
}

TEST_P(Power, PrintsEveryStateExcept1AsDisabled)
{
    for (const int state : {0, 2, -1, 256})
    {
        SCOPED_TRACE(state);
        unit.set(GetParam().path, {{"can", state}, {"externalFan", state}});
        EXPECT_EQ(run("--can --extfan").output,
                  line("CAN power status: Disabled.") + line("External fan power status: Disabled."));
    }
}

TEST_P(Power, ChangesNoChannelIfTheMaskCannotBeRead)
{
    unit.failsOnce(get("Video"), 77);
    const Result result = run("--vchannel1=Disable --vchannel2=Disable");
    EXPECT_EQ(result.output,
              "getVideoPowerStatus: Error 77\n" + line("Video channel 2 power status set to Disable."));
    EXPECT_EQ(result.calls, within({get("Video") + "([]) = 77", "GetErrorStringA(77) = \"Error 77\"",
                                    get("Video") + "([15]) = 0", set("Video") + "(13) = 0"}));
}

TEST_P(Power, ReadsTheMaskBeforeItChecksTheWord)
{
    unit.fails(get("Video"), 77);
    EXPECT_EQ(run("--vchannel1=maybe").output, "getVideoPowerStatus: Error 77\n");
}

TEST_P(Power, ContinuesAfterAFailedChangeOfAChannel)
{
    unit.failsOnce(set("Video"), 77);
    const Result result = run("--vchannel1=Disable --vchannel2=Disable");
    EXPECT_EQ(result.output,
              "setVideoPowerStatus: Error 77\n" + line("Video channel 2 power status set to Disable."));
    EXPECT_EQ(unit[path("video")], 13);
}

TEST_P(Power, PrintsTheStateOfCanAfterAFailedReadOfTheFan)
{
    const struct
    {
        nlohmann::json can;
        const char* shown;
    } cases[] = {{true, "Enabled."}, {false, "Disabled."}, {2, "Disabled."}};
    for (const auto& [can, shown] : cases)
    {
        SCOPED_TRACE(can);
        unit.set(GetParam().path, {{"can", can}, {"externalFan", true}});
        unit.fails(get("ExtFan"), 77);
        EXPECT_EQ(run("--can --extfan").output, line(std::string("CAN power status: ") + shown) +
                                                    "getExtFanPowerStatus: Error 77\n" +
                                                    line(std::string("External fan power status: ") + shown));
    }
}

TEST_P(Power, PrintsTheFanAsDisabledAfterAFailedReadWithoutAStateOfCan)
{
    unit.set(path("externalFan"), true);
    unit.fails(get("ExtFan"), 77);
    const std::string expected =
        "getExtFanPowerStatus: Error 77\n" + line("External fan power status: Disabled.");
    EXPECT_EQ(run("--extfan").output, expected);
    EXPECT_EQ(run("--can=Enable --extfan").output, line("CAN power status set to Enable.") + expected);
    unit.fails(get("Can"), 77);
    EXPECT_EQ(run("--can --extfan").output, "getCanPowerStatus: Error 77\n" + expected);
}

TEST_P(Power, PrintsEverythingAsDisabledIfNothingIsWritten)
{
    unit.ignores(get("Video"));
    unit.ignores(get("Can"));
    unit.ignores(get("ExtFan"));
    EXPECT_EQ(run("--vchannel1 --can --extfan").output, line("Video channel 1 power status: Disabled.") +
                                                            line("CAN power status: Disabled.") +
                                                            line("External fan power status: Disabled."));
}

TEST_P(Power, ReleasesBothHandlesEvenIfTheyAreNull)
{
    unit.returnsNull("GetPower");
    EXPECT_THAT(unit.run("--power=current --can").calls,
                testing::IsSupersetOf({"Power_release() = 3", "Config_release() = 0"}));
    unit.set("/faults", nlohmann::json::object());
    unit.returnsNull("GetConfig");
    EXPECT_THAT(unit.run("--power=current --can").calls,
                testing::IsSupersetOf({"Power_release() = 0", "Config_release() = 3"}));
    unit.set("/faults", {{"Power_release", {{"code", 77}}}, {"Config_release", {{"code", 77}}}});
    const Result result = unit.run("--power=current --extfan");
    EXPECT_EQ(result.output.find("77"), std::string::npos);
    EXPECT_EQ(Calls(result.calls.end() - 2, result.calls.end()),
              (Calls{"Power_release() = 77", "Config_release() = 77"}));
}

TEST_P(Power, NeedsNoHandleOfTheOtherMode)
{
    unit.returnsNull(GetParam().module == "Power_" ? "GetConfig" : "GetPower");
    EXPECT_EQ(run("--vchannel1 --can").output,
              line("Video channel 1 power status: Enabled.") + line("CAN power status: Enabled."));
}

TEST_P(Power, ReportsThatTheUnitHasNoCan)
{
    unit.set("/about", {{"canConnections", 0}});
    EXPECT_EQ(run("--can").output, "getCanPowerStatus: Not supported by this unit\n");
    EXPECT_EQ(run("--can=Enable").output, "setCanPowerStatus: Not supported by this unit\n");
}

TEST(CurrentPower, ChangesCanAndTheFanEachToItsOwnWord)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=current --extfan=Enable --can=Disable").output,
              "Current - CAN power status set to Disable.\n"
              "Current - External fan power status set to Enable.\n");
    EXPECT_EQ(unit["/power/can"], false);
    EXPECT_EQ(unit["/power/externalFan"], true);
}

TEST(StartupPower, RejectsAChangeOfTheFanWithoutAWordForCan)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=startup --extfan=Enable").output, "Invalid argument\n");
    EXPECT_EQ(unit.run("--power=startup --extfan=Enable --can").output,
              "Start-up - CAN power status: Enabled.\n"
              "Invalid argument\n");
    EXPECT_EQ(unit["/config/startupPower/externalFan"], nullptr);
}

TEST(StartupPower, ChangesTheFanToTheWordForCan)
{
    Unit unit;
    const Result enabling = unit.run("--power=startup --can=Enable --extfan=Disable");
    EXPECT_EQ(enabling.output, "Start-up - CAN power status set to Enable.\n"
                               "Start-up - External fan power status set to Enable.\n");
    EXPECT_EQ(
        enabling.calls,
        (Calls{"GetPower() = handle", "GetConfig() = handle", "Config_setCanStartupPowerConfig(1) = 0",
               "Config_setExtFanStartupPowerConfig(1) = 0", "Power_release() = 0", "Config_release() = 0"}));
    EXPECT_EQ(unit["/config/startupPower/externalFan"], true);
    EXPECT_EQ(unit.run("--power=startup --can=DISABLE --extfan=maybe").output,
              "Start-up - CAN power status set to Disable.\n"
              "Start-up - External fan power status set to Disable.\n");
    EXPECT_EQ(unit["/config/startupPower/externalFan"], false);
}

TEST(StartupPower, RejectsTheFanIfTheWordForCanIsRejected)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=startup --can=maybe --extfan=Enable").output, "Invalid argument\n"
                                                                              "Invalid argument\n");
}

TEST(StartupPower, ReadsTheFanWhileSettingCan)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=startup --can=Disable --extfan").output,
              "Start-up - CAN power status set to Disable.\n"
              "Start-up - External fan power status: Disabled.\n");
}

TEST(PowerMode, IsRequired)
{
    Unit unit;
    for (const char* mode : {"--power", "--power=", "--power=noArgument", "--power=now", "--power=start-up",
                             "--power=currently", "--power current"})
        for (const char* options : {"", " --can", " --vchannel1=Disable --extfan=Enable"})
        {
            SCOPED_TRACE(std::string(mode) + options);
            const Result result = unit.run(std::string(mode) + options);
            EXPECT_EQ(result.output, modeRequired);
            EXPECT_EQ(result.calls, (Calls{"GetPower() = handle", "GetConfig() = handle",
                                           "Power_release() = 0", "Config_release() = 0"}));
        }
}

TEST(PowerMode, DoesNotAffectTheOtherMode)
{
    Unit unit;
    unit.run("--power=current --vchannel1=Disable --can=Disable --extfan=Enable");
    EXPECT_EQ(unit["/config/startupPower"], nullptr);
    Unit other;
    other.run("--power=startup --vchannel1=Disable --can=Disable --extfan=Enable");
    EXPECT_EQ(other["/power"], nullptr);
}

TEST(PowerMode, AppliesStartupPowerAtTheNextBoot)
{
    Unit unit;
    unit.run("--power=startup --vchannel2=Disable --vchannel4=Disable");
    unit.run("--power=startup --can=Enable --extfan=Enable");
    unit.run("--power=startup --can=Disable");
    unit.run("--power=current --vchannel1=Disable");
    unit.shutDown();
    EXPECT_EQ(unit.run("--power=current").output, lines({"Current - Video channel 1 power status: Enabled.",
                                                         "Current - Video channel 2 power status: Disabled.",
                                                         "Current - Video channel 3 power status: Enabled.",
                                                         "Current - Video channel 4 power status: Disabled.",
                                                         "Current - CAN power status: Disabled.",
                                                         "Current - External fan power status: Enabled."}));
    EXPECT_EQ(unit.run("--power=startup").output, lines({"Start-up - Video channel 1 power status: Enabled.",
                                                         "Start-up - Video channel 2 power status: Disabled.",
                                                         "Start-up - Video channel 3 power status: Enabled.",
                                                         "Start-up - Video channel 4 power status: Disabled.",
                                                         "Start-up - CAN power status: Disabled.",
                                                         "Start-up - External fan power status: Enabled."}));
}

} // namespace
