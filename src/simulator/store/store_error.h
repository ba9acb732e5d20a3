// Thrown if the unit's file cannot be used. The text names the file and the problem.

#pragma once

#include "simulator/unit/codes.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace simulator
{

struct StoreError : std::runtime_error
{
    StoreError(Code reason, const std::string& text) : std::runtime_error(text), code(reason)
    {
    }

    Code code;
};

[[noreturn]] inline void fail(Code code, const std::string& path, const std::string& problem)
{
    throw StoreError(code, path + ": " + problem);
}

[[noreturn]] inline void failWithErrno(Code code, const std::string& path)
{
    fail(code, path, std::strerror(errno));
}

} // namespace simulator
