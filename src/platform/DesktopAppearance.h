#pragma once

#include <QObject>

#include <optional>

namespace lumora {

/// What the user asks of all programs' looks.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    enum class Preference { Dark, Light };

    /// The colour scheme that is asked for; absent when the desktop states none.
    std::optional<Preference> colorScheme() const { return m_colorScheme; }

Q_SIGNALS:
    /// The user asks for something else.
    void changed();

protected:
    void setColorScheme(std::optional<Preference> colorScheme) {
        if (m_colorScheme == colorScheme)
            return;
        m_colorScheme = colorScheme;
        Q_EMIT changed();
    }

private:
    std::optional<Preference> m_colorScheme;
};

} // namespace lumora
