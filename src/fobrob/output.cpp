#include "fobrob/output.h"

#include <charconv>
#include <csignal>
#include <cstdio>

static bool silenced = false;

// A buffer of our own saves the C library from asking for memory and for the kind of file that standard
// output is. It holds the longest text.
void prepareOutput()
{
    static char buffer[16384];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    // A reader that goes away ends neither firmware work nor the settings that are still to be made.
    std::signal(SIGPIPE, SIG_IGN);
}

static void writeText(const char* text)
{
    if (!silenced)
        fputs_unlocked(text, stdout);
}

template <typename Integer>
static void writeInteger(Integer number)
{
    char digits[24] = {};
    std::to_chars(digits, digits + sizeof digits - 1, number);
    writeText(digits);
}

void printPart(const char* text)
{
    if (!text)
    {
        std::fflush(stdout);
        silenced = true;
    }
    else
        writeText(text);
}

void printPart(double number)
{
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", number);
    writeText(digits);
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
    if (silenced)
        return;
    putchar_unlocked('\n');
    fflush_unlocked(stdout);
}
