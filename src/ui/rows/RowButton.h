#pragma once

#include "ui/rows/RowLayout.h"
#include "ui/theme/ThemeSource.h"

#include <QAbstractButton>
#include <QMargins>

#include <optional>

namespace lumora {

/// A borderless button whose face is a row of texts and symbols. Its whole rectangle is clickable;
/// Space and Return press it.
class RowButton : public QAbstractButton {
    Q_OBJECT

public:
    enum class Highlight {
        None,
        OnHover, ///< a rounded ground under the pointer
    };

    /// `themes` must outlive the button.
    RowButton(
        const ThemeSource& themes, QMargins padding, Highlight highlight,
        QWidget* parent = nullptr);

    const RowContent& content() const { return m_content; }

    /// Shows `content`; nothing happens when it is what is shown already.
    void setContent(RowContent content);

    /// Where the items stand now, in points from `contentOrigin()`.
    RowGeometry itemGeometry() const;

    /// Where the content begins, in points: inside the padding, and in the middle of a button that
    /// is higher than it needs to be.
    QPointF contentOrigin() const;

    /// Whether what the button stands for is under way.
    bool isBusy() const { return m_busy; }

    void setBusy(bool busy);

    /// Whether what the button folds away is shown; absent when it folds nothing.
    std::optional<bool> expanded() const { return m_expanded; }

    void setExpanded(bool expanded);

    /// Whether the pointer is over the button.
    bool isHovering() const { return m_hovering; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    const Theme& theme() const { return m_themes.theme(); }

private:
    void setHovering(bool hovering);

    const ThemeSource& m_themes;
    Highlight m_highlight;
    RowContent m_content;
    bool m_hovering = false;
    bool m_busy = false;
    std::optional<bool> m_expanded;
};

} // namespace lumora
