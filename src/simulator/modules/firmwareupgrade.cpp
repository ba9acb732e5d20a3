#include "simulator/call/call.h"
#include "simulator/call/requirements.h"
#include "simulator/firmware/firmware_job.h"

#include <utility>

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
    const auto locateAndExecute = [&] { return withUnitFile(execute); };
    return tracedCall(call, locateAndExecute, path, flag);
}

// If a step cannot be prepared or saved, the job ends. Its status is then reported even if the unit cannot be
// loaded, because callers wait for the end of the job and not for a successful call.
Outcome firmwareStatus(const Call& call, UpgradeStatus& status)
{
    bool completed = false;
    const auto execute = [&](const UnitFile& file)
    {
        FirmwareStep step;
        UpgradeStatus reached{};
        const auto prepare = [&](Unit& unit) { return prepareFirmwareStep(unit, step, reached); };
        const Outcome outcome = executeChange(call, file, prepare);
        if (outcome.delivered)
        {
            commitFirmwareStep(std::move(step));
            status = reached;
        }
        completed = true;
        return outcome;
    };
    const Outcome outcome = withUnitFile(execute);
    if (completed || !hasValidHandle(call))
        return outcome;
    if (abortedStatus(status))
        return {success, true};
    endFirmwareJob(outcome.code);
    return outcome;
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
    // Waits without the lock, so that other processes can change the unit meanwhile.
    if (flag != 0)
        waitForFirmwareJob();
    const Call call{__func__, upgrade};
    const auto execute = [&] { return firmwareStatus(call, *status); };
    const ApiError code = tracedCall(call, execute, out(status), flag);
    if (code != success)
        waitAfterFailedStatusCall();
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
