// The name and version of the program, and its general screens.

#pragma once

// The base name of the program. main sets it before anything else.
extern const char* program_name;

// Sets program_name to the part of `path` that follows its last slash. `path` is not copied.
void setProgramName(const char* path);

int programVersionMajor();
int programVersionMinor();
int programVersionRelease();
int programVersionBuild();

void printProgramVersionLine();

void printUsage();                // usage.cpp
void printList();                 // list.cpp
[[noreturn]] void printVersion(); // version.cpp; exits with status 0
