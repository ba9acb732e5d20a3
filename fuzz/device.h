// A device library whose every answer is scripted, and which watches what the program asks of it.
//
// The script is a run of bytes. Each answer takes what it needs from it; behind its end every byte is 0,
// which makes a call succeed with the value 0.

#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct GivenHandle
{
    const char* module;
    bool null;
    bool released;
};

// What one run of the program did with the device.
struct Device
{
    std::span<const std::uint8_t> script;
    std::vector<const char*> values; // what the options of the command line are given
    std::vector<GivenHandle> handles{};
    bool changed = false;         // something was set, started or shut down
    bool gaveNullText = false;    // standard output is silent from there on
    bool readRawEeprom = false;   // successfully, so that its bytes may be the output's end
    bool firmwareAllowed = false; // the user is root and was asked or did not want to be
};

extern Device device;

// The script's next byte.
std::uint8_t scripted();

// Called before the program gets an answer, of the device or of anyone: holds it to what it printed until
// then.
void checkPrinted();
