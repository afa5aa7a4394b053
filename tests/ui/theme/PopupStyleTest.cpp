#include "ui/theme/PopupStyle.h"

#include "ui/theme/ThemeSource.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>

#include <gtest/gtest.h>

#include <algorithm>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A menu on the screen, with an action of each kind.
class PopupStyleTest : public testing::Test {
protected:
    /// Shows the menu in the colours of `scheme`.
    void show(ColorScheme scheme, bool isRound) {
        Theme theme(scheme, QApplication::font());
        theme.setRoundsWindows(isRound);
        themes.setTheme(theme);
        menu = new QMenu;
        QPixmap bright(16, 16);
        bright.fill(Qt::red);
        QAction* const first = menu->addAction(bright, u"First\tCtrl+F"_s);
        first->setCheckable(true);
        first->setChecked(true);
        menu->addSeparator();
        menu->addAction(u"Last"_s)->setEnabled(false);
        dressMenu(*menu, themes);
        menu->popup({});
    }

    ~PopupStyleTest() override { delete menu; }

    QImage picture() const {
        QImage image(menu->size(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        const bool isBlended = menu->testAttribute(Qt::WA_TranslucentBackground);
        menu->render(
            &image, {}, {}, isBlended ? QWidget::DrawChildren : QWidget::DrawWindowBackground);
        return image;
    }

    /// Of the ground of the action at `index`, at its trailing end, where no text is.
    QColor groundOf(int index) const {
        const QRect place = menu->actionGeometry(menu->actions().at(index));
        return picture().pixelColor(place.right() - 3, place.center().y());
    }

    ThemeSource themes{Theme(ColorScheme::Light, QApplication::font())};
    QMenu* menu = nullptr;
};

constexpr ColorScheme bothSchemes[] = {ColorScheme::Light, ColorScheme::Dark};

} // namespace

TEST_F(PopupStyleTest, CornersAreRoundWhereWindowsAreBlended) {
    for (const ColorScheme scheme : bothSchemes) {
        for (const bool isRound : {true, false}) {
            show(scheme, isRound);
            const QImage image = picture();
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), isRound ? 0 : 255);
            EXPECT_EQ(image.pixelColor(image.width() / 2, 0).alpha(), 255);
            delete std::exchange(menu, nullptr);
        }
    }
}

TEST_F(PopupStyleTest, MenusLieOnTheRaisedGroundWithAHairline) {
    for (const ColorScheme scheme : bothSchemes) {
        show(scheme, true);
        const QImage image = picture();
        const QColor ground = image.pixelColor(image.width() / 2, 2);
        EXPECT_EQ(ground.rgb(), themes.theme().color(ColorRole::Raised).rgb());
        const double line = contrastRatio(image.pixelColor(image.width() / 2, 0), ground);
        EXPECT_GT(line, 1.1);
        EXPECT_LT(line, 2);
        delete std::exchange(menu, nullptr);
    }
}

TEST_F(PopupStyleTest, ShowsNoIcons) {
    for (const ColorScheme scheme : bothSchemes) {
        show(scheme, true);
        const QImage image = picture();
        int colourful = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                colourful += image.pixelColor(x, y).saturation() > 128 &&
                             image.pixelColor(x, y).lightness() > 64;
        EXPECT_EQ(colourful, 0);
        delete std::exchange(menu, nullptr);
    }
}

TEST_F(PopupStyleTest, WhatIsChosenLiesOnTheHoverColour) {
    for (const ColorScheme scheme : bothSchemes) {
        show(scheme, true);
        const Theme& theme = themes.theme();
        const QColor raised = theme.color(ColorRole::Raised);
        EXPECT_EQ(groundOf(0).rgb(), raised.rgb());
        menu->setActiveAction(menu->actions().constFirst());
        const QColor hovered = laidOver(theme.color(ColorRole::Hover), raised);
        EXPECT_NEAR(groundOf(0).lightnessF(), hovered.lightnessF(), 0.01);
        EXPECT_NE(groundOf(0).rgb(), raised.rgb());
        EXPECT_EQ(groundOf(2).rgb(), raised.rgb());
        delete std::exchange(menu, nullptr);
    }
}

TEST_F(PopupStyleTest, GrowsWithTheTextSize) {
    show(ColorScheme::Light, true);
    const int small = menu->actionGeometry(menu->actions().constFirst()).height();
    delete std::exchange(menu, nullptr);
    QFont large = QApplication::font();
    large.setPointSizeF(24);
    const QFont usual = QApplication::font();
    QApplication::setFont(large);
    show(ColorScheme::Light, true);
    EXPECT_GT(menu->actionGeometry(menu->actions().constFirst()).height(), 2 * small);
    QApplication::setFont(usual);
}
