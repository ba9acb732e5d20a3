#include "fobrob/general.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

const char* program_name = nullptr;

void setProgramName(const char* path)
{
    const char* slash = std::strrchr(path, '/');
    program_name = slash ? slash + 1 : path;
}

int programVersionMajor()
{
    return 2;
}

int programVersionMinor()
{
    return 9;
}

int programVersionRelease()
{
    return 0;
}

int programVersionBuild()
{
    return 0;
}

void printProgramVersionLine()
{
    std::printf("%s %d.%d.%d.%d\n", program_name, programVersionMajor(), programVersionMinor(),
                programVersionRelease(), programVersionBuild());
}

void printVersion()
{
    printProgramVersionLine();
    std::putchar('\n');
    std::puts("Fobrob is the property of the Fobrob project.");
    std::putchar('\n');
    std::puts("Written by the Fobrob project.");
    std::exit(0);
}
