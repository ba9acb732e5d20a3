// The handlers of all categories, each in its own file in categories/. Only main.cpp calls them.

#pragma once

#include "fobrob/category.h"

CategoryHandler handleAbout;       // about.cpp
CategoryHandler handleAdvanced;    // advanced.cpp
CategoryHandler handleBacklight;   // backlight.cpp
CategoryHandler handleBuzzer;      // buzzer.cpp
CategoryHandler handleCan;         // can.cpp
CategoryHandler handleDigitalIo;   // digitalio.cpp
CategoryHandler handleHeater;      // heater.cpp
CategoryHandler handleLed;         // led.cpp
CategoryHandler handleLightsensor; // lightsensor.cpp
CategoryHandler handleOnOff;       // onoff.cpp
CategoryHandler handlePower;       // power.cpp
CategoryHandler handleTelematics;  // telematics.cpp
CategoryHandler handleTemperature; // temperature.cpp
CategoryHandler handleTouch;       // touch.cpp
CategoryHandler handleVersion;     // version.cpp
