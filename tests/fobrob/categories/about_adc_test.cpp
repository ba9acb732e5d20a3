// The report of --about=ADC. command_lines.cpp lists all channels in order.

#include "support/text.h"
#include "support/unit.h"

namespace
{

TEST(AboutAdc, PrintsSixSignificantDigits)
{
    const struct
    {
        double volts;
        const char* text;
    } cases[] = {
        {0, "0"},
        {5, "5"},
        {-0.5, "-0.5"},
        {24.123456, "24.1235"},
        {1.0000004, "1"},
        {100000, "100000"},
        {999999.5, "1e+06"},
        {1234567, "1.23457e+06"},
        {0.0001, "0.0001"},
        {0.000012345, "1.2345e-05"},
    };
    for (const auto& [volts, text] : cases)
    {
        SCOPED_TRACE(text);
        Unit unit;
        unit.set("/adc/24VIN", volts);
        EXPECT_EQ(valueAfter(unit.run("--about=ADC").output, "VOLTAGE_24VIN: Voltage="), text);
    }
}

TEST(AboutAdc, OmitsTheChannelsThatTheUnitDoesNotHave)
{
    Unit unit;
    for (const char* name : {"24VIN",      "24V", "12VID", "5V",      "3V3",      "VTFT",    "5VSTB",
                             "1V9",        "1V8", "1V5",   "1V2",     "1V05",     "0V9",     "VREF_INT",
                             "24V_BACKUP", "2V5", "1V1",   "1V3_PER", "1V3_VDDA", "3V3STBY", "VPMIC"})
        unit.set(std::string("/adc/") + name, nullptr);
    const Result result = unit.run("--about=ADC");
    EXPECT_EQ(result.output, lines({"VOLTAGE_12V: Voltage=12.04", "VOLTAGE_1V0: Voltage=1",
                                    "VOLTAGE_VMAIN: Voltage=11.96"}));
    EXPECT_EQ(result.calls.size(), 32u);
}

} // namespace
