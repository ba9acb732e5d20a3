// Preloaded into the program: getuid() returns FAKE_UID, or 0 if it is unset, and sleep() also appends a line
// to the call trace.

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) uid_t getuid()
{
    const char* uid = std::getenv("FAKE_UID");
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
