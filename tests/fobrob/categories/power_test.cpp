#include "support/letter_case.h"
#include "support/unit.h"

#include <gmock/gmock.h>

namespace
{

const char* const help =
    "Category - Power\n"
    "Get and set current or start-up power status for video channels 1-4, CAN power \n"
    "and External Fan power.\n"
    "\n"
    "Usage\n"
    "This category must be passed an argument. It is possible to combine several \n"
    "arguments to get more information with one call.  See the table below for \n"
    "available arguments and examples how options could be combined.\n"
    "\n"
    "Two examples how options can be combined:\n"
    "Ex1: ./Fobrob --power=current --can=Enable --vchannel1=Disable --extfan\n"
    "Ex2: ./Fobrob --power=startup --vchannel1 --vchannel2 --can\n"
    "\n"
    "CATEGORY\tARG\tOPTION\t\tARG\t\tNOTE\n"
    "--power=\tcurrent\t\t\t\t\tShow current power status for all members.\n"
    "--power=\tcurrent\t--vchannel1\t\t\tGet current power status for video channel 1.\n"
    "--power=\tcurrent\t--vchannel2\t\t\tGet current power status for video channel 2.\n"
    "--power=\tcurrent\t--vchannel3\t\t\tGet current power status for video channel 3.\n"
    "--power=\tcurrent\t--vchannel4\t\t\tGet current power status for video channel 4.\n"
    "--power=\tcurrent\t--can\t\t\t\tGet current power status for CAN.\n"
    "--power=\tcurrent\t--extfan\t\t\tGet current power status for external fan.\n"
    "\n"
    "--power=\tcurrent\t--vchannel1=\tEnable/Disable\tSet current power status for video channel 1.\n"
    "--power=\tcurrent\t--vchannel2=\tEnable/Disable\tSet current power status for video channel 2.\n"
    "--power=\tcurrent\t--vchannel3=\tEnable/Disable\tSet current power status for video channel 3.\n"
    "--power=\tcurrent\t--vchannel4=\tEnable/Disable\tSet current power status for video channel 4.\n"
    "--power=\tcurrent\t--can=\t\tEnable/Disable\tSet current power status for CAN.\n"
    "--power=\tcurrent\t--extfan=\tEnable/Disable\tSet current power status for external fan.\n"
    "\n"
    "--power=\tstartup\t\t\t\t\tShow start up power status for all members.\n"
    "--power=\tstartup\t--vchannel1\t\t\tGet start up power status for video channel 1.\n"
    "--power=\tstartup\t--vchannel2\t\t\tGet start up power status for video channel 2.\n"
    "--power=\tstartup\t--vchannel3\t\t\tGet start up power status for video channel 3.\n"
    "--power=\tstartup\t--vchannel4\t\t\tGet start up power status for video channel 4.\n"
    "--power=\tstartup\t--can\t\t\t\tGet start up power status for CAN.\n"
    "--power=\tstartup\t--extfan\t\t\tGet start up power status for external fan.\n"
    "\n"
    "--power=\tstartup\t--vchannel1=\tEnable/Disable\tSet start up power status for video channel 1.\n"
    "--power=\tstartup\t--vchannel2=\tEnable/Disable\tSet start up power status for video channel 2.\n"
    "--power=\tstartup\t--vchannel3=\tEnable/Disable\tSet start up power status for video channel 3.\n"
    "--power=\tstartup\t--vchannel4=\tEnable/Disable\tSet start up power status for video channel 4.\n"
    "--power=\tstartup\t--can=\t\tEnable/Disable\tSet start up power status for CAN.\n"
    "--power=\tstartup\t--extfan=\tEnable/Disable\tSet start up power status for external fan.\n";

const char* const modeRequired = "Invalid argument: Current or Startup must be selected.\n";

// The mode of the category: what it calls its results, which operations it uses, where its unit keeps it.
struct Mode
{
    const char* name;
    std::string argument;
    std::string heading;
    std::string module;
    std::string suffix;
    std::string place;
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

    // "Video", "Can" or "ExtFan".
    static std::string get(const std::string& member)
    {
        return GetParam().module + "get" + member + GetParam().suffix;
    }

