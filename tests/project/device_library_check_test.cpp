// tools/check-device-library.

#include "support/unit.h"

#include <filesystem>

namespace
{

const char* const name = "libqv-aux2.so.2.11";
const char* const checker = PROJECT_DIRECTORY "/tools/check-device-library";

Outcome check(const std::string& library, const std::string& tool = checker)
{
    return runCommand({{tool, library}, {{"PATH", "/usr/bin:/bin"}}});
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
        EXPECT_EQ(outcome.output, library + ": all 167 operations are present\n");
        EXPECT_EQ(exitStatus(outcome), 0);
    }
}

TEST(DeviceLibraryCheck, ReportsADifferentSoname)
{
    const TemporaryDirectory directory;
    const std::string library = changedLibrary(directory, name, "libqv-aux2.so.2.12");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output, library + ": SONAME is libqv-aux2.so.2.12, expected libqv-aux2.so.2.11\n" +
                                  library + ": all 167 operations are present\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, ReportsASingleMissingOperation)
{
    const TemporaryDirectory directory;
    const std::string library = changedLibrary(directory, "Buzzer_setVolume", "Buzzer_setvolume");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output,
              "missing operation: Buzzer_setVolume\n" + library + ": 1 of 167 operations are missing\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, ReportsAllMissingOperations)
{
    const std::string library = partialLibraryDirectory() + "/" + name;
    const Outcome outcome = check(library);
    EXPECT_NE(outcome.output.find("missing operation: Buzzer_setVolume\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("missing operation: GetBuzzer\n"), std::string::npos);
    EXPECT_EQ(outcome.output.find("missing operation: Lightsensor_getIlluminance\n"), std::string::npos);
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

TEST(DeviceLibraryCheck, ReportsAFileThatIsNotALibrary)
{
    EXPECT_EQ(exitStatus(check(checker)), 2);
    EXPECT_EQ(exitStatus(check("/does/not/exist")), 2);
}

} // namespace
