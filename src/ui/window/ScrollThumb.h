#pragma once

#include "ui/theme/ThemeSource.h"

#include <QWidget>

class QScrollBar;

namespace lumora {

/// A thin mark over the right edge of what scrolls, which shows and changes how far it is
/// scrolled. It takes no room, and is hidden while everything is in view.
class ScrollThumb : public QWidget {
    Q_OBJECT

public:
    /// Shows the state of `bar`, which may itself be invisible and must outlive the thumb.
    ScrollThumb(const ThemeSource& themes, QScrollBar* bar, QWidget* parent);

    /// Where the mark itself is, in the widget's coordinates.
    QRect thumbRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void follow();
    int travel() const;

    const ThemeSource& m_themes;
    QScrollBar* m_bar;
    int m_grip = 0; ///< from the top of the mark to where it is held
};

} // namespace lumora
