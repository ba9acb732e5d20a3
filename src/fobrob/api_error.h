// Reports failed calls of the device API.

#pragma once

#include "device/qv_aux2.h"

// Prints "<label>: " and the text of `error`.
void reportApiError(const char* label, ApiError error);

// Returns whether `result` is QV_SUCCESS. Reports any other result under `label`.
[[nodiscard]] bool succeeded(const char* label, ApiError result);

// Reports `result` under `label` unless it is QV_SUCCESS. For callers that continue regardless of the
// result.
void reportFailure(const char* label, ApiError result);
