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
    };
}

std::string changed(std::string file, std::size_t at, char byte)
{
    file.at(at) = byte;
    return file;
}

// Configures with a file that does not exist, one that is no library, and libraries for another processor,
// without an operation and with another SONAME.
Messages messagesOfTheCheck(const TemporaryDirectory& work)
{
    const std::string name = "libqv-aux2.so.2.11";
    const std::string library = readFile(BUILD_DIRECTORY "/simulator/" + name);
    writeFile(work / "text", "INPUT(libqv-aux2.so.2.11)");
    writeFile(work / "aarch64", changed(library, 18, '\xB7')); // e_machine: AArch64
    writeFile(work / "lacking", replaced(library, "Buzzer_setVolume", "Buzzer_setvolume"));
    writeFile(work / "renamed", replaced(library, "aux2.so.2.11", "aux2.so.2.12"));
    const auto configure = [&](const std::string& file)
    {
        const std::string build = work / "unit";
        return replaced(
            outputOf("cmake -S " PROJECT_DIRECTORY " -B " + build + " -DQV_AUX2_LIBRARY=" + (work / file)),
            work / file, "/path/to/libqv-aux2.so.2.11");
    };
    return {
        {"QV_AUX2_LIBRARY: /path/to/libqv-aux2.so.2.11: no such file", configure("missing")},
        {"QV_AUX2_LIBRARY: /path/to/libqv-aux2.so.2.11: not a shared library", configure("text")},
        {"built for 64-bit AArch64, expected 64-bit Advanced Micro Devices X86-64", configure("aarch64")},
        {"missing operation: Buzzer_setVolume, called by --buzzer", configure("lacking")},
        {"SONAME is libqv-aux2.so.2.12, expected libqv-aux2.so.2.11", configure("renamed")},
    };
}

// Runs the native program, or a modified copy, with the device library in `libraries`. Returns the output.
std::string start(const TemporaryDirectory& work, const std::string& program, const std::string& libraries)
{
    writeFile(work / "fobrob", program);
    fs::permissions(work / "fobrob", fs::perms::all);
    return outputOf("LD_LIBRARY_PATH=" + libraries + " PATH=" + work.path + " fobrob --buzzer");
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
    fs::create_directory(work / "small");
    writeFile(work / "small/libqv-aux2.so.2.11",
              changed(readFile(simulator + "/libqv-aux2.so.2.11"), 4, 1)); // EI_CLASS: 32-bit
    const std::string missing = ": cannot open shared object file: No such file or directory";
    return {
        {"libqv-aux2.so.2.11" + missing, start(work, program, "")},
        {"libqv-aux2.so.2.11: wrong ELF class: ELFCLASS32", start(work, program, work / "small")},
        {"symbol lookup error: fobrob: undefined symbol: GetBuzzer",
         start(work, program, BUILD_DIRECTORY "/tests/partial")},
        {"version `GLIBC_2.34' not found (required by fobrob)", startWithOlderLibc(work)},
        {"cannot execute binary file: Exec format error",
         start(work, changed(program, 18, 40), simulator)}, // e_machine: ARM
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
    for (const Messages& part : {messagesOfTheCheck(work), messagesOfTheStart(work), messagesOfTheProgram()})
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
