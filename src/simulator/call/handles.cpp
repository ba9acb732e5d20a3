#include "simulator/call/handles.h"

#include <cstdint>
#include <limits>
#include <map>

namespace simulator
{

namespace
{

// Makes a handle look like an address.
constexpr std::uintptr_t step = 16;

std::uintptr_t last = 0; // the newest handle

// The module of each handle that has not been released.
std::map<std::uintptr_t, std::string_view> modules;

std::uintptr_t keyOf(const void* handle)
{
    return reinterpret_cast<std::uintptr_t>(handle);
}

} // namespace

void* newHandle(std::string_view module)
{
    if (last > std::numeric_limits<std::uintptr_t>::max() - step)
        return nullptr;
    modules.emplace(last + step, module);
    last += step;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): not an address
    return reinterpret_cast<void*>(last);
}

bool isHandleOf(std::string_view module, const void* handle)
{
    const auto found = modules.find(keyOf(handle));
    return found != modules.end() && found->second == module;
}

void endHandle(const void* handle)
{
    modules.erase(keyOf(handle));
}

} // namespace simulator
