#include "fobrob/command_lines.h"

#include "support/text.h"

#include <algorithm>
#include <set>

namespace
{

class CommandLinesOf : public testing::TestWithParam<CommandLines>
{
protected:
    const std::vector<CommandLine>& all = GetParam().all;
    const std::vector<CommandLine>& parts = GetParam().parts;

    // Calls `check` with each step that makes a device call.
    template <typename Check>
    static void forEachCall(const std::vector<CommandLine>& lines, Check check)
    {
        for (const CommandLine& line : lines)
            for (std::size_t index = 0; index < line.steps.size(); ++index)
            {
                SCOPED_TRACE(line.arguments + ": " + line.steps[index].call);
                if (!line.steps[index].call.empty())
                    check(line, index);
            }
    }

    template <typename Check>
    static void forEachLine(const std::vector<CommandLine>& lines, Check check)
    {
        for (const CommandLine& line : lines)
        {
            SCOPED_TRACE(line.arguments);
            check(line);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Category, CommandLinesOf, testing::ValuesIn(everyCommandLine()),
                         [](const auto& test) { return test.param.category; });

// Returns how many earlier steps call the same operation.
unsigned earlierCalls(const CommandLine& line, std::size_t index)
{
    unsigned count = 0;
    for (std::size_t i = 0; i < index; ++i)
        count += line.steps[i].operation() == line.steps[index].operation();
    return count;
}

// Returns the operations and their codes: "Buzzer_getVolume = 0".
Calls withoutArguments(const Calls& calls)
{
    Calls outline;
    for (const std::string& call : calls)
        outline.push_back(call.substr(0, call.find('(')) + call.substr(call.rfind(" = ")));
    return outline;
}

void expectRun(const CommandLine& line, Unit& unit, const Failures& failures)
{
    const Result result = unit.run(line.arguments);
    const Expected expected = expectedOf(line, failures);
    EXPECT_EQ(result.output, expected.output);
    if (line.hasRelatedChanges)
        EXPECT_EQ(withoutArguments(result.calls), withoutArguments(expected.calls));
    else
        EXPECT_EQ(result.calls, expected.calls);
}

// Expects the output and the calls if one call fails with the code.
void expectFailure(const CommandLine& line, std::size_t index, const Failure& failure)
{
    Unit unit(line.keys);
    const nlohmann::json text = failure.text ? nlohmann::json(*failure.text) : nlohmann::json();
    unit.set("/errorTexts", {{std::to_string(failure.code), text}});
    unit.failsOnce(line.steps[index].operation(), failure.code, earlierCalls(line, index));
    expectRun(line, unit, {{index, failure}});
}

void expectSuccess(const CommandLine& line)
{
    Unit unit(line.keys);
    const Result result = unit.run(line.arguments);
    const Expected expected = expectedOf(line);
    EXPECT_EQ(result.output, expected.output);
    EXPECT_EQ(result.calls, expected.calls);
}

TEST_P(CommandLinesOf, MakeTheirCallsAndPrintTheirLines)
{
    forEachLine(all, expectSuccess);
    forEachLine(parts, expectSuccess);
}

void expectReport(const CommandLine& line, std::size_t index)
{
    expectFailure(line, index, {77, "Error 77"});
}

TEST_P(CommandLinesOf, ReportAFailedCallAndContinue)
{
    forEachCall(all, expectReport);
    forEachCall(parts, expectReport);
}

void expectSuppressedOutput(const CommandLine& line, std::size_t index)
{
    expectFailure(line, index, {77, std::nullopt});
}

TEST_P(CommandLinesOf, SuppressOutputAfterAnErrorWithoutText)
{
    forEachCall(all, expectSuppressedOutput);
    forEachCall(parts, expectSuppressedOutput);
}

TEST_P(CommandLinesOf, ReportOrOmitWhatTheUnitDoesNotSupport)
{
    forEachCall(all,
                [](const CommandLine& line, std::size_t index) {
                    expectFailure(line, index, {2, "Not supported by this unit"});
                });
}

TEST_P(CommandLinesOf, ReportABoardThatIsNotFittedOrPrintNotAvailable)
{
    forEachCall(all,
                [](const CommandLine& line, std::size_t index) {
                    expectFailure(line, index, {18, "The board is not fitted"});
                });
}

// Each operation returns a different code.
TEST_P(CommandLinesOf, ReportEveryFailedCall)
{
    forEachLine(all,
                [](const CommandLine& line)
                {
                    Unit unit(line.keys);
                    Failures failures;
                    for (std::size_t index = 0; index < line.steps.size(); ++index)
                    {
                        const std::string operation = line.steps[index].operation();
                        const auto first = std::ranges::find(line.steps, operation, &Step::operation);
                        const auto code = static_cast<unsigned>(100 + (first - line.steps.begin()));
                        if (operation.empty())
                            continue;
                        unit.fails(operation, code);
                        failures[index] = {code, "Error " + std::to_string(code)};
                    }
                    expectRun(line, unit, failures);
                });
}

// A result that the unit does not write has an initial value, or the value that the previous call has
// written.
void expectDefault(const CommandLine& line, std::size_t index)
{
    const Step& step = line.steps[index];
    if (!step.unwritten)
        return;
    Unit unit(line.keys);
    unit.set("/faults/" + step.operation(),
             {{"ignored", true}, {"skip", earlierCalls(line, index)}, {"times", 1}});
    CommandLine unwritten = line;
    unwritten.steps[index].output = *step.unwritten;
    EXPECT_EQ(unit.run(line.arguments).output, expectedOf(unwritten).output);
}

TEST_P(CommandLinesOf, PrintADefaultForAResultThatIsNotWritten)
{
    forEachCall(all, expectDefault);
    forEachCall(parts, expectDefault);
}

// Returns the modules whose operations the command line calls.
std::set<std::string> modulesOf(const CommandLine& line)
{
    std::set<std::string> modules;
    for (const Step& step : line.steps)
        if (!step.call.empty())
            modules.insert(step.call.substr(0, step.call.find('_')));
    return modules;
}

TEST_P(CommandLinesOf, CallTheOperationsOfANullHandle)
{
    forEachLine(all,
                [](const CommandLine& line)
                {
                    for (const std::string& module : modulesOf(line))
                    {
                        Unit unit(line.keys);
                        unit.returnsNull("Get" + module);
                        Failures failures;
                        for (std::size_t index = 0; index < line.steps.size(); ++index)
                            if (line.steps[index].call.starts_with(module + "_"))
                                failures[index] = {3, "The module handle is not valid"};
                        Expected expected = expectedOf(line, failures);
                        std::ranges::replace(expected.calls, "Get" + module + "() = handle",
                                             "Get" + module + "() = null");
                        std::ranges::replace(expected.calls, module + "_release() = 0",
                                             module + "_release() = 3");
                        const Result result = unit.run(line.arguments);
                        EXPECT_EQ(result.output, expected.output);
                        EXPECT_EQ(result.calls, expected.calls);
                    }
                });
}

TEST_P(CommandLinesOf, IgnoreAFailedRelease)
{
    forEachLine(all,
                [](const CommandLine& line)
                {
                    Unit unit(line.keys);
                    Expected expected = expectedOf(line);
                    for (std::string& call : expected.calls)
                        if (const std::string release = call.substr(0, call.find('('));
                            release.ends_with("_release"))
                        {
                            unit.fails(release, 77);
                            call = release + "() = 77";
                        }
                    const Result result = unit.run(line.arguments);
                    EXPECT_EQ(result.output, expected.output);
                    EXPECT_EQ(result.calls, expected.calls);
                });
}

} // namespace
