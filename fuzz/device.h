// A scripted device library. It takes its results from the input and checks how the program calls it.
//
// The script is a sequence of bytes. Each operation consumes as many bytes as it needs. After the end of the
// script every byte is 0, so that operations succeed and return 0.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

struct Handle
{
    const char* module;
    bool null;
    bool released;
};

// One run of the program, as the device library sees it.
struct Device
{
    std::span<const std::uint8_t> script;
    std::vector<const char*> optionValues; // the values of the options on the command line
    bool firmwareAllowed = false;          // the user is root, and confirmed or used --force

    std::vector<Handle> handles{}; // every handle that the program got, in order
    bool changed = false;          // a setting was written, a job was started, or the unit was shut down
    bool returnedNullText = false; // the program must suppress all further output
    bool readRawEeprom = false;    // the output may end with the EEPROM's bytes

    // The program's values after its last read: the results, or the initial values if nothing was written.
    std::uint8_t canChannels = 0;
    double ledFrequency = 0;
    std::uint8_t ledDutyCycle = 0;
    std::uint8_t videoMask = 0;
};

extern Device device;

std::uint8_t nextScriptByte();

// Checks the program's output so far. Called whenever the program calls the device, reads standard input or
// sleeps.
void checkOutputSoFar();
