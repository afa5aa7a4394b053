#include "demo/DemoControl.h"

#include "demo/DemoInstant.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Further than the service's calendar reaches, and far within what can be added to an instant.
constexpr double kLongestMove = 200.0 * 366 * 86400;

std::optional<Seconds> moveFrom(const QJsonValue& value) {
    if (!value.isDouble() || std::abs(value.toDouble()) > kLongestMove)
        return std::nullopt;
    return Seconds(value.toDouble());
}

/// Takes one member over into `control`; whether it was one, with a usable value.
bool take(
    DemoControl& control, const QString& name, const QJsonValue& value, const QTimeZone& zone) {
    if (name == "scenario"_L1)
        return (control.scenario = demoScenarioNamed(value.toString())).has_value();
    if (name == "now"_L1)
        return (control.now = demoInstantFrom(value.toString(), zone)).has_value();
    if (name == "advanceSeconds"_L1)
        return (control.advance = moveFrom(value)).has_value();
    if (name == "dayFrom"_L1)
        return (control.dayFrom = demoInstantFrom(value.toString(), zone)).has_value();
    if (name == "shiftDaySeconds"_L1)
        return (control.shiftDay = moveFrom(value)).has_value();
    return false;
}

} // namespace

tl::expected<DemoControl, QString> parseDemoControl(const QByteArray& body, const QTimeZone& zone) {
    const auto document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return tl::unexpected(u"The body is not a JSON object"_s);
    const auto members = document.object();
    DemoControl control;
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (!take(control, member.key(), member.value(), zone))
            return tl::unexpected(u"Unknown member or bad value: \"%1\""_s.arg(member.key()));
    }
    if (control.now && control.advance)
        return tl::unexpected(u"Give \"now\" or \"advanceSeconds\", not both"_s);
    if (control.dayFrom && control.shiftDay)
        return tl::unexpected(u"Give \"dayFrom\" or \"shiftDaySeconds\", not both"_s);
    return control;
}

} // namespace lumora
