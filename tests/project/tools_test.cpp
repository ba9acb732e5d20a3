// The usage of the tools, and what tools/install-packages does to a system.

#include "support/process.h"
#include "support/text.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::Not;

Outcome run(const std::string& tool, const std::vector<std::string>& arguments,
            const std::string& path = "/usr/bin:/bin")
{
    std::vector<std::string> words = {PROJECT_DIRECTORY "/" + tool};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runCommand({.words = words, .environment = {{"PATH", path}}});
}

TEST(Tools, PrintTheirUsageOnRequestAndAfterAnUnknownWord)
{
    for (const char* tool : {"check", "packaging/build", "packaging/test", "tools/break-and-test",
                             "tools/check-device-library", "tools/install-packages"})
    {
        SCOPED_TRACE(tool);
        const Outcome help = run(tool, {"--help"});
        EXPECT_THAT(help.output, testing::StartsWith("usage: "));
        EXPECT_EQ(help.errors, "");
        EXPECT_EQ(exitStatus(help), 0);

        const Outcome unknown = run(tool, {"--unknown"});
        EXPECT_EQ(unknown.output, "");
        EXPECT_THAT(unknown.errors, testing::EndsWith(help.output));
        EXPECT_EQ(exitStatus(unknown), 2);
    }
}

TEST(PackagingBuild, RejectsAnUnknownArchitecture)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"i386"}, {"amd64", "--help"}})
    {
        const Outcome outcome = run("packaging/build", arguments);
        EXPECT_EQ(outcome.errors, "usage: packaging/build [amd64|armhf|arm64]...\n");
        EXPECT_EQ(exitStatus(outcome), 2);
    }
}

// A Debian on which nothing is installed. Commands that change it are only printed.
class InstallPackages : public testing::Test
{
protected:
    InstallPackages()
    {
        command("dpkg",
                "case $1 in --print-architecture) echo amd64 ;;"
                " --print-foreign-architectures) cat \"${0%/*}/foreign\" ;; *) echo dpkg \"$@\" ;; esac");
        command("dpkg-query", "exit 1");
        command("apt-get", "echo apt-get \"$@\"");
        command("id", "echo 0");
        writeFile(system / "foreign", "");
    }

    // The commands that change the system, with the messages in between.
    std::string install(const std::vector<std::string>& groups)
    {
        const Outcome outcome = run("tools/install-packages", groups, system.path + ":/usr/bin:/bin");
        EXPECT_EQ(exitStatus(outcome), 0);
        EXPECT_EQ(outcome.output, "");
        return outcome.errors;
    }

    TemporaryDirectory system;

private:
    void command(const std::string& name, const std::string& script)
    {
        writeFile(system / name, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(system / name, std::filesystem::perms::all);
    }
};

TEST_F(InstallPackages, NamesAForeignArchitectureBeforeAddingIt)
{
    EXPECT_THAT(install({"build", "armhf"}),
                testing::StartsWith("install-packages: adding armhf to the architectures of this system"
                                    " (dpkg --add-architecture)\n"
                                    "dpkg --add-architecture armhf\n"
                                    "apt-get update\n"
                                    "apt-get install "));
}

TEST_F(InstallPackages, AddsNoForeignArchitectureThatTheSystemHas)
{
    writeFile(system / "foreign", "i386\narmhf\n");
    EXPECT_THAT(install({"armhf"}), testing::StartsWith("apt-get update\n"));
    EXPECT_THAT(install({"arm64"}), HasSubstr("dpkg --add-architecture arm64\n"));
}

TEST_F(InstallPackages, AddsNoForeignArchitectureForNativePackages)
{
    EXPECT_THAT(install({"build", "packages", "amd64"}), Not(HasSubstr("--add-architecture")));
}

// dpkg-buildpackage requires build-essential, although the package does not list it.
TEST_F(InstallPackages, InstallsWhatEveryDebianPackageNeedsToBeBuilt)
{
    EXPECT_THAT(install({"build", "packages"}), HasSubstr(" build-essential "));
}

} // namespace
