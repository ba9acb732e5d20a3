#include "simulator/call/operations.h"

#include <dlfcn.h>
#include <new>

namespace simulator
{

bool isOperation(const std::string& name)
{
    Dl_info own{};
    if (!dladdr(reinterpret_cast<const void*>(&isOperation), &own))
        return false;
    void* const library = dlopen(own.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        throw std::bad_alloc(); // The library is loaded, so nothing else can have failed.
    // dlsym() also searches the libraries that this one depends on.
    const void* const symbol = dlsym(library, name.c_str());
    Dl_info found{};
    const bool isOwn = symbol && dladdr(symbol, &found) && found.dli_fbase == own.dli_fbase;
    dlclose(library);
    return isOwn;
}

std::string_view moduleOf(std::string_view operation)
{
    constexpr std::string_view get = "Get";
    if (operation.starts_with(get))
        return operation.substr(get.size());
    return operation.substr(0, operation.find('_'));
}

} // namespace simulator
