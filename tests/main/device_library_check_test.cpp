// The tool that looks a unit's library over before a roll-out.

#include "support/unit.h"

#include <filesystem>

namespace
{

const char* const checker = PROJECT_FOLDER "/tools/check-device-library";

Outcome check(const std::string& library, const std::string& tool = checker)
{
    return runCommand({{tool, library}, {{"PATH", "/usr/bin:/bin"}}});
}

TEST(DeviceLibraryCheck, IsContentWithTheSimulatedUnit)
{
    const std::string library = simulatorFolder() + "/libqv-aux2.so.2.11";
    const Outcome outcome = check(library);
    EXPECT_EQ(outcome.output, library + " has every operation that fobrob calls\n");
    EXPECT_EQ(exitStatus(outcome), 0);
}

TEST(DeviceLibraryCheck, NamesWhatALibraryLacks)
{
    const std::string library = otherLibraryFolder() + "/libqv-aux2.so.2.11";
    const Outcome outcome = check(library);
    EXPECT_NE(outcome.output.find("lacks Buzzer_setVolume\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("lacks GetBuzzer\n"), std::string::npos);
    EXPECT_EQ(outcome.output.find("lacks Lightsensor_getIlluminance\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("\n163 operations that fobrob calls are not in " + library + "\n"),
              std::string::npos);
    EXPECT_EQ(exitStatus(outcome), 1);
}

TEST(DeviceLibraryCheck, FindsItsListBehindALinkAndDoesNotDoWithout)
{
    namespace fs = std::filesystem;
    const std::string library = otherLibraryFolder() + "/libqv-aux2.so.2.11";
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
