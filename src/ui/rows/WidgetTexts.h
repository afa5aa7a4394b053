#pragma once

#include <QString>

class QWidget;

namespace lumora {

/// Shows `text` as it stands when the pointer rests on `widget`: it is never taken for markup, and
/// one beyond 400 characters is cut. Nothing happens when it is the tooltip already.
void setToolTipText(QWidget& widget, const QString& text);

/// Lets screen readers call `widget` by `name`; they hear of it only when it is a new one.
void setSpokenName(QWidget& widget, const QString& name);

/// Lets screen readers add `text` to the name of `widget`; empty: its tooltip. They hear of it only
/// when it is a new one.
void setSpokenDescription(QWidget& widget, const QString& text);

} // namespace lumora
