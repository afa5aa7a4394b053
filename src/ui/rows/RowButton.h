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
    /// `padding` is in points from the content to the edge of the button, which has a rounded
    /// ground under the pointer and a stronger one while it is pressed. `themes` must outlive it.
    RowButton(const ThemeSource& themes, QMargins padding, QWidget* parent = nullptr);

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
    std::optional<ColorRole> ground() const;

    bool m_hovering = false;
    bool m_busy = false;
    std::optional<bool> m_expanded;
};

} // namespace lumora
