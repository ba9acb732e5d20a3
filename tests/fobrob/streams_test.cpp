// Standard streams that are closed, full, empty or endless, or whose other end is closed.

#include "support/firmware_unit.h"
#include "support/terminal.h"

#include <gmock/gmock.h>

#include <csignal>
#include <sys/wait.h>

namespace
{

const std::string twoChanges = "--buzzer --frequency=800 --volume=40";
const Calls callsOfTwoChanges =
    callsOn("Buzzer", {"Buzzer_setFrequency(800) = 0", "Buzzer_setVolume(40) = 0"});

const std::string callsBeforeTheAnswer =
    lines({"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "About_getIsDisplayAvailable([1]) = 0"});

// Runs the program from a shell script.
struct ShellRun
{
    ShellRun(const Unit& unit, const std::string& script, const std::string& arguments)
    {
        Command command = throughShell(script, programOn(unit.file(), arguments));
        command.environment["QVAUX_TRACE"] = unit.directory / "trace";
        command.input = unit.input;
        writeFile(unit.directory / "trace", "");
        outcome = runCommand(command);
        calls = readFile(unit.directory / "trace");
    }

    Outcome outcome;
    std::string calls;
};

// The device library opens the unit's files and the call trace. None of them may become a standard stream.
TEST(Streams, MayBeClosedInEveryCombination)
{
    for (unsigned closed = 0; closed < 8; ++closed)
    {
        const std::string script = std::string("exec \"$@\"") + ((closed & 1) != 0 ? " <&-" : "") +
                                   ((closed & 2) != 0 ? " >&-" : "") + ((closed & 4) != 0 ? " 2>&-" : "");
        SCOPED_TRACE(script);
        const auto ifOpen = [&](unsigned stream, const std::string& what)
        { return (closed & stream) != 0 ? "" : what; };

        Unit unit(R"({"buzzer": {"volume": 5}})");
        const ShellRun change(unit, script, twoChanges + " --none");
        EXPECT_EQ(change.outcome.status, 0);
        EXPECT_EQ(change.outcome.output,
                  ifOpen(2, "Buzzer frequency set to: 800 Hz.\nBuzzer volume set to: 40\n"));
        EXPECT_THAT(change.outcome.errors, testing::EndsWith(ifOpen(4, "unrecognized option '--none'\n")));
        EXPECT_EQ(change.calls, lines(callsOfTwoChanges));
        EXPECT_EQ(unit.content(), nlohmann::json::parse(R"({"buzzer": {"volume": 40, "frequency": 800}})"));

        FirmwareUnit asked;
        const std::string before = readFile(asked.file());
        const ShellRun question(asked, script, "--advanced --verify=Front --filepath=" + asked.hex);
        EXPECT_EQ(question.outcome.status, 0);
        EXPECT_EQ(question.calls.find("FirmwareUpgrade_start") != std::string::npos, !(closed & 1));
        EXPECT_EQ(readFile(asked.file()), before);

        Unit damaged;
        writeFile(damaged.file(), "{");
        const ShellRun complaint(damaged, script, twoChanges);
        EXPECT_EQ(complaint.outcome.status, 0);
        EXPECT_EQ(complaint.outcome.output, ifOpen(2, "setFrequency: The unit file is not valid\n"
                                                      "setVolume: The unit file is not valid\n"));
        EXPECT_EQ(readFile(damaged.file()), "{");
    }
}

TEST(Streams, DoNotAffectTheUnitIfOutputIsFull)
{
    for (const char* script :
         {"exec \"$@\" >/dev/full", "exec \"$@\" 2>/dev/full", "exec \"$@\" >/dev/full 2>&1"})
    {
        SCOPED_TRACE(script);
        Unit unit;
        const ShellRun run(unit, script, twoChanges + " --none");
        EXPECT_EQ(run.outcome.status, 0);
        EXPECT_EQ(run.calls, lines(callsOfTwoChanges));
        EXPECT_EQ(unit["/buzzer/volume"], 40);
    }
}

TEST(Streams, DoNotAffectAFirmwareJobIfOutputIsFull)
{
    FirmwareUnit unit;
    const ShellRun run(unit, "exec \"$@\" >/dev/full", "--advanced --update=Front --filepath=" + unit.hex);
    EXPECT_EQ(run.outcome.status, 0);
    EXPECT_NE(unit["/firmware/front/digest"], nullptr);
}

TEST(Streams, DoNotAffectTheUnitIfTheReaderExits)
{
    Unit unit;
    const std::string nobodyReads =
        "mkfifo \"$PIPE\"; exec 3<>\"$PIPE\" 4>\"$PIPE\" 3<&-; exec env --default-signal=PIPE \"$@\" >&4";
    const ShellRun run(unit, "PIPE=" + (unit.directory / "pipe") + "; " + nobodyReads, twoChanges);
    EXPECT_EQ(run.outcome.status, 0);
    EXPECT_EQ(run.calls, lines(callsOfTwoChanges));
    EXPECT_EQ(unit["/buzzer/volume"], 40);
}

TEST(Streams, DoNotAffectAFirmwareJobIfTheReaderExits)
{
    FirmwareUnit unit;
    const ShellRun run(unit, "{ env --default-signal=PIPE \"$@\"; echo $? >&2; } | head -n 1",
                       "--advanced --update=Front --force --filepath=" + unit.hex);
    EXPECT_EQ(run.outcome.output, "File format is correct.\n");
    EXPECT_EQ(run.outcome.errors, "0\n"); // the program's exit status, not the pipeline's
    EXPECT_EQ(unit["/firmware/front/incomplete"], false);
    EXPECT_NE(unit["/firmware/front/digest"], nullptr);
}

TEST(Streams, TreatEndOfFileAsNo)
{
    FirmwareUnit unit;
    for (const char* script : {"exec \"$@\" </dev/null", "exec \"$@\" <&-", "exec \"$@\" </",
                               "printf yes | (read none; exec \"$@\")"})
    {
        SCOPED_TRACE(script);
        const ShellRun run(unit, script, "--advanced --verify=Front --filepath=" + unit.hex);
        EXPECT_THAT(run.outcome.output, testing::EndsWith("[yes/no]?\nVerify aborted.\n"));
        EXPECT_EQ(run.calls.find("FirmwareUpgrade_start"), std::string::npos);
        EXPECT_THAT(run.calls, testing::HasSubstr("FirmwareUpgrade_release() = 0\n"));
    }
}

TEST(Streams, LeaveInputAfterTheAnswerToTheNextReader)
{
    FirmwareUnit unit;
    const std::string answers = unit.directory / "answers";
    for (const std::string& answer : {std::string("yes"), std::string("no"), std::string(60000, 'y')})
    {
        writeFile(answers, answer + "\nnext\n");
        const ShellRun run(unit, "{ \"$@\"; cat; } <" + answers,
                           "--advanced --verify=Front --filepath=" + unit.hex);
        EXPECT_EQ(run.calls.find("FirmwareUpgrade_start") != std::string::npos, answer == "yes");
        EXPECT_THAT(run.outcome.output, testing::EndsWith("\nnext\n"));
    }
}

TEST(Streams, AreNotReadToTheEndIfTheAnswerIsEndless)
{
    FirmwareUnit unit;
    const ShellRun run(unit, "yes | tr -d '\\n' | head -c 10000000 | { \"$@\"; wc -c; }",
                       "--advanced --verify=Front --filepath=" + unit.hex);
    const auto end = run.outcome.output.find("[yes/no]?\nVerify aborted.\n");
    ASSERT_NE(end, std::string::npos) << run.outcome.output;
    const std::string unread = splitLines(run.outcome.output).back();
    EXPECT_GT(std::stoul(unread), 9'000'000u);
}

// While the program waits, it holds no lock and has not started a job.
TEST(Streams, WaitForAnAnswerUntilAnInterrupt)
{
    SKIP_WITHOUT_TERMINAL();
    FirmwareUnit unit;
    Command command = programOn(unit.file(), "--advanced --update=Front --filepath=" + unit.hex);
    command.environment["QVAUX_TRACE"] = unit.directory / "waiting";
    Terminal terminal(command);
    ASSERT_TRUE(terminal.waitFor("Do you wish to continue [yes/no]?"));
    const std::string before = readFile(unit.file());
    EXPECT_EQ(unit.run("--advanced --verify=Front --force --filepath=" + unit.hex).output.find("Another"),
              std::string::npos);
    EXPECT_EQ(readFile(unit.file()), before);

    terminal.type("ye\x03"); // Ctrl-C
    const int status = terminal.end();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_EQ(readFile(unit.file()), before);
    EXPECT_EQ(readFile(unit.directory / "waiting"), callsBeforeTheAnswer);
}

TEST(Streams, EndTheProgramIfTheTerminalHangsUp)
{
    SKIP_WITHOUT_TERMINAL();
    FirmwareUnit unit;
    Command command =
        throughShell("exec env --default-signal=HUP \"$@\"",
                     programOn(unit.file(), "--advanced --update=Front --filepath=" + unit.hex));
    command.environment["QVAUX_TRACE"] = unit.directory / "waiting";
    Terminal terminal(command);
    ASSERT_TRUE(terminal.waitFor("Do you wish to continue [yes/no]?"));
    const std::string before = readFile(unit.file());

    const int status = terminal.hangUp();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGHUP) << status;
    EXPECT_EQ(readFile(unit.file()), before);
    EXPECT_EQ(readFile(unit.directory / "waiting"), callsBeforeTheAnswer);
}

} // namespace
