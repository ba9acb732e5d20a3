// The unit's file.
//
// Reads take no lock: the file is replaced atomically, so a reader sees either the old unit or the new one. A
// writer holds the lock file from reading to replacing.
//
// Any number of processes may use a unit at the same time, but only one thread of each process.

#pragma once

#include "document/unit.h"
#include "simulator/store/store_error.h"
#include "simulator/store/unit_location.h"

#include <functional>

namespace simulator
{

// The file during one operation. Every function may throw StoreError.
class UnitFile
{
public:
    // Locates the file.
    UnitFile();

    // Returns the unit that is in the file now. Creates a missing file with the defaults. The reference is
    // valid until the next call of a function of this class.
    const document::Unit& current() const;

    // Takes the lock, runs `action` on the unit and saves what it changed. If this throws, the file is
    // unchanged, except in the case that replaceFile() describes.
    void change(const std::function<void(document::Unit&)>& action) const;

    // Takes another lock next to the file. Does not wait: the result is not open if another process holds it.
    File tryLock(const char* suffix) const;

private:
    UnitLocation location;
};

} // namespace simulator
