#include "support/unit.h"

namespace
{

const char* const help = "Category - Temperature\n"
                         "This category is used to get current temperature from the temperature sensors on \n"
                         "the board. It is possible to read temperature from four sensors: System \n"
                         "supervisor, PCB, Board and CPU.\n"
                         "\n"
                         "Usage\n"
                         "It is not possible to combine several arguments to get more information with one \n"
                         "call. If no argument is passed to category, temperature from all four sensors \n"
                         "will be printed. See the table below for available arguments.\n"
                         "\n"
                         "CATEGORY\tARG\t\tNOTE\n"
                         "--temperature\t\t\tDisplay all temperatures.\n"
                         "--temperature=\tSS\t\tSystem Supervisor temperature.\n"
                         "--temperature=\tPCB\t\tPCB temperature.\n"
                         "--temperature=\tBoard\t\tBoard temperature.\n"
                         "--temperature=\tCPU\t\tCPU temperature.\n";

const char* const refusal = "Error: Version should not take any more options\n";

const char* const all = "SS temp=31\n"
                        "PCB temp=34\n"
                        "CPU temp=48\n"
                        "CPU BOARD temp=39\n";

// The sensors in the order of their reading. `earlierCalls` are those of the same operation for other
// sensors.
const struct
{
    const char* argument;
    const char* otherCase;
    const char* line;
    const char* key;
    const char* operation;
    const char* call;
    const char* label;
    unsigned earlierCalls;
} sensors[] = {
    {"SS", "ss", "SS temp=31\n", "ssTemperature", "Diagnostic_getSSTemp", "Diagnostic_getSSTemp([31]) = 0",
     "getSSTemp: ", 0},
    {"PCB", "pCb", "PCB temp=34\n", "pcbTemperature", "Diagnostic_getPCBTemp",
     "Diagnostic_getPCBTemp([34]) = 0", "getPCBTemp: ", 0},
    {"CPU", "cpu", "CPU temp=48\n", "cpuTemperature", "Diagnostic_getPMTemp",
     "Diagnostic_getPMTemp(0, [48], [0]) = 0", "getPMTemp: ", 0},
    {"BOARD", "Board", "CPU BOARD temp=39\n", "boardTemperature", "Diagnostic_getPMTemp",
     "Diagnostic_getPMTemp(1, [39], [0]) = 0", "getPMTemp: ", 1},
};

// The output for all sensors with `other` in the place of one line.
std::string allBut(const std::string& line, const std::string& other)
{
    std::string text = all;
    return text.replace(text.find(line), line.size(), other);
}

TEST(Temperature, ReadsEverySensorInItsOrder)
{
    Unit unit;
    const Result result = unit.run("--temperature");
    EXPECT_EQ(result.output, all);
    Calls expected{"GetDiagnostic() = handle"};
    for (const auto& sensor : sensors)
        expected.push_back(sensor.call);
    expected.push_back("Diagnostic_release() = 0");
    EXPECT_EQ(result.calls, expected);
}

TEST(Temperature, ReadsOneSensorWhateverTheCaseOfItsName)
{
    for (const auto& sensor : sensors)
        for (const char* argument : {sensor.argument, sensor.otherCase})
        {
            SCOPED_TRACE(argument);
            Unit unit;
            const Result result = unit.run(std::string("--temperature=") + argument);
            EXPECT_EQ(result.output, sensor.line);
            EXPECT_EQ(result.calls,
                      (Calls{"GetDiagnostic() = handle", sensor.call, "Diagnostic_release() = 0"}));
        }
}

TEST(Temperature, TakesTheNameOfTheBoardInLowerCase)
{
    Unit unit;
    EXPECT_EQ(unit.run("--temperature=board").output, "CPU BOARD temp=39\n");
}

TEST(Temperature, TakesNoValueForAllSensors)
{
    Unit unit;
    EXPECT_EQ(unit.run("--temperature=").output, all);
    EXPECT_EQ(unit.run("--temperature=noArgument").output, all);
    EXPECT_EQ(unit.run("--temperature=noargument").output, all);
    EXPECT_EQ(unit.run("--temperature SS").output, all);
}

TEST(Temperature, TakesNoHeedOfTheSensorsStatus)
{
    Unit unit(R"({"diagnostic": {"sensorStatus": 7}})");
    EXPECT_EQ(unit.run("--temperature").output, all);
    EXPECT_EQ(unit.run("--temperature=CPU").output, "CPU temp=48\n");
    EXPECT_EQ(unit.run("--temperature=BOARD").output, "CPU BOARD temp=39\n");
    EXPECT_NE(unit.run("--about=Diagnostic").output.find("\nCPU temp=48\nCPU BOARD temp=39\n"),
              std::string::npos);
}

TEST(Temperature, PrintsSignedValuesOfSixteenBits)
{
    Unit unit(R"({"diagnostic": {"ssTemperature": -5, "pcbTemperature": -32768,
                                 "cpuTemperature": 32767, "boardTemperature": 0}})");
    EXPECT_EQ(unit.run("--temperature").output,
              lines({"SS temp=-5", "PCB temp=-32768", "CPU temp=32767", "CPU BOARD temp=0"}));
}

