// Loaded before the device library: a firmware job whose status is asked for a hundred thousand times before
// there is anything to tell.

#include "device/qv_aux2.h"

ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle, UpgradeStatus* status, int32_t)
{
    static int calls = 0;
    if (++calls > 100000)
        status->state = 6;
    return 0;
}
