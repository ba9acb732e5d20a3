// Standard output, one finished line at a time.
//
// A null text silences standard output for the rest of the run: what stood before it on its line is
// written, but neither that text, nor the newline, nor any later line.

#pragma once

#include <concepts>

// To be called before anything is printed.
void prepareOutput();

// The parts of a line, for printLine alone.
void printPart(const char* text);
void printPart(double number); // six significant digits
void printSigned(long long number);
void printUnsigned(unsigned long long number);
void endLine();

void printPart(bool) = delete;
void printPart(char) = delete; // signed on one processor, unsigned on the next

// Integers of every width print as numbers, an eight-bit one too.
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

// Writes the parts and a newline, and flushes.
template <typename... Part>
void printLine(Part... parts)
{
    (printPart(parts), ...);
    endLine();
}
