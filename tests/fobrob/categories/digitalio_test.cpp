#include "support/unit.h"

namespace
{

const char* const allLow = "Digital input 1: 0\n"
                           "Digital input 2: 0\n"
                           "Digital input 3: 0\n"
                           "Digital input 4: 0\n";

TEST(DigitalIo, PrintsEachBitOnItsOwnLine)
{
    for (unsigned bit = 0; bit < 4; ++bit)
    {
        SCOPED_TRACE(bit);
        Unit unit;
        unit.set("/digitalInputs/inputs", 1u << bit);
        std::string expected = allLow;
        expected[expected.find(std::to_string(bit + 1) + ": ") + 3] = '1';
        EXPECT_EQ(unit.run("--digitalio").output, expected);
    }
}

TEST(DigitalIo, IgnoresTheUpperBits)
{
    Unit upper(R"({"digitalInputs": {"inputs": 240}})");
    EXPECT_EQ(upper.run("--digitalio").output, allLow);
    Unit all(R"({"digitalInputs": {"inputs": 255}})");
    EXPECT_EQ(all.run("--digitalio").output, lines({"Digital input 1: 1", "Digital input 2: 1",
                                                    "Digital input 3: 1", "Digital input 4: 1"}));
}

TEST(DigitalIo, RejectsOtherArgumentsWithoutReading)
{
    for (const char* argument : {"DI5", "DI0", "DI", "DI11", "1", "di1 "})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::vector<std::string>{std::string("--digitalio=") + argument});
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, callsOn("DigIO"));
    }
}

TEST(DigitalIo, ReportsMissingInputs)
{
    Unit unit(R"({"digitalInputs": {"inputs": null}})");
    EXPECT_EQ(unit.run("--digitalio=DI1").output, "getDigIO: Not supported by this unit\n");
}

TEST(DigitalIo, WritesEachLineAfterItsCall)
{
    const Unit unit;
    EXPECT_EQ(writesOf(programOn(unit.file(), "--digitalio")),
              (std::vector<std::string>{"Digital input 1: 0\n", "Digital input 2: 0\n",
                                        "Digital input 3: 0\n", "Digital input 4: 0\n"}));
}

TEST(DigitalIo, ReadsTheInputsAgainForEachLine)
{
    Unit unit(R"({"digitalInputs": {"inputs": 15},
                  "faults": {"DigIO_getDigIO": {"ignored": true, "skip": 1, "times": 1}}})");
    EXPECT_EQ(unit.run("--digitalio").output, lines({"Digital input 1: 1", "Digital input 2: 0",
                                                     "Digital input 3: 1", "Digital input 4: 1"}));
}

} // namespace
