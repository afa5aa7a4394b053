#pragma once

#include <QPoint>
#include <QStringList>

class QWidget;

namespace lumora {

/// Shows `text` as it stands when the pointer rests on `widget`: it is never taken for markup, and
/// one beyond 400 characters is cut. Nothing happens when it is the tooltip already.
void setToolTipText(QWidget& widget, const QString& text);

/// Shows the tooltip of `widget` at `position` on the screen, and below it those of `cut` that it
/// does not say already: texts that the widget itself had no room for. False when there is nothing
/// to show.
bool showToolTip(QWidget& widget, const QPoint& position, const QStringList& cut);

/// Lets screen readers call `widget` by `name`, cut at `longestPassage`; they hear of it only when
/// it is a new one.
void setSpokenName(QWidget& widget, const QString& name);

/// Lets screen readers add `text`, cut in the same way, to the name of `widget`; empty: its
/// tooltip. They hear of it only when it is a new one.
void setSpokenDescription(QWidget& widget, const QString& text);

} // namespace lumora
