#include "fobrob/command_lines.h"

#include "fobrob/settings.h"
#include "support/category_calls.h"

#include <algorithm>

namespace
{

// Code 2, "not supported by this unit", and code 18, "the board is not fitted".
constexpr unsigned notSupportedCode = 2;
constexpr unsigned notFittedCode = 18;

// Returns the trace line of a call that writes no results: "Buzzer_getFrequency([])".
std::string withoutResults(std::string call)
{
    for (std::size_t begin = 0; (begin = call.find('[', begin)) != call.npos; ++begin)
        call.erase(begin + 1, call.find(']', begin) - begin - 1);
    return call;
}

// Returns the text that replaces the report of a failure with this code, if any.
const std::optional<std::string>& insteadOfReport(const Step& step, unsigned code)
{
    static const std::optional<std::string> none;
    return code == notSupportedCode ? step.notSupported : code == notFittedCode ? step.notFitted : none;
}

std::string quoted(const std::optional<std::string>& text)
{
    return text ? "\"" + *text + "\"" : "null";
}

// The settings of a category as command lines.

CommandLine readingOne(const SettingsCategory& category, const Setting& setting)
{
    return {category.category + " " + setting.option, category.keys, {setting.read}};
}

CommandLine changingOne(const SettingsCategory& category, const Setting& setting)
{
    return {category.category + " " + setting.option + "=" + setting.value, category.keys, setting.change};
}

CommandLine readingAll(const SettingsCategory& category)
{
    CommandLine line = {category.category, category.keys, {}};
    for (const Setting& setting : category.settings)
        line.steps.push_back(setting.read);
    return line;
}

// The options are in reverse of the order in which they are processed.
CommandLine changingAll(const SettingsCategory& category)
{
    std::string options;
    std::vector<Step> steps;
    for (const Setting& setting : category.settings)
    {
        options = " " + setting.option + "=" + setting.value + options;
        steps.insert(steps.end(), setting.change.begin(), setting.change.end());
    }
    return {category.category + options, category.keys, steps};
}

CommandLine changingTheLed(const SettingsCategory& led)
{
    CommandLine line = changingAll(led);
    line.steps[2].call = "FrontLED_getSignal([10], [35])";
    line.steps[3].call = "FrontLED_setSignal(10, 80)";
    line.hasRelatedChanges = true;
    return line;
}

// Each channel is changed in the mask that the previous change has set.
CommandLine changingThePower(const SettingsCategory& power)
{
    CommandLine line = changingAll(power);
    const std::string masks[] = {"10", "11", "9", "13", "5"};
    for (std::size_t channel = 0; channel < 4; ++channel)
    {
        line.steps[2 * channel].call = line.steps[0].operation() + "([" + masks[channel] + "])";
        line.steps[2 * channel + 1].call = line.steps[1].operation() + "(" + masks[channel + 1] + ")";
    }
    line.hasRelatedChanges = true;
    return line;
}

// Intentional: the fan is changed to the value of --can.
CommandLine changingTheStartupPower(const SettingsCategory& power)
{
    SettingsCategory changed = power;
    changed.settings.back().value = "Disable";
    changed.settings.back().change = {{"Config_setExtFanStartupPowerConfig(1)",
                                       "Start-up - External fan power status set to Enable.\n",
                                       "setExtFanPowerStatus"}};
    return changingThePower(changed);
}

// One command line that reads all settings and one that changes them. --heater requires its option.
std::vector<CommandLine> linesOfAll(const SettingsCategory& category)
{
    if (category.name == "Heater")
        return {readingOne(category, category.settings[0]), changingAll(category)};
    if (category.name == "Led")
        return {readingAll(category), changingTheLed(category)};
    if (category.name == "CurrentPower")
        return {readingAll(category), changingThePower(category)};
    if (category.name == "StartupPower")
        return {readingAll(category), changingTheStartupPower(category)};
    return {readingAll(category), changingAll(category)};
}

std::vector<CommandLine> linesOfEach(const SettingsCategory& category)
{
    std::vector<CommandLine> lines;
    for (const Setting& setting : category.settings)
    {
        lines.push_back(readingOne(category, setting));
        if (!setting.value.empty())
            lines.push_back(changingOne(category, setting));
    }
    return lines;
}

// Changes to the states that the rows of the settings do not cover.
const CommandLine otherChanges[] = {
    {"--backlight --automatic=Disabled --led_dimming=Enabled",
     "{}",
     {{"Backlight_stopAutomaticBL()", "Automatic BL stopped.\n", "stoptAutomaticBL"},
      {"Backlight_setLedDimming(1)", "LedDimming enabled.\n", "setLedDimming"}}},
    {"--buzzer --status=Enable",
     "{}",
     {{"Buzzer_setTrigger(1)", "Buzzer status set to enable.\n", "setTrigger"}}},
    {"--led --startup=Enable",
     "{}",
     {{"FrontLED_setEnabledDuringStartup(1)", "LED startup set to Enable.\n", "setEnabledDuringStartup"}}},
};

CommandLines linesOf(const SettingsCategory& category)
{
    CommandLines lines = {category.name, linesOfAll(category), linesOfEach(category)};
    if (category.name == "Heater")
        lines.parts.clear();
    for (const CommandLine& line : otherChanges)
        if (line.arguments.starts_with(category.category + " "))
            lines.parts.push_back(line);
    return lines;
}

// The other categories.

// A field of an --about report that is left out if the unit does not support it. If the board is not fitted,
// `notFitted` is printed, or the failure is reported like any other.
Step optionalField(const std::string& call, const std::string& output, const std::string& report,
                   const std::string& unwritten, const std::optional<std::string>& notFitted = std::nullopt)
{
    return {.call = call,
            .output = output,
            .report = report,
            .unwritten = unwritten,
            .notSupported = "",
            .notFitted = notFitted};
}

// Text that needs no call.
Step text(const std::string& output)
{
    return {"", output, ""};
}

Step pwmOutputs()
{
    Step step = optionalField("About_getNrOfPWMOutConnections([2])", "Nr of PWM outputs=2\n",
                              "getNrOfPWMOutInConnections", "Nr of PWM outputs=6\n");
    step.notFittedReport = "getNrOfPWMOutConnections";
    return step;
}

// If the unit writes no count, the count of the previous field is printed. The fields before the digital
// inputs and outputs print 255 instead.
const CommandLine eepromReport = {
    "--about=EEPROM",
    "{}",
    {
        {"About_getUnitSerial([\"QX2500417\"], 256)", "Unit serial=QX2500417\n", "getUnitSerial",
         "Unit serial=\n"},
        {"About_getMainPCBSerial([\"P0148832\"], 256)", "Main PCB serial=P0148832\n", "getMainPCBSerial",
         "Main PCB serial=\n"},
        {"About_getMainPCBArt([\"20-10452-03\"], 256)", "Main PCB article number=20-10452-03\n",
         "getMainPCBArt", "Main PCB article number=\n"},
        {"About_getMainManufacturingDate([\"2025-03-18\"], 256)", "Main manufacturing date=2025-03-18\n",
         "getMainManufacturingDate", "Main manufacturing date=\n"},
        {"About_getMainHWversion([\"C2\"], 256)", "Main HW version=C2\n", "getMainHWversion",
         "Main HW version=\n"},
        {"About_getMainProdRev([\"R4\"], 256)", "Main prod rev=R4\n", "getMainProdRev", "Main prod rev=\n"},
        {"About_getMainProdArtNr([\"90-20017-11\"], 256)", "Main prod art nr=90-20017-11\n",
         "getMainProdArtNr", "Main prod art nr=\n"},
        {"About_getNrOfCANConnections([4])", "Number of CAN connections=4\n", "getNrOfCANConnections",
         "Number of CAN connections=255\n"},
        {"About_getNrOfETHConnections([2])", "Number of ethernet connections=2\n", "getNrOfETHConnections",
         "Number of ethernet connections=255\n"},
        {"About_getNrOfSerialConnections([3])", "Number of serial connections=3\n",
         "getNrOfSerialConnections", "Number of serial connections=255\n"},
        {"About_getNrOfUSBConnections([4])", "Number of USB connections=4\n", "getNrOfUSBConnections",
         "Number of USB connections=255\n"},
        {"About_getNrOfVideoConnections([4])", "Number of video connections=4\n", "getNrOfVideoConnections",
         "Number of video connections=255\n"},
        optionalField("About_getNrOfDigIOConnections([4])", "Nr of digital I/O connections=4\n",
                      "getNrOfDigIOConnections", "Nr of digital I/O connections=4\n"),
        {"About_getIsDisplayAvailable([1])", "Display available: YES\n", "getIsDisplayAvailable",
         "Display available: NO\n"},
        {"About_getIsTouchScreenAvailable([1])", "TouchScreen available: YES\n", "getIsTouchScreenAvailable",
         "TouchScreen available: NO\n"},
        optionalField("About_getNrOfCfgInConnections([6])", "Nr of Configurable inputs=6\n",
                      "getNrOfCfgInConnections", "Nr of Configurable inputs=4\n"),
        pwmOutputs(),
        optionalField("About_getNrOfButtons([8])", "Nr of configurable buttons=8\n", "getNrOfButtons",
                      "Nr of configurable buttons=0\n"),
        text("\nAddon/Telematics board:\n"),
        optionalField("About_getAddOnPCBSerial([\"T0031290\"], 256)", "Addon PCB serial=T0031290\n",
                      "getAddOnPCBSerial", "Addon PCB serial=\n", "Addon PCB serial=N/A\n"),
        optionalField("About_getAddOnPCBArt([\"20-10611-01\"], 256)",
                      "Addon board article number=20-10611-01\n", "getAddOnPCBArt",
                      "Addon board article number=\n", "Addon board article number=N/A\n"),
        optionalField("About_getAddOnManufacturingDate([\"2025-02-04\"], 256)",
                      "Addon manufacturing date=2025-02-04\n", "getAddOnManufacturingDate",
                      "Addon manufacturing date=\n", "Addon manufacturing date=N/A\n"),
        optionalField("About_getAddOnHWversion([\"B1\"], 256)", "Addon HW version=B1\n", "getAddOnHWversion",
                      "Addon HW version=\n", "Addon HW version=N/A\n"),
        optionalField("About_getIsBTMounted([1])", "BT is mounted\n", "getIsBTMounted", "BT is not mounted\n",
                      "BT is mounted: N/A\n"),
        optionalField("About_getIsGPRSMounted([1])", "GPRS is mounted\n", "getIsGPRSMounted",
                      "GPRS is not mounted\n", "GPRS is mounted: N/A\n"),
        optionalField("About_getIsGPSMounted([1])", "GPS is mounted\n", "getIsGPSMounted",
                      "GPS is not mounted\n", "GPS is mounted: N/A\n"),
        optionalField("About_getIsWLANMounted([1])", "WLAN is mounted\n", "getIsWLANMounted",
                      "WLAN is not mounted\n", "WLAN is mounted: N/A\n"),
    },
};

const CommandLine rawEepromReport = {
    "--about=RawEEPROM",
    "{}",
    {{"QVAuxPrivate_getEepromData(0, [...], 4095)",
      "SN=QX2500417;PCB=P0148832;ART=90-20017-11;DATE=2025-03-18;HW=C2;REV=R4\n", "getEepromData",
      std::string(4096, '\0')}},
};

Step startupReason()
{
    return {.call = "Diagnostic_getStartupReason([85])",
            .output = "StartupReason=Front button OK\n",
            .report = "getStartupReason",
            .unwritten = "StartupReason=Power was applied OK\n",
            .followedBy = "GetStartupReasonStringA(85) = \"Front button\""};
}

Step hardwareStatus()
{
    Step step = optionalField("Diagnostic_getHwErrorStatus([0])", "Hw error status=No error OK\n",
                              "getHwErrorStatus", "Hw error status=No error OK\n");
    step.followedBy = "GetHwErrorStatusStringA(0) = \"No error\"";
    return step;
}

// If the unit writes no temperature, that of the previous sensor is printed.
const CommandLine diagnosticReport = {
    "--about=Diagnostic",
    "{}",
    {
        startupReason(),
        optionalField("Diagnostic_getShutDownReason([31])", "ShutdownReason=No error OK\n",
                      "getShutdownReason", "ShutdownReason=Serious error ERROR\n"),
        hardwareStatus(),
        optionalField("Diagnostic_getTimer([184213, 20144, 312, 96520, 4211, 87, 0])",
                      "Run-time above 80C=0 min(s)\n"
                      "Run-time between 40C-60C=96520 min(s)\n"
                      "Run-time between 60C-70C=4211 min(s)\n"
                      "Run-time between 70C-80C=87 min(s)\n"
                      "Total heat time=312 min(s)\n"
                      "Total run-time=184213 min(s)\n"
                      "Total suspend time=20144 min(s)\n",
                      "getTimer",
                      "Run-time above 80C=0 min(s)\n"
                      "Run-time between 40C-60C=0 min(s)\n"
                      "Run-time between 60C-70C=0 min(s)\n"
                      "Run-time between 70C-80C=0 min(s)\n"
                      "Total heat time=0 min(s)\n"
                      "Total run-time=0 min(s)\n"
                      "Total suspend time=0 min(s)\n"),
        optionalField("Diagnostic_getMinMaxTemp([-21], [76])", "Min temp=-21, max temp=76\n", "getMinMaxTemp",
                      "Min temp=0, max temp=0\n"),
        optionalField("Diagnostic_getPowerCycles([1342])", "Power cycles=1342\n", "getPowerCycles",
                      "Power cycles=0\n"),
        optionalField("Diagnostic_getSSTemp([31])", "SS temp=31\n", "getSSTemp", "SS temp=0\n"),
        optionalField("Diagnostic_getPCBTemp([34])", "PCB temp=34\n", "getPCBTemp", "PCB temp=31\n"),
        optionalField("Diagnostic_getPMTemp(0, [48], [0])", "CPU temp=48\n", "getPMTemp", "CPU temp=34\n"),
        optionalField("Diagnostic_getPMTemp(1, [39], [0])", "CPU BOARD temp=39\n", "getPMTemp",
                      "CPU BOARD temp=48\n"),
    },
};

std::vector<Step> voltages()
{
    const std::pair<const char*, const char*> channels[] = {
        {"24VIN", "24.12"},     {"24V", "23.98"},   {"12V", "12.04"},  {"12VID", "12.01"},
        {"5V", "5.02"},         {"3V3", "3.31"},    {"VTFT", "3.29"},  {"5VSTB", "5.04"},
        {"1V9", "1.91"},        {"1V8", "1.8"},     {"1V5", "1.5"},    {"1V2", "1.2"},
        {"1V05", "1.05"},       {"1V0", "1"},       {"0V9", "0.9"},    {"VREF_INT", "1.21"},
        {"24V_BACKUP", "23.7"}, {"2V5", "2.5"},     {"1V1", "1.102"},  {"1V3_PER", "1.3"},
        {"1V3_VDDA", "1.31"},   {"3V3STBY", "3.3"}, {"VPMIC", "4.21"}, {"VMAIN", "11.96"},
    };
    std::vector<Step> steps;
    for (const auto& [channel, volts] : channels)
    {
        const std::string name = std::string("VOLTAGE_") + channel;
        steps.push_back(optionalField("Adc_getVoltage(" + std::to_string(steps.size()) + ", [" + volts + "])",
                                      name + ": Voltage=" + volts + "\n", name, name + ": Voltage=0\n"));
    }
    return steps;
}

// All baud rates differ, to distinguish the channels.
const std::string canKeys = R"({"can": {"baudrates": [125, 250, 500, 1000]}})";

CommandLines canLines()
{
    CommandLine all = {"--can", canKeys, {}};
    const std::string baudrates[] = {"125", "250", "500", "1000"};
    for (int channel = 0; channel < 4; ++channel)
    {
        const std::string output = "CAN device " + std::to_string(channel) + " baud rate: ";
        all.steps.push_back(
            {"CanSetting_getBaudrate(" + std::to_string(channel + 1) + ", [" + baudrates[channel] + "])",
             output + baudrates[channel] + "\n", "getBaudrate", output + "0\n"});
    }
    const CommandLine change = {
        "--can=CAN1 --baudrate=800",
        canKeys,
        {{"CanSetting_setBaudrate(2, 800)", "CAN device 1 baud rate set to: 800\n", "setBaudrate"}}};
    return {"Can", {all}, {{"--can=CAN1", canKeys, {all.steps[1]}}, change}};
}

CommandLines digitalIoLines()
{
    const std::string keys = R"({"digitalInputs": {"inputs": 10}})";
    CommandLine all = {"--digitalio", keys, {}};
    std::vector<CommandLine> lines;
    for (int input = 1; input <= 4; ++input)
    {
        const std::string number = std::to_string(input);
        const std::string output = "Digital input " + number + ": ";
        all.steps.push_back(
            {"DigIO_getDigIO([10])", output + (input % 2 ? "0\n" : "1\n"), "getDigIO", output + "0\n"});
        lines.push_back({"--digitalio=DI" + number, keys, {all.steps.back()}});
    }
    return {"DigitalIo", {all}, lines};
}

const Step illuminance = {"Lightsensor_getIlluminance([320])", "Illuminance: 320\n", "getIlluminance",
                          "Illuminance: 0\n"};

CommandLines temperatureLines()
{
    const std::pair<const char*, Step> sensors[] = {
        {"SS", {"Diagnostic_getSSTemp([31])", "SS temp=31\n", "getSSTemp", "SS temp=0\n"}},
        {"PCB", {"Diagnostic_getPCBTemp([34])", "PCB temp=34\n", "getPCBTemp", "PCB temp=0\n"}},
        {"CPU", {"Diagnostic_getPMTemp(0, [48], [0])", "CPU temp=48\n", "getPMTemp", "CPU temp=0\n"}},
        {"BOARD",
         {"Diagnostic_getPMTemp(1, [39], [0])", "CPU BOARD temp=39\n", "getPMTemp", "CPU BOARD temp=0\n"}},
    };
    CommandLine all = {"--temperature", "{}", {}};
    std::vector<CommandLine> lines;
    for (const auto& [sensor, step] : sensors)
    {
        all.steps.push_back(step);
        lines.push_back({std::string("--temperature=") + sensor, "{}", {step}});
    }
    return {"Temperature", {all}, lines};
}

CommandLines touchLines()
{
    const std::pair<const char*, const char*> settings[] = {
        {"TS_RIGHT_CLICK_TIME", "1000"},
        {"TS_LOW_LEVEL", "48"},
        {"TS_UNTOUCHLEVEL", "32"},
        {"TS_DEBOUNCE_TIME", "20"},
        {"TS_DEBOUNCE_TIMEOUT_TIME", "60"},
        {"TS_DOUBLECLICK_MAX_CLICK_TIME", "250"},
        {"TS_DOUBLE_CLICK_TIME", "500"},
        {"TS_MAX_RIGHTCLICK_DISTANCE", "24"},
        {"TS_USE_DEJITTER", "1"},
        {"TS_CALIBTATION_WIDTH", "40"},
        {"TS_CALIBRATION_MEASUREMENTS", "8"},
    };
    CommandLine all = {"--touch",
                       "{}",
                       {{"TouchScreen_getMode([3])", "TouchScreen Profile: TOUCH\n", "TouchScreen Profile",
                         "TouchScreen Profile: MOUSE_NEXT_BOOT\n"}}};
    for (const auto& [setting, value] : settings)
        all.steps.push_back(
            {"TouchScreen_getAdvancedSetting(" + std::to_string(all.steps.size() - 1) + ", [" + value + "])",
             std::string(setting) + ": " + value + "\n", "getAdvancedSetting",
             std::string(setting) + ": 0\n"});
    const CommandLine change = {
        "--touch --mode=mouse --setting=TS_LOW_LEVEL --value=9",
        "{}",
        {{"TouchScreen_setMode(2)", "TouchScreen profile set to: MOUSE\n", "setMode"},
         {"TouchScreen_setAdvancedSetting(1, 9)", "TS_LOW_LEVEL set to: 9\n", "setAdvancedSetting"}}};
    return {"Touch",
            {all, change},
            {{"--touch --mode --setting=TS_LOW_LEVEL", "{}", {all.steps[0], all.steps[2]}}}};
}

CommandLines versionLines()
{
    const struct
    {
        std::string argument;
        std::string name; // in the operation and in the line
        std::string version;
        std::string numbers;
    } items[] = {
        {"FPGA", "FPGAVersion", "1.4.0.2", "[1], [4], [0], [2]"},
        {"FRONT", "FrontVersion", "1.2.0.0", "[1], [2], [0], [0]"},
        {"SS", "SSVersion", "2.7.1.0", "[2], [7], [1], [0]"},
        {"QVAuxAPI", "QVAuxVersion", "2.11.0.0", "[2], [11], [0], [0]"},
        {"QVAuxDrv", "QVAuxDrvVersion", "2.3.0.1", "[2], [3], [0], [1]"},
        {"OSVersion", "OSVersion", "3.1.4.0", "[3], [1], [4], [0]"},
    };
    CommandLine all = {"--version", "{}", {text("fobrob 2.9.0.0\n")}};
    std::vector<CommandLine> lines;
    for (const auto& [argument, name, version, numbers] : items)
    {
        const Step step = {"AuxVersion_get" + name + "(" + numbers + ")", name + ": " + version + "\n",
                           "get" + name, name + ": 0.0.0.0\n"};
        all.steps.push_back(step);
        lines.push_back({"--version=" + argument, "{}", {step}});
    }
    return {"Version", {all}, lines};
}

// Adds the trace lines of a step: the call and the calls that follow it.
void addCalls(Calls& calls, const Step& step, const Failure* failure)
{
    if (step.call.empty())
        return;
    if (!failure)
    {
        calls.push_back(step.call + " = 0");
        if (!step.followedBy.empty())
            calls.push_back(step.followedBy);
        return;
    }
    const std::string code = std::to_string(failure->code);
    calls.push_back(withoutResults(step.call) + " = " + code);
    if (!insteadOfReport(step, failure->code))
        calls.push_back("GetErrorStringA(" + code + ") = " + quoted(failure->text));
}

} // namespace

