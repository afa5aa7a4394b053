#pragma once

#include <QJsonValue>
#include <QString>

#include <span>
#include <variant>
#include <vector>

namespace lumora::tests {

/// What a field of the briefing's JSON holds.
enum class Kind { Text, Date, Boolean, Integer, Number, Object, List };

/// The way to a value: object keys and array positions.
using Path = std::vector<std::variant<QString, int>>;

struct Field {
    Path path;
    Kind kind;
    bool required;
};

/// Every field of a full briefing, written down independently of the decoder, in the order faults
/// are looked for. Of each list the second item is walked, so that a decoder that stops after the
/// first is caught.
std::vector<Field> allFields();

/// `root` with `replacement` at `path`; an undefined replacement removes the member.
QJsonValue
with(const QJsonValue& root, std::span<const Path::value_type> path, const QJsonValue& replacement);

/// A path as errors name it: "eventsToday[1].title".
QString toText(const Path& path);

} // namespace lumora::tests
