// Calls the simulated unit with anything in its file, or anything in the firmware file that it is given. It
// answers with a code or a result, and loses no file.
//
// The first byte of an input chooses an operation, the next sixteen are four numbers for it. What follows is
// the unit's file; or the firmware file of a healthy unit, for operations that start a firmware job, which
// stand in the table once for each.

#include "device/qv_aux2.h"
#include "promise.h"

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <concepts>
#include <cstdint>
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
#include <vector>

// Waiting takes no time: the clock that the unit looks at goes on by what it sleeps.

static std::chrono::nanoseconds slept{};

std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept
{
    return time_point(slept);
}

extern "C" int nanosleep(const timespec* duration, timespec*)
{
    slept += std::chrono::seconds(duration->tv_sec) + std::chrono::nanoseconds(duration->tv_nsec);
    return 0;
}

namespace
{

using Json = nlohmann::json;

constexpr ApiError notValid = 66;

// Where the unit and its firmware file are, until the fuzzer ends.
class Folder
{
public:
    Folder()
    {
        std::string name = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
        name += "/unit-file-fuzzer.XXXXXX";
        promise(::mkdtemp(name.data()), "there is a place for the unit");
        path = name;
        ::setenv("QVAUX_UNIT", unit().c_str(), 1);
    }

    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::string unit() const
    {
        return path / "unit.json";
    }

    std::string firmware() const
    {
        return path / "firmware.hex";
    }

