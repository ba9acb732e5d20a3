// Preloaded into the program: FirmwareUpgrade_getUpgradeStatus() reports Done after 100,000 calls.

#include "device/qv_aux2.h"

ApiError FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle, UpgradeStatus* status, int32_t)
{
    static int calls = 0;
    if (++calls > 100000)
        status->state = QV_UPGRADE_DONE;
    return QV_SUCCESS;
}
