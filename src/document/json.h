// The JSON library, without the parts that need the stream library.

#pragma once

#define JSON_NO_IO
#include <nlohmann/json.hpp>

// Keeps the order of the keys, so that a file that a person laid out stays laid out. The library's parser
// adds keys by this [], so one that stands twice is there twice and can be found. Json's own [] looks keys
// up.
template <typename Key, typename Value, typename Less, typename Allocator>
struct KeysAsTheyStand : nlohmann::ordered_map<Key, Value, Less, Allocator>
{
    using nlohmann::ordered_map<Key, Value, Less, Allocator>::ordered_map;

    Value& operator[](const Key& key)
    {
        return this->emplace_back(key, Value()).second;
    }
};

using Json = nlohmann::basic_json<KeysAsTheyStand>;
