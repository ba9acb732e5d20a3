// What a process does with a unit while allocations or system calls fail, and how such a run is judged: its
// results must agree with the unit file and the firmware job.

#pragma once

#include "device/qv_aux2.h"
#include "support/crash.h"
#include "support/process.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>

// The results of a run. They are in memory that is shared with the process that makes the calls.
struct Results
{
    bool enabled;   // failures are injected while this is set
    bool returned;  // all calls have returned
    bool threw;     // an exception reached the caller
    bool recovered; // the calls without failures, after those of the scenario, have returned
    ApiError code;  // of the call that the scenario is about
    std::uint16_t volume;
    UpgradeStatus status;
    Crash crash;
};

struct Scenario
{
    const char* name;
    std::optional<std::string> before; // content of the unit file
    void (*run)(Results&);             // allocates no memory itself
    bool isLinked = false;             // a directory of the path is a symbolic link
};

// For the messages of gtest.
inline void PrintTo(const Scenario& scenario, std::ostream* stream)
{
    *stream << scenario.name;
}

// A reading, a change, the same through a symbolic link, the creation of a unit and its directories, and a
// firmware upgrade.
const std::vector<Scenario>& scenarios();

enum class Defect
{
    none,
    falseSuccess, // success was reported, but not achieved
    hang,
    loss, // the unit file is neither the old one nor the new one, or changed although failure was reported
    leftover, // a temporary file
    other,    // for example a crash, or a process that does not recover
};

struct Verdict
{
    Defect defect = Defect::none;
    std::string explanation{};
};

// A run of a scenario in a child process, on a unit of its own.
class ScenarioRun
{
public:
    explicit ScenarioRun(const Scenario& scenario);
    ~ScenarioRun();
    ScenarioRun(const ScenarioRun&) = delete;
    ScenarioRun& operator=(const ScenarioRun&) = delete;

    // Runs the scenario between `enable` and `disable`, while results().enabled is set. Then saves a copy of
    // the unit file and tests that the library still works. To be called in a child process. Does not throw.
    void execute(const std::function<void()>& enable = {},
                 const std::function<void()>& disable = {}) noexcept;

    // Does the same in a new child process. Returns its wait status.
    int executeInChild(const std::function<void()>& enable = {}, const std::function<void()>& disable = {});

    // Judges the run. `status` is the wait status of its process. If `replacedFile` is set, the new unit file
    // may be in place although the change was reported as failed.
    Verdict judge(int status, bool replacedFile = false) const;

    // Returns whether the JSON library aborted the process because it could not allocate memory in a
    // destructor. Such a run is judged like one that was killed.
    bool wasAbortedByJsonLibrary() const;

    const Results& results() const
    {
        return *shared;
    }

private:
    bool succeeded() const;
    Verdict judgeInterruption(int status) const;
    Verdict judgeResults() const;
    Verdict judgeFile(bool replacedFile) const;
    Verdict judgeTrace() const;
    void saveFiles() const;
    std::string testRecovery() const;
    void runUndisturbed() const;

    const Scenario& scenario;
    TemporaryDirectory directory;
    Results* shared;
};
