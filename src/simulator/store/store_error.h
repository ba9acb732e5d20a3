// The unit cannot be reached. The text names the file and the place in it.

#pragma once

#include "simulator/unit/codes.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

struct StoreError : std::runtime_error
{
    StoreError(Code reason, const std::string& text) : std::runtime_error(text), code(reason)
    {
    }

    Code code;
};

[[noreturn]] inline void fail(Code code, const std::string& path, const std::string& what)
{
    throw StoreError(code, path + ": " + what);
}

[[noreturn]] inline void failWithErrno(Code code, const std::string& path)
{
    fail(code, path, std::strerror(errno));
}
