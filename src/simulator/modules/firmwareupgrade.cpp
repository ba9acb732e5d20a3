#include "simulator/call/call.h"
#include "simulator/call/requirements.h"
#include "simulator/firmware/firmware_job.h"

using namespace document;
using namespace simulator;

namespace
{

ApiError start(const Call& call, FirmwareTarget target, FirmwareTask task, const char* path,
               std::int32_t flag)
{
    const Requirement requirement = target == FirmwareTarget::front ? requireFront : requireNothing;
    const auto execute = [&](const UnitFile& file)
    {
        const auto startJob = [&](const Unit& unit)
        { return startFirmwareJob(unit, file, target, task, path); };
        return executeReading(call, file, requiring(requirement, startJob));
    };
    return tracedCall(
        call, [&] { return withUnitFile(execute); }, path, flag);
}

} // namespace

FirmwareUpgradeHandle GetFirmwareUpgrade()
{
    return acquire<FirmwareUpgradeHandle>(__func__);
}

ApiError FirmwareUpgrade_release(FirmwareUpgradeHandle upgrade)
{
    return release({__func__, upgrade});
}

ApiError FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::ss, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                             std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::ss, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::fpga, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                               std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::fpga, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::front, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                                std::int32_t flag)
{
    return start({__func__, upgrade}, FirmwareTarget::front, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status,
                                          std::int32_t flag)
{
    // Not under the lock, so that other processes can change the unit meanwhile.
    if (flag != 0)
        waitForFirmwareJob();
    const Call call{__func__, upgrade};
    const auto execute = [&](const UnitFile& file)
    {
        UpgradeStatus reached{};
        const auto advance = [&](Unit& unit) { return advanceFirmwareJob(unit, reached); };
        const Outcome outcome = executeChange(call, file, advance);
        if (outcome.delivered)
            *status = reached;
        return outcome;
    };
    const ApiError code = tracedCall(
        call, [&] { return withUnitFile(execute); }, out(status), flag);
    if (code != success)
        handleFailedStatusCall(code);
    return code;
}

ApiError FirmwareUpgrade_shutDown(FirmwareUpgradeHandle upgrade)
{
    const auto work = [](Unit& unit) -> ApiError
    {
        unit.boot.running = false;
        return success;
    };
    return changeUnit({__func__, upgrade}, work);
}
