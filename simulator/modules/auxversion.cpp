#include "call.h"

#include "requirements.h"

namespace
{

template <typename Field>
ApiError getVersion(const char* operation, const void* handle, Field field, std::uint8_t* major,
                    std::uint8_t* minor, std::uint8_t* release, std::uint8_t* build,
                    Requirement requirement = nothingNeeded)
{
    const Reading work = [&](const Unit& unit)
    {
        const ApiError lack = requirement(unit);
        if (lack != success)
            return lack;
        const auto& numbers = field(unit).numbers;
        *major = numbers[0];
        *minor = numbers[1];
        *release = numbers[2];
        *build = numbers[3];
        return lack;
    };
    return reading(operation, handle, work, out(major), out(minor), out(release), out(build));
}

// Firmware whose upgrade was interrupted has no version to tell.
ApiError whole(const Firmware& firmware)
{
    return firmware.incomplete ? firmwareIncomplete : success;
}

ApiError wholeSs(const Unit& unit)
{
    return whole(unit.firmware.ss);
}

ApiError wholeFpga(const Unit& unit)
{
    return whole(unit.firmware.fpga);
}

// The front microcontroller comes with the display.
ApiError wholeFront(const Unit& unit)
{
    const ApiError lack = displayNeeded(unit);
    return lack == success ? whole(unit.firmware.front) : lack;
}

} // namespace

AuxVersionHandle GetAuxVersion()
{
    return obtain<AuxVersionHandle>(__func__);
}

ApiError AuxVersion_release(AuxVersionHandle version)
{
    return releaseHandle(__func__, version);
}

ApiError AuxVersion_getFPGAVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                   std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.fpga; }, major, minor,
        release, build, wholeFpga);
}

ApiError AuxVersion_getFrontVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.front; }, major, minor,
        release, build, wholeFront);
}

ApiError AuxVersion_getSSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.ss; }, major, minor, release,
        build, wholeSs);
}

ApiError AuxVersion_getQVAuxVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.api; }, major, minor, release,
        build);
}

ApiError AuxVersion_getQVAuxDrvVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                       std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.driver; }, major, minor,
        release, build);
}

ApiError AuxVersion_getOSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(
        __func__, version, [](const Unit& unit) -> auto& { return unit.versions.os; }, major, minor, release,
        build);
}
