#include "StatusLines.h"

#include "Expectations.h"
#include "texts/StatusLine.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

QJsonObject objectIn(const QString& line) {
    const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8());
    expect(document.isObject(), "one JSON object");
    return document.object();
}

void expectWaybar(const QString& line) {
    const QJsonObject object = objectIn(line);
    const QString text = object.value(u"text"_s).toString();
    expectLine(text);
    expectNoMarkup(text);
    const QString tooltip = object.value(u"tooltip"_s).toString();
    expectLines(tooltip);
    expectNoMarkup(tooltip);
}

} // namespace

void expectStatusLines(const StatusReport& report) {
    expectLine(statusLine(report, StatusFormat::Text));
    const QString json = statusLine(report, StatusFormat::Json);
    expectLine(json);
    objectIn(json);
    const QString waybar = statusLine(report, StatusFormat::Waybar);
    expect(!waybar.contains(u'\n'), "one line");
    expectWaybar(waybar);
    const QString polybar = statusLine(report, StatusFormat::Polybar);
    expectLine(polybar);
    expect(!polybar.contains("%{"_L1), "nothing for polybar to obey");
    for (const StatusFormat format : {StatusFormat::I3blocks, StatusFormat::I3statusRust}) {
        const QString line = statusLine(report, format);
        expectLine(line);
        expectNoMarkup(line);
    }
}

} // namespace lumora::fuzz
