#pragma once

#include "ui/rows/SpokenRole.h"
#include "ui/rows/WrappedText.h"
#include "ui/theme/ThemeSource.h"

#include <QAccessible>
#include <QWidget>

#include <optional>

namespace lumora {

/// A warning triangle and a message, which wraps rather than being cut: it is the only place where
/// the user learns what went wrong. Only one beyond `longestPassage` is cut there. Where the
/// message is empty the triangle stands alone. Announced to screen readers when its message
/// changes.
class ErrorBanner : public QWidget, public SpokenAs<SpokenRole::Alert> {
    Q_OBJECT

public:
    /// `padding` is in points; `themes` must outlive the banner.
    ErrorBanner(const ThemeSource& themes, QMargins padding, QWidget* parent = nullptr);

    /// Shows `whole`, an empty one too, or as much of it as is ever shown; absent hides the banner.
    void setMessage(const std::optional<QString>& whole);

    const std::optional<QString>& message() const { return m_message; }

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where triangle and message stand, in pixels.
    struct Laid {
        QRectF symbol;
        QPointF origin; ///< of the text
        std::unique_ptr<QTextLayout> text;
    };

    void tell(QAccessible::Event what);
    Laid layOut(double width) const;

    const ThemeSource& m_themes;
    QMargins m_padding; ///< points
    std::optional<QString> m_message;
};

} // namespace lumora
