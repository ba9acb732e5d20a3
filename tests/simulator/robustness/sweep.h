// Sweeps: tests that inject a failure at each of many points.

#pragma once

#include "simulator/robustness/scenario.h"

#include <map>
#include <string>
#include <vector>

// Returns whether FOBROB_SWEEP=full requests that every point is tested. Otherwise a small sample is.
bool isFullSweep();

// Returns the points to test, of those from 1 to `count`: all in a full sweep, otherwise at most `sample`,
// evenly distributed.
std::vector<unsigned long> pointsToTest(unsigned long count, unsigned long sample);

// Counts the points and the defects found. At its end, prints the counts and fails the test if there are
// defects.
class Sweep
{
public:
    Sweep() = default;
    ~Sweep();
    Sweep(const Sweep&) = delete;
    Sweep& operator=(const Sweep&) = delete;

    void add(const std::string& point, const Verdict& verdict);

    // Counts a point that has a property, to be printed too.
    void count(const std::string& property);

private:
    unsigned long points = 0;
    std::map<Defect, unsigned long> defects;
    std::map<std::string, unsigned long> properties;
    std::string explanations;
};
