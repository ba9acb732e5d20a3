#include "upgrade.h"

#include <chrono>

using namespace std::string_literals;
using Clock = std::chrono::steady_clock;

namespace
{

TEST(FirmwareJob, LeavesTheFirmwareIncompleteIfKilledWhileFlashing)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 400); // milliseconds
    const std::string output = unit.directory / "output";
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(becomesTrue([&] { return readFile(output).ends_with("Flashing\n"); })) << readFile(output);
    program.kill();

    EXPECT_EQ(unit["/firmware/ss/incomplete"], true);
    const char* const incomplete = "getSSVersion: The firmware is incomplete: its upgrade was interrupted\n";
    EXPECT_EQ(unit.run("--version=SS").output, incomplete);
    EXPECT_EQ(unit.run("--version=FPGA").output, "FPGAVersion: 1.4.0.2\n");
    unit.shutDown();
    EXPECT_EQ(unit.run("--version=SS").output, incomplete);

    unit.set("/firmware/pace", 0);
    const std::string text = hexFile(randomBytes(1000));
    EXPECT_EQ(verify(unit, text), differs);
    EXPECT_EQ(upgrade(unit, text), upgraded);
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
    EXPECT_EQ(verify(unit, text), verified);
}

TEST(FirmwareJob, LeavesTheFirmwareUnchangedIfKilledBeforeFlashing)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 60000); // milliseconds
    const std::string output = unit.directory / "output";
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(becomesTrue([&] { return readFile(output).ends_with("Initiating\n"); })) << readFile(output);
    program.kill();
    EXPECT_EQ(unit.run("--version=SS").output, "SSVersion: 2.7.1.0\n");
}

TEST(FirmwareJob, IsTheOnlyOneOnItsUnit)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 60000); // milliseconds
    const std::string output = unit.directory / "output";
    const std::string text = hexFile(randomBytes(1000));
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(becomesTrue([&] { return readFile(output).ends_with("Initiating\n"); })) << readFile(output);

    EXPECT_EQ(upgrade(unit, text), upgradeBegins + "startSSUpgrade: Another firmware job is running\n"s);
    EXPECT_EQ(unit.run("--advanced --verify=FPGA --force --filepath=" + unit.mcs).output,
              verificationBegins + "startFpgaVerification: Another firmware job is running\n"s);
    EXPECT_EQ(unit.run("--buzzer --volume=40").output, "Buzzer volume set to: 40\n");
    FirmwareUnit otherUnit;
    EXPECT_EQ(upgrade(otherUnit, text), upgraded);

    program.kill();
    unit.set("/firmware/pace", 0);
    EXPECT_EQ(upgrade(unit, text), upgraded);
}

TEST(FirmwareJob, EndsTheProgramIfTheUnitFileIsDamaged)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 100); // milliseconds
    const std::string output = unit.directory / "output";
    Running program(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex), output);
    ASSERT_TRUE(becomesTrue([&] { return readFile(output).ends_with("Initiating\n"); })) << readFile(output);
    writeFile(unit.file(), "{");
    EXPECT_TRUE(
        becomesTrue([&] { return readFile(output).ends_with("\nError: The unit file is not valid\n"); }))
        << readFile(output);
}

TEST(FirmwareJob, ReportsItsProgressInTheSecondWord)
{
    FirmwareUnit unit;
    const Result result = unit.run("--advanced --verify=SS --force --filepath=" + unit.hex);
    EXPECT_EQ(result.calls.at(3), "FirmwareUpgrade_getUpgradeStatus([0, 0, 0], 1) = 0");
    EXPECT_EQ(result.calls.at(6), "FirmwareUpgrade_getUpgradeStatus([3, 50, 0], 1) = 0");
    EXPECT_EQ(result.calls.at(7), "FirmwareUpgrade_getUpgradeStatus([5, 83, 91], 1) = 0");
}

TEST(FirmwareJob, KeepsItsPaceWithoutBusyWaiting)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 300); // milliseconds
    const auto begin = Clock::now();
    const Outcome outcome =
        runCommand(programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex));
    const std::chrono::duration<double> time = Clock::now() - begin;
    EXPECT_TRUE(outcome.output.ends_with(upgraded.substr(upgraded.find("Done\n")))) << outcome.output;
    EXPECT_GE(time.count(), 6 * 0.3);
    EXPECT_LT(outcome.processorTime, time.count() / 4);
}

TEST(FirmwareJob, KeepsItsPaceWhileTheClockJumps)
{
    FirmwareUnit unit;
    unit.set("/firmware/pace", 100); // milliseconds
    Command command = programOn(unit.file(), "--advanced --update=SS --force --filepath=" + unit.hex);
    command.environment["JUMPING_CLOCK"] = "jumps";
    const auto begin = Clock::now();
    EXPECT_EQ(runCommand(command).output, upgraded);
    const std::chrono::duration<double> time = Clock::now() - begin;
    EXPECT_GE(time.count(), 6 * 0.1);
    EXPECT_LT(time.count(), 60);
}

} // namespace
