/* Sets the volume of the buzzer through the device library at the given path, and prints the error code.
   Exits with status 3 if it does not run as root. It loads the library itself, because the dynamic linker
   ignores LD_LIBRARY_PATH for programs with privileges. */

#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <unistd.h>

int main(int count, char** arguments)
{
    if (geteuid() != 0)
        return 3;
    void* const library = count == 2 ? dlopen(arguments[1], RTLD_NOW) : NULL;
    if (!library)
        return 2;
    void* (*get)(void);
    uint32_t (*set)(void*, uint16_t);
    *(void**)&get = dlsym(library, "GetBuzzer");
    *(void**)&set = dlsym(library, "Buzzer_setVolume");
    printf("%u\n", (unsigned)set(get(), 40));
    return 0;
}
