#pragma once

#include "ui/theme/Theme.h"

#include <QObject>

namespace lumora {

/// The theme that every part of the panel draws with now.
class ThemeSource : public QObject {
    Q_OBJECT

public:
    explicit ThemeSource(Theme theme)
        : m_theme(std::move(theme)) {}

    const Theme& theme() const { return m_theme; }

    /// Draws everything with `theme` from now on.
    void setTheme(const Theme& theme) {
        if (m_theme == theme)
            return;
        m_theme = theme;
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    Theme m_theme;
};

} // namespace lumora
