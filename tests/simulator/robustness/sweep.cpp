#include "simulator/robustness/sweep.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>

namespace
{

struct DefectName
{
    Defect defect;
    const char* name;
};

// check adds up these numbers of all sweeps.
constexpr DefectName defectNames[] = {{Defect::falseSuccess, "false successes"},
                                      {Defect::hang, "hangs"},
                                      {Defect::loss, "losses"},
                                      {Defect::leftover, "leftovers"},
                                      {Defect::other, "other defects"}};

} // namespace

bool isFullSweep()
{
    const char* const sweep = std::getenv("FOBROB_SWEEP");
    return sweep && std::string(sweep) == "full";
}

std::vector<unsigned long> pointsToTest(unsigned long count, unsigned long sample)
{
    std::vector<unsigned long> points;
    const unsigned long tested = isFullSweep() ? count : std::min(count, sample);
    for (unsigned long i = 0; i < tested; ++i)
        points.push_back(1 + i * count / tested);
    return points;
}

void Sweep::add(const std::string& point, const Verdict& verdict)
{
    ++points;
    if (verdict.defect == Defect::none)
        return;
    ++defects[verdict.defect];
    explanations += point + ": " + verdict.explanation + "\n";
}

void Sweep::count(const std::string& property)
{
    ++properties[property];
}

Sweep::~Sweep()
{
    std::cout << points << " points";
    for (const auto& [defect, name] : defectNames)
        std::cout << ", " << defects[defect] << " " << name;
    std::string separator = " (";
    for (const auto& [property, number] : properties)
    {
        std::cout << separator << number << " " << property;
        separator = ", ";
    }
    std::cout << (properties.empty() ? "\n" : ")\n");
    EXPECT_EQ(explanations, "");
    EXPECT_GT(points, 0u);
}
