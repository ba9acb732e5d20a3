// A wall clock that can jump, for the program and for tests that call the device library. The time stamps of
// files are not affected.

#include <cstdlib>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

// The system call with 64-bit seconds. On systems with an older one too, the headers rename the function
// below to match.
#ifdef SYS_clock_gettime64
constexpr long clockCall = SYS_clock_gettime64;
#else
constexpr long clockCall = SYS_clock_gettime;
#endif

// If STAND_IN_CLOCK is set, the clock alternates between tomorrow and yesterday.
extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* now) noexcept
{
    constexpr long day = 24L * 60 * 60;
    const long result = syscall(clockCall, clock, now);
    if ((clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) && std::getenv("STAND_IN_CLOCK"))
    {
        static bool ahead = false;
        ahead = !ahead;
        now->tv_sec += ahead ? day : -day;
    }
    return static_cast<int>(result);
}