    static std::string set(const std::string& member)
    {
        return GetParam().module + "set" + member + GetParam().suffix;
    }

    // A line of the mode.
    static std::string line(const std::string& text)
    {
        return GetParam().heading + text + "\n";
    }

    static std::string place(const std::string& key)
    {
        return GetParam().place + "/" + key;
    }

    // The handles are taken before and given back behind all the work.
    static Calls within(Calls work)
    {
        work.insert(work.begin(), {"GetPower() = handle", "GetConfig() = handle"});
        work.insert(work.end(), {"Power_release() = 0", "Config_release() = 0"});
        return work;
    }
};

INSTANTIATE_TEST_SUITE_P(BothModes, Power, testing::Values(current, startup),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(Power, ReadsAllSixMembersInOrder)
{
    unit.set(GetParam().place, {{"video", 5}, {"can", true}, {"externalFan", false}});
    const Result result = run("");
    EXPECT_EQ(
        result.output,
        line("Video channel 1 power status: Enabled.") + line("Video channel 2 power status: Disabled.") +
            line("Video channel 3 power status: Enabled.") + line("Video channel 4 power status: Disabled.") +
            line("CAN power status: Enabled.") + line("External fan power status: Disabled."));
    EXPECT_EQ(result.calls,
              within({get("Video") + "([5]) = 0", get("Video") + "([5]) = 0", get("Video") + "([5]) = 0",
                      get("Video") + "([5]) = 0", get("Can") + "([1]) = 0", get("ExtFan") + "([0]) = 0"}));
}

TEST_P(Power, ReadsOneMemberAlone)
{
    unit.set(GetParam().place, {{"video", 10}, {"can", false}, {"externalFan", true}});
    const struct
    {
        const char* option;
        std::string line;
        std::string call;
    } cases[] = {
        {"--vchannel1", "Video channel 1 power status: Disabled.", get("Video") + "([10]) = 0"},
        {"--vchannel2", "Video channel 2 power status: Enabled.", get("Video") + "([10]) = 0"},
        {"--vchannel3", "Video channel 3 power status: Disabled.", get("Video") + "([10]) = 0"},
        {"--vchannel4", "Video channel 4 power status: Enabled.", get("Video") + "([10]) = 0"},
        {"--can", "CAN power status: Disabled.", get("Can") + "([0]) = 0"},
        {"--extfan", "External fan power status: Enabled.", get("ExtFan") + "([1]) = 0"},
    };
    for (const auto& [option, text, call] : cases)
        for (const char* noValue : {"", "=", "=noArgument", "=NOARGUMENT"})
        {
            SCOPED_TRACE(std::string(option) + noValue);
            const Result result = run(std::string(option) + noValue);
            EXPECT_EQ(result.output, line(text));
            EXPECT_EQ(result.calls, within({call}));
        }
}

TEST_P(Power, SwitchesOneChannelAndKeepsTheOthers)
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
                unit.set(place("video"), mask);
                const Result result = run(option);
                EXPECT_EQ(result.output, line("Video channel " + std::to_string(channel) +
                                              " power status set to " + word + "."));
                EXPECT_EQ(result.calls, within({get("Video") + "([" + std::to_string(mask) + "]) = 0",
                                                set("Video") + "(" + std::to_string(changed) + ") = 0"}));
                EXPECT_EQ(unit[place("video")], changed);
            }
}

TEST_P(Power, ReadsTheMaskAfreshForEveryChannel)
{
    const Result result = run("--vchannel3 --vchannel2=Disable --vchannel1=Disable");
    EXPECT_EQ(result.output, line("Video channel 1 power status set to Disable.") +
                                 line("Video channel 2 power status set to Disable.") +
                                 line("Video channel 3 power status: Enabled."));
    EXPECT_EQ(result.calls,
              within({get("Video") + "([15]) = 0", set("Video") + "(14) = 0", get("Video") + "([14]) = 0",
                      set("Video") + "(12) = 0", get("Video") + "([12]) = 0"}));
}

