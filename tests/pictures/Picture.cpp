#include "pictures/Picture.h"

#include "support/ViewHarness.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <array>
#include <numeric>

namespace lumora::tests {

namespace {

constexpr Look commonLook;

/// Among these, any value of a member meets any value of another. The last two make large files.
constexpr std::array<Look, 8> coveringLooks = {{
    {1, ColorScheme::Light, 8, Qt::LeftToRight},
    {2, ColorScheme::Dark, 11, Qt::LeftToRight},
    {1, ColorScheme::Light, 16, Qt::RightToLeft},
    {2, ColorScheme::Dark, 8, Qt::RightToLeft},
    {1, ColorScheme::Light, 11, Qt::RightToLeft},
    {1, ColorScheme::Dark, 24, Qt::LeftToRight},
    {2, ColorScheme::Dark, 16, Qt::LeftToRight},
    {2, ColorScheme::Light, 24, Qt::RightToLeft},
}};

std::string nameOf(const Look& look) {
    return std::to_string(look.scale) + "x_" +
           (look.scheme == ColorScheme::Dark ? "dark_" : "light_") + std::to_string(look.points) +
           (look.direction == Qt::RightToLeft ? "pt_rtl" : "pt_ltr");
}

/// Those that `state` is drawn in. Which ones is a matter of its name, so that a new state changes
/// no other.
std::vector<Look> looksOf(const PictureState& state) {
    constexpr std::size_t opposite = 3;
    const std::size_t chance = std::accumulate(state.name.begin(), state.name.end(), std::size_t());
    std::vector<Look> looks{commonLook};
    switch (state.looks) {
    case Looks::Two:
        looks.push_back(coveringLooks[chance % coveringLooks.size()]);
        break;
    case Looks::Three:
        looks.push_back(coveringLooks[chance % opposite]);
        looks.push_back(coveringLooks[chance % opposite + opposite]);
        break;
    case Looks::All:
        looks.insert(looks.end(), coveringLooks.begin(), coveringLooks.end());
    }
    return looks;
}

QPoint inWindow(const QWidget& target) {
    return target.mapTo(target.window(), target.rect().center());
}

} // namespace

std::vector<Picture> allPictures() {
    std::vector<Picture> pictures;
    for (const auto& states : {panelStates(), panelControlStates(), settingsStates()}) {
        for (const PictureState& state : states) {
            for (const Look& look : looksOf(state))
                pictures.push_back({state.name + '_' + nameOf(look), look, state});
        }
    }
    return pictures;
}

Theme adopt(const Look& look) {
    QFont font(QStringLiteral("Inter"));
    font.setPointSize(look.points);
    QApplication::setFont(font);
    QApplication::setLayoutDirection(look.direction);
    Theme theme(look.scheme, font);
    theme.setAllowsMotion(false);
    return theme;
}

QRect screenFor(const Look& look) {
    return QGuiApplication::screens().at(look.scale - 1)->geometry();
}

void placeOnScreen(QWidget& window, const Look& look) {
    constexpr QPoint away(100, 100); // of the corner: the toolkit takes that for no place at all
    window.setScreen(QGuiApplication::screens().at(look.scale - 1));
    window.move(screenFor(look).topLeft() + away);
}

QImage drawn(QWidget& window, const QRect& part, QColor ground) {
    settle();
    const qreal scale = window.devicePixelRatioF();
    QImage image((QSizeF(part.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(ground);
    QPainter painter(&image);
    // As painters of widgets on a screen have it.
    painter.setLayoutDirection(QApplication::layoutDirection());
    window.render(&painter, QPoint(), part);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

void pointAt(QWidget& target) {
    // The toolkit takes note of where the pointer has been before it takes it for anywhere else.
    QTest::mouseMove(target.window()->windowHandle(), QPoint());
    QTest::mouseMove(target.window()->windowHandle(), inWindow(target));
    settle();
}

void pressAt(QWidget& target) {
    pointAt(target);
    QTest::mousePress(
        target.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow(target));
    settle();
}

void letGo(QWidget& window) {
    const QPoint outside(-10, -10);
    QTest::mouseMove(window.windowHandle(), outside);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, outside);
    settle();
}

} // namespace lumora::tests
