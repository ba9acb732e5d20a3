// Every command line that reads all a category has, with each of its device calls failing in turn.

#include "support/unit.h"

#include <algorithm>
#include <functional>

namespace
{

// One device call of such a reading, and what stands in the output for it.
struct Step
{
    std::string operation;       // none for lines that no call is needed for
    std::string report;          // what the line of its failure begins with; none where nothing is said
    std::size_t lines = 1;       // that it prints when it succeeds
    std::string saidAnyway = {}; // what follows the report all the same
};

struct Category
{
    const char* name;
    const char* commandLine;
    std::vector<Step> steps;
};

std::ostream& operator<<(std::ostream& stream, const Category& category)
{
    return stream << category.commandLine;
}

const Category categories[] = {
    {"Buzzer",
     "--buzzer",
     {{"Buzzer_getFrequency", "getFrequency"},
      {"Buzzer_getVolume", "getVolume"},
      {"Buzzer_getTrigger", "getTrigger"}}},
    {"Backlight",
     "--backlight",
     {{"Backlight_getIntensity", "getIntensity"},
      {"Backlight_getAutomaticBLStatus", "getAutomaticBLStatus"},
      {"Backlight_getLedDimming", "getLedDimming"}}},
    {"Led",
     "--led",
     {{"FrontLED_getSignal", "getSignal"},
      {"FrontLED_getSignal", "getSignal"},
      {"FrontLED_getStandardColor", "getColor"},
      {"FrontLED_getNrOfPulses", "getNrOfPulses"},
      {"FrontLED_getIdleTime", "getIdleTime"},
      {"FrontLED_getEnabledDuringStartup", "getEnabledDuringStartup", 1, "LED startup: Disabled.\n"}}},
    {"Can",
     "--can",
     {{"About_getNrOfCANConnections", "", 0},
      {"CanSetting_getBaudrate", "getBaudrate"},
      {"CanSetting_getBaudrate", "getBaudrate"},
      {"CanSetting_getBaudrate", "getBaudrate"},
      {"CanSetting_getBaudrate", "getBaudrate"}}},
    {"Heater", "--heater --temperature", {{"Config_getHeatingTempLimit", "getHeatingTempLimit"}}},
    {"CurrentPower",
     "--power=current",
     {{"Power_getVideoPowerStatus", "getVideoPowerStatus"},
      {"Power_getVideoPowerStatus", "getVideoPowerStatus"},
      {"Power_getVideoPowerStatus", "getVideoPowerStatus"},
      {"Power_getVideoPowerStatus", "getVideoPowerStatus"},
      {"Power_getCanPowerStatus", "getCanPowerStatus"},
      {"Power_getExtFanPowerStatus", "getExtFanPowerStatus", 1,
       "Current - External fan power status: Enabled.\n"}}},
    {"StartupPower",
     "--power=startup",
     {{"Config_getVideoStartupPowerConfig", "getVideoPowerStatus"},
      {"Config_getVideoStartupPowerConfig", "getVideoPowerStatus"},
      {"Config_getVideoStartupPowerConfig", "getVideoPowerStatus"},
      {"Config_getVideoStartupPowerConfig", "getVideoPowerStatus"},
      {"Config_getCanStartupPowerConfig", "getCanPowerStatus"},
      {"Config_getExtFanStartupPowerConfig", "getExtFanPowerStatus", 1,
       "Start-up - External fan power status: Enabled.\n"}}},
    {"OnOff",
     "--onoff",
     {{"Config_getShortButtonPressAction", "getShortPressAction"},
      {"Config_getLongButtonPressAction", "getLongPressAction"},
      {"Config_getFrontBtnTrigTime", "getLongPressTime"},
      {"Config_getOnOffSigAction", "getOnOffSignalAction"},
      {"Config_getExtOnOffSigTrigTime", "getOnOffSignalTime"},
      {"Config_getPowerOnStartup", "getPowerOnStartup"},
      {"Config_getStartupTriggerConfig", "getUnitStartupConfig"},
      {"Config_getSuspendMaxTime", "getSuspendMax"}}},
    {"Touch",
     "--touch",
     {{"TouchScreen_getMode", "TouchScreen Profile"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"},
      {"TouchScreen_getAdvancedSetting", "getAdvancedSetting"}}},
    {"Telematics",
     "--telematics",
     {{"Telematics_getWLANPowerStatus", "getWLANPowerStatus"},
      {"Telematics_getWLANStartUpPowerStatus", "getWLANStartI[PowerStatus"},
      {"Telematics_getGPRSPowerStatus", "getGPRSPowerStatus"},
      {"Telematics_getGPRSStartUpPowerStatus", "getGPRSStartUpPowerStatus"},
      {"Telematics_getGPSPowerStatus", "getGPSPowerStatus"},
      {"Telematics_getGPSStartUpPowerStatus", "getGPSStartUpPowerStatus"},
      {"Telematics_getBTPowerStatus", "getBTPowerStatus"},
      {"Telematics_getBTStartUpPowerStatus", "getBTStartUpPowerStatus"}}},
    {"Lightsensor", "--lightsensor", {{"Lightsensor_getIlluminance", "getIlluminance"}}},
    {"Version",
     "--version",
     {{"", ""}, // the program's own
      {"AuxVersion_getFPGAVersion", "getFPGAVersion"},
      {"AuxVersion_getFrontVersion", "getFrontVersion"},
      {"AuxVersion_getSSVersion", "getSSVersion"},
      {"AuxVersion_getQVAuxVersion", "getQVAuxVersion"},
      {"AuxVersion_getQVAuxDrvVersion", "getQVAuxDrvVersion"},
      {"AuxVersion_getOSVersion", "getOSVersion"}}},
    {"Temperature",
     "--temperature",
     {{"Diagnostic_getSSTemp", "getSSTemp"},
      {"Diagnostic_getPCBTemp", "getPCBTemp"},
      {"Diagnostic_getPMTemp", "getPMTemp"},
      {"Diagnostic_getPMTemp", "getPMTemp"}}},
    {"DigitalIo",
     "--digitalio",
     {{"DigIO_getDigIO", "getDigIO"},
      {"DigIO_getDigIO", "getDigIO"},
      {"DigIO_getDigIO", "getDigIO"},
      {"DigIO_getDigIO", "getDigIO"}}},
    {"AboutEeprom",
     "--about=EEPROM",
     {{"About_getUnitSerial", "getUnitSerial"},
      {"About_getMainPCBSerial", "getMainPCBSerial"},
      {"About_getMainPCBArt", "getMainPCBArt"},
      {"About_getMainManufacturingDate", "getMainManufacturingDate"},
      {"About_getMainHWversion", "getMainHWversion"},
      {"About_getMainProdRev", "getMainProdRev"},
      {"About_getMainProdArtNr", "getMainProdArtNr"},
      {"About_getNrOfCANConnections", "getNrOfCANConnections"},
      {"About_getNrOfETHConnections", "getNrOfETHConnections"},
      {"About_getNrOfSerialConnections", "getNrOfSerialConnections"},
      {"About_getNrOfUSBConnections", "getNrOfUSBConnections"},
      {"About_getNrOfVideoConnections", "getNrOfVideoConnections"},
      {"About_getNrOfDigIOConnections", "getNrOfDigIOConnections"},
      {"About_getIsDisplayAvailable", "getIsDisplayAvailable"},
      {"About_getIsTouchScreenAvailable", "getIsTouchScreenAvailable"},
      {"About_getNrOfCfgInConnections", "getNrOfCfgInConnections"},
      {"About_getNrOfPWMOutConnections", "getNrOfPWMOutInConnections"},
      {"About_getNrOfButtons", "getNrOfButtons"},
      {"", "", 2}, // the heading of the add-on board
      {"About_getAddOnPCBSerial", "getAddOnPCBSerial"},
      {"About_getAddOnPCBArt", "getAddOnPCBArt"},
      {"About_getAddOnManufacturingDate", "getAddOnManufacturingDate"},
      {"About_getAddOnHWversion", "getAddOnHWversion"},
      {"About_getIsBTMounted", "getIsBTMounted"},
      {"About_getIsGPRSMounted", "getIsGPRSMounted"},
      {"About_getIsGPSMounted", "getIsGPSMounted"},
      {"About_getIsWLANMounted", "getIsWLANMounted"}}},
    {"AboutDiagnostic",
     "--about=Diagnostic",
     {{"Diagnostic_getStartupReason", "getStartupReason"},
      {"Diagnostic_getShutDownReason", "getShutdownReason"},
      {"Diagnostic_getHwErrorStatus", "getHwErrorStatus"},
      {"Diagnostic_getTimer", "getTimer", 7},
      {"Diagnostic_getMinMaxTemp", "getMinMaxTemp"},
      {"Diagnostic_getPowerCycles", "getPowerCycles"},
      {"Diagnostic_getSSTemp", "getSSTemp"},
      {"Diagnostic_getPCBTemp", "getPCBTemp"},
      {"Diagnostic_getPMTemp", "getPMTemp"},
      {"Diagnostic_getPMTemp", "getPMTemp"}}},
    {"AboutAdc",
     "--about=ADC",
     {{"Adc_getVoltage", "VOLTAGE_24VIN"},      {"Adc_getVoltage", "VOLTAGE_24V"},
      {"Adc_getVoltage", "VOLTAGE_12V"},        {"Adc_getVoltage", "VOLTAGE_12VID"},
      {"Adc_getVoltage", "VOLTAGE_5V"},         {"Adc_getVoltage", "VOLTAGE_3V3"},
      {"Adc_getVoltage", "VOLTAGE_VTFT"},       {"Adc_getVoltage", "VOLTAGE_5VSTB"},
      {"Adc_getVoltage", "VOLTAGE_1V9"},        {"Adc_getVoltage", "VOLTAGE_1V8"},
      {"Adc_getVoltage", "VOLTAGE_1V5"},        {"Adc_getVoltage", "VOLTAGE_1V2"},
      {"Adc_getVoltage", "VOLTAGE_1V05"},       {"Adc_getVoltage", "VOLTAGE_1V0"},
      {"Adc_getVoltage", "VOLTAGE_0V9"},        {"Adc_getVoltage", "VOLTAGE_VREF_INT"},
      {"Adc_getVoltage", "VOLTAGE_24V_BACKUP"}, {"Adc_getVoltage", "VOLTAGE_2V5"},
      {"Adc_getVoltage", "VOLTAGE_1V1"},        {"Adc_getVoltage", "VOLTAGE_1V3_PER"},
      {"Adc_getVoltage", "VOLTAGE_1V3_VDDA"},   {"Adc_getVoltage", "VOLTAGE_3V3STBY"},
      {"Adc_getVoltage", "VOLTAGE_VPMIC"},      {"Adc_getVoltage", "VOLTAGE_VMAIN"}}},
};

// Its values differ where a mix-up would not show otherwise.
const char* const keys = R"({
    "digitalInputs": {"inputs": 10},
    "power": {"video": 5, "can": true, "externalFan": false},
    "config": {"startupPower": {"video": 10, "can": true, "externalFan": false}},
    "can": {"baudrates": [125, 250, 500, 1000]}
})";

