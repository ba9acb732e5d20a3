// The confirmation of an upgrade or a verification.

#include "firmware_jobs.h"
#include "support/terminal.h"

#include <chrono>

namespace
{

TEST(FirmwareQuestion, AbortsIfTheAnswerIsNo)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.input = "no\n";
        const Result result = job.run(unit);
        EXPECT_EQ(result.output, fileCorrect + (job.upgrades() ? upgradeQuestion + "Upgrade aborted.\n"
                                                               : verificationQuestion + "Verify aborted.\n"));
        Calls calls = job.start(unit, 0);
        calls.pop_back();
        EXPECT_EQ(result.calls, wholeRun(calls));
    }
}

TEST(FirmwareQuestion, AbortsAnUpgradeIfBothAreRequested)
{
    FirmwareUnit unit;
    unit.input = "";
    EXPECT_EQ(unit.run("--advanced --update=SS --verify=SS --filepath=" + unit.hex).output,
              fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
}

TEST(FirmwareQuestion, AsksNoQuestionWithForce)
{
    for (const Job& job : jobs)
    {
        SCOPED_TRACE(job.options);
        FirmwareUnit unit;
        unit.set("/firmware/statuses", states({6}));
        unit.input = "no\n";
        const Result result =
            unit.run("--advanced --force " + std::string(job.options) + " --filepath=" + job.file(unit));
        EXPECT_EQ(result.output, fileCorrect + (job.upgrades() ? upgradeBegins : verificationBegins) +
                                     "Done\n" + job.success);
    }
}

TEST(FirmwareQuestion, ContinuesOnlyAfterYes)
{
    using namespace std::string_literals;
    const std::string accepted[] = {"yes\n", "yes", "yes\nno\n", "yes\n" + std::string(100000, 'x')};
    for (const std::string& answer : accepted)
    {
        SCOPED_TRACE(answer.substr(0, 20));
        FirmwareUnit unit;
        unit.input = answer;
        EXPECT_EQ(jobs[0].run(unit).output, jobs[0].beginning() + upgradeProgress + ssUpgraded);
    }

    const std::string rejected[] = {"",
                                    "\n",
                                    "no\n",
                                    "no",
                                    "Yes\n",
                                    "YES\n",
                                    "yES\n",
                                    "y\n",
                                    "ye\n",
                                    "yess\n",
                                    "yes \n",
                                    " yes\n",
                                    "\tyes\n",
                                    "yes\r\n",
                                    "\"yes\"\n",
                                    "\nyes\n",
                                    "no\nyes\n",
                                    "y\nyes\n",
                                    "yes\0\n"s,
                                    "yes\0"s,
                                    "\0yes\n"s,
                                    "ye\0s\n"s,
                                    "yes" + std::string(100000, ' ') + "\n",
                                    std::string(100000, 'y') + "\n",
                                    std::string(100000, 'y')};
    for (const std::string& answer : rejected)
    {
        SCOPED_TRACE(answer.substr(0, 20));
        FirmwareUnit unit;
        unit.input = answer;
        EXPECT_EQ(jobs[0].run(unit).output, fileCorrect + upgradeQuestion + "Upgrade aborted.\n");
        EXPECT_EQ(jobs[3].run(unit).output, fileCorrect + verificationQuestion + "Verify aborted.\n");
    }
}

TEST(FirmwareQuestion, PrintsItsProgressLineByLineOnATerminal)
{
    SKIP_WITHOUT_TERMINAL();
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // ms
    Terminal terminal(programOn(unit.file(), "--advanced --update=SS --filepath=" + unit.hex));
    ASSERT_TRUE(terminal.waitFor("Do you wish to continue [yes/no]?"));
    EXPECT_EQ(terminal.screen(), fileCorrect + upgradeQuestion);
    terminal.type("yes\n");

    using Clock = std::chrono::steady_clock;
    ASSERT_TRUE(terminal.waitFor("Initiating"));
    Clock::time_point last = Clock::now();
    for (const char* line :
         {"Preparing communication", "Reading File", "Converting file", "Flashing", "Verifying", "Done"})
    {
        ASSERT_TRUE(terminal.waitFor(line)) << terminal.screen();
        const Clock::time_point now = Clock::now();
        EXPECT_GT(now - last, std::chrono::milliseconds(50)) << line;
        last = now;
    }
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_EQ(terminal.screen(),
              fileCorrect + upgradeQuestion + "yes\n" + upgradeBegins + upgradeProgress + ssUpgraded);
}

TEST(FirmwareQuestion, NeedsNoInputWithForceOnATerminal)
{
    SKIP_WITHOUT_TERMINAL();
    FirmwareUnit unit;
    Terminal terminal(programOn(unit.file(), "--advanced --verify=SS --force --filepath=" + unit.hex));
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_TRUE(terminal.screen().starts_with(fileCorrect + verificationBegins)) << terminal.screen();
}

TEST(FirmwareQuestion, TreatsEndOfFileOnATerminalAsNo)
{
    SKIP_WITHOUT_TERMINAL();
    FirmwareUnit unit;
    Terminal terminal(programOn(unit.file(), "--advanced --verify=SS --filepath=" + unit.hex));
    ASSERT_TRUE(terminal.waitFor("Do you wish to continue [yes/no]?"));
    terminal.type("\x04"); // Ctrl-D
    EXPECT_EQ(terminal.end(), 0);
    EXPECT_NE(terminal.screen().find("Verify aborted.\n"), std::string::npos) << terminal.screen();
}

} // namespace
