// Two users of one unit: the user that runs the tests, and nobody. If the tests do not run as root, both are
// the user that runs the tests and owns every file.

#include "support/unit.h"

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr uid_t nobody = 65534;
constexpr const char* changed = "Buzzer volume set to: 40\n";

bool isRoot()
{
    return getuid() == 0;
}

struct stat statusOf(const std::string& file)
{
    struct stat status = {};
    EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
    return status;
}

// Changes the mode and, if the tests run as root, the owner.
void setOwnerAndMode(const std::string& file, uid_t user, mode_t mode)
{
    ASSERT_TRUE(chown(file.c_str(), user, static_cast<gid_t>(-1)) == 0 || !isRoot());
    ASSERT_EQ(chmod(file.c_str(), mode), 0);
}

class Users : public testing::Test
{
protected:
    Outcome run(uid_t user, const std::string& arguments, mode_t mask)
    {
        const Command command = programOn(unit.file(), arguments);
        const mode_t previous = umask(mask);
        Outcome outcome = user == nobody ? other.run(command) : runCommand(command);
        umask(previous);
        return outcome;
    }

    Outcome change(uid_t user, mode_t mask = 022)
    {
        return run(user, "--buzzer --volume=40", mask);
    }

    Outcome startJob(uid_t user)
    {
        const std::string file = unit.directory / "firmware.hex";
        writeFile(file, "");
        return run(user, "--advanced --verify=SS --force --filepath=" + file, 077);
    }

    std::string diagnostic(const std::string& ending, const std::string& what) const
    {
        return "libqv-aux2: " + unit.file() + ending + ": " + what + "\n";
    }

    const std::string before = R"({"buzzer": {"volume": 5}})";
    Unit unit{before};
    Nobody other;
};

// The first user creates the lock file. The second one must be able to lock it.
TEST_F(Users, NeedPermissionForTheFile)
{
    for (const uid_t owner : {uid_t{0}, nobody})
        for (const mode_t mode : {0600u, 0644u, 0666u})
            for (const uid_t first : {uid_t{0}, nobody})
                for (mode_t mask : {022u, 077u})
                {
                    SCOPED_TRACE(testing::Message()
                                 << "owner " << owner << ", mode " << std::oct << mode << ", first user "
                                 << std::dec << first << ", umask " << std::oct << mask);
                    std::filesystem::remove(unit.file() + ".lock");
                    uid_t ownerNow = owner;
                    for (const uid_t user : {first, first == 0 ? nobody : uid_t{0}})
                    {
                        writeFile(unit.file(), before);
                        setOwnerAndMode(unit.file(), ownerNow, mode);
                        const bool may = !isRoot() || user == 0 || user == ownerNow || mode == 0666;
                        EXPECT_EQ(change(user, mask).output == changed, may) << user;
                        EXPECT_EQ(readFile(unit.file()) != before, may) << user;
                        EXPECT_EQ(statusOf(unit.file()).st_mode & 0777, mode) << user;
                        if (may && user == nobody)
                            ownerNow = nobody; // only root can change the owner of a file
                        EXPECT_EQ(statusOf(unit.file()).st_uid, isRoot() ? ownerNow : getuid()) << user;
                        EXPECT_FALSE(fileExists(unit.file() + ".new")) << user;
                    }
                }
}

TEST_F(Users, GrantNothingToAGroupThatCannotBeKept)
{
    setOwnerAndMode(unit.file(), nobody, 0660);
    const bool isForeign = chown(unit.file().c_str(), static_cast<uid_t>(-1), 1) == 0;
    EXPECT_EQ(change(nobody).output, changed);
    EXPECT_EQ(statusOf(unit.file()).st_mode & 0777, isForeign ? 0600u : 0660u);
}

// Only root and the owner can keep the list. The change fails for anyone else.
TEST_F(Users, GetAnErrorIfTheyCannotKeepAnAccessControlList)
{
    setOwnerAndMode(unit.file(), 0, 0600);
    const auto setList = [&]
    {
        return runCommand({.words = {"setfacl", "-m", "u:65534:rw,g::-", unit.file()},
                           .environment = {{"PATH", "/usr/bin:/bin"}}})
                   .status == 0;
    };
    if (!setList())
        GTEST_SKIP() << "the file system does not support access control lists";
    const Outcome outcome = change(nobody);
    EXPECT_EQ(outcome.output == changed, !isRoot());
    EXPECT_EQ(outcome.errors,
              isRoot() ? diagnostic("", "only its owner and root can keep its access control list") : "");
    EXPECT_EQ(readFile(unit.file()) == before, isRoot());
    EXPECT_FALSE(fileExists(unit.file() + ".new"));
}

