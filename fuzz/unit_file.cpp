// Fuzzes the simulated unit: calls its operations with arbitrary unit files and firmware files, and checks
// that every call returns and that no data is lost.
//
// The first byte of an input selects an operation. The next 16 bytes are four numbers for its arguments. The
// rest is the unit file. For some operations it is a firmware file instead, and the unit is healthy:
// operations that start a firmware job are in the table twice, once for each.

#include "device/qv_aux2.h"
#include "expect.h"
#include "simulator/unit/codes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <time.h>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using Json = nlohmann::json;

std::chrono::nanoseconds currentTime{};

// Contains the unit file and the firmware file until the fuzzer ends.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string name = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
        name += "/unit-file-fuzzer.XXXXXX";
        expect(::mkdtemp(name.data()), "the temporary directory can be created");
        path = name;
        ::setenv("QVAUX_UNIT", unitFile().c_str(), 1);
    }

    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::string unitFile() const
    {
        return path / "unit.json";
    }

    std::string firmwareFile() const
    {
        return path / "firmware.hex";
    }

    std::filesystem::path path;
};

const TemporaryDirectory& directory()
{
    static const TemporaryDirectory created;
    return created;
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    expect(file.is_open(), "the unit file exists");
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, std::string_view content)
{
    std::filesystem::remove(path);
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

// Discards the diagnostics that the simulated unit prints to standard error.
class DiscardedErrors
{
public:
    DiscardedErrors() : original(stderr)
    {
        static std::FILE* const null = std::fopen("/dev/null", "w");
        stderr = null;
    }

    ~DiscardedErrors()
    {
        stderr = original;
    }

private:
    std::FILE* original;
};

using Numbers = std::array<std::uint32_t, 4>; // no operation takes more

// Converts to each argument of an operation, from left to right: to the next number, truncated to the type of
// the parameter, or to a pointer to one buffer for all results.
struct Arguments
{
    Numbers numbers;
    std::size_t used = 0;
    bool hasBuffer = false;
    std::vector<char> buffer = std::vector<char>(QV_EEPROM_SIZE);

    template <std::integral Integer>
    operator Integer()
    {
        const std::uint32_t number = numbers[used++];
        // The length of a buffer follows the buffer.
        const bool isLength = hasBuffer && std::same_as<Integer, std::uint32_t>;
        return static_cast<Integer>(isLength ? number % (buffer.size() + 1) : number);
    }

    template <typename Result>
    operator Result*()
    {
        hasBuffer = true;
        return reinterpret_cast<Result*>(buffer.data());
    }

    operator const char*()
    {
        static const std::string path = directory().firmwareFile();
        return path.c_str();
    }

    operator double()
    {
        return std::bit_cast<float>(numbers[used++]);
    }
};

template <typename Handle, typename... Parameter>
ApiError call(ApiError (*operation)(Handle, Parameter...), Handle handle, Arguments arguments)
{
    // Braces guarantee the order of the conversions.
    const std::tuple<Parameter...> converted{static_cast<Parameter>(arguments)...};
    return std::apply([&](Parameter... each) { return operation(handle, each...); }, converted);
}

// One handle per module, obtained before the first input, because the faults of an input could prevent it.
#define MODULE(module) module##Handle handleOf##module;
#include "operations.def"

void obtainHandles()
{
    if (handleOfAbout)
        return;
    writeFile(directory().unitFile(), "{}");
#define MODULE(module) handleOf##module = Get##module();
#include "operations.def"
}

enum class Fuzzed
{
    unitFile,
    firmwareFile,
};

struct Operation
{
    ApiError (*call)(Arguments arguments);
    bool startsJob;
    Fuzzed fuzzed;
};

#define ROW(module, operation, startsJob, fuzzed)                                                            \
    {[](Arguments arguments) { return call(module##_##operation, handleOf##module, std::move(arguments)); }, \
     startsJob, fuzzed},
const Operation operations[] = {
#define STARTS_JOB(module, operation, extension)                                                             \
    ROW(module, operation, true, Fuzzed::firmwareFile) ROW(module, operation, true, Fuzzed::unitFile)
#define OTHER(module, operation) ROW(module, operation, false, Fuzzed::unitFile)
#include "operations.def"
};

// Returns whether `after` has every key of `before`.
bool keepsKeys(const Json& before, const Json& after)
{
    if (!before.is_object())
        return true;
    for (const auto& [key, value] : before.items())
        if (!after.contains(key) || !keepsKeys(value, after[key]))
            return false;
    return true;
}

std::optional<Json> parse(const std::string& text)
{
    Json json = Json::parse(text, nullptr, false);
    return json.is_discarded() ? std::nullopt : std::optional(std::move(json));
}

bool isExpectedFile(const std::filesystem::path& file)
{
    const std::string name = file.filename();
    return name == "unit.json" || name == "unit.json.lock" || name == "unit.json.job" ||
           name == "firmware.hex";
}

void checkDirectory(const std::string& unitBefore, const std::vector<ApiError>& codes)
{
    const std::string after = readFile(directory().unitFile());
    const auto before = parse(unitBefore);
    // A fault in a valid file may return this error too.
    const bool rejected =
        std::ranges::count(codes, simulator::unitFileInvalid) > 0 && !(before && before->contains("faults"));
    expect((before && !rejected) || after == unitBefore, "an invalid unit file does not change");
    expect(!before || keepsKeys(*before, Json::parse(after)), "no key is lost");
    for (const auto& entry : std::filesystem::directory_iterator(directory().path))
        expect(isExpectedFile(entry), "no temporary file remains");
}

constexpr int statusCalls = 9; // enough to follow a job to its end

// Follows the job to its end and returns its last status.
UpgradeStatus finishJob()
{
    UpgradeStatus status{};
    for (int i = 0; i < statusCalls && status.state != QV_UPGRADE_DONE && status.error == QV_SUCCESS; ++i)
        FirmwareUpgrade_getUpgradeStatus(handleOfFirmwareUpgrade, &status, 1);
    return status;
}

void fuzzUnitFile(const Operation& operation, const Arguments& arguments, const std::string& content)
{
    writeFile(directory().unitFile(), content);
    const BuzzerHandle buzzer = GetBuzzer();
    std::vector<ApiError> codes = {operation.call(arguments), Buzzer_setVolume(handleOfBuzzer, 40)};
    const bool jobStarted = operation.startsJob && codes[0] == QV_SUCCESS;
    if (jobStarted)
    {
        writeFile(directory().firmwareFile(), ":0100000041BE\n:00000001FF\n");
        UpgradeStatus status{};
        for (int i = 0; i < statusCalls; ++i)
            codes.push_back(FirmwareUpgrade_getUpgradeStatus(handleOfFirmwareUpgrade, &status, 1));
    }
    const auto number = static_cast<std::uint16_t>(arguments.numbers[0]);
    std::vector<const char*> texts = {GetStartupReasonStringA(number), GetHwErrorStatusStringA(number)};
    std::ranges::transform(codes, std::back_inserter(texts), GetErrorStringA);
    for (const char* text : texts)
        expect(!text || std::strlen(text) < content.size() + 100, "a text is constant or from the unit file");
    Buzzer_release(buzzer);
    checkDirectory(content, codes);
    if (!jobStarted)
        return;
    // A scripted status may have kept the job from ending. The next input could not start another one.
    writeFile(directory().unitFile(), "{}");
    finishJob();
}

UpgradeStatus finishAndCheckJob()
{
    const UpgradeStatus status = finishJob();
    if (status.error == QV_SUCCESS)
        expect(status.state == QV_UPGRADE_DONE, "a job without an error is done");
    else
        expect(status.error >= simulator::firmwareUnreadable && status.error <= simulator::firmwareContinues,
               "a failed job reports an error of the firmware file");
    expect(GetErrorStringA(status.error), "every error has a text");
    return status;
}

void fuzzFirmwareFile(const Operation& operation, const Arguments& arguments, std::string_view content)
{
    writeFile(directory().unitFile(), "{}");
    writeFile(directory().firmwareFile(), content);
    expect(operation.call(arguments) == QV_SUCCESS, "a job starts");
    const bool succeeded = finishAndCheckJob().error == QV_SUCCESS;
    const auto unit = parse(readFile(directory().unitFile()));
    expect(unit.has_value(), "the unit file is valid JSON");
    const Json firmware = unit->value("firmware", Json::object());
    expect(firmware.empty() || succeeded, "an invalid firmware file changes nothing");
    if (!succeeded)
        return;
    // The job was an upgrade: no file matches the initial firmware, so every verification fails. The two rows
    // of the verification follow those of the upgrade.
    const Operation& verification = (&operation)[2];
    expect(verification.call(arguments) == QV_SUCCESS, "a verification starts");
    expect(finishAndCheckJob().error == QV_SUCCESS, "upgraded firmware matches its file");
}

} // namespace

// Waiting takes no time: sleeping advances the clock that the simulated unit reads.

std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept
{
    return time_point(currentTime);
}

extern "C" int nanosleep(const timespec* duration, timespec*)
{
    currentTime += std::chrono::seconds(duration->tv_sec) + std::chrono::nanoseconds(duration->tv_nsec);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    Arguments arguments{};
    constexpr std::size_t headerSize = 1 + sizeof arguments.numbers;
    if (size < headerSize)
        return -1;
    const DiscardedErrors discarded;
    currentTime = {};
    obtainHandles();
    const Operation& operation = operations[bytes[0] % std::size(operations)];
    std::memcpy(arguments.numbers.data(), bytes + 1, sizeof arguments.numbers);
    const std::string content(reinterpret_cast<const char*>(bytes) + headerSize, size - headerSize);
    if (operation.fuzzed == Fuzzed::firmwareFile)
        fuzzFirmwareFile(operation, arguments, content);
    else
        fuzzUnitFile(operation, arguments, content);
    return 0;
}
