#include "texts/MenuBarLabel.h"

#include "briefing/MeetingSelection.h"
#include "texts/Formatters.h"
#include "texts/PlainText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// How long before its start a meeting takes the label over.
constexpr Seconds countdownReach{1800};

constexpr qsizetype mostShortCharacters = 4;

MenuBarLabel::Mode ambientMode(const Briefing& briefing, MenuBarAmbient ambient) {
    switch (ambient) {
    case MenuBarAmbient::Habits:
        if (briefing.habits.total >= 1)
            return MenuBarLabel::Habits{briefing.habits.done, briefing.habits.total};
        break;
    case MenuBarAmbient::Focus:
        if (briefing.focus.productiveShare)
            return MenuBarLabel::Focus{*briefing.focus.productiveShare};
        break;
    case MenuBarAmbient::Chores:
        if (briefing.chores.count >= 1)
            return MenuBarLabel::Chores{briefing.chores.count};
        break;
    case MenuBarAmbient::None:
        break;
    }
    return MenuBarLabel::Idle{};
}

struct IconName {
    QString operator()(const MenuBarLabel::Now&) const { return u"record.circle"_s; }

    QString operator()(const MenuBarLabel::Countdown&) const { return u"calendar.badge.clock"_s; }

    QString operator()(const MenuBarLabel::Habits& habits) const {
        return habits.done == habits.total ? u"checkmark.circle.fill"_s : u"checkmark.circle"_s;
    }

    QString operator()(const MenuBarLabel::Focus&) const { return u"brain.head.profile"_s; }

    QString operator()(const MenuBarLabel::Chores&) const { return u"checklist"_s; }

    QString operator()(const MenuBarLabel::Error&) const {
        return u"calendar.badge.exclamationmark"_s;
    }

    QString operator()(const MenuBarLabel::Loading&) const { return u"calendar"_s; }

    QString operator()(const MenuBarLabel::Idle&) const { return u"calendar"_s; }
};

struct Text {
    using Result = std::optional<QString>;

    Result operator()(const MenuBarLabel::Now& now) const { return now.title; }

    Result operator()(const MenuBarLabel::Countdown& countdown) const {
        return countdown.title + u" · "_s + countdown.label;
    }

    Result operator()(const MenuBarLabel::Habits& habits) const {
        return QString::number(habits.done) + u'/' + QString::number(habits.total);
    }

    Result operator()(const MenuBarLabel::Focus& focus) const {
        return Formatters::percent(focus.share);
    }

    Result operator()(const MenuBarLabel::Chores& chores) const {
        return QString::number(chores.count);
    }

    Result operator()(const auto&) const { return std::nullopt; }
};

} // namespace

QString rawValue(MenuBarAmbient ambient) {
    switch (ambient) {
    case MenuBarAmbient::Habits:
        return u"habits"_s;
    case MenuBarAmbient::Focus:
        return u"focus"_s;
    case MenuBarAmbient::Chores:
        return u"chores"_s;
    case MenuBarAmbient::None:
        return u"none"_s;
    }
    Q_UNREACHABLE();
}

MenuBarAmbient menuBarAmbientFromRaw(const QString& raw) {
    const auto found = std::ranges::find(menuBarAmbientCases, raw, rawValue);
    return found == menuBarAmbientCases.end() ? MenuBarAmbient::Habits : *found;
}

QString title(MenuBarAmbient ambient) {
    switch (ambient) {
    case MenuBarAmbient::Habits:
        return u"Habit progress"_s;
    case MenuBarAmbient::Focus:
        return u"Focus %"_s;
    case MenuBarAmbient::Chores:
        return u"Chores due"_s;
    case MenuBarAmbient::None:
        return u"Nothing"_s;
    }
    Q_UNREACHABLE();
}

std::optional<BriefEvent> MenuBarLabel::meeting(const Briefing& briefing, Instant now) {
    auto upcoming = upcomingMeeting(briefing, now, backgroundThreshold);
    if (upcoming && secondsBetween(now, *upcoming->start) <= countdownReach)
        return upcoming;
    return meetingInProgress(briefing, now, backgroundThreshold);
}

MenuBarLabel::Mode MenuBarLabel::mode(
    const std::optional<Briefing>& lastGood, const LoadState& state, Instant now,
    const QString& menuBarAmbient) {
    if (!lastGood)
        return state.isFailed() ? Mode(Error{}) : Mode(Loading{});
    if (const auto taking = meeting(*lastGood, now)) {
        if (*taking->start > now)
            return Countdown{shortTitle(taking->title), Formatters::countdown(*taking->start, now)};
        return Now{shortTitle(taking->title)};
    }
    return ambientMode(*lastGood, menuBarAmbientFromRaw(menuBarAmbient));
}

QString MenuBarLabel::modeName(const Mode& mode) {
    static const std::array names{
        u"now"_s,    u"countdown"_s, u"habits"_s,  u"focus"_s,
        u"chores"_s, u"error"_s,     u"loading"_s, u"idle"_s,
    };
    static_assert(names.size() == std::variant_size_v<Mode>);
    return names[mode.index()];
}

QString MenuBarLabel::iconName(const Mode& mode) {
    return std::visit(IconName(), mode);
}

std::optional<QString> MenuBarLabel::text(const Mode& mode) {
    return std::visit(Text(), mode);
}

std::optional<QString> MenuBarLabel::shortText(const Mode& mode) {
    if (std::holds_alternative<Now>(mode))
        return std::nullopt;
    const auto* const countdown = std::get_if<Countdown>(&mode);
    const auto whole = countdown ? countdown->label : text(mode);
    return whole && whole->size() <= mostShortCharacters ? whole : std::nullopt;
}

} // namespace lumora
