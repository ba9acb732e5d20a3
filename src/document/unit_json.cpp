#include "document/unit_json.h"

#include "document/hex_digits.h"

#include <algorithm>
#include <concepts>
#include <iterator>
#include <limits>
#include <utility>

namespace document
{

namespace
{

constexpr const char* duplicateKey = "duplicate key";

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
        path.failExpecting("true or false", json);
    target = json.get<bool>();
}

void read(const Json& json, double& target, const KeyPath& path)
{
    if (!json.is_number())
        path.failExpecting("a number", json);
    target = json.get<double>();
}

void read(const Json& json, std::string& target, const KeyPath& path)
{
    if (!json.is_string())
        path.failExpecting("a string", json);
    target = json.get_ref<const std::string&>();
}

void read(const Json& json, Version& target, const KeyPath& path)
{
    std::string text;
    read(json, text, path);
    std::string_view rest = text;
    const std::optional<Version> version = consumeVersion(rest);
    if (!version || !rest.empty())
        path.failExpecting("a version such as 1.12.0.3", json);
    target = *version;
}

// Returns false if `json` is not an integer or does not fit.
template <std::integral Integer>
bool readInteger(const Json& json, Integer& target)
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
    return "an integer from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max());
}

template <std::integral Integer>
void read(const Json& json, Integer& target, const KeyPath& path)
{
    if (!readInteger(json, target))
        path.failExpecting(rangeOf<Integer>(), json);
}

template <typename Integer>
void read(const Json& json, Flag<Integer> target, const KeyPath& path)
{
    if (json.is_boolean())
        target.value = json.get<bool>();
    else if (!readInteger(json, target.value))
        path.failExpecting("true, false or " + rangeOf<Integer>(), json);
}

template <typename Integer>
void read(const Json& json, Named<Integer> target, const KeyPath& path)
{
    if (readInteger(json, target.value))
        return;
    std::string names;
    for (const Name& name : target.names)
    {
        if (json.is_string() && json.get_ref<const std::string&>() == name.text)
        {
            target.value = name.value;
            return;
        }
        names += names.empty() ? name.text : std::string(", ") + name.text;
    }
    path.failExpecting(names + " or " + rangeOf<Integer>(), json);
}

void read(const Json& json, HexDigits<std::string> target, const KeyPath& path)
{
    read(json, target.text, path);
    std::vector<std::uint8_t> bytes;
    if (!appendBytes(bytes, target.text))
        path.failExpecting("pairs of hexadecimal digits", json);
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
        path.failExpecting("an array", json);
    target.assign(json.size(), {});
    for (std::size_t i = 0; i < json.size(); ++i)
        read(json[i], target[i], KeyPath{&path, std::to_string(i)});
}

template <typename Value, std::size_t count>
void read(const Json& json, std::array<Value, count>& target, const KeyPath& path)
{
    if (!json.is_array() || json.size() != count)
        path.failExpecting("an array of length " + std::to_string(count), json);
    for (std::size_t i = 0; i < count; ++i)
        read(json[i], target[i], KeyPath{&path, std::to_string(i)});
}

template <typename Value>
void read(const Json& json, std::map<std::string, Value>& target, const KeyPath& path)
{
    if (!json.is_object())
        path.failExpecting("an object", json);
    for (const auto& [key, value] : json.items())
    {
        const KeyPath keyPath{&path, key};
        const auto [added, isNew] = target.try_emplace(key);
        if (!isNew)
            keyPath.fail(duplicateKey);
        read(value, added->second, keyPath);
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
        path.failExpecting("an object", json);
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
        const KeyPath keyPath{&path, key};
        if (std::ranges::find(keys, key) == keys.end())
            keyPath.fail("unknown key");
        if (&*json.find(key) != &value)
            keyPath.fail(duplicateKey);
    }
}

template <typename Value>
Json write(const Value& value);

template <typename Integer>
Json write(const Flag<Integer>& flag)
{
    return flag.value == 0 || flag.value == 1 ? Json(flag.value == 1) : Json(flag.value);
}

template <typename Integer>
Json write(const Named<Integer>& named)
{
    for (const Name& name : named.names)
        if (name.value == named.value)
            return name.text;
    return named.value;
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
    auto& members = object.get_ref<Json::object_t&>(); // Json::operator[] would search for each key
    for (const auto& [key, value] : values)
        members[key] = write(value);
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

Unit unitFromJson(const Json& json)
{
    Unit unit;
    read(json, unit, KeyPath{});
    return unit;
}

Json unitToJson(const Unit& unit)
{
    return write(unit);
}

void updateJson(Json& json, const Json& before, const Json& after)
{
    auto next = before.begin(); // both documents have the same order, so a search is rarely needed
    for (const auto& [key, value] : after.items())
    {
        const auto old = next != before.end() && next.key() == key ? next : before.find(key);
        if (old != before.end())
            next = std::next(old);
        if (old != before.end() && *old == value)
            continue;
        Json& member = json[key];
        if (!value.is_object() || old == before.end())
        {
            member = value;
            continue;
        }
        // If memory runs out while the library converts null into an object, it leaves an invalid object.
        if (member.is_null())
            member = Json::object();
        updateJson(member, *old, value);
    }
}

} // namespace document
