#include "simulator/call/handles.h"

#include <cstdint>
#include <vector>

namespace simulator
{

namespace
{

std::vector<std::string_view> modules; // by number of the handle; empty if it was released

// Makes a handle look like an address.
constexpr std::uintptr_t step = 16;

// Returns null if there is no such handle.
std::string_view* find(const void* handle)
{
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    if (number % step != 0 || number / step - 1 >= modules.size())
        return nullptr;
    return &modules[number / step - 1];
}

} // namespace

void* newHandle(std::string_view module)
{
    modules.push_back(module);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): not an address
    return reinterpret_cast<void*>(modules.size() * step);
}

bool isHandleOf(std::string_view module, const void* handle)
{
    const std::string_view* found = find(handle);
    return found && *found == module;
}

void endHandle(const void* handle)
{
    *find(handle) = {};
}

} // namespace simulator
