// Calls the simulated unit with anything in its file, or anything in the firmware file that it is given. It
// answers with a code or a result, and loses no file.
//
// The first byte of an input chooses an operation, the second is the value for it. What follows is the
// firmware file of a healthy unit when the operation starts a firmware job, and else the unit's file.

#include "device/qv_aux2.h"
#include "promise.h"

#include <chrono>
#include <concepts>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <time.h>
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

constexpr ApiError damaged = 66;

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

// Arguments for any operation: `value` for its numbers, and a place for its results.
struct Arguments
{
    std::int8_t value;
    std::vector<char> place = std::vector<char>(4096);

    template <std::integral Integer>
    operator Integer() const
    {
        return static_cast<Integer>(std::is_same_v<Integer, std::uint32_t> ? value & 0x7F : value);
    }

    template <typename Result>
    operator Result*()
    {
        return reinterpret_cast<Result*>(place.data());
    }

    operator const char*()
    {
        static const std::string path = folder().firmware();
        return path.c_str();
    }

    operator double() const
    {
        return value;
    }
};

template <typename Handle, typename... Parameter>
ApiError call(ApiError (*operation)(Handle, Parameter...), Handle handle, Arguments arguments)
{
    return operation(handle, static_cast<Parameter>(arguments)...);
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
};

#define CALL(module, operation)                                                                              \
    [](Arguments arguments) { return call(module##_##operation, given##module, std::move(arguments)); }
const Operation operations[] = {
#define MODULE(module)
#define READS_TEXT(module, operation) {CALL(module, operation), false},
#define READS(module, operation, type) {CALL(module, operation), false},
#define SETS(module, operation, type, allowed) {CALL(module, operation), false},
#define STARTS(module, operation) {CALL(module, operation), true},
#define OTHER(module, operation) {CALL(module, operation), false},
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

void checkNothingLost(const std::string& before, bool refused)
{
    const std::string after = readFile(folder().unit());
    const auto was = parse(before);
    promise((was && !refused) || after == before, "a refused file is left alone");
    promise(!was || keepsKeys(*was, Json::parse(after)), "no key is lost");
    promise(!std::filesystem::exists(folder().unit() + ".new"), "nothing stays beside the unit's file");
}

void tryUnitFile(const Operation& operation, const Arguments& arguments, const std::string& content)
{
    writeFile(folder().unit(), content);
    const BuzzerHandle buzzer = GetBuzzer();
    const ApiError codes[] = {operation.call(arguments), Buzzer_setVolume(givenBuzzer, 40)};
    bool refused = false;
    for (const ApiError code : codes)
    {
        GetErrorStringA(code);
        refused = refused || code == damaged;
    }
    Buzzer_release(buzzer);
    checkNothingLost(content, refused);
}

// What a job came to, followed to its end.
UpgradeStatus follow()
{
    constexpr int states = 8;
    UpgradeStatus status{};
    for (int told = 0; told <= states && status.state != 6 && status.error == 0; ++told)
        promise(FirmwareUpgrade_getUpgradeStatus(givenFirmwareUpgrade, &status, 1) == 0, "there is a job");
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
    // A healthy unit's first firmware verifies against no file, so this was an upgrade. Its verification is
    // next.
    const Operation& verification = (&operation)[1];
    promise(verification.call(arguments) == 0 && follow().error == 0, "what was flashed can be verified");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size < 2)
        return -1;
    const Silence silence;
    obtainHandles();
    const Operation& operation = operations[bytes[0] % std::size(operations)];
    const Arguments arguments{static_cast<std::int8_t>(bytes[1])};
    const std::string content(reinterpret_cast<const char*>(bytes) + 2, size - 2);
    if (operation.startsJob)
        tryFirmwareFile(operation, arguments, content);
    else
        tryUnitFile(operation, arguments, content);
    return 0;
}
