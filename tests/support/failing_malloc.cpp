#include "support/failing_malloc.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED AllocationFailures allocationFailures;
AllocationFailures allocationFailures;

// The functions of the C library under their internal names.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);

namespace
{

bool fails()
{
    AllocationFailures& failures = allocationFailures;
    if (!failures.enabled)
        return false;
    const unsigned long call = ++failures.calls;
    if (failures.first == 0 || call < failures.first || (call > failures.first && !failures.persistent))
        return false;
    errno = ENOMEM;
    return true;
}

__attribute__((constructor)) void readEnvironment()
{
    const char* const request = std::getenv("FAIL_ALLOCATION");
    if (request)
    {
        char* end = nullptr;
        allocationFailures.first = std::strtoul(request, &end, 10);
        allocationFailures.persistent = *end == '+';
    }
    allocationFailures.enabled = request || std::getenv("COUNT_ALLOCATIONS");
}

__attribute__((destructor)) void writeCount()
{
    const char* const path = std::getenv("COUNT_ALLOCATIONS");
    if (!path)
        return;
    allocationFailures.enabled = false;
    std::FILE* const file = std::fopen(path, "w");
    if (!file)
        return;
    std::fprintf(file, "%lu", allocationFailures.calls);
    std::fclose(file);
}

} // namespace

EXPORTED void* malloc(std::size_t size)
{
    return fails() ? nullptr : __libc_malloc(size);
}

EXPORTED void* calloc(std::size_t count, std::size_t size)
{
    return fails() ? nullptr : __libc_calloc(count, size);
}

EXPORTED void* realloc(void* block, std::size_t size)
{
    return fails() ? nullptr : __libc_realloc(block, size);
}

EXPORTED void* memalign(std::size_t alignment, std::size_t size)
{
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

EXPORTED int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    const int before = errno;
    void* const allocated = memalign(alignment, size);
    errno = before; // posix_memalign() returns the error instead.
    if (!allocated)
        return ENOMEM;
    *block = allocated;
    return 0;
}
