// Every operation of the device API with valid arguments, for tests of rules that all operations follow.

#pragma once

#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

// Error codes of the simulated unit.
constexpr ApiError notSupported = 2;
constexpr ApiError invalidHandle = 3;
constexpr ApiError invalidArgument = 4;
constexpr ApiError outOfRange = 5;
constexpr ApiError boardNotFitted = 18;

// Converts to a buffer for a result of any type.
struct Buffer
{
    template <typename Result>
    operator Result*() const
    {
        static Result buffer[4096];
        return buffer;
    }
};

constexpr Buffer anyBuffer;

// Returns the name of an exported function.
std::string nameOf(void* function);

// An operation with arguments that a healthy unit accepts.
struct Operation
{
    std::string name;
    std::function<const void*()> acquire;
    std::function<ApiError(const void*)> call;
    std::vector<std::function<ApiError(const void*)>> callsWithNull; // one for each pointer
};

template <typename Argument>
void makeNull(Argument& argument)
{
    if constexpr (std::is_pointer_v<Argument>)
        argument = nullptr;
}

template <typename Handle, typename... Arguments, typename... Values>
Operation operation(Handle (*acquire)(), ApiError (*operation)(Handle, Arguments...), Values... values)
{
    const auto call = [=](const void* handle, int null)
    {
        std::tuple<Arguments...> arguments{static_cast<Arguments>(values)...};
        const auto callWith = [&](auto&... each)
        {
            [[maybe_unused]] int position = 0;
            ((position++ == null ? makeNull(each) : void()), ...);
            return operation(static_cast<Handle>(const_cast<void*>(handle)), each...);
        };
        return std::apply(callWith, arguments);
    };
    Operation result{nameOf(reinterpret_cast<void*>(operation)),
                     acquire,
                     [=](const void* handle) { return call(handle, -1); },
                     {}};
    const std::vector<bool> isPointer{std::is_pointer_v<Arguments>...};
    for (std::size_t i = 0; i < isPointer.size(); ++i)
        if (isPointer[i])
            result.callsWithNull.push_back([=](const void* handle)
                                           { return call(handle, static_cast<int>(i)); });
    return result;
}

// Returns all operations that take a handle, except those that release it.
const std::vector<Operation>& everyOperation();
const std::vector<Operation>& everyRelease();

// Returns the operations whose names match one of the shell patterns.
std::vector<Operation> operationsLike(std::initializer_list<const char*> patterns);

// Calls each operation with a new handle and expects the code.
void expectAll(const std::vector<Operation>& operations, ApiError code);

std::string moduleOf(const std::string& operation);

// The content of a unit file that is still "{}".
const nlohmann::json unchanged = nlohmann::json::object();
