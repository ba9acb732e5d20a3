// tools/check-device-library.

#include "support/unit.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;

const char* const name = "libqv-aux2.so.2.11";
const char* const checker = PROJECT_DIRECTORY "/tools/check-device-library";

Outcome runTool(const std::vector<std::string>& words)
{
    return runCommand({words, {{"PATH", "/usr/bin:/bin"}}});
}

Outcome check(const std::string& library, const std::string& tool = checker)
{
    return runTool({tool, library});
}

// The first line about a library of the build under test.
std::string processorLine(const std::string& library)
{
    const auto machine = static_cast<unsigned char>(readFile(programPath()).at(18)); // e_machine
    const char* const processor = machine == 62   ? "64-bit Advanced Micro Devices X86-64"
                                  : machine == 40 ? "32-bit ARM, hard float"
                                                  : "64-bit AArch64";
    return library + ": built for " + processor + "\n";
}

// Copies the simulated unit and replaces one of its strings with another of the same length.
std::string changedLibrary(const TemporaryDirectory& directory, const std::string& what,
                           const std::string& with)
{
    std::string path = directory / name;
    writeFile(path, replaced(readFile(simulatorDirectory() + "/" + name), what, with));
    return path;
}

TEST(DeviceLibraryCheck, AcceptsTheSimulatedUnitWithAndWithoutASoname)
{
    for (const std::string& directory : {simulatorDirectory(), noSonameLibraryDirectory()})
    {
        const std::string library = directory + "/" + name;
        const Outcome outcome = check(library);
        EXPECT_EQ(outcome.output, processorLine(library) + library + ": all 167 operations are present\n");
        EXPECT_EQ(exitStatus(outcome), 0);
    }
}

