#pragma once

#include "briefing/Briefing.h"

#include <QLocale>

namespace lumora::SpendingTexts {

/// How long amounts stay revealed, in seconds.
inline constexpr Seconds revealedFor{90};

/// Whether amounts that were revealed at `revealedAt` are still to be seen at `now`.
bool isRevealed(std::optional<Instant> revealedAt, Instant now);

/// The digest of the folded section: the month's figure, or "hidden".
QString summary(const Spending& spending, bool revealed, const QLocale& locale);

/// The pace against last month, e.g. "12% ahead of last month"; absent without a comparison.
std::optional<QString> paceLabel(const Spending& spending);

/// The same in words for the panel, which also says when there is no comparison.
QString pace(const Spending& spending);

/// The note below figures that are not of today, e.g. "as of 2026-11-19".
QString asOf(const Spending& spending);

} // namespace lumora::SpendingTexts
