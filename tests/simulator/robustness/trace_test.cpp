// Call traces to files of the unit, and to pipes.

#include "device/qv_aux2.h"
#include "support/children.h"
#include "support/system_calls.h"
#include "support/unit.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using nlohmann::json;

constexpr const char* before = R"({"buzzer": {"volume": 5}})";

// A trace in the unit file or in one of its companions would damage the unit.
class TraceInAFileOfTheUnit : public testing::TestWithParam<const char*>
{
protected:
    // The change is made, and no line is written to the file.
    void expectNoTrace(const std::string& trace) const
    {
        const std::string file = unit.file() + GetParam();
        runInChild(unit.file(),
                   [&]
                   {
                       setenv("QVAUX_TRACE", trace.c_str(), 1);
                       ASSERT_EQ(chdir(unit.directory.path.c_str()), 0);
                       EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
                       std::uint16_t volume = 0;
                       EXPECT_EQ(Buzzer_getVolume(GetBuzzer(), &volume), 0u);
                       EXPECT_EQ(volume, 40);
                   });
        EXPECT_EQ(unit["/buzzer/volume"], 40);
        EXPECT_EQ(readFile(file).find("Buzzer_"), std::string::npos) << readFile(file);
        EXPECT_TRUE(file == unit.file() || readFile(file).empty()) << readFile(file);
    }

    const Unit unit{before};
};

INSTANTIATE_TEST_SUITE_P(Each, TraceInAFileOfTheUnit, testing::Values("", ".lock", ".job", ".new"));

TEST_P(TraceInAFileOfTheUnit, IsRefusedByARelativePath)
{
    expectNoTrace(std::string("./unit.json") + GetParam());
}

TEST_P(TraceInAFileOfTheUnit, IsRefusedUnderAnotherNameOfTheFile)
{
    if (*GetParam())
        writeFile(unit.file() + GetParam(), "");
    std::filesystem::create_hard_link(unit.file() + GetParam(), unit.directory / "trace");
    expectNoTrace(unit.directory / "trace");
}

// The traced call creates the unit in its default location.
TEST(TraceInTheUnitFile, IsRefusedBeforeTheUnitExists)
{
    const TemporaryDirectory state;
    runInChild("",
               [&]
               {
                   unsetenv("QVAUX_UNIT");
                   setenv("XDG_STATE_HOME", state.path.c_str(), 1);
                   setenv("QVAUX_TRACE", (state / "qv-aux2/unit.json").c_str(), 1);
                   EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
                   Buzzer_setVolume(GetBuzzer(), 41);
               });
    const json unit = json::parse(readFile(state / "qv-aux2/unit.json"), nullptr, false);
    ASSERT_TRUE(unit.is_object());
    EXPECT_EQ(unit["buzzer"]["volume"], 41);
}

TEST(TraceNextToTheUnit, IsKept)
{
    const Unit unit(before);
    runInChild(unit.file(),
               [&]
               {
                   setenv("QVAUX_TRACE", (unit.file() + ".trace").c_str(), 1);
                   EXPECT_EQ(Buzzer_setVolume(GetBuzzer(), 40), 0u);
               });
    EXPECT_EQ(readFile(unit.file() + ".trace"), "GetBuzzer() = handle\nBuzzer_setVolume(40) = 0\n");
}

// Sets the volume while the signal has the given action. Neither the action nor the mask may change.
ApiError setVolumeWithAction(int signal, void (*action)(int))
{
    std::signal(signal, action);
    const ApiError code = Buzzer_setVolume(GetBuzzer(), 40);
    struct sigaction now = {};
    sigaction(signal, nullptr, &now);
    EXPECT_EQ(now.sa_handler, action);
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, signal), 0);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, signal), 0);
    return code;
}

int handlerCalls = 0;

void countCall(int)
{
    ++handlerCalls;
}

// The reader exits after the pipe was opened and before the line is written.
TEST(TraceToAPipe, IsIgnoredIfTheReaderExits)
{
    for (void (*action)(int) : {SIG_DFL, SIG_IGN, &countCall})
    {
        const Unit unit(before);
        const std::string pipe = unit.directory / "pipe";
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        SystemCallWatcher watcher;
        watcher.recordsFiles = true;
        watcher.beforeCall = [&](unsigned long, const SystemCall& call)
        {
            if (call.number != SYS_write || call.file != pipe)
                return;
            close(reader);
            reader = -1;
        };
        const WatchedRun run = watcher.run(
            [&]
            {
                close(reader);
                setenv("QVAUX_UNIT", unit.file().c_str(), 1);
                setenv("QVAUX_TRACE", pipe.c_str(), 1);
                const int failuresBefore = countFailures();
                EXPECT_EQ(setVolumeWithAction(SIGPIPE, action), 0u);
                EXPECT_EQ(handlerCalls, 0);
                _exit(countFailures() > failuresBefore ? 1 : 0);
            });
        EXPECT_EQ(run.status, 0) << "the expectation that failed is printed above";
        EXPECT_EQ(reader, -1) << "nothing was written to the pipe";
        EXPECT_EQ(unit["/buzzer/volume"], 40);
    }
}

// The kernel writes a part of a long line if a pipe is nearly full, so such lines are omitted.
TEST(TraceToAPipe, HasWholeLinesOnlyWhenThePipeFillsUp)
{
    const std::string text(3000, 'x');
    const Unit unit(json{{"errorTexts", {{"77", text}, {"78", text + text}}}}.dump());
    const std::string pipe = unit.directory / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    constexpr std::size_t calls = 100; // more than a pipe holds
    runInChild(unit.file(),
               [&]
               {
                   setenv("QVAUX_TRACE", pipe.c_str(), 1);
                   for (std::size_t i = 0; i < calls; ++i)
                   {
                       GetErrorStringA(77);
                       GetErrorStringA(78);
                   }
               });
    std::string trace(1 << 20, '\0');
    const ssize_t length = read(reader, trace.data(), trace.size());
    close(reader);
    ASSERT_GT(length, 0);
    trace.resize(static_cast<std::size_t>(length));
    EXPECT_TRUE(trace.ends_with('\n'));
    const std::vector<std::string> traced = splitLines(trace);
    EXPECT_LT(traced.size(), calls) << "the pipe was not full";
    for (const std::string& line : traced)
        EXPECT_EQ(line, "GetErrorStringA(77) = \"" + text + "\"");
}

} // namespace
