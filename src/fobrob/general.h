// The name and the version of the program, and the output of the general options.

#pragma once

// The base name of the program. main sets it before anything else.
extern const char* program_name;

// Sets program_name to the part of `path` that follows its last slash. `path` must stay valid.
void setProgramName(const char* path);

int programVersionMajor();
int programVersionMinor();
int programVersionRelease();
int programVersionBuild();

void printProgramVersionLine();

void printUsage();                // usage.cpp
void printList();                 // list.cpp
[[noreturn]] void printVersion(); // version.cpp; exits with status 0
