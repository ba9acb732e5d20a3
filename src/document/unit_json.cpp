#include "document/unit_json.h"

#include "document/hex_digits.h"
#include "document/json.h"
#include "simulator/unit/faults.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <limits>
#include <utility>

namespace
{

// Control characters stand as they do in JSON.
std::string onOneLine(std::string_view key)
{
    const std::string quoted = Json(key).dump();
    return quoted.substr(1, quoted.size() - 2);
}

// Where in the file a value stands. Made into text only when something is wrong there.
struct KeyPath
{
    const KeyPath* parent;
    std::string_view key;

    std::string text() const
    {
        return parent ? parent->text() + "/" + onOneLine(key) : std::string();
    }

    [[noreturn]] void refuse(const std::string& what) const
    {
        throw BadUnit((parent ? text() : "/") + ": " + what);
    }
};

constexpr const char* standsTwice = "this key stands here twice";

template <typename Record>
concept Described = requires
{
    &Record::template describe<int, Record>;
};

void read(const Json& json, bool& target, const KeyPath& path);
void read(const Json& json, double& target, const KeyPath& path);
void read(const Json& json, std::string& target, const KeyPath& path);
void read(const Json& json, Version& target, const KeyPath& path);
template <std::integral Integer>
void read(const Json& json, Integer& target, const KeyPath& path);
template <typename Integer>
void read(const Json& json, Flag<Integer> target, const KeyPath& path);
template <typename Integer>
void read(const Json& json, Named<Integer> target, const KeyPath& path);
void read(const Json& json, HexDigits<std::string> target, const KeyPath& path);
template <typename Value>
void read(const Json& json, std::optional<Value>& target, const KeyPath& path);
template <typename Value>
void read(const Json& json, std::vector<Value>& target, const KeyPath& path);
template <typename Value, std::size_t count>
void read(const Json& json, std::array<Value, count>& target, const KeyPath& path);
template <typename Value>
void read(const Json& json, std::map<std::string, Value>& target, const KeyPath& path);
template <Described Record>
void read(const Json& json, Record& target, const KeyPath& path);

void read(const Json& json, bool& target, const KeyPath& path)
{
    if (!json.is_boolean())
        path.refuse("neither true nor false");
    target = json.get<bool>();
}

void read(const Json& json, double& target, const KeyPath& path)
{
    if (!json.is_number())
        path.refuse("not a number");
    target = json.get<double>();
}

void read(const Json& json, std::string& target, const KeyPath& path)
{
    if (!json.is_string())
        path.refuse("not a text");
    target = json.get_ref<const std::string&>();
}

void read(const Json& json, Version& target, const KeyPath& path)
{
    std::string text;
    read(json, text, path);
    std::string_view left = text;
    const std::optional<Version> version = takeVersion(left);
    if (!version || !left.empty())
        path.refuse("not a version like 1.12.0.3");
    target = *version;
}

// False where it is no whole number, or one that does not fit.
template <std::integral Integer>
bool takeNumber(const Json& json, Integer& target)
{
    const bool fits = json.is_number_unsigned()  ? std::in_range<Integer>(json.get<std::uint64_t>())
                      : json.is_number_integer() ? std::in_range<Integer>(json.get<std::int64_t>())
                                                 : false;
    if (fits)
        target = json.get<Integer>();
    return fits;
}

template <std::integral Integer>
std::string rangeOf()
{
    using Limits = std::numeric_limits<Integer>;
    return "a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max());
}

template <std::integral Integer>
void read(const Json& json, Integer& target, const KeyPath& path)
{
    if (!takeNumber(json, target))
        path.refuse("not " + rangeOf<Integer>());
}

template <typename Integer>
void read(const Json& json, Flag<Integer> target, const KeyPath& path)
{
    if (json.is_boolean())
        target.value = json.get<bool>();
    else if (!takeNumber(json, target.value))
        path.refuse("neither true, false nor " + rangeOf<Integer>());
}

template <typename Integer>
void read(const Json& json, Named<Integer> target, const KeyPath& path)
{
    if (takeNumber(json, target.value))
        return;
    std::string known;
    for (const Name& name : target.names)
    {
        if (json.is_string() && json.get_ref<const std::string&>() == name.text)
        {
            target.value = name.value;
            return;
        }
        known += known.empty() ? name.text : std::string(", ") + name.text;
    }
    path.refuse("neither " + known + " nor " + rangeOf<Integer>());
}

void read(const Json& json, HexDigits<std::string> target, const KeyPath& path)
{
    read(json, target.text, path);
    std::vector<std::uint8_t> bytes;
    if (!appendBytes(bytes, target.text))
        path.refuse("not pairs of hexadecimal digits");
}

template <typename Value>
void read(const Json& json, std::optional<Value>& target, const KeyPath& path)
{
    if (json.is_null())
        target.reset();
    else
        read(json, target.emplace(), path);
}

template <typename Value>
void read(const Json& json, std::vector<Value>& target, const KeyPath& path)
{
    if (!json.is_array())
        path.refuse("not a list");
    target.assign(json.size(), {});
    for (std::size_t i = 0; i < json.size(); ++i)
        read(json[i], target[i], KeyPath{&path, std::to_string(i)});
}

template <typename Value, std::size_t count>
void read(const Json& json, std::array<Value, count>& target, const KeyPath& path)
{
    if (!json.is_array() || json.size() != count)
        path.refuse("not a list of " + std::to_string(count));
    for (std::size_t i = 0; i < count; ++i)
        read(json[i], target[i], KeyPath{&path, std::to_string(i)});
}

template <typename Value>
void read(const Json& json, std::map<std::string, Value>& target, const KeyPath& path)
{
    if (!json.is_object())
        path.refuse("not an object");
    for (const auto& [key, value] : json.items())
    {
        const KeyPath here{&path, key};
        const auto [added, isNew] = target.try_emplace(key);
        if (!isNew)
            here.refuse(standsTwice);
        read(value, added->second, here);
    }
}

template <typename Record>
std::vector<std::string_view> keysOf(const Record& record)
{
    std::vector<std::string_view> keys;
    auto collect = [&](const char* key, auto&&) { keys.emplace_back(key); };
    Record::describe(collect, record);
    return keys;
}

template <Described Record>
void read(const Json& json, Record& target, const KeyPath& path)
{
    if (!json.is_object())
        path.refuse("not an object");
    std::size_t known = 0;
    auto readKey = [&](const char* key, auto&& value)
    {
        const auto found = json.find(key);
        if (found == json.end())
            return;
        ++known;
        read(*found, value, KeyPath{&path, key});
    };
    Record::describe(readKey, target);
    if (known == json.size())
        return;
    const auto keys = keysOf(target);
    for (const auto& [key, value] : json.items())
    {
        const KeyPath here{&path, key};
        if (std::ranges::find(keys, key) == keys.end())
            here.refuse("no unit has this key");
        if (&*json.find(key) != &value)
            here.refuse(standsTwice);
    }
}

bool isCode(const std::string& text)
{
    ApiError code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    return error == std::errc() && std::to_string(code) == text;
}

void checkFaults(const std::map<std::string, Fault>& faults, const KeyPath& path)
{
    for (const auto& [operation, fault] : faults)
    {
        const KeyPath here{&path, operation};
        const bool givesHandleOrText = operation.starts_with("Get");
        if (!isOperation(operation))
            here.refuse("no operation has this name");
        if (givesHandleOrText && (!fault.null || fault.code != 0 || fault.ignored))
            here.refuse("its only fault is null");
        if (!givesHandleOrText && fault.null)
            here.refuse("gives no handle and no text that could be null");
        if (!givesHandleOrText && (fault.code != 0) == fault.ignored)
            here.refuse("its fault is either a code other than 0 or ignored");
    }
}

void checkErrorTexts(const std::map<std::string, std::optional<std::string>>& texts, const KeyPath& path)
{
    for (const auto& [code, text] : texts)
        if (!isCode(code))
            KeyPath{&path, code}.refuse("not an error code");
}

template <typename Value>
Json write(const Value& value);

template <typename Integer>
Json writeFlag(Integer value)
{
    return value == 0 || value == 1 ? Json(value == 1) : Json(value);
}

template <typename Integer>
Json writeNamed(Integer value, std::span<const Name> names)
{
    for (const Name& name : names)
        if (name.value == value)
            return name.text;
    return value;
}

template <typename Integer>
Json write(const Flag<Integer>& flag)
{
    return writeFlag(flag.value);
}

template <typename Integer>
Json write(const Named<Integer>& named)
{
    return writeNamed(named.value, named.names);
}

Json write(const HexDigits<const std::string>& digits)
{
    return digits.text;
}

Json write(const Version& version)
{
    return toText(version);
}

template <typename Value>
Json write(const std::optional<Value>& value)
{
    return value ? write(*value) : Json();
}

template <typename Value>
Json write(const std::vector<Value>& values)
{
    Json list = Json::array();
    for (const Value& value : values)
        list.push_back(write(value));
    return list;
}

template <typename Value>
Json write(const std::map<std::string, Value>& values)
{
    Json object = Json::object();
    for (const auto& [key, value] : values)
        object[key] = write(value);
    return object;
}

template <typename Value>
Json write(const Value& value)
{
    if constexpr (Described<Value>)
    {
        Json object = Json::object();
        auto writeKey = [&](const char* key, const auto& member) { object[key] = write(member); };
        Value::describe(writeKey, value);
        return object;
    }
    else
        return value;
}

} // namespace

Unit unitFromJson(const Json& file)
{
    const KeyPath root{nullptr, ""};
    Unit unit;
    read(file, unit, root);
    checkFaults(unit.faults, KeyPath{&root, "faults"});
    checkErrorTexts(unit.errorTexts, KeyPath{&root, "errorTexts"});
    return unit;
}

Json unitToJson(const Unit& unit)
{
    return write(unit);
}

void updateJson(Json& file, const Json& before, const Json& after)
{
    for (const auto& [key, value] : after.items())
    {
        const auto old = before.find(key);
        if (old != before.end() && *old == value)
            continue;
        if (value.is_object() && old != before.end())
            updateJson(file[key], *old, value);
        else
            file[key] = value;
    }
}