TEST_P(Power, SendsTheUpperBitsOfTheMaskBackAsTheyAre)
{
    unit.set(place("video"), 0xF5);
    const Result result = run("--vchannel2=Enable --vchannel1=Disable");
    EXPECT_EQ(result.output, "setVideoPowerStatus: The value is out of range\n"
                             "setVideoPowerStatus: The value is out of range\n");
    EXPECT_THAT(result.calls,
                testing::IsSupersetOf({set("Video") + "(244) = 5", set("Video") + "(247) = 5"}));
}

TEST_P(Power, SwitchesCan)
{
    unit.set(place("can"), false);
    const Result enabling = run("--can=Enable");
    EXPECT_EQ(enabling.output, line("CAN power status set to Enable."));
    EXPECT_EQ(enabling.calls, within({set("Can") + "(1) = 0"}));
    EXPECT_EQ(unit[place("can")], true);

    const Result disabling = run("--can=Disable");
    EXPECT_EQ(disabling.output, line("CAN power status set to Disable."));
    EXPECT_EQ(disabling.calls, within({set("Can") + "(0) = 0"}));
    EXPECT_EQ(unit[place("can")], false);
}

TEST_P(Power, TakesTheWordsInAnyCase)
{
    unit.set(GetParam().place, {{"video", 0}, {"can", false}});
    EXPECT_EQ(run("--vchannel4=eNABLE").output, line("Video channel 4 power status set to Enable."));
    EXPECT_EQ(run("--vchannel4=DISABLE").output, line("Video channel 4 power status set to Disable."));
    EXPECT_EQ(run("--can=ENABLE").output, line("CAN power status set to Enable."));
    EXPECT_EQ(run("--can=disable").output, line("CAN power status set to Disable."));
}

TEST_P(Power, TakesTheModeInAnyCase)
{
    const std::string expected = line("CAN power status: Enabled.");
    const std::string swapped = withCaseSwapped(GetParam().argument);
    EXPECT_EQ(unit.run("--power=" + swapped + " --can").output, expected);
    EXPECT_EQ(unit.run("--power=" + std::string(GetParam().name) + " --can").output, expected);
}

TEST_P(Power, RefusesOtherWordsAndSwitchesNothing)
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

TEST_P(Power, GoesOnBehindARefusedWord)
{
    const Result result = run("--vchannel1=maybe --vchannel2=maybe --vchannel3=Disable --can=maybe --extfan");
    EXPECT_EQ(result.output, "Invalid argument\n"
                             "Invalid argument\n" +
                                 line("Video channel 3 power status set to Disable.") + "Invalid argument\n" +
                                 line("External fan power status: Disabled."));
}

TEST_P(Power, WorksInItsOwnOrder)
{
    const Result result = run("--extfan --can=Disable --vchannel4 --vchannel2=Disable --vchannel1");
    EXPECT_EQ(result.output, line("Video channel 1 power status: Enabled.") +
                                 line("Video channel 2 power status set to Disable.") +
                                 line("Video channel 4 power status: Enabled.") +
                                 line("CAN power status set to Disable.") +
                                 line("External fan power status: Disabled."));
}

TEST_P(Power, ReadsCanBeforeTheFan)
{
    EXPECT_EQ(run("--extfan --can").output,
              line("CAN power status: Enabled.") + line("External fan power status: Disabled."));
}

TEST_P(Power, TakesTheLastOfRepeatedOptions)
{
    EXPECT_EQ(run("--can=Disable --can").output, line("CAN power status: Enabled."));
    EXPECT_EQ(run("--can=Disable --can=").output, line("CAN power status: Enabled."));
    EXPECT_EQ(run("--vchannel1=Enable --vchannel1=Disable").output,
              line("Video channel 1 power status set to Disable."));
    EXPECT_EQ(unit[place("video")], 14);
}

TEST_P(Power, ShowsEveryStateButOneAsDisabled)
{
    for (const int state : {0, 2, -1, 256})
    {
        SCOPED_TRACE(state);
        unit.set(GetParam().place, {{"can", state}, {"externalFan", state}});
        EXPECT_EQ(run("--can --extfan").output,
                  line("CAN power status: Disabled.") + line("External fan power status: Disabled."));
    }
}

