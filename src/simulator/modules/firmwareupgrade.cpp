#include "simulator/call/requirements.h"
#include "simulator/firmware/firmware_job.h"

namespace
{

ApiError start(const char* operation, const void* handle, FirmwareTarget target, FirmwareTask task,
               const char* path, std::int32_t flag)
{
    const Requirement requirement = target == FirmwareTarget::front ? frontNeeded : nothingNeeded;
    const Reading work =
        needing(requirement, [&](const Unit& unit) { return startFirmwareJob(unit, target, task, path); });
    return reading(operation, handle, work, path, flag);
}

} // namespace

FirmwareUpgradeHandle GetFirmwareUpgrade()
{
    return obtain<FirmwareUpgradeHandle>(__func__);
}

ApiError FirmwareUpgrade_release(FirmwareUpgradeHandle upgrade)
{
    return releaseHandle(__func__, upgrade);
}

ApiError FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::ss, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                             std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::ss, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::fpga, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                               std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::fpga, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle upgrade, const char* path, std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::front, FirmwareTask::upgrade, path, flag);
}

ApiError FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle upgrade, const char* path,
                                                std::int32_t flag)
{
    return start(__func__, upgrade, FirmwareTarget::front, FirmwareTask::verification, path, flag);
}

ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle upgrade, UpgradeStatus* status,
                                          std::int32_t flag)
{
    // Outside the lock: the unit can be changed by others while the job goes on.
    if (flag != 0)
        waitForFirmwareJob();
    const char* const operation = __func__;
    const auto perform = [&]
    {
        UpgradeStatus reached{};
        const Outcome outcome =
            performChange(operation, upgrade, [&](Unit& unit) { return carryOnFirmwareJob(unit, reached); });
        if (outcome.delivered)
            *status = reached;
        return outcome;
    };
    const ApiError code = performing(operation, perform, out(status), flag);
    if (code != success)
        noteFailedStatusCall(code);
    return code;
}

// Ends this boot. The next call of the device API is in the next one.
ApiError FirmwareUpgrade_shutDown(FirmwareUpgradeHandle upgrade)
{
    const Change work = [](Unit& unit) -> ApiError
    {
        unit.boot.running = false;
        return success;
    };
    return changing(__func__, upgrade, work);
}