std::vector<CommandLines> everyCommandLine()
{
    const CommandLine voltageReport = {"--about=ADC", "{}", voltages()};
    std::vector<CommandLines> every = {
        {"About", {eepromReport, rawEepromReport, diagnosticReport, voltageReport}},
        canLines(),
        digitalIoLines(),
        {"Lightsensor",
         {{"--lightsensor", "{}", {illuminance}}},
         {{"--lightsensor --illuminance", "{}", {illuminance}}}},
        temperatureLines(),
        touchLines(),
        versionLines(),
    };
    for (const SettingsCategory& category : settingsCategories())
        every.push_back(linesOf(category));
    return every;
}

Expected expectedOf(const CommandLine& line, const Failures& failures)
{
    std::string output;
    Calls work;
    bool suppressed = false;
    const auto print = [&](const std::string& text) { output += suppressed ? "" : text; };

    for (std::size_t index = 0; index < line.steps.size(); ++index)
    {
        const Step& step = line.steps[index];
        const auto found = failures.find(index);
        const Failure* failure = found == failures.end() ? nullptr : &found->second;
        addCalls(work, step, failure);
        if (!failure)
        {
            print(step.output);
            continue;
        }
        index += step.skips;
        if (const std::optional<std::string>& instead = insteadOfReport(step, failure->code))
        {
            print(*instead);
            continue;
        }
        const std::string& report = failure->code == notFittedCode ? step.notFittedReport : step.report;
        print(report + ": " + (failure->text ? *failure->text + "\n" + step.afterReport : ""));
        suppressed |= !failure->text;
    }
    return {output, callsOf(line.arguments, work)};
}