TEST_P(Power, ReportsAFailedReadingAndGoesOn)
{
    const struct
    {
        std::string operation;
        std::string output;
    } cases[] = {
        {get("Video"), "getVideoPowerStatus: Error 77\n" + line("CAN power status: Enabled.") +
                           line("External fan power status: Disabled.")},
        {get("Can"), line("Video channel 1 power status: Enabled.") + "getCanPowerStatus: Error 77\n" +
                         line("External fan power status: Disabled.")},
    };
    for (const auto& [operation, output] : cases)
    {
        SCOPED_TRACE(operation);
        Unit failing;
        failing.fails(operation, 77);
        const std::string options = " --vchannel1 --can --extfan";
        EXPECT_EQ(failing.run("--power=" + GetParam().argument + options).output, output);
    }
}

TEST_P(Power, SwitchesNoChannelWhoseMaskItCouldNotRead)
{
    unit.failsOnce(get("Video"), 77);
    const Result result = run("--vchannel1=Disable --vchannel2=Disable");
    EXPECT_EQ(result.output,
              "getVideoPowerStatus: Error 77\n" + line("Video channel 2 power status set to Disable."));
    EXPECT_EQ(result.calls, within({get("Video") + "([]) = 77", "GetErrorStringA(77) = \"Error 77\"",
                                    get("Video") + "([15]) = 0", set("Video") + "(13) = 0"}));
}

TEST_P(Power, ReadsTheMaskBeforeItLooksAtTheWord)
{
    unit.fails(get("Video"), 77);
    EXPECT_EQ(run("--vchannel1=maybe").output, "getVideoPowerStatus: Error 77\n");
}

TEST_P(Power, ReportsAFailedSwitchingOfAChannelAndGoesOn)
{
    unit.failsOnce(set("Video"), 77);
    const Result result = run("--vchannel1=Disable --vchannel2=Disable");
    EXPECT_EQ(result.output,
              "setVideoPowerStatus: Error 77\n" + line("Video channel 2 power status set to Disable."));
    EXPECT_EQ(unit[place("video")], 13);
}

TEST_P(Power, ReportsAFailedSwitchingOfCanAndGoesOn)
{
    unit.fails(set("Can"), 77);
    EXPECT_EQ(run("--can=Disable --extfan").output,
              "setCanPowerStatus: Error 77\n" + line("External fan power status: Disabled."));
    EXPECT_EQ(unit[place("can")], nullptr);
}

TEST_P(Power, ReportsAFailedSwitchingOfTheFan)
{
    unit.fails(set("ExtFan"), 77);
    const Result result = run("--can=Enable --extfan=Enable");
    EXPECT_EQ(result.output, line("CAN power status set to Enable.") + "setExtFanPowerStatus: Error 77\n");
    EXPECT_EQ(result.calls, within({set("Can") + "(1) = 0", set("ExtFan") + "(1) = 77",
                                    "GetErrorStringA(77) = \"Error 77\""}));
}

TEST_P(Power, ShowsTheStateOfCanBehindAFailedReadingOfTheFan)
{
    const struct
    {
        nlohmann::json can;
        const char* shown;
    } cases[] = {{true, "Enabled."}, {false, "Disabled."}, {2, "Disabled."}};
    for (const auto& [can, shown] : cases)
    {
        SCOPED_TRACE(can);
        unit.set(GetParam().place, {{"can", can}, {"externalFan", true}});
        unit.fails(get("ExtFan"), 77);
        EXPECT_EQ(run("--can --extfan").output, line(std::string("CAN power status: ") + shown) +
                                                    "getExtFanPowerStatus: Error 77\n" +
                                                    line(std::string("External fan power status: ") + shown));
    }
}

TEST_P(Power, ShowsTheFanDisabledBehindAFailedReadingWithoutAStateOfCan)
{
    unit.set(place("externalFan"), true);
    unit.fails(get("ExtFan"), 77);
    const std::string expected =
        "getExtFanPowerStatus: Error 77\n" + line("External fan power status: Disabled.");
    EXPECT_EQ(run("--extfan").output, expected);
    EXPECT_EQ(run("--can=Enable --extfan").output, line("CAN power status set to Enable.") + expected);
    unit.fails(get("Can"), 77);
    EXPECT_EQ(run("--can --extfan").output, "getCanPowerStatus: Error 77\n" + expected);
}

