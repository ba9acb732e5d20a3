// The operations of the device API that fuzz/operations.def lists, and the functions that return the text of
// a code.

#pragma once

#include <set>
#include <string>

inline std::set<std::string> listedOperations()
{
    std::set<std::string> names = {"GetErrorStringA", "GetStartupReasonStringA", "GetHwErrorStatusStringA"};
#define MODULE(module) names.insert({"Get" #module, #module "_release"});
#define READS_TEXT(module, operation) names.insert(#module "_" #operation);
#define READS(module, operation, type) names.insert(#module "_" #operation);
#define SETS(module, operation, type, allowed) names.insert(#module "_" #operation);
#define STARTS(module, operation) names.insert(#module "_" #operation);
#define OTHER(module, operation) names.insert(#module "_" #operation);
#include "../../fuzz/operations.def"
    return names;
}
