// The unit's file.
//
// Reads take no lock: the file is replaced atomically, so a reader sees either the old unit or the new one. A
// writer holds the lock file from reading to replacing.
//
// Any number of processes may use a unit at once, but only one thread of each.

#pragma once

#include "document/unit.h"
#include "simulator/store/store_error.h"
#include "simulator/store/unit_location.h"

#include <functional>

namespace simulator
{

// The file as one operation uses it. Every function throws StoreError.
class UnitFile
{
public:
    // Locates the file.
    UnitFile();

    // Returns the unit as it is in the file now. A missing file is created with the defaults. The reference
    // is valid until the next call of a function of this class.
    const document::Unit& current() const;

    // Runs `action` on the unit and saves what it changed, all under the lock. The file is unchanged if this
    // throws.
    void change(const std::function<void(document::Unit&)>& action) const;

    // Takes another lock next to the file without waiting. It is not open if another process has it.
    File tryLock(const char* suffix) const;

private:
    UnitLocation location;
};

} // namespace simulator
