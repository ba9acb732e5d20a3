// The faults that a unit's file asks for, a layer over the healthy unit.

#pragma once

#include "document/unit.h"

// True when the next call of `operation` has to be counted in the unit.
bool faultCounts(const Unit& unit, const std::string& operation);

// The fault that a call of `operation` shows, for one that need not be counted.
std::optional<Fault> standingFault(const Unit& unit, const std::string& operation);

// The fault that this call of `operation` shows. Counts the call.
std::optional<Fault> countFault(Unit& unit, const std::string& operation);

// Whether this library has an operation of that name.
bool isOperation(const std::string& name);