Result runHealthy(const Category& category)
{
    Unit unit(keys);
    return unit.run(category.commandLine);
}

// How many calls of the same operation come before the step.
unsigned earlierCalls(const Category& category, std::size_t index)
{
    unsigned count = 0;
    for (std::size_t i = 0; i < index; ++i)
        count += category.steps[i].operation == category.steps[index].operation;
    return count;
}

// The call of the step alone fails, with a code whose text is `text`.
Result runFailing(const Category& category, std::size_t index, const nlohmann::json& text)
{
    Unit unit(keys);
    unit.set("/errorTexts", {{"77", text}});
    unit.failsOnce(category.steps[index].operation, 77, earlierCalls(category, index));
    return unit.run(category.commandLine);
}

// The calls like "Buzzer_getVolume = 0", without those that only ask for a text.
Calls outlineOf(const Result& run)
{
    Calls outline;
    for (const std::string& call : run.calls)
        if (const std::string name = call.substr(0, call.find('(')); !name.ends_with("StringA"))
            outline.push_back(name + call.substr(call.rfind(" = ")));
    return outline;
}

Calls outlineWithFailure(const Result& healthy, const Category& category, std::size_t index)
{
    Calls outline = outlineOf(healthy);
    unsigned skip = earlierCalls(category, index);
    for (std::string& call : outline)
        if (call == category.steps[index].operation + " = 0" && skip-- == 0)
            call = category.steps[index].operation + " = 77";
    return outline;
}

