// The targets and options of an upgrade or a verification.

#include "firmware_jobs.h"

namespace
{

TEST(Firmware, UpgradesAndVerifiesEachTarget)
{
    FirmwareUnit unit;
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        EXPECT_EQ(job.run(unit).output,
                  job.beginning() + (job.upgrades() ? upgradeProgress : verificationProgress) + job.success);
    }
}

TEST(Firmware, CallsTheOperationsOfEachTargetThenWaitsAndReleases)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", script({{6, 42, 0}}));
        Calls calls = job.start(unit, 0);
        calls.push_back("FirmwareUpgrade_getUpgradeStatus([6, 42, 0], 1) = 0");
        EXPECT_EQ(job.run(unit).calls, wholeRun(calls));
    }
}

TEST(Firmware, ReportsAFailedStart)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.fails("FirmwareUpgrade_" + std::string(job.operation), 77);
        const Result result = job.run(unit);
        EXPECT_EQ(result.output, job.beginning() + job.operation + ": Error 77\n");
        Calls calls = job.start(unit, 77);
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
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit(R"({"errorTexts": {"77": null}})");
        unit.fails("FirmwareUpgrade_" + std::string(job.operation), 77);
        const Result result = job.run(unit);
        EXPECT_EQ(result.output, job.beginning() + job.operation + ": ");
        Calls calls = job.start(unit, 77);
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
        const Job& job;
    } cases[] = {{"ss", jobs[0]},    {"Ss", jobs[0]},    {"sS", jobs[0]},
                 {"Fpga", jobs[1]},  {"fpga", jobs[1]},  {"fPGA", jobs[1]},
                 {"front", jobs[2]}, {"FRONT", jobs[2]}, {"fRoNt", jobs[2]}};
    for (const auto& [word, job] : cases)
    {
        SCOPED_TRACE(word);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced --update=" + std::string(word) + " --filepath=" + job.file(unit));
        EXPECT_EQ(result.output, job.beginning() + "Done\n" + job.success);
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
        const Job& job;
    } cases[] = {
        {"--update=SS --verify=FPGA", jobs[1]},  {"--verify=FPGA --update=SS", jobs[0]},
        {"--verify=SS --update=Front", jobs[2]}, {"--update=SS --update=FPGA", jobs[1]},
        {"--verify=SS --verify=FPGA", jobs[4]},  {"--update= --verify=ss", jobs[0]},
    };
    for (const auto& [options, job] : cases)
    {
        SCOPED_TRACE(options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        const Result result =
            unit.run("--advanced " + std::string(options) + " --filepath=" + job.file(unit));
        EXPECT_EQ(result.output, job.beginning() + "Done\n" + job.success);
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
    EXPECT_EQ(jobs[2].run(unit).output, jobs[2].beginning() + "Done\n" + jobs[2].success);
}

TEST(Firmware, NeedsNoDisplayForTheOtherTargets)
{
    FirmwareUnit unit(R"({"about": {"display": false}})");
    EXPECT_EQ(jobs[0].run(unit).output, jobs[0].beginning() + upgradeProgress + jobs[0].success);
    EXPECT_EQ(jobs[1].run(unit).output, jobs[1].beginning() + upgradeProgress + jobs[1].success);
}

TEST(Firmware, RequiresTheSuperuser)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.userId = 1000;
        const Result result = job.run(unit);
        EXPECT_EQ(result.output, "This feature requires superuser privileges\n");
        EXPECT_EQ(result.calls, (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = handle"}));
    }
}

} // namespace
