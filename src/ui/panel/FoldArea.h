#pragma once

#include "ui/rows/SpokenRole.h"
#include "ui/theme/ThemeSource.h"

#include <QVariantAnimation>
#include <QWidget>

namespace lumora {

/// Holds a widget that can be folded away. While it folds, the widget keeps its size and is cut
/// off at the bottom, so nothing in it is laid out anew.
class FoldArea : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `gap` is the space in points above the content, which folds away with it. Takes `content`;
    /// `themes` must outlive the area.
    FoldArea(const ThemeSource& themes, QWidget* content, int gap, QWidget* parent = nullptr);

    /// Folds or unfolds in 0.15 seconds, or at once where nothing may move or is on the screen.
    void setCollapsed(bool collapsed);

    bool isCollapsed() const { return m_collapsed; }

    /// How much is unfolded, from 0 to 1.
    double openness() const;

Q_SIGNALS:
    void opennessChanged();

private:
    class Layout;

    void applyOpenness();
    void stopIfStill();

    const ThemeSource& m_themes;
    QWidget* m_content;
    bool m_collapsed = false;
    QVariantAnimation m_motion;
};

} // namespace lumora
