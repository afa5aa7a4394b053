#pragma once

#include "ui/theme/ThemeSource.h"

#include <QObject>

namespace lumora {

class DesktopAppearance;

/// Keeps the program's font, its tool tips and its windows' theme in step with the desktop's colour
/// scheme, palette, accent and font, and with its wish for less motion. There is one in a program.
class ThemeFollower : public QObject {
    Q_OBJECT

public:
    /// `desktop` is the session's XDG_CURRENT_DESKTOP; `appearance` must outlive the follower.
    ThemeFollower(const DesktopAppearance& appearance, QString desktop);

    const ThemeSource& themes() const { return m_themes; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Theme current() const;
    Theme colors() const;
    void adoptFont();
    void dressToolTips() const;

    const DesktopAppearance& m_appearance;
    QString m_desktop;
    ThemeSource m_themes;
};

} // namespace lumora
