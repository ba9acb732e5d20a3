// The headings of the troubleshooting section of docs/integration.md are compared with real error messages.
// Those of tools come from native programs, regardless of the processor of the program under test.

#include "support/unit.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <regex>

namespace
{

namespace fs = std::filesystem;

const std::string nativeProgram = BUILD_DIRECTORY "/fobrob";

struct Message
{
    std::string heading; // the expected message
    std::string output;  // the output that must contain it
};

using Messages = std::vector<Message>;

// Returns the output of a shell command, with each run of whitespace replaced by one space.
std::string outputOf(const std::string& command)
{
    const Outcome outcome =
        runCommand({.words = {"bash", "-c", command}, .environment = {{"PATH", std::getenv("PATH")}}});
    return std::regex_replace(outcome.output + outcome.errors, std::regex(R"(\s+)"), " ");
}

Messages messagesOfCMake(const TemporaryDirectory& work)
{
    const std::string sources = PROJECT_DIRECTORY;
    const std::string build = work / "build";
    const std::string configure = "cmake -S " + sources + " -B " + build;
    writeFile(work / "CMakeLists.txt",
              replaced(readFile(sources + "/CMakeLists.txt"), "VERSION 3.25", "VERSION 93.25"));
    return {
        {R"(Could not find a package configuration file provided by "nlohmann_json")",
         outputOf(configure + " -DCMAKE_IGNORE_PREFIX_PATH=/usr")},
        {"CMake 3.25 or higher is required.",
         replaced(outputOf("cmake -S " + work.path + " -B " + (work / "newer")), "93.25", "3.25")},
        {"The CMAKE_CXX_COMPILER: arm-linux-gnueabihf-g++ is not a full path and was not found in the PATH.",
         outputOf("cd " + work.path + "; mkdir bin; ln -s $(which cmake ninja) bin; PATH=$PWD/bin; cd " +
                  sources + "; cmake --preset armhf -B " + (work / "arm"))},
        {"ninja: error: '/path/to/libqv-aux2.so.2.11', needed by 'fobrob', missing and no known rule to make it",
         outputOf(configure + " --fresh -G Ninja -DQV_AUX2_LIBRARY=/path/to/libqv-aux2.so.2.11 >/dev/null;" +
                  " cmake --build " + build)},
    };
}

// The output of linking a program with the device library in `directory`, which is shown as /path/to.
std::string link(const std::string& directory)
{
    const std::string source = "int Buzzer_setVolume(void); int main(void) { return Buzzer_setVolume(); }";
    return replaced(
        outputOf("echo '" + source + "' | cc -o /dev/null -x c - -L " + directory + " -l:libqv-aux2.so.2.11"),
        directory, "/path/to");
}

// Links with a library for another processor, one that needs a library which does not exist, and one that
// lacks the operation.
Messages messagesOfTheLinker(const TemporaryDirectory& work)
{
    outputOf("cd " + work.path + R"(
        mkdir i386 needy
        echo | as --32 -o empty.o
        ld -m elf_i386 -shared -o i386/libqv-aux2.so.2.11 empty.o
        echo 'int helper(void) { return 0; }' >helper.c
        cc -shared -fPIC -Wl,-soname,libqv-helper.so.1 -o helper.so helper.c
        echo 'int helper(void); int Buzzer_setVolume(void) { return helper(); }' >needy.c
        cc -shared -fPIC -o needy/libqv-aux2.so.2.11 needy.c helper.so)");
    return {
        {"skipping incompatible /path/to/libqv-aux2.so.2.11 when searching for -l:libqv-aux2.so.2.11",
         link(work / "i386")},
        {"libqv-helper.so.1, needed by /path/to/libqv-aux2.so.2.11, not found (try using -rpath or -rpath-link)",
         link(work / "needy")},
        {"undefined reference to `Buzzer_setVolume'", link(BUILD_DIRECTORY "/tests/partial")},
    };
}

// Runs the native program, or a modified copy, with the device library in `libraries`. Returns the output.
std::string start(const TemporaryDirectory& work, const std::string& program, const std::string& libraries)
{
    writeFile(work / "fobrob", program);
    fs::permissions(work / "fobrob", fs::perms::all);
    return outputOf("LD_LIBRARY_PATH=" + libraries + " PATH=" + work.path + " fobrob --buzzer");
}

std::string forAnotherProcessor(std::string program)
{
    program.at(18) = 40; // e_machine: ARM
    return program;
}

// Starts a program that needs a version of the C library that no system has. The version is shown as Debian
// 12's.
std::string startWithOlderLibc(const TemporaryDirectory& work)
{
    const std::string output = outputOf("cd " + work.path + R"(
        mkdir libc
        echo 'GLIBC_93.34 { global: f; };' >versions
        echo 'void f(void); void f(void) {}' >f.c
        echo 'void f(void); void _start(void) { f(); }' >start.c
        cc -shared -nostdlib -Wl,-soname,libc.so.6 -Wl,--version-script=versions -o libc/libc.so.6 f.c
        cc -c start.c
        cc -nostdlib -o fobrob start.o libc/libc.so.6
        PATH=. fobrob)");
    return replaced(output, "93.34", "2.34");
}

Messages messagesOfTheStart(const TemporaryDirectory& work)
{
    const std::string simulator = BUILD_DIRECTORY "/simulator";
    const std::string program = readFile(nativeProgram);
    const std::string missing = ": cannot open shared object file: No such file or directory";
    return {
        {"libqv-aux2.so.2.11" + missing, start(work, program, "")},
        {"libqv-aux2.so.2.12" + missing,
         start(work, replaced(program, "aux2.so.2.11", "aux2.so.2.12"), simulator)},
        {"libqv-aux2.so.2.11: wrong ELF class: ELFCLASS32", start(work, program, work / "i386")},
        {"symbol lookup error: fobrob: undefined symbol: GetBuzzer",
         start(work, program, BUILD_DIRECTORY "/tests/partial")},
        {"version `GLIBC_2.34' not found (required by fobrob)", startWithOlderLibc(work)},
        {"cannot execute binary file: Exec format error",
         start(work, forAnotherProcessor(program), simulator)},
        {"cannot execute: required file not found",
         start(work, replaced(program, "/ld-linux", "/no-linux"), simulator)},
    };
}

Messages messagesOfTheProgram()
{
    Unit unit(R"({"faults": {"QVAuxPrivate_writeSsRegister": {"code": 2}},
                  "firmware": {"statuses": [{"state": 4, "error": 1}]}})");
    const std::string good = unit.directory / "good.hex";
    const std::string bad = unit.directory / "bad.txt";
    writeFile(good, "");
    writeFile(bad, "");
    const std::string upgrade = "--advanced --force --update=SS --filepath=";
    Messages messages = {
        {"To get help how to use Fobrob, add --help or -h as options.", unit.run("--frequency").output},
        {"unrecognized option", unit.runExpectingErrors("--buzzer --frequenzy").errors},
        {"BootMode set to rescue mode. Shutdown (power off) the device and restart it",
         unit.runExpectingErrors("--advanced --shutdwon").output},
    };
    unit.userId = 1000;
    messages.push_back({"This feature requires superuser privileges", unit.run(upgrade + good).output});
    unit.userId = 0;
    messages.insert(messages.end(),
                    {{"Please enter the full path to the file and not a relative path",
                      unit.run(upgrade + "good.hex").output},
                     {"File format is incorrect. Expected: .hex", unit.run(upgrade + bad).output},
                     {"Upgrade failed in state: Flashing.", unit.run(upgrade + good).output},
                     {"Failed to mark boot completed: Not supported by this unit",
                      unit.run("--advanced --boot_completed").output}});
    Unit broken(R"({"buzzer": 5})");
    messages.push_back(
        {"libqv-aux2: /home/me/unit.json: ",
         replaced(broken.runExpectingErrors("--buzzer").errors, broken.file(), "/home/me/unit.json")});
    return messages;
}

std::vector<std::string> headings()
{
    const std::string document = readFile(PROJECT_DIRECTORY "/docs/integration.md");
    const std::string section = document.substr(document.find("\n## Troubleshooting\n"));
    return matches("\n### ``?(.*[^`])``?(?=\n)", section);
}

TEST(Troubleshooting, HasTheMessagesInItsHeadings)
{
    const TemporaryDirectory work;
    Messages messages = messagesOfCMake(work);
    for (const Messages& part : {messagesOfTheLinker(work), messagesOfTheStart(work), messagesOfTheProgram()})
        messages.insert(messages.end(), part.begin(), part.end());

    std::vector<std::string> provoked;
    for (const auto& [heading, output] : messages)
    {
        EXPECT_THAT(output, testing::HasSubstr(heading));
        provoked.push_back(heading);
    }
    EXPECT_EQ(headings(), provoked);
}

} // namespace
