// The JSON library, without the parts that need the stream library.

#pragma once

#define JSON_NO_IO
#include <nlohmann/json.hpp>

// Keeps the order of the keys, so that a file that a person laid out stays laid out.
using Json = nlohmann::ordered_json;