TEST_P(Power, FallsSilentWhereTheErrorHasNoText)
{
    unit.set("/errorTexts", {{"77", nullptr}});
    unit.fails(get("Video"), 77);
    const Result result = run("");
    EXPECT_EQ(result.output, "getVideoPowerStatus: ");
    EXPECT_EQ(result.calls.size(), within({}).size() + 10);
    EXPECT_EQ(result.calls.back(), "Config_release() = 0");
}

TEST_P(Power, FallsSilentBehindAFailedReadingOfTheFanToo)
{
    unit.set("/errorTexts", {{"77", nullptr}});
    unit.fails(get("ExtFan"), 77);
    EXPECT_EQ(run("--extfan").output, "getExtFanPowerStatus: ");
}

TEST_P(Power, ShowsEverythingDisabledWhereNothingWasWritten)
{
    unit.ignores(get("Video"));
    unit.ignores(get("Can"));
    unit.ignores(get("ExtFan"));
    EXPECT_EQ(run("--vchannel1 --can --extfan").output, line("Video channel 1 power status: Disabled.") +
                                                            line("CAN power status: Disabled.") +
                                                            line("External fan power status: Disabled."));
}

TEST_P(Power, UsesAHandleThatIsNull)
{
    unit.givesNull(GetParam().module == "Power_" ? "GetPower" : "GetConfig");
    EXPECT_EQ(run("--vchannel1 --can=Enable").output, "getVideoPowerStatus: The module handle is not valid\n"
                                                      "setCanPowerStatus: The module handle is not valid\n");
}

TEST_P(Power, GivesBothHandlesBackWhateverTheyAre)
{
    unit.givesNull("GetPower");
    EXPECT_THAT(unit.run("--power=current --can").calls,
                testing::IsSupersetOf({"Power_release() = 3", "Config_release() = 0"}));
    unit.set("/faults", nlohmann::json::object());
    unit.givesNull("GetConfig");
    EXPECT_THAT(unit.run("--power=current --can").calls,
                testing::IsSupersetOf({"Power_release() = 0", "Config_release() = 3"}));
    unit.set("/faults", {{"Power_release", {{"code", 77}}}, {"Config_release", {{"code", 77}}}});
    const Result result = unit.run("--power=current --extfan");
    EXPECT_EQ(result.output.find("77"), std::string::npos);
    EXPECT_EQ(Calls(result.calls.end() - 2, result.calls.end()),
              (Calls{"Power_release() = 77", "Config_release() = 77"}));
}

TEST_P(Power, DoesWithoutTheHandleOfTheOtherMode)
{
    unit.givesNull(GetParam().module == "Power_" ? "GetConfig" : "GetPower");
    EXPECT_EQ(run("--vchannel1 --can").output,
              line("Video channel 1 power status: Enabled.") + line("CAN power status: Enabled."));
}

TEST_P(Power, ReportsThatAUnitWithoutCanSupportsNone)
{
    unit.set("/about", {{"canConnections", 0}});
    EXPECT_EQ(run("--can").output, "getCanPowerStatus: Not supported by this unit\n");
    EXPECT_EQ(run("--can=Enable").output, "setCanPowerStatus: Not supported by this unit\n");
}

TEST_P(Power, RefusesEachForeignOptionAndReadsNothing)
{
    const Result result = run("--frequency --volume=3 -h -v");
    EXPECT_EQ(result.output, "Invalid argument\nInvalid argument\nInvalid argument\nInvalid argument\n");
    EXPECT_EQ(result.calls, within({}));
}

TEST_P(Power, RefusesAForeignOptionBesideItsOwnBeforeItWorks)
{
    EXPECT_EQ(run("--can --frequency").output, "Invalid argument\n" + line("CAN power status: Enabled."));
    EXPECT_EQ(run("--frequency --can").output, "Invalid argument\n" + line("CAN power status: Enabled."));
}

