#pragma once

#include "briefing/Instant.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// How what is told to other programs is written as JSON.
namespace lumora::JsonMembers {

/// The text, or null.
QJsonValue orNull(const std::optional<QString>& text);

/// The number, or null.
template <typename Number>
QJsonValue orNull(const std::optional<Number>& number) {
    return number ? QJsonValue(*number) : QJsonValue(QJsonValue::Null);
}

/// ISO 8601 in UTC without parts of a second; absent for years that it has no digits for.
std::optional<QString> isoText(std::optional<Instant> instant);

/// A member that is a text; absent for anything else.
std::optional<QString> ifText(const QJsonValue& value);

/// A member that is a time in ISO 8601; absent for anything else.
std::optional<Instant> ifInstant(const QJsonValue& value);

/// `object` on one line without a line break, with what a terminal might obey as escapes, which
/// mean the same.
QByteArray printable(const QJsonObject& object);

} // namespace lumora::JsonMembers
