// Preloaded: replaces a firmware job by one that is done after 100,000 status calls.

#include "device/qv_aux2.h"

ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle, UpgradeStatus* status, int32_t)
{
    static int calls = 0;
    if (++calls > 100000)
        status->state = QV_UPGRADE_DONE;
    return QV_SUCCESS;
}