// In a sticky directory such as /tmp, everyone can create files but remove only their own.
TEST_F(Users, MustOwnTheFileInAStickyDirectory)
{
    chmod(unit.directory.path.c_str(), 01777);
    setOwnerAndMode(unit.file(), 0, 0666);
    ASSERT_EQ(change(0).output, changed);
    writeFile(unit.file(), before);
    const Outcome outcome = change(nobody);
    EXPECT_EQ(outcome.errors, isRoot() ? diagnostic("", "Operation not permitted") : "");
    EXPECT_EQ(readFile(unit.file()) == before, isRoot());
    EXPECT_FALSE(fileExists(unit.file() + ".new"));

    setOwnerAndMode(unit.file(), nobody, 0666);
    EXPECT_EQ(change(nobody).output, changed);
}

// In a sticky directory, even root cannot open files of other users with O_CREAT (fs.protected_regular).
TEST_F(Users, CanLockAFileOfAnotherUserInAStickyDirectory)
{
    chmod(unit.directory.path.c_str(), 01777);
    setOwnerAndMode(unit.file(), nobody, 0666);
    ASSERT_EQ(change(nobody).output, changed);
    EXPECT_EQ(change(0).output, changed);
    EXPECT_EQ(statusOf(unit.file()).st_uid, isRoot() ? nobody : getuid());
}

// The library applies the rule of fs.protected_symlinks even if it is not set.
TEST_F(Users, FollowNoLinkOfAnotherUserInAStickyDirectory)
{
    const TemporaryDirectory target;
    const std::string file = target / "unit.json";
    const std::string link = unit.directory / "link";
    struct Case
    {
        std::string path;
        std::string linked;
    };
    const Case cases[] = {
        {link, file},
        {link, target / "new.json"},
        {link + "/unit.json", target.path},
        {link + "/new.json", target.path},
    };
    for (const Case& tried : cases)
    {
        SCOPED_TRACE(tried.path + ", " + tried.linked);
        writeFile(file, before);
        std::filesystem::remove(target / "new.json");
        std::filesystem::remove(link);
        std::filesystem::create_symlink(tried.linked, link);
        ASSERT_TRUE(lchown(link.c_str(), nobody, static_cast<gid_t>(-1)) == 0 || !isRoot());
        const auto changeThroughLink = [&]
        { return runCommand(programOn(tried.path, "--buzzer --volume=40")); };

        chmod(unit.directory.path.c_str(), 01777);
        const Outcome outcome = changeThroughLink();
        EXPECT_EQ(outcome.errors,
                  isRoot() ? "libqv-aux2: " + tried.path + ": link of another user in a sticky directory\n"
                           : "");
        EXPECT_TRUE(!isRoot() || (readFile(file) == before && !fileExists(target / "new.json")));

        chmod(unit.directory.path.c_str(), 0777);
        EXPECT_EQ(changeThroughLink().output, changed);
    }
}

TEST_F(Users, FollowNoLinkToALock)
{
    const std::string elsewhere = unit.directory / "elsewhere";
    std::filesystem::create_symlink(elsewhere, unit.file() + ".lock");
    EXPECT_EQ(change(0).errors, diagnostic(".lock", "Too many levels of symbolic links"));
    EXPECT_FALSE(fileExists(elsewhere));
}

TEST_F(Users, GetTheNameOfAFileTheyCannotReplaceInAStickyDirectory)
{
    chmod(unit.directory.path.c_str(), 01777);
    setOwnerAndMode(unit.file(), nobody, 0666);
    writeFile(unit.file() + ".new", "");
    EXPECT_EQ(change(nobody).errors, isRoot() ? diagnostic(".new", "Operation not permitted") : "");
    EXPECT_EQ(change(0).output, changed);
    EXPECT_EQ(change(nobody).output, changed);
}

TEST_F(Users, CanStartFirmwareJobsOneAfterTheOther)
{
    unit.set("/firmware/pace", 0);
    chmod(unit.file().c_str(), 0666);
    const std::string ofRoot = startJob(0).output;
    EXPECT_NE(ofRoot.find("Upgrade failed in state: Reading File.\n"), std::string::npos) << ofRoot;
    EXPECT_EQ(startJob(nobody).output, ofRoot);
}

TEST_F(Users, GetAnErrorIfTheyCannotOpenTheJobLock)
{
    writeFile(unit.file() + ".job", "");
    setOwnerAndMode(unit.file() + ".job", 0, 0);
    const Outcome outcome = startJob(nobody);
    EXPECT_TRUE(outcome.output.ends_with("startSSVerification: The unit file cannot be written\n"))
        << outcome.output;
    EXPECT_EQ(outcome.errors, diagnostic(".job", "Permission denied"));
}

} // namespace
