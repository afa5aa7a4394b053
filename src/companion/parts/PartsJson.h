#pragma once

#include "companion/parts/Parts.h"

#include <QByteArrayView>
#include <QJsonObject>

#include <tl/expected.hpp>

namespace lumora::companion {

// The members of the briefing, as docs/SERVICE.md describes them, from and to their JSON text. What
// is read is as strict as Lumora itself, because one bad member would make it refuse the whole
// briefing. The error is one line for people.

[[nodiscard]] tl::expected<HabitsPart, QString> readHabits(QByteArrayView json);
[[nodiscard]] tl::expected<ChoresPart, QString> readChores(QByteArrayView json);
[[nodiscard]] tl::expected<FocusPart, QString> readFocus(QByteArrayView json);
[[nodiscard]] tl::expected<SpendingPart, QString> readSpending(QByteArrayView json);

[[nodiscard]] QJsonObject toJson(const HabitsPart& habits);
[[nodiscard]] QJsonObject toJson(const ChoresPart& chores);
[[nodiscard]] QJsonObject toJson(const FocusPart& focus);
[[nodiscard]] QJsonObject toJson(const SpendingPart& spending);

/// `text` as JSON can hold it: half a surrogate pair becomes a question mark.
[[nodiscard]] QString wholeText(const QString& text);

} // namespace lumora::companion
