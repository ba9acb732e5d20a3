#include "simulator/call/fields.h"

using namespace document;
using namespace simulator;

DiagnosticHandle GetDiagnostic()
{
    return acquire<DiagnosticHandle>(__func__);
}

ApiError Diagnostic_release(DiagnosticHandle diagnostic)
{
    return release({__func__, diagnostic});
}

ApiError Diagnostic_getStartupReason(DiagnosticHandle diagnostic, std::uint16_t* reason)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::startupReason>, reason);
}

ApiError Diagnostic_getShutDownReason(DiagnosticHandle diagnostic, std::uint16_t* reason)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::shutdownReason>, reason);
}

ApiError Diagnostic_getHwErrorStatus(DiagnosticHandle diagnostic, std::uint16_t* status)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::hwErrorStatus>, status);
}

ApiError Diagnostic_getPowerCycles(DiagnosticHandle diagnostic, std::uint16_t* cycles)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::powerCycles>, cycles);
}

ApiError Diagnostic_getSSTemp(DiagnosticHandle diagnostic, std::int16_t* temperature)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::ssTemperature>, temperature);
}

ApiError Diagnostic_getPCBTemp(DiagnosticHandle diagnostic, std::int16_t* temperature)
{
    return getField({__func__, diagnostic}, at<&Unit::diagnostic, &Diagnostic::pcbTemperature>, temperature);
}

ApiError Diagnostic_getTimer(DiagnosticHandle diagnostic, DiagnosticTimer* timer)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        const Diagnostic& counted = unit.diagnostic;
        *timer = {counted.totalRunTime,  counted.totalSuspendTime, counted.totalHeatTime,
                  counted.runTime40To60, counted.runTime60To70,    counted.runTime70To80,
                  counted.runTimeAbove80};
        return success;
    };
    return readUnit({__func__, diagnostic}, work, out(timer));
}

ApiError Diagnostic_getMinMaxTemp(DiagnosticHandle diagnostic, std::int16_t* minimum, std::int16_t* maximum)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        *minimum = unit.diagnostic.minimumTemperature;
        *maximum = unit.diagnostic.maximumTemperature;
        return success;
    };
    return readUnit({__func__, diagnostic}, work, out(minimum), out(maximum));
}

ApiError Diagnostic_getPMTemp(DiagnosticHandle diagnostic, std::int32_t sensor, std::int16_t* temperature,
                              std::int32_t* status)
{
    const auto work = [&](const Unit& unit) -> ApiError
    {
        if (sensor != QV_PM_SENSOR_CPU && sensor != QV_PM_SENSOR_CPU_BOARD)
            return outOfRange;
        const Diagnostic& measured = unit.diagnostic;
        const ApiError code = deliver(
            sensor == QV_PM_SENSOR_CPU ? measured.cpuTemperature : measured.boardTemperature, temperature);
        if (code == success)
            *status = measured.sensorStatus;
        return code;
    };
    return readUnit({__func__, diagnostic}, work, sensor, out(temperature), out(status));
}
