#include "texts/JsonMembers.h"

#include "briefing/ControlCharacters.h"

#include <QJsonDocument>

using namespace Qt::Literals::StringLiterals;

namespace lumora::JsonMembers {

QJsonValue orNull(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

std::optional<QString> isoText(std::optional<Instant> instant) {
    if (!instant)
        return std::nullopt;
    const QString text = toDateTime(*instant).toString(Qt::ISODate);
    return text.isEmpty() ? std::nullopt : std::optional(text); // of years with five digits
}

std::optional<QString> ifText(const QJsonValue& value) {
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<Instant> ifInstant(const QJsonValue& value) {
    const auto parsed = QDateTime::fromString(value.toString(), Qt::ISODate);
    if (!parsed.isValid())
        return std::nullopt;
    return Instant(std::chrono::milliseconds(parsed.toMSecsSinceEpoch()));
}

QByteArray printable(const QJsonObject& object) {
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    QString escaped;
    for (const QChar character : QString::fromUtf8(json)) {
        if (isControlCharacter(character) || bidiControl(character) != BidiControl::None)
            escaped += u"\\u%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
        else
            escaped += character;
    }
    return escaped.toUtf8();
}

} // namespace lumora::JsonMembers
