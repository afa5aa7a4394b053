#include "texts/StatusReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QJsonValue orNull(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

std::optional<QString> isoText(std::optional<Instant> instant) {
    if (!instant)
        return std::nullopt;
    return toDateTime(*instant).toString(Qt::ISODate);
}

} // namespace

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
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace lumora
