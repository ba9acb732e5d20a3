// Errors in a document.

#pragma once

#include "document/json.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace document
{

// Thrown if a document is invalid. The text names the key and the problem: "/buzzer/volum: unknown key".
struct InvalidDocument : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// The path of a key, as a list that leads from the key to the root of the document. It refers to `parent` and
// `key` and must not outlive them. The text is built only if there is an error to report.
struct KeyPath
{
    const KeyPath* parent = nullptr; // null for the document itself
    std::string_view key = {};

    // Returns a text such as "/buzzer/volume", or "/" for the document itself. Long keys are truncated.
    std::string text() const;

    // Throws InvalidDocument.
    [[noreturn]] void fail(const std::string& problem) const;
    [[noreturn]] void failExpecting(const std::string& expected, const Json& got) const;
};

} // namespace document
