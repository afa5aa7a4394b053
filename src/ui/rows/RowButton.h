#pragma once

#include "ui/rows/RowWidget.h"

#include <QAbstractButton>

#include <optional>

namespace lumora {

/// A borderless button whose face is a row of texts and symbols. Its whole rectangle is clickable;
/// Space and Return press it.
class RowButton : public RowWidget<QAbstractButton> {
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

    /// Whether what the button stands for is under way.
    bool isBusy() const { return m_busy; }

    void setBusy(bool busy);

    /// Whether what the button folds away is shown; absent when it folds nothing.
    std::optional<bool> expanded() const { return m_expanded; }

    void setExpanded(bool expanded);

    /// Whether the pointer is over the button.
    bool isHovering() const { return m_hovering; }

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setHovering(bool hovering);

    Highlight m_highlight;
    bool m_hovering = false;
    bool m_busy = false;
    std::optional<bool> m_expanded;
};

} // namespace lumora
