// The tool that looks a unit's library over before a roll-out.

#include "support/unit.h"

#include <filesystem>

namespace
{

const char* const name = "libqv-aux2.so.2.11";
const char* const checker = PROJECT_FOLDER "/tools/check-device-library";

Outcome check(const std::string& library, const std::string& tool = checker)
{
    return runCommand({{tool, library}, {{"PATH", "/usr/bin:/bin"}}});
}

// The simulated unit in the folder, with another text of the same length for one of its own.
std::string changedLibrary(const TemporaryFolder& folder, const std::string& what, const std::string& with)
{
    std::string path = folder / name;
    writeFile(path, replaced(readFile(simulatorFolder() + "/" + name), what, with));
    return path;
}

TEST(DeviceLibraryCheck, IsContentWithTheSimulatedUnitWhetherItTellsItsNameOrNot)
{
    for (const std::string& folder : {simulatorFolder(), namelessLibraryFolder()})
    {
        const std::string library = folder + "/" + name;
        const Outcome outcome = check(library);
        EXPECT_EQ(outcome.output, library + ": all 167 operations are present\n");
        EXPECT_EQ(exitStatus(outcome), 0);
    }
}

TEST(DeviceLibraryCheck, TellsALibraryOfAnotherName)
{
    const TemporaryFolder folder;
    const std::string library = changedLibrary(folder, name, "libqv-aux2.so.2.12");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output, library + ": SONAME is libqv-aux2.so.2.12, expected libqv-aux2.so.2.11\n" +
                                  library + ": all 167 operations are present\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, NamesASingleOperationThatALibraryLacks)
{
    const TemporaryFolder folder;
    const std::string library = changedLibrary(folder, "Buzzer_setVolume", "Buzzer_setvolume");
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output,
              "missing operation: Buzzer_setVolume\n" + library + ": 1 of 167 operations are missing\n");
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, NamesWhatALibraryLacks)
{
    const std::string library = otherLibraryFolder() + "/" + name;
    const Outcome outcome = check(library);
    EXPECT_NE(outcome.output.find("missing operation: Buzzer_setVolume\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("missing operation: GetBuzzer\n"), std::string::npos);
    EXPECT_EQ(outcome.output.find("missing operation: Lightsensor_getIlluminance\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("\n" + library + ": 163 of 167 operations are missing\n"),
              std::string::npos);
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, FindsItsListBehindALinkAndDoesNotDoWithout)
{
    namespace fs = std::filesystem;
    const std::string library = otherLibraryFolder() + "/" + name;
    const TemporaryFolder folder;
    fs::create_symlink(checker, folder / "link");
    EXPECT_EQ(exitStatus(check(library, folder / "link")), 1);
    fs::copy_file(checker, folder / "copy");
    EXPECT_EQ(exitStatus(check(library, folder / "copy")), 2);
}

TEST(DeviceLibraryCheck, TellsAFileThatIsNoLibrary)
{
    EXPECT_EQ(exitStatus(check(checker)), 2);
    EXPECT_EQ(exitStatus(check("/does/not/exist")), 2);
}

} // namespace
