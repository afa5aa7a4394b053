#pragma once

#include "ui/theme/ThemeSource.h"

#include <QComboBox>

namespace lumora {

/// One choice out of a few. Where what is chosen is none of those offered, it is shown all the
/// same.
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

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void applyTheme();

    const ThemeSource& m_themes;
};

} // namespace lumora
