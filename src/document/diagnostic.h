// What is wrong with a document, and where.

#pragma once

#include "document/json.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace document
{

// A document has an error. The text names the key and the problem: "/buzzer/volum: unknown key".
struct InvalidDocument : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// The path of a key, from the value back to the document. It refers to `parent` and `key` and must not
// outlive them. The text is built only if there is an error to report.
struct KeyPath
{
    const KeyPath* parent = nullptr; // null for the document itself
    std::string_view key = {};

    // Returns "/buzzer/volume", and "/" for the document itself. Long keys are shortened.
    std::string text() const;

    // Throws InvalidDocument.
    [[noreturn]] void fail(const std::string& problem) const;
    [[noreturn]] void failExpecting(const std::string& expected, const Json& got) const;
};

} // namespace document
