// Random firmware files, valid and invalid, that are read by the simulated unit, by srec_cat and by the
// Python library intelhex. All three must agree on whether a file is valid, on its bytes, and on the line of
// the error. The differences are listed in Expected.

#include "device/qv_aux2.h"
#include "simulator/robustness/sweep.h"
#include "support/hex_file.h"
#include "support/process.h"
#include "support/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <regex>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr std::uint32_t segment = 0x10000;

// The unit is stricter than the tools.
enum class Expected
{
    agreement,
    refusedByUnitOnly, // no end record, or data after it
    ignoredBySrecord,  // a line that does not begin with a colon
};

struct File
{
    std::string text;
    std::string what; // for messages
    Expected expected = Expected::agreement;
};

class Generator
{
public:
    explicit Generator(unsigned seed) : engine(seed)
    {
    }

    File make()
    {
        makeRecords();
        File file;
        if (number(2) == 1)
            file = damage();
        else
            file.what = "valid";
        records.push_back(hexEnd);
        if (file.what == "without end record")
            records.pop_back();
        if (file.what == "with data after its end")
            records.push_back(number(2) == 1 ? "junk\n" : hexRecord(0, 0, "x"));
        file.text = layOut();
        return file;
    }

private:
    unsigned number(unsigned limit)
    {
        return std::uniform_int_distribution<unsigned>(0, limit - 1)(engine);
    }

    std::string bytes(unsigned size)
    {
        return randomBytes(size, number(1000000) + 1);
    }

    // Adds up to four areas in different segments. Segmented addresses end at 1 MiB. A record with one must
    // not cross the end of its segment, because the tools wrap there and the unit does not.
    void makeRecords()
    {
        const bool isSegmented = number(4) == 0;
        std::vector<unsigned> segments(isSegmented ? 14 : 60000);
        for (unsigned i = 0; i < segments.size(); ++i)
            segments[i] = i;
        std::ranges::shuffle(segments, engine);
        for (unsigned area = number(4) + 1; area > 0; --area)
            makeArea(segments[area] * segment, isSegmented);
        // After a start record of the other kind, srec_cat confuses linear and segmented addresses.
        if (number(4) == 0)
            insert(hexRecord(isSegmented ? 3 : 5, 0, bytes(4)));
    }

    void makeArea(std::uint32_t base, bool isSegmented)
    {
        const unsigned paragraph = base >> 4;
        const unsigned upper = base >> 16;
        const unsigned field = isSegmented ? paragraph : upper;
        records.push_back(
            hexRecord(isSegmented ? 2 : 4, 0, {static_cast<char>(field >> 8), static_cast<char>(field)}));
        unsigned address = number(segment - 3000);
        if (!isSegmented && number(3) == 0)
            address = segment - number(20) - 1; // the first record crosses into the next segment
        std::vector<std::string> data;
        for (unsigned count = number(12) + 1; count > 0 && address < segment; --count)
        {
            const std::string content = bytes(number(10) == 0 ? number(256) : number(32));
            data.push_back(hexRecord(0, address, content));
            address += static_cast<unsigned>(content.size()) + (number(3) == 0 ? number(50) : 0);
        }
        if (number(3) == 0)
            std::ranges::shuffle(data, engine);
        records.insert(records.end(), data.begin(), data.end());
    }

    void insert(const std::string& record)
    {
        records.insert(records.begin() + number(static_cast<unsigned>(records.size()) + 1), record);
    }

    std::string& anyRecord()
    {
        return records[number(static_cast<unsigned>(records.size()))];
    }

