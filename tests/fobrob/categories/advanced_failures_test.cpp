// The actions of --advanced if a call fails or a handle is null.

#include "support/category_calls.h"

#include <algorithm>

namespace
{

// Adds the wait that follows if a firmware job is requested.
Calls withWait(Calls calls)
{
    calls.push_back("sleep(100)");
    return calls;
}

struct Failure
{
    const char* option;
    const char* operation;
    const char* label; // including the lines before it
    Calls calls;
};

const Failure failures[] = {
    {"--system_mode",
     "QVAuxPrivate_getSystemMode",
     "Failed to get system mode: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_getSystemMode([]) = 77",
      "GetErrorStringA(77) = \"Error 77\"", "QVAuxPrivate_release() = 0"}},
    {"--boot_completed",
     "QVAuxPrivate_writeSsRegister",
     "Failed to mark boot completed: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(4, 6, 195) = 77",
      "GetErrorStringA(77) = \"Error 77\"", "QVAuxPrivate_release() = 0"}},
    {"--rescue_mode_next_boot",
     "Config_setNextBootMode",
     "setNextBootMode: ",
     {"GetConfig() = handle", "Config_setNextBootMode(3) = 77", "GetErrorStringA(77) = \"Error 77\"",
      "Config_release() = 0"}},
    {"--rescue_mode_next_boot --factory_reset",
     "Config_setNextBootMode",
     "setNextBootMode: ",
     {"GetConfig() = handle", "Config_setNextBootMode(4) = 77", "GetErrorStringA(77) = \"Error 77\"",
      "Config_release() = 0"}},
    {"--shutdown",
     "FirmwareUpgrade_shutDown",
     "Shutdown the unit\nshutDown: ",
     {"FirmwareUpgrade_shutDown() = 77", "GetErrorStringA(77) = \"Error 77\""}},
    {"--factory",
     "QVAuxPrivate_writeSsRegister",
     "Factory reset failed: ",
     {"GetQVAuxPrivate() = handle", "QVAuxPrivate_writeSsRegister(3, 101, 1) = 77",
      "QVAuxPrivate_release() = 0", "GetErrorStringA(77) = \"Error 77\""}},
};

TEST(Advanced, ReportsAFailedActionAndReleasesItsHandles)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        Unit unit;
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label + std::string("Error 77\n"));
        EXPECT_EQ(result.calls, callsOf("--advanced", failure.calls));
    }
}

TEST(Advanced, WaitsEvenIfAnActionFails)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        if (std::string(failure.option) == "--shutdown" || std::string(failure.option) == "--factory")
            continue; // the firmware job takes precedence
        Unit unit;
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced --update=SS " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label + std::string("Error 77\n"));
        EXPECT_EQ(result.calls, callsOf("--advanced", withWait(failure.calls)));
    }
}

TEST(Advanced, SuppressesOutputAfterAnErrorWithoutText)
{
    for (const Failure& failure : failures)
    {
        SCOPED_TRACE(failure.option);
        Unit unit(R"({"errorTexts": {"77": null}})");
        unit.fails(failure.operation, 77);
        const Result result = unit.run("--advanced " + std::string(failure.option));
        EXPECT_EQ(result.output, failure.label);
        EXPECT_EQ(result.calls.back(), "FirmwareUpgrade_release() = 0");
    }
}

TEST(Advanced, LeavesTheUnitUnchangedIfAnActionFails)
{
    Unit unit(R"({"boot": {"completed": false}, "config": {"suspendMaxTime": 7}})");
    for (const Failure& failure : failures)
        unit.fails(failure.operation, 77);
    const nlohmann::json before = unit.content();
    for (const Failure& failure : failures)
        unit.run("--advanced " + std::string(failure.option));
    EXPECT_EQ(unit.content(), before);
}

TEST(Advanced, ResetsNothingIfThePrivateHandleIsNull)
{
    Unit unit;
    unit.returnsNull("GetQVAuxPrivate");
    const Result result = unit.run("--advanced --factory");
    EXPECT_EQ(result.output, "Initialization error. Settings are not reset.\n");
    EXPECT_EQ(result.calls, callsOf("--advanced", {"GetQVAuxPrivate() = null"}));
}

TEST(Advanced, CallsTheOperationsOfOtherNullHandles)
{
    const struct
    {
        const char* option;
        const char* obtained;
        const char* released;
        const char* output;
    } cases[] = {
        {"--system_mode", "GetQVAuxPrivate", "QVAuxPrivate_release() = 3", "Failed to get system mode: "},
        {"--boot_completed", "GetQVAuxPrivate", "QVAuxPrivate_release() = 3",
         "Failed to mark boot completed: "},
        {"--rescue_mode_next_boot", "GetConfig", "Config_release() = 3", "setNextBootMode: "},
        {"--shutdown", "GetFirmwareUpgrade", "FirmwareUpgrade_release() = 3",
         "Shutdown the unit\nshutDown: "},
    };
    for (const auto& [option, obtained, released, output] : cases)
    {
        SCOPED_TRACE(option);
        Unit unit;
        unit.returnsNull(obtained);
        const Result result = unit.run("--advanced " + std::string(option));
        EXPECT_EQ(result.output, output + std::string("The module handle is not valid\n"));
        EXPECT_EQ(std::ranges::count(result.calls, released), 1);
    }
}

TEST(Advanced, ResetsToFactorySettingsIfTheAboutHandleIsNull)
{
    Unit unit;
    unit.returnsNull("GetAbout");
    const Result result = unit.run("--advanced --factory");
    EXPECT_EQ(result.output, "Factory reset completed.\n");
    EXPECT_EQ(result.calls,
              (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = null", "GetQVAuxPrivate() = handle",
                     "QVAuxPrivate_writeSsRegister(3, 101, 1) = 0", "QVAuxPrivate_release() = 0",
                     "About_release() = 3", "FirmwareUpgrade_release() = 0"}));
}

TEST(Advanced, IgnoresAFailedRelease)
{
    Unit unit;
    for (const char* release :
         {"About_release", "FirmwareUpgrade_release", "QVAuxPrivate_release", "Config_release"})
        unit.fails(release, 77);
    EXPECT_EQ(unit.run("--advanced --factory").output, "Factory reset completed.\n");
    const Result result = unit.run("--advanced --rescue_mode_next_boot");
    EXPECT_EQ(result.output, "BootMode set to rescue mode. Shutdown (power off) the device and restart it\n");
    EXPECT_EQ(result.calls,
              (Calls{"GetFirmwareUpgrade() = handle", "GetAbout() = handle", "GetConfig() = handle",
                     "Config_setNextBootMode(3) = 0", "Config_release() = 77", "About_release() = 77",
                     "FirmwareUpgrade_release() = 77"}));
}

} // namespace
