#include "texts/StatusLine.h"

#include "texts/PlainText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const std::array formats{
    std::pair(u"text"_s, StatusFormat::Text),
    std::pair(u"json"_s, StatusFormat::Json),
    std::pair(u"waybar"_s, StatusFormat::Waybar),
    std::pair(u"polybar"_s, StatusFormat::Polybar),
    std::pair(u"i3blocks"_s, StatusFormat::I3blocks),
    std::pair(u"i3status-rust"_s, StatusFormat::I3statusRust),
};

QString plain(const StatusReport& report) {
    return singleLine(report.text.value_or(QString()));
}

/// polybar obeys what follows "%{" up to "}", commands to run among it, and knows no way to write
/// these two as text. Something between them that has no width keeps them apart; polybar leaves
/// it out where the font has nothing for it.
QString forPolybar(const StatusReport& report) {
    const QString apart = u"%\u200c{"_s;
    return plain(report).replace("%{"_L1, apart);
}

/// i3blocks takes no notice of an empty line of a command that goes on, and leaves there what was.
QString forI3blocks(const StatusReport& report) {
    const QString text = plain(report);
    return text.isEmpty() ? u" "_s : escapedForMarkup(text);
}

/// What styles go by: what the label shows, that the last fetch failed, and that what is shown is
/// therefore of an earlier one.
QJsonArray styleClasses(const StatusReport& report) {
    QJsonArray classes{report.mode};
    if (report.state == u"failed") {
        classes += report.state;
        if (report.mode != u"error")
            classes += u"stale"_s;
    }
    return classes;
}

/// waybar parses text and tooltip as Pango markup, and has the rest for styles and icons.
QString forWaybar(const StatusReport& report) {
    const QJsonObject object{
        {u"text"_s, escapedForMarkup(plain(report))},
        {u"tooltip"_s, escapedForMarkup(report.tooltip)},
        {u"alt"_s, report.mode},
        {u"class"_s, styleClasses(report)},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

std::optional<StatusFormat> statusFormat(const QString& name) {
    const auto* const found =
        std::ranges::find(formats, name, &decltype(formats)::value_type::first);
    return found == formats.end() ? std::nullopt : std::optional(found->second);
}

QStringList statusFormatNames() {
    QStringList names;
    for (const auto& [name, format] : formats)
        names += name;
    return names;
}

bool hasDetails(StatusFormat format) {
    return format == StatusFormat::Json || format == StatusFormat::Waybar;
}

QString statusLine(const StatusReport& report, StatusFormat format) {
    switch (format) {
    case StatusFormat::Text:
        return plain(report);
    case StatusFormat::Json:
        return QString::fromUtf8(report.toJson());
    case StatusFormat::Waybar:
        return forWaybar(report);
    case StatusFormat::Polybar:
        return forPolybar(report);
    case StatusFormat::I3blocks:
        return forI3blocks(report);
    case StatusFormat::I3statusRust:
        return escapedForMarkup(plain(report));
    }
    Q_UNREACHABLE();
}

} // namespace lumora
