// The unit's file: found, read, changed without loss.
//
// Readers never wait: the file is replaced as a whole, so whoever opens it sees the old unit or the new
// one. Whoever changes it holds the lock beside it from reading to replacing.
//
// Processes are kept apart, threads are not: one thread at a time may call the library.

#pragma once

#include "document/unit.h"
#include "simulator/store/store_error.h"

#include <functional>

// The unit as its file says now; made with the defaults when there is no file. The reference holds until
// the next call of the store. Throws StoreError.
const Unit& currentUnit();

// Runs `action` on the unit and saves what it changed, all under the lock. Throws StoreError; the file is
// then as it was.
ApiError changeUnit(const std::function<ApiError(Unit&)>& action);
