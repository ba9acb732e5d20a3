#include "document/diagnostic.h"

namespace document
{

namespace
{

constexpr std::size_t maxExcerptSize = 60; // bytes

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Returns the beginning of a text, escaped as in a JSON string.
std::string excerpt(std::string_view text)
{
    std::size_t length = text.size();
    if (length > maxExcerptSize)
        for (length = maxExcerptSize; length > 0 && isContinuationByte(text[length]);)
            --length;
    const Json shown = text.substr(0, length);
    const std::string quoted = shown.dump(-1, ' ', false, Json::error_handler_t::replace);
    return quoted.substr(1, quoted.size() - 2) + (length < text.size() ? "..." : "");
}

std::string describe(const Json& value)
{
    if (value.is_object())
        return "an object";
    if (value.is_array())
        return "an array of length " + std::to_string(value.size());
    if (value.is_string())
        return '"' + excerpt(value.get_ref<const std::string&>()) + '"';
    return value.dump();
}

} // namespace

std::string KeyPath::text() const
{
    if (!parent)
        return "/";
    return (parent->parent ? parent->text() : "") + "/" + excerpt(key);
}

void KeyPath::fail(const std::string& problem) const
{
    throw InvalidDocument(text() + ": " + problem);
}

void KeyPath::failExpecting(const std::string& expected, const Json& got) const
{
    fail("expected " + expected + ", got " + describe(got));
}

} // namespace document
