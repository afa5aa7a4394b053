#pragma once

#include "briefing/LoadState.h"
#include "platform/LinkPolicy.h"
#include "platform/StatusItem.h"
#include "texts/MenuBarLabel.h"

#include <QLocale>
#include <QTimeZone>
#include <QUrl>

namespace lumora {

/// What the status item is made from.
struct StatusInputs {
    const std::optional<Briefing>& lastGood;
    const LoadState& state;
    std::optional<Instant> lastUpdated; ///< when `lastGood` was stored
    QString menuBarAmbient;             ///< the preference's text
    LinkPolicy links = LinkPolicy();    ///< those that may be opened
    Instant now;
    QTimeZone timeZone = QTimeZone::systemTimeZone();
    QLocale locale = QLocale::system();
};

/// Everything the status area shows: the label, a tooltip that says in full what the label
/// shortens, and the menu for desktops that open one on a click.
StatusItemContent statusItemContent(const StatusInputs& inputs);

/// What is said of a failed fetch where there are only words to say it with: its message, or that
/// there is none.
[[nodiscard]] QString failureText(const QString& message);

/// The same of an action.
[[nodiscard]] QString actionFailureText(const QString& message);

/// The meeting that the menu offers to join: the label's while it shows one, else the next.
[[nodiscard]] std::optional<BriefEvent>
offeredMeeting(const std::optional<Briefing>& lastGood, Instant now);

/// Where the meeting is joined; absent without a link that `links` allows.
[[nodiscard]] std::optional<QUrl> joinUrl(const BriefEvent& meeting, const LinkPolicy& links);

/// Where somebody goes who wants to join what is on or comes next: of the meetings of `briefing`
/// with a link that `links` allows, the one that the label would show, else the next. Absent when
/// there is none.
[[nodiscard]] std::optional<QUrl>
linkToJoin(const Briefing& briefing, Instant now, const LinkPolicy& links);

} // namespace lumora