    std::filesystem::path path;
};

const Folder& folder()
{
    static const Folder made;
    return made;
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    promise(file.is_open(), "the unit's file is there");
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, std::string_view content)
{
    std::filesystem::remove(path);
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

// Takes standard error away from the library, which explains there what is wrong with the file.
class Silence
{
public:
    Silence() : own(stderr)
    {
        static std::FILE* const nowhere = std::fopen("/dev/null", "w");
        stderr = nowhere;
    }

    ~Silence()
    {
        stderr = own;
    }

private:
    std::FILE* own;
};

using Numbers = std::array<std::uint32_t, 4>; // as many as any operation takes

// Arguments for any operation, taken from left to right: its numbers, cut to their types, and a place for its
// results.
struct Arguments
{
    Numbers numbers;
    std::size_t taken = 0;
    bool hasPlace = false;
    std::vector<char> place = std::vector<char>(4096);

    // Behind the place stands its length.
    template <std::integral Integer>
    operator Integer()
    {
        const std::uint32_t number = numbers[taken++];
        const bool isLength = hasPlace && std::same_as<Integer, std::uint32_t>;
        return static_cast<Integer>(isLength ? number % (place.size() + 1) : number);
    }

    template <typename Result>
    operator Result*()
    {
        hasPlace = true;
        return reinterpret_cast<Result*>(place.data());
    }

    operator const char*()
    {
        static const std::string path = folder().firmware();
        return path.c_str();
    }

    operator double()
    {
        return std::bit_cast<float>(numbers[taken++]);
    }
};

template <typename Handle, typename... Parameter>
ApiError call(ApiError (*operation)(Handle, Parameter...), Handle handle, Arguments arguments)
{
    // In braces, so that they are taken in their order.
    const std::tuple<Parameter...> taken{static_cast<Parameter>(arguments)...};
    return std::apply([&](Parameter... each) { return operation(handle, each...); }, taken);
}

// The handles, obtained once. An input's faults cannot keep them back.
#define MODULE(module) module##Handle given##module;
#define READS_TEXT(module, operation)
#define READS(module, operation, type)
#define SETS(module, operation, type, allowed)
#define STARTS(module, operation)
#define OTHER(module, operation)
#include "operations.def"

void obtainHandles()
{
    if (givenAbout)
        return;
    writeFile(folder().unit(), "{}");
#define MODULE(module) given##module = Get##module();
#define READS_TEXT(module, operation)
#define READS(module, operation, type)
#define SETS(module, operation, type, allowed)
#define STARTS(module, operation)
#define OTHER(module, operation)
#include "operations.def"
}

struct Operation
{
    ApiError (*call)(Arguments arguments);
    bool startsJob;
    bool meetsFirmwareFile;
};

#define CALL(module, operation)                                                                              \
    [](Arguments arguments) { return call(module##_##operation, given##module, std::move(arguments)); }
const Operation operations[] = {
#define MODULE(module)
#define READS_TEXT(module, operation) {CALL(module, operation), false, false},
#define READS(module, operation, type) {CALL(module, operation), false, false},
#define SETS(module, operation, type, allowed) {CALL(module, operation), false, false},
#define STARTS(module, operation)                                                                            \
    {CALL(module, operation), true, true}, {CALL(module, operation), true, false},
#define OTHER(module, operation) {CALL(module, operation), false, false},
#include "operations.def"
};

// Whether everything that `before` has a place for still has one.
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

// The unit's file, its locks, and the firmware file.
bool isKnown(const std::filesystem::path& file)
{
    const std::string name = file.filename();
    return name == "unit.json" || name == "unit.json.lock" || name == "unit.json.job" ||
           name == "firmware.hex";
}

void checkNothingLost(const std::string& before, const std::vector<ApiError>& codes)
{
    const std::string after = readFile(folder().unit());
    const auto was = parse(before);
    // A fault in a good file may have the code of one that is not valid.
    const bool refused = std::ranges::count(codes, notValid) > 0 && !(was && was->contains("faults"));
    promise((was && !refused) || after == before, "a refused file is left alone");
    promise(!was || keepsKeys(*was, Json::parse(after)), "no key is lost");
    for (const auto& entry : std::filesystem::directory_iterator(folder().path))
        promise(isKnown(entry), "nothing stays beside the unit's files");
}

constexpr int jobCalls = 9; // as many as follow a job to its end

// The last status of a healthy unit's job, if there is one.
UpgradeStatus endJob()
{
    UpgradeStatus status{};
    for (int call = 0; call < jobCalls && status.state != 6 && status.error == 0; ++call)
        FirmwareUpgrade_getUpgradeStatus(givenFirmwareUpgrade, &status, 1);
    return status;
}

void tryUnitFile(const Operation& operation, const Arguments& arguments, const std::string& content)
{
    writeFile(folder().unit(), content);
    const BuzzerHandle buzzer = GetBuzzer();
    std::vector<ApiError> codes = {operation.call(arguments), Buzzer_setVolume(givenBuzzer, 40)};
    const bool hasJob = operation.startsJob && codes[0] == 0;
    if (hasJob)
    {
        writeFile(folder().firmware(), ":0100000041BE\n:00000001FF\n");
        UpgradeStatus status{};
        for (int call = 0; call < jobCalls; ++call)
            codes.push_back(FirmwareUpgrade_getUpgradeStatus(givenFirmwareUpgrade, &status, 1));
    }
    const auto number = static_cast<std::uint16_t>(arguments.numbers[0]);
    std::vector<const char*> texts = {GetStartupReasonStringA(number), GetHwErrorStatusStringA(number)};
    std::ranges::transform(codes, std::back_inserter(texts), GetErrorStringA);
    for (const char* text : texts)
        promise(!text || std::strlen(text) < content.size() + 100, "a text is the unit's own or the file's");
    Buzzer_release(buzzer);
    checkNothingLost(content, codes);
    if (!hasJob)
        return;
    // A job that the unit kept from its end would be in the next one's way.
    writeFile(folder().unit(), "{}");
    endJob();
}

// What a job came to, followed to its end.
UpgradeStatus follow()
{
    const UpgradeStatus status = endJob();
    promise(status.error == 0 ? status.state == 6 : status.error >= 82 && status.error <= 93,
            "a job ends well or with a reason");
    promise(GetErrorStringA(status.error), "every reason has a text");
    return status;
}

void tryFirmwareFile(const Operation& operation, const Arguments& arguments, std::string_view content)
{
    writeFile(folder().unit(), "{}");
    writeFile(folder().firmware(), content);
    promise(operation.call(arguments) == 0, "a job is started");
    const bool good = follow().error == 0;
    const auto unit = parse(readFile(folder().unit()));
    promise(unit.has_value(), "the unit's file stays whole");
    const Json firmware = unit->value("firmware", Json::object());
    promise(firmware.empty() || good, "a refused firmware file changes nothing");
    if (!good)
        return;
    // A healthy unit's first firmware verifies against no file, so this was an upgrade. Its verification
    // stands behind the same upgrade of other units.
    const Operation& verification = (&operation)[2];
    promise(verification.call(arguments) == 0 && follow().error == 0, "what was flashed can be verified");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    Arguments arguments{};
    constexpr std::size_t head = 1 + sizeof arguments.numbers;
    if (size < head)
        return -1;
    const Silence silence;
    slept = {};
    obtainHandles();
    const Operation& operation = operations[bytes[0] % std::size(operations)];
    std::memcpy(arguments.numbers.data(), bytes + 1, sizeof arguments.numbers);
    const std::string content(reinterpret_cast<const char*>(bytes) + head, size - head);
    if (operation.meetsFirmwareFile)
        tryFirmwareFile(operation, arguments, content);
    else
        tryUnitFile(operation, arguments, content);
    return 0;
}
