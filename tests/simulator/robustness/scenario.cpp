#include "simulator/robustness/scenario.h"

#include "support/hex_file.h"
#include "support/text.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using nlohmann::json;

namespace
{

constexpr unsigned timeLimit = 20;        // seconds for a run
constexpr int mostStatusCalls = 40;       // for a job, which needs 7
constexpr std::uint16_t untouched = 4711; // a result that was not written
constexpr std::uint16_t changedVolume = 40;
constexpr std::uint16_t volumeAfterwards = 77;

char firmwarePath[4096];

// Two blocks of data, with so many records that lists must grow several times.
std::string firmwareText()
{
    return hexData(randomBytes(200), 0x10000) + hexData(randomBytes(150, 2), 0x20000) + hexEnd;
}

void readVolume(Results& results)
{
    const BuzzerHandle buzzer = GetBuzzer();
    results.code = Buzzer_getVolume(buzzer, &results.volume);
    GetErrorStringA(results.code);
    Buzzer_release(buzzer);
}

void changeVolume(Results& results)
{
    const BuzzerHandle buzzer = GetBuzzer();
    results.code = Buzzer_setVolume(buzzer, changedVolume);
    GetErrorStringA(results.code);
    Buzzer_release(buzzer);
}

bool hasEnded(const UpgradeStatus& status)
{
    return status.error != QV_SUCCESS || status.state >= QV_UPGRADE_DONE;
}

bool isUpgraded(const Results& results)
{
    return results.code == QV_SUCCESS && results.status.state == QV_UPGRADE_DONE &&
           results.status.error == QV_SUCCESS;
}

void upgrade(Results& results)
{
    const FirmwareUpgradeHandle handle = GetFirmwareUpgrade();
    results.code = FirmwareUpgrade_startSSUpgrade(handle, firmwarePath, 0);
    for (int i = 0; i < mostStatusCalls && results.code == QV_SUCCESS && !hasEnded(results.status); ++i)
        FirmwareUpgrade_getUpgradeStatus(handle, &results.status, 1);
    GetErrorStringA(results.status.error);
    FirmwareUpgrade_release(handle);
}

bool isUpgrade(const Scenario& scenario)
{
    return scenario.run == upgrade;
}

std::optional<std::string> contentOf(const std::string& file)
{
    return fileExists(file) ? std::optional(readFile(file)) : std::nullopt;
}

bool hasIncompleteFirmware(const std::optional<std::string>& unit)
{
    return unit && json::parse(*unit).value("/firmware/ss/incomplete"_json_pointer, false);
}

// The results of a scenario in which nothing fails.
struct Expected
{
    std::string file;
    std::uint16_t volume;
};

std::map<std::string, Expected> expectedResults; // by the name of the scenario

std::string stateOf(const std::string& directory)
{
    return directory + "/state/qv-aux2";
}

std::string unitIn(const std::string& directory)
{
    return stateOf(directory) + "/unit.json";
}

// Returns the name of a file that a unit must not leave in its directory; "" if there is none.
std::string leftoverIn(const std::string& directory)
{
    static const std::set<std::string> expected = {"unit.json", "unit.json.lock", "unit.json.job"};
    if (!std::filesystem::exists(directory))
        return "";
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        if (!expected.contains(entry.path().filename()))
            return entry.path().filename();
    return "";
}

std::string describe(const Results& results)
{
    return " (code " + std::to_string(results.code) + ", volume " + std::to_string(results.volume) +
           ", state " + std::to_string(results.status.state) + ", error " +
           std::to_string(results.status.error) + ")";
}

} // namespace

const std::vector<Scenario>& scenarios()
{
    static const std::vector<Scenario> all = {
        {"Reading", R"({"buzzer": {"volume": 5}})", readVolume},
        {"Change", R"({"buzzer": {"volume": 5}})", changeVolume},
        {"ChangeThroughALink", R"({"buzzer": {"volume": 5}})", changeVolume, true},
        {"Creation", std::nullopt, readVolume},
        {"Upgrade", R"({"firmware": {"pace": 0}})", upgrade},
    };
    return all;
}

