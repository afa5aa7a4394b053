#pragma once

#include "ui/theme/PopupStyle.h"
#include "ui/theme/ThemeSource.h"

#include <QObject>

namespace lumora {

class Compositing;
class DesktopAppearance;

/// Keeps the program's font, its tool tips and its windows' theme in step with the desktop's colour
/// scheme, palette, accent and font, with its wish for less motion, and with whether it blends
/// windows. There is one in a program.
class ThemeFollower : public QObject {
    Q_OBJECT

public:
    /// `desktop` is the session's XDG_CURRENT_DESKTOP; the others must outlive the follower.
    ThemeFollower(
        const DesktopAppearance& appearance, const Compositing& compositing, QString desktop);

    const ThemeSource& themes() const { return m_themes; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Theme current() const;
    Theme colors() const;
    void adoptFont();
    void colorToolTips() const;

    const DesktopAppearance& m_appearance;
    const Compositing& m_compositing;
    QString m_desktop;
    ThemeSource m_themes;
    PopupStyle m_toolTipStyle{m_themes};
};

} // namespace lumora
