// A clock on the wall that may jump, for the program and for the tests that call the unit. The times of files
// do not come from it and stay right.

#include <cstdlib>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

// The kernel's call with seconds of 64 bits. Where it stands beside an older one, the headers name the
// function below after it.
#ifdef SYS_clock_gettime64
constexpr long clockCall = SYS_clock_gettime64;
#else
constexpr long clockCall = SYS_clock_gettime;
#endif

// With STAND_IN_CLOCK it is tomorrow, yesterday, tomorrow and so on, one look after the other.
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