ScenarioRun::ScenarioRun(const Scenario& executed)
    : scenario(executed), directory(TemporaryDirectory::inMemory()),
      shared(static_cast<Results*>(
          mmap(nullptr, sizeof(Results), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
{
    if (shared == MAP_FAILED)
        throw std::runtime_error("no shared memory");
    *shared = {};
    shared->volume = untouched;
    writeFile(directory / "firmware.hex", firmwareText());
    if (scenario.isLinked)
    {
        std::filesystem::create_directory(directory / "target");
        std::filesystem::create_directory_symlink("target", directory / "state");
    }
    if (scenario.before)
    {
        std::filesystem::create_directories(stateOf(directory.path));
        writeFile(unitIn(directory.path), *scenario.before);
    }
    if (!expectedResults.contains(scenario.name))
    {
        expectedResults[scenario.name] = {};
        runUndisturbed();
    }
}

ScenarioRun::~ScenarioRun()
{
    munmap(shared, sizeof(Results));
}

void ScenarioRun::runUndisturbed() const
{
    ScenarioRun undisturbed(scenario);
    const int status = undisturbed.executeInChild();
    if (status != 0 || !undisturbed.succeeded())
        throw std::runtime_error("the undisturbed scenario fails");
    expectedResults[scenario.name] = {readFile(undisturbed.directory / "reported.json"),
                                      undisturbed.results().volume};
    if (const Verdict verdict = undisturbed.judge(status); verdict.defect != Defect::none)
        throw std::runtime_error("the undisturbed scenario: " + verdict.explanation);
}

int ScenarioRun::executeInChild(const std::function<void()>& enable, const std::function<void()>& disable)
{
    const pid_t child = fork();
    if (child == 0)
    {
        execute(enable, disable);
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

void ScenarioRun::execute(const std::function<void()>& enable, const std::function<void()>& disable) noexcept
{
    alarm(timeLimit);
    recordCrash(shared->crash);
    unsetenv("QVAUX_UNIT");
    setenv("XDG_STATE_HOME", (directory / "state").c_str(), 1);
    setenv("QVAUX_TRACE", (directory / "trace").c_str(), 1);
    const std::string firmware = directory / "firmware.hex";
    firmwarePath[firmware.copy(firmwarePath, sizeof firmwarePath - 1)] = '\0';
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);

    if (enable)
        enable();
    shared->enabled = true;
    try
    {
        scenario.run(*shared);
    }
    catch (...)
    {
        shared->threw = true;
    }
    shared->enabled = false;
    if (disable)
        disable();
    shared->returned = true;

    saveFiles();
    writeFile(directory / "recovery", testRecovery());
    shared->recovered = true;
}

void ScenarioRun::saveFiles() const
{
    if (const auto content = contentOf(unitIn(directory.path)))
        writeFile(directory / "reported.json", *content);
    writeFile(directory / "reported.trace", readFile(directory / "trace"));
    writeFile(directory / "leftover", leftoverIn(stateOf(directory.path)));
}

bool ScenarioRun::succeeded() const
{
    return isUpgrade(scenario) ? isUpgraded(*shared) : shared->code == QV_SUCCESS;
}

// Now that nothing fails any more, the same process must be able to change the unit and to upgrade its
// firmware. Returns what is wrong.
std::string ScenarioRun::testRecovery() const
{
    Results results{};
    try
    {
        const BuzzerHandle buzzer = GetBuzzer();
        if (const ApiError code = Buzzer_setVolume(buzzer, volumeAfterwards); code != QV_SUCCESS)
            return "afterwards, a change returns " + std::to_string(code);
        const json file = json::parse(readFile(unitIn(directory.path)));
        if (file.at("buzzer").at("volume") != volumeAfterwards)
            return "afterwards, a change is not made";
        if (isUpgrade(scenario))
            upgrade(results);
    }
    catch (const std::exception& error)
    {
        return std::string("afterwards: ") + error.what();
    }
    if (isUpgrade(scenario) && !isUpgraded(results))
        return "afterwards, an upgrade fails" + describe(results);
    const std::string leftover = leftoverIn(stateOf(directory.path));
    return leftover.empty() ? "" : "afterwards, there is the file " + leftover;
}

Verdict ScenarioRun::judge(int status, bool replacedFile) const
{
    if (!shared->recovered)
        return judgeInterruption(status);
    Verdict recovery;
    if (const std::string problem = readFile(directory / "recovery"); !problem.empty())
        recovery = {Defect::other, problem};
    for (Verdict& verdict : std::array{judgeResults(), judgeFile(replacedFile), judgeTrace(), recovery})
        if (verdict.defect != Defect::none)
            return {verdict.defect, verdict.explanation + describe(*shared)};
    return {};
}

bool ScenarioRun::wasAbortedByJsonLibrary() const
{
    // destroy() calls only functions of the JSON library and of the standard library.
    return std::ranges::any_of(functionsOf(shared->crash), [](const std::string& function)
                               { return function.find("json_value::destroy") != std::string::npos; });
}

Verdict ScenarioRun::judgeInterruption(int status) const
{
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return {Defect::hang, "does not end"};
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGABRT || !wasAbortedByJsonLibrary())
    {
        std::string stack;
        for (const std::string& function : functionsOf(shared->crash))
            stack += " < " + function;
        return {Defect::other,
                (shared->returned ? "afterwards, ends with wait status " : "ends with wait status ") +
                    std::to_string(status) + stack};
    }
    const std::optional<std::string> content = contentOf(unitIn(directory.path));
    if (content == scenario.before || content == expectedResults.at(scenario.name).file ||
        (isUpgrade(scenario) && hasIncompleteFirmware(content)))
        return {};
    return {Defect::loss, "is aborted with the file " + content.value_or("missing")};
}

Verdict ScenarioRun::judgeResults() const
{
    if (shared->threw)
        return {Defect::other, "an exception reaches the caller"};
    if (isUpgrade(scenario))
    {
        if (shared->code == QV_SUCCESS && !hasEnded(shared->status))
            return {Defect::hang, "the job does not end"};
        return {};
    }
    const std::uint16_t volume = succeeded() ? expectedResults.at(scenario.name).volume : untouched;
    if (shared->volume == volume)
        return {};
    return {succeeded() ? Defect::falseSuccess : Defect::other, "wrong result"};
}

Verdict ScenarioRun::judgeFile(bool replacedFile) const
{
    if (const std::string name = readFile(directory / "leftover"); !name.empty())
        return {Defect::leftover, "leaves the file " + name};
    const std::string& after = expectedResults.at(scenario.name).file;
    const std::optional<std::string> content = contentOf(directory / "reported.json");
    if (content == after)
    {
        // A unit may have been created before the reading failed. An upgrade fails if its last step fails.
        const bool mayBeNew = succeeded() || replacedFile || isUpgrade(scenario) || !scenario.before ||
                              scenario.before == after;
        return mayBeNew ? Verdict{} : Verdict{Defect::loss, "a change is made, but reported as failed"};
    }
    if (succeeded())
        return {Defect::falseSuccess, "success is reported, but the file is " + content.value_or("missing")};
    if (content == scenario.before || (isUpgrade(scenario) && hasIncompleteFirmware(content)))
        return {};
    return {Defect::loss, "the file is neither the old one nor the new one: " + content.value_or("missing")};
}

Verdict ScenarioRun::judgeTrace() const
{
    static const std::regex call(R"([A-Za-z_]+\(.*\) = (\d+|handle|null|".*"))");
    const std::string text = readFile(directory / "reported.trace");
    if (!text.empty() && text.back() != '\n')
        return {Defect::other, "the trace ends with an incomplete line"};
    for (const std::string& line : splitLines(text))
    {
        if (!std::regex_match(line, call))
            return {Defect::other, "the trace has the line " + line};
        if (line.starts_with("Buzzer_setVolume") && !line.ends_with(" = " + std::to_string(shared->code)))
            return {Defect::other, "the trace has another result: " + line};
    }
    return {};
}
