// Writes complete lines to standard output.
//
// A null text suppresses all further output: the earlier parts of its line are written, but the rest of the
// line, the newline and all later lines are not.

#pragma once

#include <concepts>

// Sets the buffer of standard output and ignores SIGPIPE. Must be called before anything is printed.
void prepareOutput();

// Used by printLine only.
void printPart(const char* text);
void printPart(double number); // with up to six significant digits
void printSigned(long long number);
void printUnsigned(unsigned long long number);
void endLine();

void printPart(bool) = delete;
void printPart(char) = delete; // char is signed on some processors, unsigned on others

// Prints integers of every width as numbers, including 8-bit integers.
template <std::signed_integral Integer>
void printPart(Integer number)
{
    printSigned(number);
}

template <std::unsigned_integral Integer>
void printPart(Integer number)
{
    printUnsigned(number);
}

// Writes the parts and a newline, then flushes standard output.
template <typename... Part>
void printLine(Part... parts)
{
    (printPart(parts), ...);
    endLine();
}
