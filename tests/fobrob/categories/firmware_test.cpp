// The targets and options of an upgrade or a verification.

#include "firmware_work.h"

namespace
{

TEST(Firmware, UpgradesAndVerifiesEachTarget)
{
    FirmwareUnit unit;
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        EXPECT_EQ(work.run(unit).output, work.beginning() +
                                             (work.upgrades() ? upgradeProgress : verificationProgress) +
                                             work.success);
    }
}

TEST(Firmware, CallsTheOperationsOfEachTargetThenWaitsAndReleases)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", script({{6, 42, 0}}));
        Calls calls = work.start(unit, 0);
        calls.push_back("FirmwareUpgrade_getUpgradeStatus([6, 42, 0], 1) = 0");
        EXPECT_EQ(work.run(unit).calls, wholeRun(calls));
    }
}

TEST(Firmware, ReportsAFailedStart)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.fails("FirmwareUpgrade_" + std::string(work.operation), 77);
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, work.beginning() + work.operation + ": Error 77\n");
        Calls calls = work.start(unit, 77);
        calls.push_back("GetErrorStringA(77) = \"Error 77\"");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, CallsTheOperationOfANullHandle)
{
    FirmwareUnit unit;
    unit.returnsNull("GetFirmwareUpgrade");
    const Result result = unit.run("--advanced --update=SS --force --filepath=" + unit.hex);
    EXPECT_EQ(result.output,
              fileCorrect + upgradeBegins + "startSSUpgrade: The module handle is not valid\n");
    EXPECT_EQ(result.calls, (Calls{"GetFirmwareUpgrade() = null", "GetAbout() = handle",
                                   "FirmwareUpgrade_startSSUpgrade(\"" + unit.hex + "\", 0) = 3",
                                   "GetErrorStringA(3) = \"The module handle is not valid\"", "sleep(100)",
                                   "About_release() = 0", "FirmwareUpgrade_release() = 3"}));
}

TEST(Firmware, SuppressesOutputIfTheErrorOfAFailedStartHasNoText)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit(R"({"errorTexts": {"77": null}})");
        unit.fails("FirmwareUpgrade_" + std::string(work.operation), 77);
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, work.beginning() + work.operation + ": ");
        Calls calls = work.start(unit, 77);
        calls.push_back("GetErrorStringA(77) = null");
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(Firmware, AcceptsItsOptionsInAnyOrder)
{
    for (const char* options : {"--update=SS --force --filepath=", "--force --update=SS --filepath="})
    {
        FirmwareUnit unit;
        EXPECT_EQ(unit.run("--advanced " + (options + unit.hex)).output,
                  fileCorrect + upgradeBegins + upgradeProgress + ssUpgraded);
        EXPECT_EQ(unit.run("--advanced --filepath " + unit.hex + " --update SS --force").output,
                  fileCorrect + upgradeBegins + upgradeProgress + ssUpgraded);
    }
}

TEST(Firmware, RequiresAFilePathBeforeAnythingElse)
{
    for (const char* options :
         {"--update=SS", "--verify=SS", "--update=bogus", "--verify=", "--update=Front --force"})
    {
        SCOPED_TRACE(options);
        Unit unit;
        const Result result = unit.run("--advanced " + std::string(options));
        EXPECT_EQ(result.output, "Invalid argument: No file path added\n");
        EXPECT_EQ(result.calls, wholeRun({}));
    }
}

TEST(Firmware, AcceptsTheTargetInAnyCase)
{
    const struct
    {
        const char* word;
        const Work& work;
    } cases[] = {{"ss", works[0]},    {"Ss", works[0]},    {"sS", works[0]},
                 {"Fpga", works[1]},  {"fpga", works[1]},  {"fPGA", works[1]},
                 {"front", works[2]}, {"FRONT", works[2]}, {"fRoNt", works[2]}};
    for (const auto& [word, work] : cases)
    {
        SCOPED_TRACE(word);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced --update=" + std::string(word) + " --filepath=" + work.file(unit));
        EXPECT_EQ(result.output, work.beginning() + "Done\n" + work.success);
    }
}

