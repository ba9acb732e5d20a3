// The one line in which a failed call of the device API is reported.

#pragma once

#include "device/qv_aux2.h"

constexpr ApiError apiSuccess = 0;

// Prints "<label>: " and the text of `error`.
void reportApiError(const char* label, ApiError error);

// True for success. Any other result is reported under `label`.
bool succeeded(const char* label, ApiError result);
