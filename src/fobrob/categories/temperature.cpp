#include "fobrob/api_error.h"
#include "fobrob/category.h"
#include "fobrob/handlers.h"
#include "fobrob/late_bound.h"
#include "fobrob/output.h"

#include <cstdint>

namespace
{

ApiError getCpuTemperature(DiagnosticHandle diagnostic, std::int16_t* temperature)
{
    std::int32_t status = 0;
    return Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU, temperature, &status);
}

ApiError getBoardTemperature(DiagnosticHandle diagnostic, std::int16_t* temperature)
{
    std::int32_t status = 0;
    return Diagnostic_getPMTemp(diagnostic, QV_PM_SENSOR_CPU_BOARD, temperature, &status);
}

struct TemperatureSensor
{
    const char* argument;
    const char* label;
    const char* operation;
    ApiError (*get)(DiagnosticHandle diagnostic, std::int16_t* temperature);
};

const TemperatureSensor sensors[] = {
    {"SS", "SS temp=", "getSSTemp", lateBound<Diagnostic_getSSTemp>},
    {"PCB", "PCB temp=", "getPCBTemp", lateBound<Diagnostic_getPCBTemp>},
    {"CPU", "CPU temp=", "getPMTemp", getCpuTemperature},
    {"BOARD", "CPU BOARD temp=", "getPMTemp", getBoardTemperature},
};

void printTemperatureHelp()
{
    printLine("Category - Temperature\n"
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
              "--temperature=\tCPU\t\tCPU temperature.");
}

void showTemperature(DiagnosticHandle diagnostic, const TemperatureSensor& sensor)
{
    std::int16_t temperature = 0;
    if (succeeded(sensor.operation, sensor.get(diagnostic, &temperature)))
        printLine(sensor.label, temperature);
}

} // namespace

int handleTemperature(const char* argument, int argc, char** argv, const char*, const option*, int longIndex)
{
    const DiagnosticHandle diagnostic = GetDiagnostic();
    // Intentional: the message names the version category. The output is fixed.
    const ParsedOptions parsed = parseOptions(argc, argv, longIndex, {}, RepeatWithoutValue::clearsValue,
                                              "Error: Version should not take any more options");
    if (parsed.help)
    {
        printTemperatureHelp();
        return 0;
    }

    if (!showSelected(diagnostic, argument, sensors, showTemperature))
        printLine("Invalid argument: Could not find the specified argument.");
    return static_cast<int>(Diagnostic_release(diagnostic));
}