TEST(Firmware, RejectsAnyOtherTargetBeforeItChecksTheFile)
{
    for (const std::string option : {"--update=", "--verify="})
        for (const char* word :
             {"", "S", "SSS", "SS ", " SS", "SS,FPGA", "FPG", "Frontal", "FrontMCU", "noArgument", "0"})
        {
            SCOPED_TRACE(option + word);
            Unit unit;
            const Result result = unit.run({"--advanced", option + word, "--filepath=/missing.hex"});
            EXPECT_EQ(result.output, "Invalid argument: Update argument should be SS, FPGA or Front.\n");
            EXPECT_EQ(result.calls, wholeRun({}));
        }
}

TEST(Firmware, UpgradesTheLastTargetIfBothAreRequested)
{
    const struct
    {
        const char* options;
        const Work& work;
    } cases[] = {
        {"--update=SS --verify=FPGA", works[1]},  {"--verify=FPGA --update=SS", works[0]},
        {"--verify=SS --update=Front", works[2]}, {"--update=SS --update=FPGA", works[1]},
        {"--verify=SS --verify=FPGA", works[4]},  {"--update= --verify=ss", works[0]},
    };
    for (const auto& [options, work] : cases)
    {
        SCOPED_TRACE(options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced " + std::string(options) + " --filepath=" + work.file(unit));
        EXPECT_EQ(result.output, work.beginning() + "Done\n" + work.success);
    }
}

TEST(Firmware, DiscardsTheTargetIfALaterOptionHasNone)
{
    FirmwareUnit unit;
    EXPECT_EQ(unit.run("--advanced --update=SS --verify= --filepath=" + unit.hex).output,
              "Invalid argument: Update argument should be SS, FPGA or Front.\n");
}

TEST(Firmware, FindsNoFrontMicrocontrollerWithoutADisplay)
{
    for (const char* options : {"--update=Front", "--verify=front", "--update=FRONT --force"})
    {
        SCOPED_TRACE(options);
        Unit unit(R"({"about": {"display": false}})");
        const Result result = unit.run("--advanced " + std::string(options) + " --filepath=/missing.hex");
        EXPECT_EQ(result.output, "No FrontMCU present.\n");
        EXPECT_EQ(result.calls, wholeRun({"About_getIsDisplayAvailable([0]) = 0"}));
    }
}

TEST(Firmware, FindsNoFrontMicrocontrollerIfTheDisplayCannotBeRead)
{
    Unit failing;
    failing.fails("About_getIsDisplayAvailable", 77);
    const Result result = failing.run("--advanced --update=Front --filepath=/missing.hex");
    EXPECT_EQ(result.output, "No FrontMCU present.\n");
    EXPECT_EQ(result.calls, wholeRun({"About_getIsDisplayAvailable([]) = 77"}));

    Unit ignoring;
    ignoring.ignores("About_getIsDisplayAvailable");
    EXPECT_EQ(ignoring.run("--advanced --verify=Front --filepath=/missing.hex").output,
              "No FrontMCU present.\n");

    Unit withoutHandle;
    withoutHandle.returnsNull("GetAbout");
    EXPECT_EQ(withoutHandle.run("--advanced --verify=Front --filepath=/missing.hex").output,
              "No FrontMCU present.\n");
}

TEST(Firmware, TreatsAnyNonzeroFlagAsADisplay)
{
    FirmwareUnit unit(R"({"about": {"display": 128}})");
    unit.set("/firmware/statuses", states({6}));
    EXPECT_EQ(works[2].run(unit).output, works[2].beginning() + "Done\n" + works[2].success);
}

TEST(Firmware, NeedsNoDisplayForTheOtherTargets)
{
    FirmwareUnit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(works[0].run(unit).output, works[0].beginning() + upgradeProgress + works[0].success);
    EXPECT_EQ(works[1].run(unit).output, works[1].beginning() + upgradeProgress + works[1].success);
}

TEST(Firmware, RequiresTheSuperuser)
{
    for (const Work& work : works)
    {
        SCOPED_TRACE(work.options);
        FirmwareUnit unit;
        unit.userId = 1000;
        const Result result = work.run(unit);
        EXPECT_EQ(result.output, "This feature requires superuser privileges\n");
        EXPECT_EQ(result.calls, (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = handle"}));
    }
}

} // namespace
