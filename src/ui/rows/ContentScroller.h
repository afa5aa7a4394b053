#pragma once

#include "ui/theme/ThemeSource.h"

#include <QScrollArea>

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

/// Shows a window's content, or the middle of it, at its own width and height, and lets it be
/// scrolled where there is less room than that.
class ContentScroller : public QScrollArea {
    Q_OBJECT

public:
    /// Takes `content`.
    ContentScroller(const ThemeSource& themes, QWidget* content, QWidget* parent);

    /// The height that the content asks for at `width`, in pixels.
    [[nodiscard]] int contentHeight(int width) const;

    /// The width in pixels that `sizeHint` is for.
    void setContentWidth(int width);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    [[nodiscard]] bool isScrollable() const;

    void scrollByPage(int pages);

Q_SIGNALS:
    /// The content asks for another size.
    void contentChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeContent();

    ScrollThumb* m_thumb;
    int m_contentWidth = 0;
};

} // namespace lumora
