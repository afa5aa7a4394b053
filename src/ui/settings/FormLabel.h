#pragma once

#include "ui/theme/ThemeSource.h"

#include <QLabel>

namespace lumora {

/// The name of a control or of a group, on one line. With a buddy, its mnemonic leads there.
class FormLabel : public QLabel {
    Q_OBJECT

public:
    /// How the label looks.
    struct Style {
        TextRole role = TextRole::Body;
        QFont::Weight weight = QFont::Normal;
        ColorRole color = ColorRole::Primary;
    };

    /// `themes` must outlive the label.
    FormLabel(const ThemeSource& themes, const QString& text, Style style);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const ThemeSource& m_themes;
    Style m_style;
};

} // namespace lumora
