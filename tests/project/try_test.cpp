// The script `try`, in a source tree whose build takes no time: it copies the program and the simulated unit
// of this build.

#include "support/unit.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

const char* const project = R"(
cmake_minimum_required(VERSION 3.25)
project(tried LANGUAGES NONE)
set(simulator_directory ${PROJECT_BINARY_DIR}/simulator)
set(search_path "${PROJECT_BINARY_DIR}:\$PATH")
configure_file(PROJECT/src/simulator/fobrob-sim.in simulator/fobrob-sim @ONLY)
add_custom_target(fobrob COMMAND grep good ${PROJECT_SOURCE_DIR}/src/source COMMAND cp BUILD/fobrob .)
add_custom_target(qv-aux2 COMMAND cp BUILD/simulator/libqv-aux2.so.2.11 simulator)
add_custom_target(no-wait COMMAND cp BUILD/simulator/no-wait.so simulator)
)";

class Tree
{
public:
    Tree()
    {
        fs::create_directories(root / "tools");
        fs::create_directories(root / "src");
        for (const char* file : {"try", "tools/install-packages"})
            fs::copy_file(fs::path(PROJECT_DIRECTORY) / file, root / file);
        writeFile(root / "CMakeLists.txt", replaced(replaced(project, "BUILD/", BUILD_DIRECTORY "/"),
                                                    "PROJECT/", PROJECT_DIRECTORY "/"));
        writeFile(root / "CMakePresets.json",
                  R"({"version": 6, "configurePresets": [{"name": "release", "generator": "Ninja",
                      "binaryDir": "${sourceDir}/build/release"}]})");
        setSource("good");
        fs::permissions(root, fs::perms(0755));
    }

    void setSource(const std::string& text)
    {
        writeFile(root / "src/source", text);
    }

    Outcome run(std::vector<std::string> arguments, bool unprivileged = false)
    {
        arguments.insert(arguments.begin(), root / "try");
        return runCommand({.words = arguments,
                           .environment = {{"PATH", std::getenv("PATH")}, {"QVAUX_UNIT", work / "unit.json"}},
                           .unprivileged = unprivileged});
    }

    // All files with their times.
    std::string state() const
    {
        return runCommand({.words = {"find", root, "-printf", "%p %T@ %C@\n"}}).output;
    }

    const TemporaryDirectory work;

private:
    const fs::path root = work / "tree";
};

const std::vector<std::string> readVolume = {"--buzzer", "--volume"};
const char* const volume = "Buzzer Volume: 1000\n";
const bool unprivileged = true;

TEST(Try, BuildsAtTheFirstCallAndThenWritesNothing)
{
    Tree tree;
    const Outcome first = tree.run(readVolume);
    EXPECT_EQ(first.output, volume);
    EXPECT_THAT(first.errors, HasSubstr("Building fobrob and the simulated unit\n"));
    const std::string state = tree.state();
    const Outcome second = tree.run(readVolume);
    EXPECT_EQ(second.output, volume);
    EXPECT_EQ(second.errors, "");
    EXPECT_EQ(tree.state(), state);
}

TEST(Try, CanBeUsedByAnotherUserOnceItIsBuilt)
{
    Tree tree;
    tree.run(readVolume);
    const std::string state = tree.state();
    const Outcome outcome = tree.run(readVolume, unprivileged);
    EXPECT_EQ(outcome.output, volume);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(tree.state(), state);
}

TEST(Try, BuildsWhatHasChanged)
{
    Tree tree;
    tree.run(readVolume);
    tree.setSource("good again");
    const std::string before = tree.state();
    EXPECT_EQ(tree.run(readVolume).output, volume);
    const std::string after = tree.state();
    EXPECT_NE(after, before);
    EXPECT_EQ(tree.run(readVolume).output, volume);
    EXPECT_EQ(tree.state(), after);
}

TEST(Try, ReportsWhyItCannotBuildWhatHasChanged)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    Tree tree;
    tree.run(readVolume);
    tree.setSource("good again");
    const Outcome outcome = tree.run(readVolume, unprivileged);
    EXPECT_EQ(exitStatus(outcome), 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors,
                testing::MatchesRegex("try: the sources have changed .*/build/release is not writable\n"));
}

TEST(Try, ShowsTheLogOfABuildThatFails)
{
    Tree tree;
    tree.run(readVolume);
    tree.setSource("bad");
    for (int i = 0; i < 2; ++i)
    {
        const Outcome outcome = tree.run(readVolume);
        EXPECT_EQ(exitStatus(outcome), 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_THAT(outcome.errors, HasSubstr("FAILED"));
    }
    tree.setSource("good");
    const Outcome outcome = tree.run(readVolume);
    EXPECT_EQ(outcome.output, volume);
    EXPECT_EQ(outcome.errors, "");
}

TEST(Try, RunsCommands)
{
    Tree tree;
    EXPECT_EQ(tree.run({"sh", "-c", "fobrob --buzzer --volume"}).output, volume);
    EXPECT_EQ(tree.run({"--no-wait", "fobrob", "--buzzer", "--volume"}).output, volume);
    EXPECT_EQ(exitStatus(tree.run({"sh", "-c", "exit 3"})), 3);
}

} // namespace