TEST(Temperature, RefusesAnotherSensorWithoutReading)
{
    for (const char* argument : {"GPU", "CPUBOARD", "S", "SSS", "0"})
    {
        SCOPED_TRACE(argument);
        Unit unit;
        const Result result = unit.run(std::string("--temperature=") + argument);
        EXPECT_EQ(result.output, "Invalid argument: Could not find the specified argument.\n");
        EXPECT_EQ(result.calls, (Calls{"GetDiagnostic() = handle", "Diagnostic_release() = 0"}));
    }
}

TEST(Temperature, RefusesEachFurtherOptionAndReadsAllTheSame)
{
    Unit unit;
    EXPECT_EQ(unit.run("--temperature --volume").output, std::string(refusal) + all);
    EXPECT_EQ(unit.run("--temperature -v --frequency=3 -h").output,
              std::string(refusal) + refusal + refusal + all);
    EXPECT_EQ(unit.run("--temperature=PCB --temperature=SS").output, std::string(refusal) + "PCB temp=34\n");
    EXPECT_EQ(unit.run("--temperature=GPU --volume").output,
              std::string(refusal) + "Invalid argument: Could not find the specified argument.\n");
}

TEST(Temperature, RefusesAnUnknownOptionAfterItsDiagnostic)
{
    Unit unit;
    const Result result = unit.runComplaining("--temperature=SS --bogus");
    EXPECT_EQ(result.output, std::string(refusal) + "SS temp=31\n");
    EXPECT_NE(result.errors.find("unrecognized option '--bogus'"), std::string::npos);
}

TEST(Temperature, ShowsItsHelpAndReleasesNothing)
{
    Unit unit;
    for (const char* arguments :
         {"--temperature --help", "--temperature=SS --help", "--temperature=GPU --help"})
    {
        SCOPED_TRACE(arguments);
        const Result result = unit.run(arguments);
        EXPECT_EQ(result.output, help);
        EXPECT_EQ(result.calls, (Calls{"GetDiagnostic() = handle"}));
    }
}

TEST(Temperature, ShowsItsHelpAfterRefusedOptions)
{
    Unit unit;
    EXPECT_EQ(unit.run("--temperature --volume --help --frequency").output, std::string(refusal) + help);
}

TEST(Temperature, ReportsAFailedSensorAndReadsTheOthers)
{
    for (const auto& sensor : sensors)
    {
        SCOPED_TRACE(sensor.argument);
        Unit unit;
        unit.failsOnce(sensor.operation, 77, sensor.earlierCalls);
        const Result result = unit.run("--temperature");
        EXPECT_EQ(result.output, allBut(sensor.line, std::string(sensor.label) + "Error 77\n"));
        EXPECT_EQ(result.calls.back(), "Diagnostic_release() = 0");
    }
}

TEST(Temperature, ReportsAFailureOfTheOneSensorAlone)
{
    for (const auto& sensor : sensors)
    {
        SCOPED_TRACE(sensor.argument);
        Unit unit;
        unit.fails(sensor.operation, 77);
        EXPECT_EQ(unit.run(std::string("--temperature=") + sensor.argument).output,
                  std::string(sensor.label) + "Error 77\n");
    }
}

TEST(Temperature, ReportsTheSensorThatTheUnitLacks)
{
    for (const auto& sensor : sensors)
    {
        SCOPED_TRACE(sensor.argument);
        Unit unit;
        unit.set(std::string("/diagnostic/") + sensor.key, nullptr);
        EXPECT_EQ(unit.run("--temperature").output,
                  allBut(sensor.line, std::string(sensor.label) + "Not supported by this unit\n"));
    }
}

TEST(Temperature, FallsSilentWhereTheErrorHasNoText)
{
    for (const auto& sensor : sensors)
    {
        SCOPED_TRACE(sensor.argument);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.failsOnce(sensor.operation, 77, sensor.earlierCalls);
        const Result result = unit.run("--temperature");
        const std::string everything = all;
        EXPECT_EQ(result.output, everything.substr(0, everything.find(sensor.line)) + sensor.label);
        EXPECT_EQ(result.calls.size(), 7u);
        EXPECT_EQ(result.calls.back(), "Diagnostic_release() = 0");
    }
}

TEST(Temperature, PrintsZeroWhereNothingWasWritten)
{
    for (const auto& sensor : sensors)
    {
        SCOPED_TRACE(sensor.argument);
        Unit unit;
        unit.ignores(sensor.operation);
        const std::string line = sensor.line;
        EXPECT_EQ(unit.run(std::string("--temperature=") + sensor.argument).output,
                  line.substr(0, line.find('=')) + "=0\n");
    }
}

TEST(Temperature, UsesAHandleThatIsNull)
{
    Unit unit;
    unit.givesNull("GetDiagnostic");
    const Result result = unit.run("--temperature=SS");
    EXPECT_EQ(result.output, "getSSTemp: The module handle is not valid\n");
    EXPECT_EQ(result.calls.back(), "Diagnostic_release() = 3");
}

TEST(Temperature, WritesEachLineAsSoonAsItIsKnown)
{
    const Unit unit;
    EXPECT_EQ(
        writesOf(programOn(unit.file(), "--temperature")),
        (std::vector<std::string>{"SS temp=31\n", "PCB temp=34\n", "CPU temp=48\n", "CPU BOARD temp=39\n"}));
}

} // namespace
