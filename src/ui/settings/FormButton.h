#pragma once

#include "ui/theme/ThemeSource.h"

#include <QAbstractButton>

namespace lumora {

/// A button with a text. Space and Return press it.
class FormButton : public QAbstractButton {
    Q_OBJECT

public:
    /// `titles` are all that the button will ever show: it is wide enough for each of them, so that
    /// a new one moves nothing. It shows the first. `themes` must outlive the button.
    FormButton(const ThemeSource& themes, QStringList titles);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const ThemeSource& m_themes;
    QStringList m_titles;
};

} // namespace lumora
