// Where the unit's file is, and the locks beside it.

#pragma once

#include "simulator/store/file.h"

#include <string>

// The folder stays the same one as long as it is open, whatever becomes of its name meanwhile: what is
// locked, read and replaced in it belongs together.
struct Place
{
    File folder;
    std::string name; // of the file in the folder
    std::string path; // for people
};

// The place of the unit's file, behind all links; the file may not be there yet. Throws StoreError.
Place unitPlace();

// Waits for the lock of that ending beside the unit's file. Throws StoreError.
File takeLock(const Place& place, const char* ending);

// The same without waiting: not open when another process has the lock.
File tryLock(const Place& place, const char* ending);
