#include "device/qv_aux2.h"
#include "support/called_unit.h"
#include "support/firmware_unit.h"

#include <filesystem>

namespace
{

TEST(FirmwareJob, NeedsADisplayForTheFront)
{
    const Called<FirmwareUnit> unit(R"({"about": {"display": false}})");
    EXPECT_EQ(FirmwareUpgrade_startFrontUpgrade(GetFirmwareUpgrade(), unit.hex.c_str(), 0), 2u);
}

TEST(FirmwareJob, NeedsAPath)
{
    const Called<FirmwareUnit> unit;
    EXPECT_EQ(FirmwareUpgrade_startSSUpgrade(GetFirmwareUpgrade(), nullptr, 0), 4u);
}

TEST(FirmwareJob, FailsIfItsProgressCannotBeSaved)
{
    const Called<FirmwareUnit> unit;
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    ASSERT_EQ(FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0), 0u);
    UpgradeStatus status{};
    while (status.state != 4)
        ASSERT_EQ(FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1), 0u);
    std::filesystem::create_directory(unit.file() + ".new");
    EXPECT_EQ(FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1), 67u);
    EXPECT_EQ(status.state, 4);
    EXPECT_EQ(unit.calls().back(), "FirmwareUpgrade_getUpgradeStatus([], 1) = 67");
    std::filesystem::remove(unit.file() + ".new");
    EXPECT_EQ(FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1), 0u);
    EXPECT_EQ(status.error, 67u);
    EXPECT_EQ(unit["/firmware/ss/incomplete"], true);

    ASSERT_EQ(FirmwareUpgrade_startSSUpgrade(upgrade, unit.hex.c_str(), 0), 0u);
    for (status = {}; status.state != 6 && status.error == 0;)
        ASSERT_EQ(FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1), 0u);
    EXPECT_EQ(status.error, 0u);
}

} // namespace
