#pragma once

#include "ui/theme/ThemeSource.h"

#include <QWidget>

namespace lumora {

/// A line one point high between two parts of the panel.
class Divider : public QWidget {
    Q_OBJECT

public:
    /// `themes` must outlive the divider.
    explicit Divider(const ThemeSource& themes, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const ThemeSource& m_themes;
};

} // namespace lumora