// The operations of a run in their order, without the taking and giving back of handles.
Calls operationsOf(const Result& run)
{
    Calls operations;
    for (const std::string& call : run.calls)
    {
        const std::string name = call.substr(0, call.find('('));
        if (name.find('_') != std::string::npos && !name.ends_with("_release"))
            operations.push_back(name);
    }
    return operations;
}

Calls operationsOf(const Category& category)
{
    Calls operations;
    for (const Step& step : category.steps)
        if (!step.operation.empty())
            operations.push_back(step.operation);
    return operations;
}

// Takes `count` lines off the front of `text`, which has as many.
std::string takeLines(std::string& text, std::size_t count)
{
    std::size_t end = 0;
    for (; count > 0; --count)
        end = text.find('\n', end) + 1;
    std::string taken = text.substr(0, end);
    text.erase(0, end);
    return taken;
}

// An output split around what the step prints.
struct Split
{
    std::string before;
    std::string own;
    std::string behind;
};

Split splitAt(const Category& category, std::size_t index, std::string output)
{
    Split split;
    for (std::size_t i = 0; i < index; ++i)
        split.before += takeLines(output, category.steps[i].lines);
    split.own = takeLines(output, category.steps[index].lines);
    split.behind = output;
    return split;
}

class Sweep : public testing::TestWithParam<Category>
{
protected:
    // Calls `check` for every step that a device call stands behind.
    static void forEachCall(const std::function<void(std::size_t)>& check)
    {
        const std::vector<Step>& steps = GetParam().steps;
        for (std::size_t index = 0; index < steps.size(); ++index)
        {
            SCOPED_TRACE("step " + std::to_string(index) + ": " + steps[index].operation);
            if (!steps[index].operation.empty())
                check(index);
        }
    }
};

