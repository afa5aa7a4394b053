#pragma once

#include "ui/theme/ThemeSource.h"

#include <QComboBox>
#include <QPointer>

class QMenu;

namespace lumora {

/// One choice out of a few, offered in a menu. Where what is chosen is none of those offered, it is
/// shown all the same.
class FormPicker : public QComboBox {
    Q_OBJECT

public:
    /// `themes` must outlive the picker.
    FormPicker(const ThemeSource& themes, const QStringList& choices);

    /// Shows the choice at `index`; for -1, `otherwise`, which is none of them.
    void setChosen(int index, const QString& otherwise);

    /// What is shown as chosen.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void showPopup() override;
    void hidePopup() override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void applyTheme();
    int besideText() const;

    const ThemeSource& m_themes;
    QPointer<QMenu> m_menu; ///< null unless it is open
};

} // namespace lumora
