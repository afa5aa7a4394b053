#pragma once

#include "ui/theme/SpinnerMotion.h"
#include "ui/theme/ThemeSource.h"

#include <QAbstractButton>

namespace lumora {

/// A button with a text. Space and Return press it.
class FormButton : public QAbstractButton {
    Q_OBJECT

public:
    /// `busyTitle` is what it shows while it is busy, empty if it never is. The button is wide
    /// enough for both, so that neither moves anything. `themes` must outlive the button.
    FormButton(const ThemeSource& themes, const QString& title, const QString& busyTitle = {});

    /// While what it started is under way, the button says so, turns a spinner and cannot be
    /// pressed.
    void setBusy(bool busy);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();
    QRect paintSpinnerBeside(QPainter& painter, const QRect& room) const;

    const ThemeSource& m_themes;
    QString m_title;
    QString m_busyTitle;
    SpinnerMotion m_spinner;
    bool m_busy = false;
};

} // namespace lumora
