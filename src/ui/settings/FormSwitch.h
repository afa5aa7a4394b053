#pragma once

#include "ui/theme/ThemeSource.h"

#include <QCheckBox>

namespace lumora {

/// A setting that is on or off: its name in front, wrapping where it must, and a switch behind. All
/// of the row moves it.
class FormSwitch : public QCheckBox {
    Q_OBJECT

public:
    /// `themes` must outlive the switch.
    FormSwitch(const ThemeSource& themes, const QString& text);

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool hitButton(const QPoint& position) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();
    int besideText() const;
    void paintTrack(QPainter& painter) const;

    const ThemeSource& m_themes;
};

} // namespace lumora
