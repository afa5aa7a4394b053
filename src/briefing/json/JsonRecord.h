#pragma once

#include "briefing/json/JsonDocument.h"
#include "briefing/json/JsonValues.h"

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace lumora {

/// One member of a JSON object and where it goes. A member declared std::optional may be missing or
/// null in JSON; any other must be there.
template <auto Member>
struct JsonField {
    std::string_view key;
};

/// The JSON members of a record, in the order faults are looked for. Specialise it with a tuple of
/// fields: `static constexpr std::tuple fields{JsonField<&Chore::id>{"id"}, …};`
template <typename Record>
struct JsonSchema;

template <typename Record>
concept JsonRecord = requires { JsonSchema<Record>::fields; };

template <JsonRecord Record>
bool readValue(simdjson::dom::element value, Record& out, DecodeError& error);

template <typename Item>
bool readValue(simdjson::dom::element value, std::vector<Item>& out, DecodeError& error) {
    simdjson::dom::array array;
    if (value.get(array) != simdjson::SUCCESS)
        return wrongKind(value, QLatin1StringView("an array"), error);
    // An array of millions of wrong items must not cost millions of records.
    constexpr size_t maximumReserved = 4096;
    out.reserve(std::min(array.size(), maximumReserved));
    for (const simdjson::dom::element item : array) {
        if (!readValue(item, out.emplace_back(), error)) {
            prependIndex(error, out.size() - 1);
            return false;
        }
    }
    return true;
}

template <typename Value>
bool readMember(std::optional<simdjson::dom::element> value, Value& out, DecodeError& error) {
    if (value)
        return readValue(*value, out, error);
    error.description = QStringLiteral("Missing");
    return false;
}

template <typename Value>
bool readMember(
    std::optional<simdjson::dom::element> value, std::optional<Value>& out, DecodeError& error) {
    return !value || value->is_null() || readValue(*value, out.emplace(), error);
}

/// The members of `object` that `Record` knows, in the order of its fields; of several with the
/// same key the last.
template <JsonRecord Record>
auto collectMembers(simdjson::dom::object object) {
    static constexpr auto keys = std::apply(
        [](const auto&... field) { return std::array{field.key...}; }, JsonSchema<Record>::fields);
    std::array<std::optional<simdjson::dom::element>, keys.size()> members;
    auto next = object.begin();
    const auto end = object.end();

    // Objects mostly come in field order, and keys are compared fast where they are constants.
    const auto takeInOrder = [&]<size_t... Index>(std::index_sequence<Index...>) {
        const auto take = [&]<size_t At>(std::integral_constant<size_t, At>) {
            if (next != end && next.key() == keys[At]) {
                members[At] = next.value();
                ++next;
            }
        };
        (take(std::integral_constant<size_t, Index>()), ...);
    };
    takeInOrder(std::make_index_sequence<keys.size()>());

    for (; next != end; ++next) {
        const auto key = std::ranges::find(keys, next.key());
        if (key != keys.end())
            members[static_cast<size_t>(key - keys.begin())] = next.value();
    }
    return members;
}

template <JsonRecord Record>
[[nodiscard]] bool readValue(simdjson::dom::element value, Record& out, DecodeError& error) {
    simdjson::dom::object object;
    if (value.get(object) != simdjson::SUCCESS)
        return wrongKind(value, QLatin1StringView("an object"), error);
    const auto members = collectMembers<Record>(object);
    const auto readField = [&]<auto Member>(JsonField<Member> field, size_t index) {
        if (readMember(members[index], out.*Member, error))
            return true;
        prependKey(error, field.key);
        return false;
    };
    return std::apply(
        [&](const auto&... field) {
            size_t index = 0;
            return (readField(field, index++) && ...);
        },
        JsonSchema<Record>::fields);
}

/// Reads the record that the JSON text `bytes` is; the error names the first fault.
template <JsonRecord Record>
[[nodiscard]] tl::expected<Record, DecodeError> decodeJson(QByteArrayView bytes) {
    const JsonDocument document(bytes);
    if (!document.root())
        return tl::unexpected(document.root().error());
    tl::expected<Record, DecodeError> record;
    DecodeError error;
    if (!readValue(*document.root(), *record, error))
        record = tl::unexpected(std::move(error));
    return record;
}

} // namespace lumora
