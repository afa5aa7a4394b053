#include "texts/StatusReport.h"

#include "briefing/ControlCharacters.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QJsonValue orNull(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
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

std::optional<QString> isoText(std::optional<Instant> instant) {
    if (!instant)
        return std::nullopt;
    const QString text = toDateTime(*instant).toString(Qt::ISODate);
    return text.isEmpty() ? std::nullopt : std::optional(text); // of years with five digits
}

/// `json` with what might be obeyed where it is printed as escapes, which mean the same.
QString withEscapes(const QString& json) {
    QString escaped;
    for (const QChar character : json) {
        if (isControlCharacter(character) || bidiControl(character) != BidiControl::None)
            escaped += u"\\u%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
        else
            escaped += character;
    }
    return escaped;
}

} // namespace

StatusReport StatusReport::stopped() {
    return {
        .mode = u"stopped"_s,
        .symbol = u"calendar"_s,
        .text = std::nullopt,
        .tooltip = u"Lumora is not running"_s,
        .state = u"idle"_s,
        .message = std::nullopt,
        .lastUpdated = std::nullopt,
        .pending = {},
        .actionError = std::nullopt,
    };
}

bool StatusReport::hasSameLabel(const StatusReport& other) const {
    return mode == other.mode && symbol == other.symbol && text == other.text &&
           state == other.state;
}

QByteArray StatusReport::toJson() const {
    const QJsonObject object{
        {u"mode"_s, mode},
        {u"symbol"_s, symbol},
        {u"text"_s, orNull(text)},
        {u"tooltip"_s, tooltip},
        {u"state"_s, state},
        {u"message"_s, orNull(message)},
        {u"lastUpdated"_s, orNull(isoText(lastUpdated))},
        {u"pending"_s, QJsonArray::fromStringList(pending)},
        {u"actionError"_s, orNull(actionError)},
    };
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return withEscapes(QString::fromUtf8(json)).toUtf8();
}

std::optional<StatusReport> StatusReport::fromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    return StatusReport{
        .mode = object.value(u"mode"_s).toString(),
        .symbol = object.value(u"symbol"_s).toString(),
        .text = ifText(object.value(u"text"_s)),
        .tooltip = object.value(u"tooltip"_s).toString(),
        .state = object.value(u"state"_s).toString(),
        .message = ifText(object.value(u"message"_s)),
        .lastUpdated = ifInstant(object.value(u"lastUpdated"_s)),
        .pending = object.value(u"pending"_s).toVariant().toStringList(),
        .actionError = ifText(object.value(u"actionError"_s)),
    };
}

} // namespace lumora
