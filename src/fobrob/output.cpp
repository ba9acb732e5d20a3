#include "fobrob/output.h"

#include <charconv>
#include <csignal>
#include <cstdio>

namespace
{

bool outputSuppressed = false;

void writeText(const char* text)
{
    if (!outputSuppressed)
        fputs_unlocked(text, stdout);
}

template <typename Integer>
void writeInteger(Integer number)
{
    char digits[24] = {};
    std::to_chars(digits, digits + sizeof digits - 1, number);
    writeText(digits);
}

} // namespace

void prepareOutput()
{
    // With this buffer, the C library neither allocates one nor calls fstat. The longest text fits into it.
    static char buffer[16384];
    std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    // If the reader of standard output exits, a firmware job or the remaining settings must not be aborted.
    std::signal(SIGPIPE, SIG_IGN);
}

void printPart(const char* text)
{
    if (!text)
    {
        std::fflush(stdout);
        outputSuppressed = true;
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
    if (outputSuppressed)
        return;
    putchar_unlocked('\n');
    fflush_unlocked(stdout);
}
