#include "simulator/call/call.h"

#include "simulator/call/requirements.h"

namespace
{

template <typename Field>
ApiError getVersion(const char* operation, const void* handle, Field field, std::uint8_t* major,
                    std::uint8_t* minor, std::uint8_t* release, std::uint8_t* build,
                    Requirement requirement = nothingNeeded)
{
    const Reading work = needing(requirement,
                                 [&](const Unit& unit)
                                 {
                                     const auto& numbers = field(unit).numbers;
                                     *major = numbers[0];
                                     *minor = numbers[1];
                                     *release = numbers[2];
                                     *build = numbers[3];
                                     return success;
                                 });
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

ApiError wholeFront(const Unit& unit)
{
    const ApiError lack = frontNeeded(unit);
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
    return getVersion(__func__, version, at<&Unit::versions, &Versions::fpga>, major, minor, release, build,
                      wholeFpga);
}

ApiError AuxVersion_getFrontVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(__func__, version, at<&Unit::versions, &Versions::front>, major, minor, release, build,
                      wholeFront);
}

ApiError AuxVersion_getSSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(__func__, version, at<&Unit::versions, &Versions::ss>, major, minor, release, build,
                      wholeSs);
}

ApiError AuxVersion_getQVAuxVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(__func__, version, at<&Unit::versions, &Versions::api>, major, minor, release, build);
}

ApiError AuxVersion_getQVAuxDrvVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                       std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(__func__, version, at<&Unit::versions, &Versions::driver>, major, minor, release,
                      build);
}

ApiError AuxVersion_getOSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion(__func__, version, at<&Unit::versions, &Versions::os>, major, minor, release, build);
}
