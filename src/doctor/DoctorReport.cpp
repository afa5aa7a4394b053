#include "doctor/DoctorReport.h"

#include "texts/JsonMembers.h"
#include "texts/PlainText.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString verdictName(Finding::Verdict verdict) {
    switch (verdict) {
    case Finding::Verdict::Ok:
        return u"ok"_s;
    case Finding::Verdict::Warning:
        return u"warning"_s;
    case Finding::Verdict::Failed:
        return u"failed"_s;
    case Finding::Verdict::NotTried:
        return u"not tried"_s;
    }
    Q_UNREACHABLE();
}

constexpr int verdictWidth = 11;
constexpr int linkWidth = 15;

} // namespace

QString doctorText(const std::vector<Finding>& findings) {
    QString text;
    for (const Finding& finding : findings) {
        const QString line = verdictName(finding.verdict).leftJustified(verdictWidth) +
                             finding.link.leftJustified(linkWidth) + singleLine(finding.found);
        text += line.trimmed() + u'\n';
        if (!finding.remedy.isEmpty())
            text += QString(verdictWidth + linkWidth, u' ') + u"→ "_s + singleLine(finding.remedy) +
                    u'\n';
    }
    return text;
}

QByteArray
doctorJson(const std::vector<Finding>& findings, const QString& version, const QString& host) {
    const auto redacted = [&host](QString text) {
        return host.isEmpty() ? text : text.replace(host, u"HOST"_s, Qt::CaseInsensitive);
    };
    QJsonArray links;
    for (const Finding& finding : findings) {
        links += QJsonObject{
            {u"link"_s, finding.link},
            {u"verdict"_s, verdictName(finding.verdict)},
            {u"found"_s, redacted(finding.found)},
            {u"remedy"_s, redacted(finding.remedy)},
        };
    }
    return JsonMembers::printable({{u"version"_s, version}, {u"links"_s, links}});
}

const Finding* firstBroken(const std::vector<Finding>& findings) {
    const auto broken = std::ranges::find(findings, Finding::Verdict::Failed, &Finding::verdict);
    return broken == findings.end() ? nullptr : &*broken;
}

} // namespace lumora
