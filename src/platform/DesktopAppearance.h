#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace lumora {

/// A font as desktops name it.
struct DesktopFont {
    QString family;
    double pointSize = 0; ///< above 0
    int weight = 400;     ///< from 100, thin, to 900, black
    bool italic = false;

    bool operator==(const DesktopFont&) const = default;
};

/// A colour as desktops name it, in sRGB; each part is from 0 to 1.
struct DesktopColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const DesktopColor&) const = default;
};

/// What the user asks of all programs' looks. Absent is what the desktop does not state.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    enum class Preference { Dark, Light };

    struct Wishes {
        std::optional<Preference> colorScheme = std::nullopt;
        std::optional<DesktopFont> font = std::nullopt;    ///< of ordinary texts
        std::optional<bool> animations = std::nullopt;     ///< false: nothing is to move by itself
        std::optional<DesktopColor> accent = std::nullopt; ///< of what stands out

        bool operator==(const Wishes&) const = default;
    };

    std::optional<Preference> colorScheme() const { return m_wishes.colorScheme; }

    const Wishes& wishes() const { return m_wishes; }

Q_SIGNALS:
    /// The user asks for something else.
    void changed();

protected:
    void setWishes(const Wishes& wishes) {
        if (m_wishes == wishes)
            return;
        m_wishes = wishes;
        Q_EMIT changed();
    }

private:
    Wishes m_wishes;
};

} // namespace lumora
