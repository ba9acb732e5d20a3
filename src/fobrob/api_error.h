// The one line in which a failed call of the device API is reported.

#pragma once

#include "device/qv_aux2.h"

// Prints "<label>: " and the text of `error`.
void reportApiError(const char* label, ApiError error);

// True for success. Any other result is reported under `label`.
[[nodiscard]] bool succeeded(const char* label, ApiError result);

// Reports a result that is no success, where what follows is the same after a failure.
void reportFailure(const char* label, ApiError result);
