// Preloaded: getuid() returns the user that the test chooses, and sleep() also writes a line to the call
// trace.

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/types.h>
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
    return reinterpret_cast<decltype(&sleep)>(dlsym(RTLD_NEXT, "sleep"))(seconds);
}
