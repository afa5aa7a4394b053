#pragma once

#include "ui/window/PanelShadow.h"

class QPainter;

namespace lumora {

class Theme;

/// What the panel's content stands on: round with a shadow, or square with a thin border.
class PanelGround {
public:
    enum class Shape { Square, Round, RoundWithShadow };

    /// Covers `panel`, and what the shadow takes around it.
    void paint(QPainter& painter, const QRect& panel, const Theme& theme, Shape shape);

private:
    PanelShadow m_shadow;
};

} // namespace lumora
