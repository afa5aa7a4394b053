#include "texts/StatusPresentation.h"

#include "briefing/MeetingSelection.h"
#include "texts/Formatters.h"
#include "texts/PlainText.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString separator = u" · "_s;
constexpr std::size_t menuTitleCharacters = 48;

using Meeting = std::optional<BriefEvent>;

Meeting labelMeeting(const std::optional<Briefing>& lastGood, Instant now) {
    return lastGood ? MenuBarLabel::meeting(*lastGood, now) : std::nullopt;
}

/// The meetings that the status item speaks of, each looked for once: a day may have thousands.
struct Meetings {
    Meeting onLabel;
    Meeting offered; ///< in the menu
};

Meetings meetingsOf(const std::optional<Briefing>& lastGood, Instant now) {
    Meeting onLabel = labelMeeting(lastGood, now);
    Meeting offered =
        onLabel || !lastGood ? onLabel : nextMeeting(*lastGood, now, backgroundThreshold);
    return {std::move(onLabel), std::move(offered)};
}

/// The tooltip's first line: what the label shows, in full.
QString headline(const Meeting& meeting, const MenuBarLabel::Mode& mode) {
    if (meeting)
        return singleLine(meeting->title).trimmed();
    const auto plain = [](qint64 number) { return QString::number(number); };
    if (const auto* habits = std::get_if<MenuBarLabel::Habits>(&mode))
        return u"%1 of %2 habits done"_s.arg(plain(habits->done), plain(habits->total));
    if (const auto* focus = std::get_if<MenuBarLabel::Focus>(&mode))
        return Formatters::percent(focus->share) + u" focus"_s;
    if (const auto* chores = std::get_if<MenuBarLabel::Chores>(&mode))
        return (chores->count == 1 ? u"%1 chore due"_s : u"%1 chores due"_s)
            .arg(plain(chores->count));
    return u"Lumora"_s;
}

QString clockText(const StatusInputs& inputs, Instant instant) {
    return Formatters::clock(instant, inputs.timeZone, inputs.locale);
}

/// When and where the meeting is, e.g. "In 12m, at 9:05 am · Room 4".
QString timing(const StatusInputs& inputs, const BriefEvent& meeting) {
    QString text;
    if (*meeting.start > inputs.now) {
        const QString left = Formatters::countdown(*meeting.start, inputs.now);
        text = (left == u"now" ? u"Now"_s : u"In "_s + left) + u", at "_s +
               clockText(inputs, *meeting.start);
    } else if (meeting.end) {
        text = u"Until "_s + clockText(inputs, *meeting.end);
    }
    const QString place = singleLine(meeting.location.value_or(QString())).trimmed();
    if (!place.isEmpty())
        text += (text.isEmpty() ? QString() : separator) + place;
    return text;
}

/// How old the data is, and what went wrong since.
QStringList freshness(const StatusInputs& inputs) {
    QStringList lines;
    if (inputs.lastUpdated)
        lines += u"Updated "_s + Formatters::relative(*inputs.lastUpdated, inputs.now);
    else if (!inputs.state.isFailed())
        lines += u"Loading…"_s;
    if (const auto message = inputs.state.failureMessage())
        lines += plainLines(failureText(*message));
    return lines;
}

QString toolTipBody(const StatusInputs& inputs, const Meetings& meetings) {
    QStringList lines;
    if (meetings.offered && !meetings.onLabel)
        lines += u"Next: "_s + singleLine(meetings.offered->title).trimmed();
    if (meetings.offered)
        lines += timing(inputs, *meetings.offered);
    lines += freshness(inputs);
    return lines.join(u'\n');
}

StatusMenuRow action(MenuCommand command, const QString& label) {
    return {StatusMenuRow::Kind::Action, command, label};
}

StatusMenuRow rule() {
    return {StatusMenuRow::Kind::Separator, {}, {}};
}

QList<StatusMenuRow> meetingRows(const StatusInputs& inputs, const Meeting& meeting) {
    if (!meeting)
        return {};
    // A menu is as wide as its widest row.
    const QString title = shortened(singleLine(meeting->title), menuTitleCharacters);
    const QString when = clockText(inputs, *meeting->start);
    QList<StatusMenuRow> rows{{StatusMenuRow::Kind::Text, {}, when + separator + title}};
    if (joinUrl(*meeting, inputs.links))
        rows += action(MenuCommand::Join, u"Join "_s + title);
    rows += rule();
    return rows;
}

QList<StatusMenuRow> menu(const StatusInputs& inputs, const Meeting& offered) {
    QList<StatusMenuRow> rows{action(MenuCommand::Open, u"Open Lumora"_s), rule()};
    rows += meetingRows(inputs, offered);
    rows += action(MenuCommand::Refresh, u"Refresh"_s);
    rows += action(MenuCommand::Settings, u"Settings"_s);
    rows += rule();
    rows += action(MenuCommand::Quit, u"Quit"_s);
    return rows;
}

QString messageOr(const QString& otherwise, const QString& message) {
    return singleLine(message).trimmed().isEmpty() ? otherwise : message;
}

} // namespace

QString failureText(const QString& message) {
    return messageOr(u"The refresh failed, and no reason was given"_s, message);
}

QString actionFailureText(const QString& message) {
    return messageOr(u"It was refused, and no reason was given"_s, message);
}

std::optional<BriefEvent> offeredMeeting(const std::optional<Briefing>& lastGood, Instant now) {
    return meetingsOf(lastGood, now).offered;
}

std::optional<QUrl> joinUrl(const BriefEvent& meeting, const LinkPolicy& links) {
    return meeting.meetingUrl ? links.link(*meeting.meetingUrl) : std::nullopt;
}

std::optional<QUrl> linkToJoin(const Briefing& briefing, Instant now, const LinkPolicy& links) {
    Briefing joinable;
    for (const BriefEvent& event : briefing.eventsToday) {
        if (joinUrl(event, links))
            joinable.eventsToday.push_back(event);
    }
    const Meeting meeting = offeredMeeting(joinable, now);
    return meeting ? joinUrl(*meeting, links) : std::nullopt;
}

StatusItemContent statusItemContent(const StatusInputs& inputs) {
    const auto mode =
        MenuBarLabel::mode(inputs.lastGood, inputs.state, inputs.now, inputs.menuBarAmbient);
    const Meetings meetings = meetingsOf(inputs.lastGood, inputs.now);
    auto text = MenuBarLabel::text(mode);
    // A title may hold line breaks; the status area and the bars that read it have one line.
    if (text)
        text = singleLine(*text);
    // A meeting may lack a title, and a place for text must not be taken by none.
    if (text && text->isEmpty())
        text.reset();
    return {
        .symbol = MenuBarLabel::iconName(mode),
        .text = text,
        .shortText = MenuBarLabel::shortText(mode),
        .title = text ? u"Lumora: "_s + *text : u"Lumora"_s,
        .toolTipTitle = headline(meetings.onLabel, mode),
        .toolTipBody = toolTipBody(inputs, meetings),
        .menu = menu(inputs, meetings.offered),
    };
}

} // namespace lumora
