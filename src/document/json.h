// The JSON library, without the parts that need iostreams.

#pragma once

#define JSON_NO_IO
#include <nlohmann/json.hpp>

namespace document
{

// An object that keeps its keys in insertion order, so that the layout of a file survives a change.
//
// Intentional: operator[] always appends. The parser adds keys with it, so a duplicate key is in the object
// twice and can be reported. Json::operator[] looks keys up first.
template <typename Key, typename Value, typename Less, typename Allocator>
struct InsertionOrderedMap : nlohmann::ordered_map<Key, Value, Less, Allocator>
{
    using nlohmann::ordered_map<Key, Value, Less, Allocator>::ordered_map;

    Value& operator[](const Key& key)
    {
        return this->emplace_back(key, Value()).second;
    }
};

using Json = nlohmann::basic_json<InsertionOrderedMap>;

} // namespace document