TEST_P(Power, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    const Result alone = unit.runComplaining("--power=" + GetParam().argument + " --bogus");
    EXPECT_EQ(alone.output, "Invalid argument\n");
    EXPECT_EQ(alone.calls, within({}));
    EXPECT_THAT(alone.errors, testing::HasSubstr("unrecognized option '--bogus'"));

    const Result beside = unit.runComplaining("--power=" + GetParam().argument + " --bogus --can=Disable");
    EXPECT_EQ(beside.output, "Invalid argument\n" + line("CAN power status set to Disable."));
}

TEST_P(Power, ShowsItsHelpAndReleasesNothing)
{
    const Result result = run("--help");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetPower() = handle", "GetConfig() = handle"}));
}

TEST_P(Power, ShowsItsHelpInsteadOfAnyWork)
{
    const Result result = run("--can=Disable --help --vchannel1=Disable");
    EXPECT_EQ(result.output, help);
    EXPECT_EQ(result.calls, (Calls{"GetPower() = handle", "GetConfig() = handle"}));
    EXPECT_EQ(run("--frequency --help").output, std::string("Invalid argument\n") + help);
}

TEST(CurrentPower, SwitchesTheFan)
{
    Unit unit;
    const Result enabling = unit.run("--power=current --extfan=ENABLE");
    EXPECT_EQ(enabling.output, "Current - External fan power status set to Enable.\n");
    EXPECT_EQ(enabling.calls,
              (Calls{"GetPower() = handle", "GetConfig() = handle", "Power_setExtFanPowerStatus(1) = 0",
                     "Power_release() = 0", "Config_release() = 0"}));
    EXPECT_EQ(unit["/power/externalFan"], true);
    EXPECT_EQ(unit.run("--power=current --extfan=disable").output,
              "Current - External fan power status set to Disable.\n");
    EXPECT_EQ(unit["/power/externalFan"], false);
}

TEST(CurrentPower, SwitchesCanAndTheFanEachByItsOwnWord)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=current --extfan=Enable --can=Disable").output,
              "Current - CAN power status set to Disable.\n"
              "Current - External fan power status set to Enable.\n");
    EXPECT_EQ(unit["/power/can"], false);
    EXPECT_EQ(unit["/power/externalFan"], true);
}

TEST(StartupPower, RefusesToSwitchTheFanWithoutAWordForCan)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=startup --extfan=Enable").output, "Invalid argument\n");
    EXPECT_EQ(unit.run("--power=startup --extfan=Enable --can").output,
              "Start-up - CAN power status: Enabled.\n"
              "Invalid argument\n");
    EXPECT_EQ(unit["/config/startupPower/externalFan"], nullptr);
}

TEST(StartupPower, SwitchesTheFanByTheWordForCan)
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

TEST(StartupPower, RefusesTheFanWithARefusedWordForCan)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power=startup --can=maybe --extfan=Enable").output, "Invalid argument\n"
                                                                              "Invalid argument\n");
}

TEST(StartupPower, ReadsTheFanBesideAWordForCan)
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

TEST(PowerMode, IsMissedBehindTheForeignOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power --frequency").output, std::string("Invalid argument\n") + modeRequired);
    EXPECT_EQ(unit.runComplaining("--power=now --bogus --can").output,
              std::string("Invalid argument\n") + modeRequired);
}

TEST(PowerMode, IsNotRequiredForTheHelp)
{
    Unit unit;
    EXPECT_EQ(unit.run("--power --help").output, help);
    EXPECT_EQ(unit.run("--power=now --help").output, help);
}

TEST(PowerMode, KeepsTheOtherModeUntouched)
{
    Unit unit;
    unit.run("--power=current --vchannel1=Disable --can=Disable --extfan=Enable");
    EXPECT_EQ(unit["/config/startupPower"], nullptr);
    Unit other;
    other.run("--power=startup --vchannel1=Disable --can=Disable --extfan=Enable");
    EXPECT_EQ(other["/power"], nullptr);
}

TEST(PowerMode, StartupComesIntoForceAtTheNextBoot)
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
