#include "support/unit.h"

namespace
{

const char* const help =
    "Category - Digital IO\n"
    "This category is used to get current values from the digital IO. The values are \n"
    "updated every 250 ms. \n"
    "\n"
    "Usage\n"
    "It is not possible to combine several arguments to get more information with one \n"
    "call. If no argument is passed to category, current status from all four channels \n"
    "will be printed. See the table below for available arguments.\n"
    "\n"
    "CATEGORY\tARG\t\tNOTE\n"
    "--digitalio\t\t\tGet current values from all digital inputs\n"
    "--digitalio=\tDI1\t\tGet current value for digital input 1.\n"
    "--digitalio=\tDI2\t\tGet current value for digital input 2.\n"
    "--digitalio=\tDI3\t\tGet current value for digital input 3.\n"
    "--digitalio=\tDI4\t\tGet current value for digital input 4.\n";

const char* const refusal = "Error: Digital IO should not take any more options\n";

const char* const allLow = "Digital input 1: 0\n"
                           "Digital input 2: 0\n"
                           "Digital input 3: 0\n"
                           "Digital input 4: 0\n";

TEST(DigitalIo, ReadsEveryInputAfresh)
{
    Unit unit(R"({"digitalInputs": {"inputs": 5}})");
    const Result result = unit.run("--digitalio");
    EXPECT_EQ(result.output, lines({"Digital input 1: 1", "Digital input 2: 0", "Digital input 3: 1",
                                    "Digital input 4: 0"}));
    EXPECT_EQ(result.calls,
              (Calls{"GetDigIO() = handle", "DigIO_getDigIO([5]) = 0", "DigIO_getDigIO([5]) = 0",
                     "DigIO_getDigIO([5]) = 0", "DigIO_getDigIO([5]) = 0", "DigIO_release() = 0"}));
}

TEST(DigitalIo, ShowsEachBitOnItsOwnLine)
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

TEST(DigitalIo, ReadsOneInputWhateverTheCaseOfItsName)
{
    const struct
    {
        const char* argument;
        const char* output;
    } cases[] = {
        {"DI1", "Digital input 1: 0\n"}, {"di1", "Digital input 1: 0\n"}, {"DI2", "Digital input 2: 1\n"},
        {"dI2", "Digital input 2: 1\n"}, {"DI3", "Digital input 3: 0\n"}, {"di3", "Digital input 3: 0\n"},
        {"DI4", "Digital input 4: 1\n"}, {"Di4", "Digital input 4: 1\n"},
    };
    for (const auto& [argument, output] : cases)
    {
        SCOPED_TRACE(argument);
        Unit unit(R"({"digitalInputs": {"inputs": 10}})");
        const Result result = unit.run(std::string("--digitalio=") + argument);
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.calls,
                  (Calls{"GetDigIO() = handle", "DigIO_getDigIO([10]) = 0", "DigIO_release() = 0"}));
    }
}

TEST(DigitalIo, TakesNoValueForAllInputs)
{
    Unit unit;
    EXPECT_EQ(unit.run("--digitalio=").output, allLow);
    EXPECT_EQ(unit.run("--digitalio=noArgument").output, allLow);
    EXPECT_EQ(unit.run("--digitalio=NOARGUMENT").output, allLow);
    EXPECT_EQ(unit.run("--digitalio DI1").output, allLow);
}

TEST(DigitalIo, RefusesAnotherInputWithoutReading)
{
    for (const char* argument : {"DI5", "DI0", "DI", "DI11", "1", "di1 "})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::vector<std::string>{std::string("--digitalio=") + argument});
        EXPECT_EQ(result.output, "Invalid argument\n");
        EXPECT_EQ(result.calls, (Calls{"GetDigIO() = handle", "DigIO_release() = 0"}));
    }
}

TEST(DigitalIo, RefusesEachFurtherOptionAndReadsAllTheSame)
{
    Unit unit;
    EXPECT_EQ(unit.run("--digitalio --volume").output, std::string(refusal) + allLow);
    EXPECT_EQ(unit.run("--digitalio --volume=3 -h -v").output,
              std::string(refusal) + refusal + refusal + allLow);
    EXPECT_EQ(unit.run("--digitalio=DI2 --digitalio=DI3").output,
              std::string(refusal) + "Digital input 2: 0\n");
    EXPECT_EQ(unit.run("--digitalio=DI5 --volume").output, std::string(refusal) + "Invalid argument\n");
}

