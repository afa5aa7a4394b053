#pragma once

#include "ui/theme/ThemeSource.h"

#include <QLineEdit>

namespace lumora {

/// A field for one line of text, with a round border.
class FormField : public QLineEdit {
    Q_OBJECT

public:
    /// `themes` must outlive the field.
    explicit FormField(const ThemeSource& themes);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const ThemeSource& m_themes;
};

} // namespace lumora