TEST_P(Sweep, KnowsEveryCallAndEveryLine)
{
    const Result healthy = runHealthy(GetParam());
    EXPECT_EQ(operationsOf(healthy), operationsOf(GetParam()));
    std::size_t lines = 0;
    for (const Step& step : GetParam().steps)
        lines += step.lines;
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(healthy.output, '\n')), lines);
}

TEST_P(Sweep, ReplacesNothingButTheLinesOfTheCallThatFails)
{
    const Result healthy = runHealthy(GetParam());
    forEachCall(
        [&](std::size_t index)
        {
            const Step& step = GetParam().steps[index];
            const Split split = splitAt(GetParam(), index, healthy.output);
            const std::string said = step.report.empty() ? split.own : step.report + ": Error 77\n";
            const Result failing = runFailing(GetParam(), index, "Error 77");
            EXPECT_EQ(failing.output, split.before + said + step.saidAnyway + split.behind);
            EXPECT_EQ(outlineOf(failing), outlineWithFailure(healthy, GetParam(), index));
        });
}

TEST_P(Sweep, FallsSilentAtTheCallWhoseErrorHasNoText)
{
    const Result healthy = runHealthy(GetParam());
    forEachCall(
        [&](std::size_t index)
        {
            const Step& step = GetParam().steps[index];
            const Split split = splitAt(GetParam(), index, healthy.output);
            const Result failing = runFailing(GetParam(), index, nullptr);
            EXPECT_EQ(failing.output,
                      step.report.empty() ? healthy.output : split.before + step.report + ": ");
            EXPECT_EQ(outlineOf(failing), outlineWithFailure(healthy, GetParam(), index));
        });
}

INSTANTIATE_TEST_SUITE_P(AllCategories, Sweep, testing::ValuesIn(categories),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