    // Changes one thing, but no newline.
    File damage()
    {
        std::string& record = anyRecord();
        const auto place = 1 + number(static_cast<unsigned>(record.size()) - 2); // of a digit
        switch (number(11))
        {
        case 0:
            record[place] = record[place] == '7' ? '8' : '7';
            return {"", "with a wrong digit"};
        case 1:
            record[place] = "GZ.-x/@`"[number(8)];
            return {"", "with a character that is no digit"};
        case 2:
            record.erase(place, record.size() - 1 - place);
            return {"", "with a truncated record"};
        case 3:
            record.erase(place, 1);
            return {"", "with a missing digit"};
        case 4:
            record.insert(place, 1, record[place]);
            return {"", "with an additional digit"};
        case 5:
            insert(hexRecord(6 + number(250), 0, bytes(number(20))));
            return {"", "with a record of an unknown type"};
        case 6:
            insert(hexRecord(1 + number(5), 0, bytes(number(2) == 0 ? 1 : 5 + number(8))));
            return {"", "with a record of a wrong length"};
        case 7:
            record.erase(0, 1);
            return {"", "with a missing colon", Expected::ignoredBySrecord};
        case 8:
            insert(hexRecord(4, 0, std::string(2, '\0')) + hexRecord(0, 100, "abc") +
                   hexRecord(0, 102, "de"));
            return {"", "with two bytes for an address"};
        case 9:
            return {"", "without end record", Expected::refusedByUnitOnly};
        default:
            return {"", "with data after its end", Expected::refusedByUnitOnly};
        }
    }

    // Varies line ends, empty lines and the case of digits, as other tools do.
    std::string layOut()
    {
        const bool hasReturns = number(3) == 0;
        const bool isLower = number(3) == 0;
        std::string text;
        for (const std::string& record : records)
        {
            if (number(20) == 0)
                text += hasReturns ? "\r\n" : "\n";
            text += hasReturns ? replaced(record, "\n", "\r\n") : record;
        }
        if (isLower)
            std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
        return text;
    }

    std::mt19937 engine;
    std::vector<std::string> records;
};

// The result of one tool for a file. The line is 0 if it is unknown.
struct Reading
{
    bool accepted;
    unsigned long line;
};

std::ostream& operator<<(std::ostream& stream, const Reading& reading)
{
    return stream << (reading.accepted ? "accepted" : "refused in line " + std::to_string(reading.line));
}

Command tool(const std::vector<std::string>& words)
{
    return {.words = words, .environment = {{"PATH", "/usr/bin:/bin"}, {"LC_ALL", "C.UTF-8"}}};
}

std::map<std::string, Reading> readWithIntelhex(const std::string& directory)
{
    std::map<std::string, Reading> readings;
    const Outcome outcome =
        runCommand(tool({"/usr/bin/python3", PROJECT_DIRECTORY "/tests/support/read_hex.py", directory}));
    EXPECT_EQ(outcome.errors, "");
    std::istringstream lines(outcome.output);
    for (std::string name, result; lines >> name >> result;)
    {
        Reading& reading = readings[name];
        reading = {result == "accepted", 0};
        if (!reading.accepted)
            lines >> reading.line;
    }
    return readings;
}

// Converts each NAME.hex to NAME.hex.srecord.
std::map<std::string, Reading> readWithSrecord(const std::string& directory)
{
    const std::string convert = R"(
        cd "$1"
        for file in *.hex; do
            srec_cat "$file" -intel -o "$file.srecord" -intel 2>"$file.srecord-errors" || rm -f "$file.srecord"
        done)";
    runCommand(tool({"sh", "-c", convert, "sh", directory}));
    static const std::regex error("srec_cat: [^ ]*: ([0-9]+): (?!warning)");
    std::map<std::string, Reading> readings;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
    {
        if (entry.path().extension() != ".hex")
            continue;
        const std::string path = entry.path();
        const std::string errors = readFile(path + ".srecord-errors");
        std::smatch found;
        const bool hasLine = std::regex_search(errors, found, error);
        readings[entry.path().filename()] = {fileExists(path + ".srecord"),
                                             hasLine ? std::stoul(found[1]) : 0};
    }
    return readings;
}

// Runs a job to its end and returns its error.
ApiError runJob(ApiError (*start)(FirmwareUpgradeHandle, const char*, std::int32_t), const std::string& path)
{
    const FirmwareUpgradeHandle upgrade = GetFirmwareUpgrade();
    UpgradeStatus status{};
    if (const ApiError code = start(upgrade, path.c_str(), 0); code != QV_SUCCESS)
        return code;
    while (status.error == QV_SUCCESS && status.state != QV_UPGRADE_DONE)
        if (const ApiError code = FirmwareUpgrade_getUpgradeStatus(upgrade, &status, 1); code != QV_SUCCESS)
            return code;
    FirmwareUpgrade_release(upgrade);
    return status.error;
}

