#include "simulator/unit/faults.h"

#include <dlfcn.h>

bool faultCounts(const Unit& unit, const std::string& operation)
{
    const auto found = unit.faults.find(operation);
    return found != unit.faults.end() && (found->second.skip > 0 || found->second.times.value_or(0) > 0);
}

std::optional<Fault> standingFault(const Unit& unit, const std::string& operation)
{
    const auto found = unit.faults.find(operation);
    if (found == unit.faults.end() || found->second.times == 0u)
        return std::nullopt;
    return found->second;
}

std::optional<Fault> countFault(Unit& unit, const std::string& operation)
{
    const std::optional<Fault> fault = standingFault(unit, operation);
    if (!fault)
        return std::nullopt;
    Fault& counted = unit.faults[operation];
    if (counted.skip > 0)
    {
        --counted.skip;
        return std::nullopt;
    }
    if (counted.times)
        --*counted.times;
    return fault;
}

bool isOperation(const std::string& name)
{
    Dl_info own{};
    if (!dladdr(reinterpret_cast<const void*>(&isOperation), &own))
        return false;
    void* const library = dlopen(own.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (!library)
        return false;
    const void* const symbol = dlsym(library, name.c_str());
    Dl_info found{};
    const bool known = symbol && dladdr(symbol, &found) && found.dli_fbase == own.dli_fbase;
    dlclose(library);
    return known;
}
