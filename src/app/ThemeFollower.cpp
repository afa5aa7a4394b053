#include "app/ThemeFollower.h"

#include "platform/Compositing.h"
#include "platform/DesktopAppearance.h"
#include "platform/DesktopNames.h"

#include <QApplication>
#include <QEvent>
#include <QToolTip>
#include <QWidget>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Plasma and LXQt hand their font to the toolkit themselves, with more about it than others know.
bool setsFontByItself(const QString& desktop) {
    return namesDesktop(desktop, {"KDE"_L1, "LXQt"_L1});
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
    return namesDesktop(desktop, {"KDE"_L1});
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

} // namespace

ThemeFollower::ThemeFollower(
    const DesktopAppearance& appearance, const Compositing& compositing, QString desktop)
    : m_appearance(appearance)
    , m_compositing(compositing)
    , m_desktop(std::move(desktop))
    , m_themes(current()) {
    connect(&m_appearance, &DesktopAppearance::changed, this, [this] {
        adoptFont();
        m_themes.setTheme(current());
    });
    connect(&m_compositing, &Compositing::changed, this, [this] { m_themes.setTheme(current()); });
    qApp->installEventFilter(this);
    adoptFont();
    connect(&m_themes, &ThemeSource::changed, this, &ThemeFollower::colorToolTips);
    colorToolTips();
}

void ThemeFollower::adoptFont() {
    const auto& wish = m_appearance.wishes().font;
    if (wish && !setsFontByItself(m_desktop))
        QApplication::setFont(fontFrom(*wish));
}

// The toolkit's own are yellow, whatever is around them.
void ThemeFollower::colorToolTips() const {
    if (hasPaletteOfItsOwn(m_desktop))
        return;
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::ToolTipBase, m_themes.theme().color(ColorRole::Raised));
    palette.setColor(QPalette::ToolTipText, m_themes.theme().color(ColorRole::Primary));
    QToolTip::setPalette(palette);
}

Theme ThemeFollower::current() const {
    Theme theme = colors();
    const auto& wishes = m_appearance.wishes();
    if (const auto& accent = wishes.accent)
        theme.setAccent(
            QColor::fromRgbF(float(accent->red), float(accent->green), float(accent->blue)));
    theme.setAllowsMotion(wishes.animations.value_or(true));
    theme.setRoundsWindows(m_compositing.isActive());
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
    // The toolkit's own tool tips are windows of its own that nobody is handed; the first that
    // anybody hears of a new one is that it is about to get its style.
    if (event->type() == QEvent::Polish && !hasPaletteOfItsOwn(m_desktop)) {
        auto* const widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->windowType() == Qt::ToolTip)
            m_toolTipStyle.dress(*widget);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace lumora
