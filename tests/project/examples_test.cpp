// The sessions, scripts and unit files in the manual pages and documents.

#include "support/snippets.h"
#include "support/unit.h"

#include <gmock/gmock.h>
#include <regex>

namespace
{

using testing::HasSubstr;

const char* const firmware = ":0100000001FE\n:00000001FF\n";

// Returns the display blocks of a manual page, without escapes.
std::vector<std::string> displays(const std::string& page)
{
    const std::string text = readFile(PROJECT_DIRECTORY "/man/" + page);
    std::vector<std::string> shown;
    for (std::string display : matches(R"(\n\.Bd -literal[^\n]*\n([^]*?)\.Ed\n)", text))
    {
        display = std::regex_replace(display, std::regex(R"(\\-)"), "-");
        shown.push_back(std::regex_replace(display, std::regex(R"(\\e)"), "\\"));
    }
    return shown;
}

// Returns the display block that contains `part`.
std::string shown(const std::string& page, const std::string& part)
{
    for (const std::string& display : displays(page))
        if (display.find(part) != display.npos)
            return display;
    ADD_FAILURE() << page << " does not show " << part;
    return "";
}

// Runs a script in the directory of the unit.
Outcome runScript(const Unit& unit, const std::string& script)
{
    return runOn(unit, {"sh", "-c", "cd '" + unit.directory.path + "'\n" + script});
}

struct Step
{
    std::string command;
    std::string output;
};

std::vector<Step> stepsOf(const std::string& session)
{
    const std::string prompt = "$ ";
    std::vector<Step> steps;
    for (const std::string& line : splitLines(session))
        if (line.starts_with(prompt))
            steps.push_back({line.substr(prompt.size()), ""});
        else if (!steps.empty())
            steps.back().output += line + "\n";
    return steps;
}

// If a session prints a file that does not exist, the file is created.
void expectSession(const Unit& unit, const std::string& session)
{
    const std::string show = "cat ";
    for (const auto& [command, output] : stepsOf(session))
    {
        const std::string file =
            command.starts_with(show) ? unit.directory / command.substr(show.size()) : "";
        if (!file.empty() && !fileExists(file))
            writeFile(file, output);
        else
            EXPECT_EQ(runScript(unit, command + " 2>&1").output, output) << command;
    }
}

TEST(ManualExamples, ShowTheOutputOfTheirSessions)
{
    int sessions = 0;
    for (const char* page : {"fobrob.1", "fobrob-sim.1"})
        for (const std::string& display : displays(page))
            if (display.starts_with("$ "))
            {
                expectSession(Unit(), display);
                ++sessions;
            }
    EXPECT_EQ(sessions, 4);
}

TEST(DocumentExamples, ShowTheOutputOfTheirSessions)
{
    int sessions = 0;
    for (const char* document : {"README.md", "docs/internals.md", "docs/scripting.md", "docs/simulator.md"})
    {
        SCOPED_TRACE(document);
        const Unit unit;
        for (const std::string& snippet : snippets(std::string(PROJECT_DIRECTORY "/") + document))
            if (snippet.starts_with("$ "))
            {
                expectSession(unit, replaced(snippet, "./try", "fobrob-sim"));
                ++sessions;
            }
    }
    EXPECT_EQ(sessions, 15);
}

TEST(ManualExamples, SwitchTheFanOnAtStartUpAndLeaveCanOff)
{
    const Unit unit(R"({"config": {"startupPower": {"can": false, "externalFan": false}}})");
    EXPECT_EQ(runScript(unit, shown("fobrob.1", "--extfan")).errors, "");
    EXPECT_EQ(unit["/config/startupPower/externalFan"], true);
    EXPECT_EQ(unit["/config/startupPower/can"], false);
}

TEST(ManualExamples, SaveTheEepromOfTheAddOnBoard)
{
    const Unit unit(R"({"eeprom": {"addOn": {"text": "board 7", "hex": "0001", "fill": 255}}})");
    runScript(unit, shown("fobrob.1", "--eeprom"));
    EXPECT_EQ(readFile(unit.directory / "addon.eeprom"), std::string("board 7\0\1", 9));
}

TEST(ManualExamples, ProvisionAUnit)
{
    const Unit unit;
    const Outcome outcome = runScript(unit, shown("fobrob.1", "step()"));
    EXPECT_EQ(exitStatus(outcome), 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(unit["/buzzer/volume"], 40);
    EXPECT_EQ(unit["/config/shortPressAction"], "shutdown");
    EXPECT_EQ(unit["/config/powerOnStartup"], true);
    EXPECT_EQ(unit["/backlight/intensity"], 180);
}

TEST(ManualExamples, StopProvisioningAtTheStepThatFails)
{
    Unit unit;
    unit.fails("Config_setPowerOnStartup", 77);
    const Outcome outcome = runScript(unit, shown("fobrob.1", "step()"));
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_EQ(outcome.errors,
              "fobrob --onoff --shortpress=SHUTDOWN --always_on=Enabled: Short press set to: SHUTDOWN\n"
              "setPowerOnStartup: Error 77\n");
    EXPECT_EQ(unit["/backlight/intensity"], nullptr);
}

TEST(ManualExamples, UpgradeTheSystemSupervisor)
{
    const Unit unit(R"({"firmware": {"pace": 0}})");
    const std::string file = unit.directory / "ss.hex";
    const std::string script =
        std::regex_replace(shown("fobrob.1", "--update=SS"), std::regex("/root/ss\\.hex"), file);
    EXPECT_THAT(script, HasSubstr(file));
    EXPECT_EQ(exitStatus(runScript(unit, script)), 1);

    writeFile(file, firmware);
    const Outcome outcome = runScript(unit, script);
    EXPECT_EQ(exitStatus(outcome), 0);
    EXPECT_THAT(outcome.output, testing::EndsWith("\nSS successfully upgraded. \n"));
    EXPECT_THAT(readFile(unit.directory / "upgrade.log"), HasSubstr("SS successfully upgraded."));
}

TEST(ManualExamples, ListTheFailures)
{
    const struct
    {
        const char* keys;
        const char* line;
        const char* failures;
    } cases[] = {
        {"{}", "--led", ""},
        {R"({"faults": {"Buzzer_getVolume": {"code": 77}}})", "--buzzer", "getVolume: Error 77\n"},
        {R"({"faults": {"Backlight_stopAutomaticBL": {"code": 77}}})",
         "--backlight --automatic=Disabled --intensity", "stoptAutomaticBL: Error 77\n"},
        {R"({"faults": {"Telematics_getWLANStartUpPowerStatus": {"code": 77}}})", "--telematics",
         "getWLANStartI[PowerStatus: Error 77\n"},
        {R"({"frontLed": {"startup": 7}})", "--led",
         "Invalid status returned from getEnabledDuringStartup.\n"},
        {"{}", "--onoff --shortpress=STOP --longpress",
         "Invalid argument: The action argument is not valid.\n"},
        {"{}", "--touch --setting=TS", "Invalid setting: TS\n"},
        {"{}", "--can --mode", "Invalid option: Only --baudrate and --help are valid options.\n"},
        {"{}", "--digitalio --mode", "Error: Digital IO should not take any more options\n"},
        {"{}", "--mode", "To get help how to use Fobrob, add --help or -h as options.\n"},
    };
    const std::string filter = " | " + shown("fobrob.1", "grep -E");
    for (const auto& [keys, line, failures] : cases)
    {
        const Outcome outcome = runScript(Unit(keys), std::string("fobrob ") + line + filter);
        EXPECT_EQ(outcome.output, failures) << line;
    }
}

TEST(ManualExamples, InjectFaults)
{
    Unit unit(shown("fobrob-sim.1", "DigIO_getDigIO"));
    const std::string failure = "getDigIO: The unit did not carry out the request\n";
    EXPECT_EQ(unit.run("--digitalio").output, "Digital input 1: 0\nDigital input 2: 0\n" + failure + failure);
    EXPECT_EQ(unit.run("--onoff --always_on").output,
              "getPowerOnStartup: The unit did not carry out the request\n");
    EXPECT_EQ(unit.run("--onoff --always_on").output, "PowerOnStartup: Disabled\n");
    EXPECT_EQ(unit.run("--led --frequency").output, "LED Frequency: 0\n");
    EXPECT_EQ(unit.run("--advanced --factory").output, "Initialization error. Settings are not reset.\n");
}

TEST(ManualExamples, SetErrorTexts)
{
    Unit unit(shown("fobrob-sim.1", "errorTexts"));
    unit.fails("Buzzer_getFrequency", 77);
    unit.fails("Buzzer_getVolume", 1);
    EXPECT_EQ(unit.run("--buzzer").output, "getFrequency: The fuse has blown\ngetVolume: ");
}

TEST(ManualExamples, MakeAFirmwareJobFail)
{
    Unit unit(shown("fobrob-sim.1", "statuses"));
    const std::string file = unit.directory / "ss.hex";
    writeFile(file, firmware);
    EXPECT_THAT(unit.run("--advanced --update=SS --force --filepath=" + file).output,
                testing::EndsWith("\nFlashing\nDone - ERROR\nUpdate progress\n"
                                  "Upgrade failed in state: Complete with error.\n"
                                  "Error: The unit did not carry out the request\n"));
}

} // namespace
