// A reference to a function or lambda. It allocates no memory, and must not outlive what it refers to.

#pragma once

#include <memory>

namespace simulator
{

template <typename Signature>
class FunctionRef;

template <typename Result, typename... Arguments>
class FunctionRef<Result(Arguments...)>
{
public:
    // Intentional: implicit, so that a lambda can be passed as an argument.
    template <typename Function>
    FunctionRef(const Function& referred)
        : function(std::addressof(referred)),
          call([](const void* called, Arguments... arguments) -> Result
               { return (*static_cast<const Function*>(called))(static_cast<Arguments>(arguments)...); })
    {
    }

    Result operator()(Arguments... arguments) const
    {
        return call(function, static_cast<Arguments>(arguments)...);
    }

private:
    const void* function;
    Result (*call)(const void* function, Arguments... arguments);
};

} // namespace simulator