// Upgrades to each file, and verifies the firmware with the files that the tools wrote after reading it.
// Writes the name, the result, the line and the number of failed verifications to the file "results".
void upgradeToEach(const std::string& directory, const std::vector<std::string>& names)
{
    setenv("QVAUX_UNIT", (directory + "/unit.json").c_str(), 1);
    writeFile(directory + "/unit.json", R"({"firmware": {"pace": 0}})");
    static const std::regex place(R"(.* \(line ([0-9]+)\))");
    std::string results;
    for (const std::string& name : names)
    {
        const std::string path = directory + "/" + name;
        const ApiError error = runJob(FirmwareUpgrade_startSSUpgrade, path);
        std::cmatch found;
        const bool hasLine = std::regex_match(GetErrorStringA(error), found, place);
        int differing = 0;
        for (const char* written : {".intelhex", ".srecord"})
            if (error == QV_SUCCESS && fileExists(path + written))
                differing += runJob(FirmwareUpgrade_startSSVerification, path + written) != QV_SUCCESS;
        results += name + (error == QV_SUCCESS ? " accepted " : " refused ") +
                   (hasLine ? found[1].str() : "0") + " " + std::to_string(differing) + "\n";
    }
    writeFile(directory + "/results", results);
}

struct UnitReading : Reading
{
    int differing; // number of failed verifications
};

std::map<std::string, UnitReading> readWithUnit(const std::string& directory,
                                                const std::vector<std::string>& names)
{
    const pid_t child = fork();
    if (child == 0)
    {
        upgradeToEach(directory, names);
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    std::map<std::string, UnitReading> readings;
    std::istringstream lines(readFile(directory + "/results"));
    for (std::string name, result; lines >> name >> result;)
    {
        UnitReading& reading = readings[name];
        reading.accepted = result == "accepted";
        lines >> reading.line >> reading.differing;
    }
    return readings;
}

bool agree(const Reading& unit, const Reading& tool)
{
    // An error of the whole file has no line.
    return unit.accepted == tool.accepted && (unit.line == 0 || tool.line == 0 || unit.line == tool.line);
}

Verdict judge(const File& file, const UnitReading& unit, const Reading& intelhex, const Reading& srecord)
{
    std::ostringstream text;
    text << "unit: " << unit << ", intelhex: " << intelhex << ", srecord: " << srecord;
    if (unit.differing > 0)
        return {Defect::falseSuccess, "the bytes differ; " + text.str()};
    const bool isAsExpected =
        file.expected == Expected::refusedByUnitOnly
            ? !unit.accepted && intelhex.accepted && srecord.accepted
            : agree(unit, intelhex) && (agree(unit, srecord) || file.expected == Expected::ignoredBySrecord);
    return isAsExpected ? Verdict{} : Verdict{Defect::other, text.str()};
}

TEST(HexTools, AgreeWithTheUnitOnRandomFiles)
{
    const TemporaryDirectory directory = TemporaryDirectory::inMemory();
    std::map<std::string, File> files;
    std::vector<std::string> names;
    for (unsigned seed = 1; seed <= (isFullSweep() ? 4000 : 60); ++seed)
    {
        const std::string name = std::to_string(seed) + ".hex";
        files[name] = Generator(seed).make();
        writeFile(directory / name, files[name].text);
        names.push_back(name);
    }
    const auto intelhex = readWithIntelhex(directory.path);
    const auto srecord = readWithSrecord(directory.path);
    const auto unit = readWithUnit(directory.path, names);
    Sweep sweep;
    for (const std::string& name : names)
    {
        const File& file = files.at(name);
        sweep.add(name + ", " + file.what, judge(file, unit.at(name), intelhex.at(name), srecord.at(name)));
        sweep.count(unit.at(name).accepted ? "accepted" : "refused");
    }
}

} // namespace