TEST(DigitalIo, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--digitalio=DI1 --bogus");
    EXPECT_EQ(result.output, std::string(refusal) + "Digital input 1: 0\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
}

TEST(DigitalIo, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    for (const char* arguments : {"--digitalio --help", "--digitalio=DI1 --help", "--digitalio=DI5 --help"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetDigIO() = handle"}));
    }
}

TEST(DigitalIo, ShowsItsHelpAfterRefusedOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--digitalio --volume --help --frequency").output, std::string(refusal) + help);
}

TEST(DigitalIo, ReportsEveryFailedReadingAndReleases)
{
    Unit unit;
    unit.fails("DigIO_getDigIO", 77);
    const Result result = unit.run("--digitalio");
    EXPECT_EQ(result.output, lines({"getDigIO: Error 77", "getDigIO: Error 77", "getDigIO: Error 77",
                                    "getDigIO: Error 77"}));
    EXPECT_EQ(result.calls.size(), 10u);
    EXPECT_EQ(result.calls[1], "DigIO_getDigIO([]) = 77");
    EXPECT_EQ(result.calls[2], "GetErrorStringA(77) = \"Error 77\"");
    EXPECT_EQ(result.calls.back(), "DigIO_release() = 0");
}

TEST(DigitalIo, GoesOnBehindAFailedReading)
{
    Unit unit(R"({"digitalInputs": {"inputs": 15}})");
    unit.failsOnce("DigIO_getDigIO", 77, 1);
    EXPECT_EQ(unit.run("--digitalio").output, lines({"Digital input 1: 1", "getDigIO: Error 77",
                                                     "Digital input 3: 1", "Digital input 4: 1"}));
}

TEST(DigitalIo, ReportsAFailureOfTheOneInputAlone)
{
    Unit unit;
    unit.fails("DigIO_getDigIO", 77);
    EXPECT_EQ(unit.run("--digitalio=DI4").output, "getDigIO: Error 77\n");
}

TEST(DigitalIo, ReportsAUnitWithoutInputs)
{
    Unit unit(R"({"digitalInputs": {"inputs": null}})");
    EXPECT_EQ(unit.run("--digitalio=DI1").output, "getDigIO: Not supported by this unit\n");
}

TEST(DigitalIo, FallsSilentWhereTheErrorHasNoText)
{
    Unit unit(R"({"errorTexts": {"77": null}})");
    unit.failsOnce("DigIO_getDigIO", 77, 1);
    const Result result = unit.run("--digitalio");
    EXPECT_EQ(result.output, "Digital input 1: 0\ngetDigIO: ");
    EXPECT_EQ(result.calls.size(), 7u);
    EXPECT_EQ(result.calls.back(), "DigIO_release() = 0");
}

TEST(DigitalIo, PrintsZeroWhereNothingWasWritten)
{
    Unit unit(R"({"digitalInputs": {"inputs": 15}})");
    unit.ignores("DigIO_getDigIO");
    EXPECT_EQ(unit.run("--digitalio").output, allLow);
}

TEST(DigitalIo, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetDigIO");
    const Result result = unit.run("--digitalio=DI1");
    EXPECT_EQ(result.output, "getDigIO: The module handle is not valid\n");
    EXPECT_EQ(result.calls.back(), "DigIO_release() = 3");
}

TEST(DigitalIo, WritesEachLineAsSoonAsItIsKnown)
{
    const Unit unit;
    EXPECT_EQ(writesOf(programOn(unit.file(), "--digitalio")),
              (std::vector<std::string>{"Digital input 1: 0\n", "Digital input 2: 0\n",
                                        "Digital input 3: 0\n", "Digital input 4: 0\n"}));
}

TEST(DigitalIo, ShowsEveryInputAsItsOwnReadingFoundIt)
{
    Unit unit(R"({"digitalInputs": {"inputs": 15},
                  "faults": {"DigIO_getDigIO": {"ignored": true, "skip": 1, "times": 1}}})");
    EXPECT_EQ(unit.run("--digitalio").output, lines({"Digital input 1: 1", "Digital input 2: 0",
                                                     "Digital input 3: 1", "Digital input 4: 1"}));
}

} // namespace
