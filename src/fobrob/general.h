// What the program says of itself.

#pragma once

// The program's base name, set before anything else.
extern const char* program_name;

// Keeps the part of `path` after its last slash; `path` must outlive the program.
void setProgramName(const char* path);

int programVersionMajor();
int programVersionMinor();
int programVersionRelease();
int programVersionBuild();

void printProgramVersionLine();

void printUsage();                // usage.cpp
void printList();                 // list.cpp
[[noreturn]] void printVersion(); // version.cpp
