// Units as JSON documents.

#pragma once

#include "document/diagnostic.h"
#include "document/json.h"
#include "document/unit.h"

namespace document
{

// Missing keys get their defaults. Throws InvalidDocument if a key is unknown or a duplicate, or if a value
// has the wrong type or does not fit into its field. The ranges of settings are not checked.
Unit unitFromJson(const Json& json);

// Returns a document with every key.
Json unitToJson(const Unit& unit);

// Sets the keys in `json` whose values differ between `before` and `after`, which are documents with every
// key. The order of the keys and the form of all other values do not change.
void updateJson(Json& json, const Json& before, const Json& after);

} // namespace document
