#include "app/ThemeFollower.h"

#include "platform/DesktopAppearance.h"

#include <QApplication>
#include <QEvent>
#include <QToolTip>

#include <utility>

namespace lumora {

namespace {

/// Plasma and LXQt hand their font to the toolkit themselves, with more about it than others know.
bool setsFontByItself(const QString& desktop) {
    const auto names = desktop.split(u':');
    return names.contains(u"KDE") || names.contains(u"LXQt");
}

QFont fontFrom(const DesktopFont& wish) {
    QFont font(wish.family);
    font.setPointSizeF(wish.pointSize);
    font.setWeight(QFont::Weight(wish.weight));
    font.setItalic(wish.italic);
    return font;
}

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
    connect(&m_appearance, &DesktopAppearance::changed, this, [this] {
        adoptFont();
        m_themes.setTheme(current());
    });
    qApp->installEventFilter(this);
    adoptFont();
    connect(&m_themes, &ThemeSource::changed, this, &ThemeFollower::dressToolTips);
    dressToolTips();
}

void ThemeFollower::adoptFont() {
    const auto& wish = m_appearance.wishes().font;
    if (wish && !setsFontByItself(m_desktop))
        QApplication::setFont(fontFrom(*wish));
}

// The toolkit's own are yellow, whatever is around them.
void ThemeFollower::dressToolTips() const {
    if (hasPaletteOfItsOwn(m_desktop))
        return;
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::ToolTipBase, m_themes.theme().color(ColorRole::Background));
    palette.setColor(QPalette::ToolTipText, m_themes.theme().color(ColorRole::Secondary));
    QToolTip::setPalette(palette);
}

Theme ThemeFollower::current() const {
    Theme theme = colors();
    const auto& wishes = m_appearance.wishes();
    if (const auto& accent = wishes.accent)
        theme.setAccent(
            QColor::fromRgbF(float(accent->red), float(accent->green), float(accent->blue)));
    theme.setAllowsMotion(wishes.animations.value_or(true));
    return theme;
}

Theme ThemeFollower::colors() const {
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
