#include "app/ThemeFollower.h"

#include "platform/DesktopAppearance.h"

#include <QApplication>
#include <QEvent>

#include <utility>

namespace lumora {

namespace {

/// Plasma is the one desktop whose own palette reaches the program; elsewhere the toolkit has only
/// a palette of its own, which looks at home nowhere.
bool hasPaletteOfItsOwn(const QString& desktop) {
    return desktop.split(u':').contains(u"KDE");
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

} // namespace

ThemeFollower::ThemeFollower(const DesktopAppearance& appearance, QString desktop)
    : m_appearance(appearance)
    , m_desktop(std::move(desktop))
    , m_themes(current()) {
    connect(
        &m_appearance, &DesktopAppearance::changed, this, [this] { m_themes.setTheme(current()); });
    qApp->installEventFilter(this);
}

Theme ThemeFollower::current() const {
    const QPalette palette = QApplication::palette();
    if (hasPaletteOfItsOwn(m_desktop))
        return {palette, QApplication::font()};
    const auto wish = m_appearance.colorScheme();
    const bool dark = wish ? *wish == DesktopAppearance::Preference::Dark : isDark(palette);
    return {dark ? ColorScheme::Dark : ColorScheme::Light, QApplication::font()};
}

bool ThemeFollower::eventFilter(QObject* watched, QEvent* event) {
    const bool isChange = event->type() == QEvent::ApplicationPaletteChange ||
                          event->type() == QEvent::ApplicationFontChange;
    if (watched == qApp && isChange)
        m_themes.setTheme(current());
    return QObject::eventFilter(watched, event);
}

} // namespace lumora
