#include "simulator/unit/faults.h"

namespace simulator
{

using document::Fault;
using document::Unit;

bool isCounted(const Unit& unit, const std::string& operation)
{
    const auto found = unit.faults.find(operation);
    return found != unit.faults.end() && (found->second.skip > 0 || found->second.times.value_or(0) > 0);
}

std::optional<Fault> uncountedFault(const Unit& unit, const std::string& operation)
{
    const auto found = unit.faults.find(operation);
    if (found == unit.faults.end() || found->second.times == 0u)
        return std::nullopt;
    return found->second;
}

std::optional<Fault> countCall(Unit& unit, const std::string& operation)
{
    const auto found = unit.faults.find(operation);
    if (found == unit.faults.end() || found->second.times == 0u)
        return std::nullopt;
    Fault& fault = found->second;
    if (fault.skip > 0)
    {
        --fault.skip;
        return std::nullopt;
    }
    if (fault.times)
        --*fault.times;
    return fault;
}

ApiError resultOf(const Fault& fault)
{
    return fault.ignored ? ApiError{QV_SUCCESS} : fault.code;
}

} // namespace simulator
