// Loaded before the program: the user is whom the test wants, waiting leaves a line in the call trace instead
// of taking time, and the clock on the wall may jump.

#include <cstdio>
#include <cstdlib>
#include <sys/syscall.h>
#include <sys/types.h>
#include <time.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) uid_t getuid()
{
    const char* uid = std::getenv("STAND_IN_UID");
    return uid ? static_cast<uid_t>(std::strtoul(uid, nullptr, 10)) : 0;
}

extern "C" __attribute__((visibility("default"))) unsigned sleep(unsigned seconds)
{
    if (const char* path = std::getenv("QVAUX_TRACE"))
        if (std::FILE* trace = std::fopen(path, "a"))
        {
            std::fprintf(trace, "sleep(%u)\n", seconds);
            std::fclose(trace);
        }
    return 0;
}

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
