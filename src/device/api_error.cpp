#include "device/api_error.h"

#include "main/output.h"

void reportApiError(const char* label, ApiError error)
{
    printLine(label, ": ", GetErrorStringA(error));
}

bool succeeded(const char* label, ApiError result)
{
    if (result == apiSuccess)
        return true;
    reportApiError(label, result);
    return false;
}
