#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

namespace
{

template <typename Field>
ApiError getVersion(const Call& call, Field field, std::uint8_t* major, std::uint8_t* minor,
                    std::uint8_t* release, std::uint8_t* build, Requirement requirement = requireNothing)
{
    const auto work = requiring(requirement,
                                [&](const Unit& unit)
                                {
                                    const auto& numbers = field(unit).numbers;
                                    *major = numbers[0];
                                    *minor = numbers[1];
                                    *release = numbers[2];
                                    *build = numbers[3];
                                    return success;
                                });
    return readUnit(call, work, out(major), out(minor), out(release), out(build));
}

// Firmware whose upgrade was interrupted has no version.
ApiError requireComplete(const Firmware& firmware)
{
    return firmware.incomplete ? firmwareIncomplete : success;
}

ApiError requireCompleteSs(const Unit& unit)
{
    return requireComplete(unit.firmware.ss);
}

ApiError requireCompleteFpga(const Unit& unit)
{
    return requireComplete(unit.firmware.fpga);
}

ApiError requireCompleteFront(const Unit& unit)
{
    const ApiError code = requireFront(unit);
    return code == success ? requireComplete(unit.firmware.front) : code;
}

} // namespace

AuxVersionHandle GetAuxVersion()
{
    return acquire<AuxVersionHandle>(__func__);
}

ApiError AuxVersion_release(AuxVersionHandle version)
{
    return release({__func__, version});
}

ApiError AuxVersion_getFPGAVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                   std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::fpga>, major, minor, release, build,
                      requireCompleteFpga);
}

ApiError AuxVersion_getFrontVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::front>, major, minor, release,
                      build, requireCompleteFront);
}

ApiError AuxVersion_getSSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::ss>, major, minor, release, build,
                      requireCompleteSs);
}

ApiError AuxVersion_getQVAuxVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                    std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::api>, major, minor, release, build);
}

ApiError AuxVersion_getQVAuxDrvVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                       std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::driver>, major, minor, release,
                      build);
}

ApiError AuxVersion_getOSVersion(AuxVersionHandle version, std::uint8_t* major, std::uint8_t* minor,
                                 std::uint8_t* release, std::uint8_t* build)
{
    return getVersion({__func__, version}, at<&Unit::versions, &Versions::os>, major, minor, release, build);
}
