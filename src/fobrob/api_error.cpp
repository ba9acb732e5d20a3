#include "fobrob/api_error.h"

#include "fobrob/output.h"

void reportApiError(const char* label, ApiError error)
{
    printLine(label, ": ", GetErrorStringA(error));
}

void reportFailure(const char* label, ApiError result)
{
    if (result != QV_SUCCESS)
        reportApiError(label, result);
}

bool succeeded(const char* label, ApiError result)
{
    reportFailure(label, result);
    return result == QV_SUCCESS;
}
