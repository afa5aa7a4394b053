#pragma once

#include "ui/theme/ThemeSource.h"

#include <QMargins>
#include <QWidget>

class QLayout;
class QVBoxLayout;

namespace lumora {

/// A group of settings: rows on a rounded ground, with lines between them.
class FormCard : public QWidget {
    Q_OBJECT

public:
    static constexpr QMargins padding{14, 8, 14, 8}; ///< from the card's edges to its rows, points

    /// `themes` must outlive the card.
    explicit FormCard(const ThemeSource& themes);

    /// Appends a row and takes what is in it.
    void addRow(QLayout* row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const ThemeSource& m_themes;
    QVBoxLayout* m_rows;
};

} // namespace lumora
