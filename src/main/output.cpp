#include "main/output.h"

#include <charconv>
#include <cstdio>
#include <cstring>

static bool silenced = false;

// A buffer of our own saves the C library from asking for memory and for the kind of file that standard
// output is. It holds the longest text.
void prepareOutput()
{
    static char buffer[16384];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
}

static void writeBytes(const char* begin, const char* end)
{
    if (!silenced)
        fwrite_unlocked(begin, 1, static_cast<std::size_t>(end - begin), stdout);
}

template <typename Integer>
static void writeInteger(Integer number)
{
    char digits[24];
    writeBytes(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void printPart(const char* text)
{
    if (!text)
    {
        std::fflush(stdout);
        silenced = true;
    }
    else
        writeBytes(text, text + std::strlen(text));
}

void printPart(double number)
{
    char digits[32];
    writeBytes(digits, digits + std::snprintf(digits, sizeof digits, "%g", number));
}

void printSigned(long long number)
{
    writeInteger(number);
}

void printUnsigned(unsigned long long number)
{
    writeInteger(number);
}

void endLine()
{
    const char newline = '\n';
    writeBytes(&newline, &newline + 1);
    if (!silenced)
        fflush_unlocked(stdout);
}
