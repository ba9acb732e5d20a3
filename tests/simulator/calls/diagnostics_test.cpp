// The messages of the simulated unit on standard error.

#include "device/qv_aux2.h"
#include "support/called_unit.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace
{

using testing::EndsWith;
using testing::StartsWith;

constexpr std::size_t longestLine = 1024;

std::string diagnosticOf(const std::string& unitFile)
{
    setenv("QVAUX_UNIT", unitFile.c_str(), 1);
    testing::internal::CaptureStderr();
    EXPECT_NE(Buzzer_setVolume(GetBuzzer(), 40), 0u);
    return testing::internal::GetCapturedStderr();
}

TEST(Diagnostics, EscapeControlCharacters)
{
    const CalledUnit unit;
    EXPECT_EQ(diagnosticOf("/none/a\n\x1b[31m\x7f\xc3\x9f/unit.json"),
              "libqv-aux2: /none/a\\x0a\\x1b[31m\\x7f\xc3\x9f/unit.json: its directory does not exist\n");
}

TEST(Diagnostics, AreAtMost1KiBLong)
{
    const CalledUnit unit;
    for (const std::string name : {"x/", "\n/", "\xc3\x9f/", "\xe2\x82\xac/"})
        for (std::size_t count = 160; count < 1000; count += 37)
        {
            std::string path = "/none/" + std::to_string(count) + "/";
            for (std::size_t i = 0; i < count; ++i)
                path += name;
            SCOPED_TRACE(path);
            const std::string line = diagnosticOf(path + "unit.json");
            EXPECT_LE(line.size(), longestLine);
            EXPECT_THAT(line, StartsWith("libqv-aux2: /none/"));
            EXPECT_THAT(line, EndsWith("/unit.json: its directory does not exist\n"));
            EXPECT_EQ(line.find('\n'), line.size() - 1);
            EXPECT_TRUE(path.size() <= longestLine || line.find("...") != std::string::npos);
            EXPECT_NO_THROW(nlohmann::json(line).dump()) << "truncated within a character";
        }
}

TEST(Diagnostics, OfAnInvalidFileAreShort)
{
    const CalledUnit unit;
    writeFile(unit.file(), "{\"about\": {\"unitSerial\": \"" + std::string(1000000, 'x'));
    const std::string line = diagnosticOf(unit.file());
    EXPECT_LE(line.size(), longestLine);
    EXPECT_THAT(line, StartsWith("libqv-aux2: " + unit.file() + ": line 1, column 1000027: "));
}

} // namespace
