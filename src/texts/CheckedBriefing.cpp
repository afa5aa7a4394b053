#include "texts/CheckedBriefing.h"

#include "texts/AgendaText.h"
#include "texts/PlainText.h"
#include "texts/StatusPresentation.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// `lines` behind `heading`, all but the first below the first.
QString paragraph(const QString& heading, const QStringList& lines) {
    QString text = heading;
    for (const QString& line : lines)
        text += (&line == &lines.first() ? QString() : QString(heading.size(), u' ')) +
                singleLine(line) + u'\n';
    return text;
}

QString spendingLine(const std::optional<Spending>& spending) {
    if (!spending)
        return u"Spending: none\n"_s;
    return u"Spending: %1 buckets, as of %2; amounts stay hidden until they are revealed\n"_s.arg(
        QString::number(spending->top.size()), singleLine(spending->asOf));
}

} // namespace

QString checkedBriefing(
    const Briefing& briefing, Instant now, const QTimeZone& zone, const QLocale& locale) {
    const LoadState state = LoadState::loaded(briefing);
    const std::optional<Briefing> shown = briefing;
    const StatusItemContent content = statusItemContent({
        .lastGood = shown,
        .state = state,
        .lastUpdated = now,
        .menuBarAmbient = {},
        .now = now,
        .timeZone = zone,
        .locale = locale,
    });
    QString text = paragraph(u"Briefing: "_s, {u"of "_s + briefing.date});
    text += paragraph(
        u"Label:    "_s, {content.text.value_or(u"no text"_s) + u" ("_s + content.symbol + u')'});
    QStringList toolTip = content.toolTipBody.split(u'\n');
    toolTip.prepend(content.toolTipTitle);
    text += paragraph(u"Tooltip:  "_s, toolTip);
    text += agendaText(Agenda::of(briefing, now, LinkPolicy()), zone, locale);
    return text + spendingLine(briefing.spending);
}

} // namespace lumora
