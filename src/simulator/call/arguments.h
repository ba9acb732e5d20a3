// Types of arguments that receive results, and a check that arguments can be used.

#pragma once

#include <cstdint>

namespace simulator
{

// Receives one value.
template <typename Value>
struct Out
{
    Value* value;
};

template <typename Value>
Out<Value> out(Value* value)
{
    return {value};
}

// Receives a text, which has no terminator if it fills the buffer.
struct TextOut
{
    char* buffer;
    std::uint32_t length;
};

// Receives bytes.
struct BytesOut
{
    std::uint8_t* buffer;
    std::uint32_t length;
};

// Return whether a call can use the argument: pointers are not null, and text buffers are not empty.

inline bool isUsable(const auto&)
{
    return true;
}

template <typename Value>
bool isUsable(Out<Value> out)
{
    return out.value != nullptr;
}

inline bool isUsable(TextOut out)
{
    return out.buffer != nullptr && out.length > 0;
}

inline bool isUsable(BytesOut out)
{
    return out.buffer != nullptr;
}

inline bool isUsable(const char* text)
{
    return text != nullptr;
}

} // namespace simulator
