// Signals that a write can raise. Each test makes its calls in a child process.

#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <initializer_list>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int noSignal = 0;

struct End
{
    int signal; // that ended the process, or noSignal
    int status; // exit status, or -1
    bool operator==(const End&) const = default;
};

void PrintTo(const End& end, std::ostream* stream)
{
    *stream << "signal " << end.signal << ", exit status " << end.status;
}

// Runs `calls` with the default signal actions, and returns how the process ended.
End inProcess(const std::function<unsigned()>& calls)
{
    const pid_t child = fork();
    if (child == 0)
    {
        for (const int number : {SIGXFSZ, SIGPIPE})
            std::signal(number, SIG_DFL);
        _exit(static_cast<int>(calls()));
    }
    int status = -1;
    waitpid(child, &status, 0);
    return {WIFSIGNALED(status) ? WTERMSIG(status) : noSignal, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

void limitFileSize(rlim_t bytes)
{
    const rlimit limit{bytes, bytes};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(Signals, OfTheFileSizeLimitDoNotEndAChange)
{
    const CalledUnit unit(R"({"buzzer": {"volume": 5}})");
    const auto change = []
    {
        unsetenv("QVAUX_TRACE");
        limitFileSize(10);
        return Buzzer_setVolume(GetBuzzer(), 40);
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(inProcess(change), (End{noSignal, 67}));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(readFile(unit.file()), R"({"buzzer": {"volume": 5}})");
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

TEST(Signals, OfTheFileSizeLimitDoNotEndATracedCall)
{
    const CalledUnit unit;
    for (const std::size_t size : {10u, 15u, 25u, 40u})
    {
        const std::string before = std::string(size - 1, '-') + "\n";
        writeFile(unit.traceFile(), before);
        const auto call = []
        {
            limitFileSize(40);
            std::uint16_t volume = 0;
            return Buzzer_getVolume(GetBuzzer(), &volume);
        };
        EXPECT_EQ(inProcess(call), (End{noSignal, QV_SUCCESS}));
        std::string expected = before;
        for (const std::string line : {"GetBuzzer() = handle\n", "Buzzer_getVolume([1000]) = 0\n"})
            if (expected.size() + line.size() <= 40)
                expected += line;
        EXPECT_EQ(readFile(unit.traceFile()), expected) << "incomplete line";
    }
}

// The reader opens and closes the pipe repeatedly, so that it is sometimes closed between the open and the
// write of a call.
TEST(Signals, OfAPipeWithoutAReaderDoNotEndATracedCall)
{
    const CalledUnit unit;
    ASSERT_EQ(mkfifo(unit.traceFile().c_str(), 0666), 0);
    const pid_t reader = fork();
    if (reader == 0)
        for (;;)
            close(open(unit.traceFile().c_str(), O_RDONLY | O_NONBLOCK));
    const auto callOften = []
    {
        for (int i = 0; i < 3000; ++i)
            GetStartupReasonStringA(0);
        return 0u;
    };
    EXPECT_EQ(inProcess(callOften), (End{noSignal, 0}));
    kill(reader, SIGKILL);
    waitpid(reader, nullptr, 0);
}

TEST(Signals, OfTheCallerAreStillDelivered)
{
    const CalledUnit unit;
    const auto call = []() -> unsigned
    {
        static volatile std::sig_atomic_t received = 0;
        struct sigaction action = {};
        action.sa_handler = [](int) { received = received + 1; };
        sigset_t own;
        sigemptyset(&own);
        sigaddset(&own, SIGPIPE);
        sigaction(SIGPIPE, &action, nullptr);
        sigaction(SIGXFSZ, &action, nullptr);
        sigprocmask(SIG_BLOCK, &own, nullptr);
        raise(SIGPIPE);
        limitFileSize(10);
        if (Buzzer_setVolume(GetBuzzer(), 40) != 67 || received != 0)
            return 1;
        sigset_t blocked;
        sigprocmask(SIG_UNBLOCK, &own, &blocked);
        if (sigismember(&blocked, SIGPIPE) != 1 || sigismember(&blocked, SIGXFSZ) != 0 || received != 1)
            return 2;
        raise(SIGXFSZ);
        return received == 2 ? 0 : 3;
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(inProcess(call), (End{noSignal, 0}));
    testing::internal::GetCapturedStderr();
}

} // namespace