TEST(DeviceLibraryCheck, ReportsADifferentSoname)
{
    const TemporaryDirectory directory;
    const std::string library = changedLibrary(directory, name, "libqv-aux2.so.2.12");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output, processorLine(library) + library +
                                  ": SONAME is libqv-aux2.so.2.12, expected libqv-aux2.so.2.11\n" + library +
                                  ": all 167 operations are present\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, ReportsASingleMissingOperation)
{
    const TemporaryDirectory directory;
    const std::string library = changedLibrary(directory, "Buzzer_setVolume", "Buzzer_setvolume");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output, processorLine(library) +
                                  "missing operation: Buzzer_setVolume, called by --buzzer\n" + library +
                                  ": 1 of 167 operations are missing\naffected: --buzzer\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, ReportsAllMissingOperations)
{
    const std::string library = partialLibraryDirectory() + "/" + name;
    const Outcome outcome = check(library);
    EXPECT_NE(outcome.output.find("missing operation: Buzzer_setVolume, called by --buzzer\n"),
              std::string::npos);
    EXPECT_NE(outcome.output.find("missing operation: GetBuzzer, called by --buzzer\n"), std::string::npos);
    EXPECT_EQ(outcome.output.find("Lightsensor_getIlluminance"), std::string::npos);
    EXPECT_THAT(
        outcome.output,
        testing::EndsWith("\naffected: --about, --advanced, --backlight, --buzzer, --can, --digitalio, "
                          "--heater, --led, --onoff, --power, --telematics, --temperature, --touch, "
                          "--version\n"));
    EXPECT_NE(outcome.output.find("\n" + library + ": 163 of 167 operations are missing\n"),
              std::string::npos);
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, FindsTheOperationListThroughALinkAndFailsWithoutIt)
{
    namespace fs = std::filesystem;
    const std::string library = partialLibraryDirectory() + "/" + name;
    const TemporaryDirectory directory;
    fs::create_symlink(checker, directory / "link");
    EXPECT_EQ(exitStatus(check(library, directory / "link")), 1);
    fs::copy_file(checker, directory / "copy");
    EXPECT_EQ(exitStatus(check(library, directory / "copy")), 2);
}

// An operation of several categories, one of the second file of --advanced, and one that every category
// calls.
TEST(DeviceLibraryCheck, NamesTheCategoriesThatCallAMissingOperation)
{
    const struct
    {
        const char* operation;
        const char* renamed;
        const char* categories;
    } cases[] = {
        {"Diagnostic_getSSTemp", "Diagnostic_getssTemp", "--about, --temperature"},
        {"FirmwareUpgrade_startSSUpgrade", "FirmwareUpgrade_startssUpgrade", "--advanced"},
        {"GetErrorStringA", "GetErrorStringa", "all categories"},
    };
    for (const auto& [operation, renamed, categories] : cases)
    {
        SCOPED_TRACE(operation);
        const TemporaryDirectory directory;
        const Outcome outcome = check(changedLibrary(directory, operation, renamed));
        EXPECT_THAT(outcome.output, HasSubstr(std::string("missing operation: ") + operation +
                                              ", called by " + categories + "\n"));
        EXPECT_THAT(outcome.output, testing::EndsWith(std::string("\naffected: ") + categories + "\n"));
    }
}

TEST(DeviceLibraryCheck, ComparesTheProcessorWithThatOfAProgram)
{
    const std::string library = simulatorDirectory() + "/" + name;
    EXPECT_EQ(exitStatus(runTool({checker, library, programPath()})), 0);

    const TemporaryDirectory directory;
    std::string program = readFile(programPath());
    program.at(18) = 8; // e_machine: MIPS
    writeFile(directory / "program", program);
    const Outcome outcome = runTool({checker, library, directory / "program"});
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors,
                testing::StartsWith("check-device-library: " +
                                    processorLine(library).substr(0, processorLine(library).size() - 1) +
                                    ", expected "));
    EXPECT_THAT(outcome.errors, HasSubstr("MIPS R3000"));
    EXPECT_EQ(exitStatus(outcome), 2);

    EXPECT_EQ(exitStatus(runTool({checker, library, "/does/not/exist"})), 2);
}

// Files for 32-bit ARM that consist of a header only. An old linker does not record how floating-point
// numbers are passed.
TEST(DeviceLibraryCheck, ComparesHowArmPassesFloatingPointNumbers)
{
    const TemporaryDirectory directory;
    const auto file = [&](const std::string& kind, char flags)
    {
        std::string header("\x7f"
                           "ELF\1\1\1",
                           7);
        header.resize(52);
        header[16] = 3;     // e_type: shared object
        header[18] = 40;    // e_machine: ARM
        header[20] = 1;     // e_version
        header[37] = flags; // e_flags: 2 for soft float, 4 for hard float
        header[39] = 5;
        writeFile(directory / kind, header);
        return directory / kind;
    };
    const std::string hard = file("hard", 4);
    const std::string soft = file("soft", 2);
    const std::string unknown = file("unknown", 0);
    const auto problem = [](const std::string& library, const std::string& program) {
        return runTool({checker, library, program}).errors;
    };
    EXPECT_THAT(problem(hard, soft),
                HasSubstr("built for 32-bit ARM, hard float, expected 32-bit ARM, soft float"));
    for (const std::string& library : {hard, unknown})
        for (const std::string& program : {hard, unknown})
            EXPECT_EQ(problem(library, program),
                      "check-device-library: " + library + ": no functions are exported\n");
}

TEST(DeviceLibraryCheck, RejectsAFileThatIsNotALibrary)
{
    const TemporaryDirectory directory;
    const std::vector<std::pair<std::string, std::string>> cases = {
        {checker, "not a shared library"},
        {"/usr/bin/env", "not a shared library"},
        {directory.path, "not a shared library"},
        {"/does/not/exist", "no such file"},
    };
    for (const auto& [file, problem] : cases)
    {
        const Outcome outcome = check(file);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors, "check-device-library: " + file + ": " + problem + "\n");
        EXPECT_EQ(exitStatus(outcome), 2);
    }
}

} // namespace
