// What the two files of the advanced category share: its options and the confirmation, and the firmware work.

#pragma once

#include "device/qv_aux2.h"
#include "fobrob/category.h"

struct AdvancedArgs
{
    bool filepathGiven = false;
    const char* filepathValue = noArgument();
    bool updateGiven = false;
    bool verifyGiven = false;
    bool forceGiven = false;
    const char* targetValue = noArgument(); // of --update or --verify, whichever came last
    bool factoryGiven = false;
    bool shutdownGiven = false;
    bool rescueModeGiven = false;
    bool factoryResetGiven = false;
    bool systemModeGiven = false;
    bool bootCompletedGiven = false;
};

extern AdvancedArgs advancedArgs;

// Asks whether to go ahead; only "yes" does. Says so when the answer is another.
bool confirmOperation();

// Upgrades or verifies the firmware that the options name, and prints everything about it. firmware.cpp
void runFirmwareOperation(FirmwareUpgradeHandle upgrade, AboutHandle about);
