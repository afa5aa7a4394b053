#include "texts/StatusReport.h"

#include "texts/JsonMembers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

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
    using namespace JsonMembers;
    return printable({
        {u"mode"_s, mode},
        {u"symbol"_s, symbol},
        {u"text"_s, orNull(text)},
        {u"tooltip"_s, tooltip},
        {u"state"_s, state},
        {u"message"_s, orNull(message)},
        {u"lastUpdated"_s, orNull(isoText(lastUpdated))},
        {u"pending"_s, QJsonArray::fromStringList(pending)},
        {u"actionError"_s, orNull(actionError)},
    });
}

std::optional<StatusReport> StatusReport::fromJson(const QByteArray& json) {
    using namespace JsonMembers;
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
