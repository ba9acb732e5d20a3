// Replaces clock_gettime() in the program, and in tests that call the device library. File time stamps are
// not affected.

#include <cstdlib>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

// The system call with 64-bit seconds. On systems that also have a 32-bit one, the headers rename the
// function below to match.
#ifdef SYS_clock_gettime64
constexpr long clockCall = SYS_clock_gettime64;
#else
constexpr long clockCall = SYS_clock_gettime;
#endif

// If JUMPING_CLOCK is set, the wall clock is alternately one day fast and one day slow.
extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* now) noexcept
{
    constexpr long day = 24L * 60 * 60;
    const long result = syscall(clockCall, clock, now);
    if ((clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) && std::getenv("JUMPING_CLOCK"))
    {
        static bool ahead = false;
        ahead = !ahead;
        now->tv_sec += ahead ? day : -day;
    }
    return static_cast<int>(result);
}
