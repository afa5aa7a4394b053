#include "ui/panel/FoldArea.h"
#include "ui/window/PanelWindowFixture.h"

#include <QSignalSpy>

#include <set>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora::tests {

TEST_F(PanelWindowTest, IsAFramelessToolWindowWithTheProgramsName) {
    EXPECT_EQ(window->windowType(), Qt::Tool);
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(window->windowTitle(), u"Lumora"_s);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PanelWindowTest, OpensUnderATopBarWithABorder) {
    open();
    EXPECT_EQ(window->panelGeometry(), QRect(339, 30, 322, 302));
    EXPECT_EQ(content->size(), QSize(320, 300));
    EXPECT_EQ(content->mapTo(window.get(), QPoint()), window->panelRect().topLeft() + QPoint(1, 1));
}

TEST_F(PanelWindowTest, IsRehearsedOutOfSight) {
    int paints = 0;
    const PaintWatcher watcher(content->button, [&] { ++paints; });
    const QSignalSpy hidden(window.get(), &PanelWindow::hidden);
    window->rehearse();
    EXPECT_EQ(paints, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(content->size(), QSize(320, 300));
    EXPECT_EQ(hidden.size(), 0);

    screen = windowBottomBar;
    open(bottomItem);
    EXPECT_EQ(window->panelGeometry(), QRect(339, 458, 322, 302)) << "as if nothing had been";
    paints = 0;
    window->rehearse();
    EXPECT_EQ(paints, 0) << "what is seen has been painted";
}

TEST_F(PanelWindowTest, OpensAboveABottomBar) {
    screen = windowBottomBar;
    open(bottomItem);
    EXPECT_EQ(window->panelGeometry(), QRect(339, 458, 322, 302));
}

TEST_F(PanelWindowTest, FloatsWithoutABorderWhereItIsComposited) {
    compositing.setActive(true);
    open();
    EXPECT_EQ(window->panelGeometry(), QRect(340, 34, 320, 300));
    EXPECT_EQ(content->size(), QSize(320, 300));
    EXPECT_TRUE(screen.available.contains(window->geometry()));
}

TEST_F(PanelWindowTest, HeightFollowsTheContentUnderATopBar) {
    open();
    const QRect windowBefore = window->geometry();
    for (const int height : {301, 450, 100, 300}) {
        setContentHeight(height);
        EXPECT_EQ(window->panelGeometry(), QRect(339, 30, 322, height + 2));
        EXPECT_EQ(content->size(), QSize(320, height));
    }
    EXPECT_EQ(window->geometry(), windowBefore) << "the window itself never moves";
}

TEST_F(PanelWindowTest, HeightFollowsTheContentAboveABottomBar) {
    screen = windowBottomBar;
    open(bottomItem);
    const QRect windowBefore = window->geometry();
    for (const int height : {301, 450, 100, 300}) {
        setContentHeight(height);
        EXPECT_EQ(window->panelGeometry(), QRect(339, 760 - height - 2, 322, height + 2));
        EXPECT_EQ(content->size(), QSize(320, height));
    }
    EXPECT_EQ(window->geometry(), windowBefore) << "the window itself never moves";
}

TEST_F(PanelWindowTest, FollowsAFoldStepByStepWithTheEdgeAtTheBarInPlace) {
    screen = windowBottomBar;
    auto* folded = new QWidget;
    auto* rows = new QWidget;
    rows->setFixedHeight(200);
    auto* foldedLayout = new QVBoxLayout(folded);
    foldedLayout->setContentsMargins({});
    foldedLayout->addWidget(rows);
    auto* fold = new FoldArea(themes, folded, 0);
    content->layout->insertWidget(0, fold);
    open(bottomItem);
    ASSERT_EQ(window->panelGeometry().height(), 502);

    QApplication::setEffectEnabled(Qt::UI_General);
    std::set<int> heights;
    int wrong = 0;
    const PaintWatcher watcher(window.get(), [&] {
        heights.insert(window->panelGeometry().height());
        const bool keepsEdge = window->panelGeometry().bottom() == 759;
        const bool fits = content->height() + 2 == window->panelGeometry().height();
        wrong += keepsEdge && fits ? 0 : 1;
    });
    fold->setCollapsed(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->panelGeometry().height() == 302; }, patience));
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(heights.size(), 1U);
}

TEST_F(PanelWindowTest, StaysWhereAWindowManagerPutIt) {
    open();
    clock.advance(500ms); // when window managers have done with new windows
    window->move(100, 50);
    QCoreApplication::processEvents();
    setContentHeight(400);
    EXPECT_EQ(window->pos(), QPoint(100, 50));
    EXPECT_EQ(window->panelGeometry(), QRect(100, 50, 322, 402));
    close();
    open();
    EXPECT_EQ(window->panelGeometry(), QRect(339, 30, 322, 402));
}

TEST_F(PanelWindowTest, InsistsOnItsPlaceOnceWhenItIsNew) {
    open();
    const QPoint place = window->pos();
    window->move(place + QPoint(2, 22)); // a frame came and went
    QCoreApplication::processEvents();
    EXPECT_EQ(window->pos(), place);
    window->move(place + QPoint(2, 22));
    QCoreApplication::processEvents();
    EXPECT_EQ(window->pos(), place + QPoint(2, 22));

    close();
    open();
    window->move(place + QPoint(2, 22));
    QCoreApplication::processEvents();
    EXPECT_EQ(window->pos(), place);
}

TEST_F(PanelWindowTest, CutsAwayWhatThePanelLeavesFree) {
    open();
    EXPECT_EQ(window->mask(), QRegion(window->panelRect()));
    compositing.setActive(true);
    EXPECT_TRUE(window->mask().boundingRect().contains(window->panelRect()));
    EXPECT_GT(window->mask().boundingRect().height(), window->panelRect().height());
    EXPECT_LT(window->mask().boundingRect().height(), window->height());
}

TEST_F(PanelWindowTest, StopsAtTheWorkArea) {
    content->setTotalHeight(2000);
    open();
    EXPECT_EQ(window->panelGeometry(), QRect(339, 30, 322, 770));
    EXPECT_EQ(content->size(), QSize(320, 768));
}

TEST_F(PanelWindowTest, HasTheContentsHeightWhenItFitsAgain) {
    content->setTotalHeight(2000);
    open();
    setContentHeight(400);
    EXPECT_EQ(window->panelGeometry().height(), 402);
    EXPECT_EQ(content->size(), QSize(320, 400));
}

TEST_F(PanelWindowTest, IsAsWideAsItsPointsAre) {
    open();
    themes.setTheme(themeOf(22));
    EXPECT_EQ(window->panelGeometry().size(), QSize(642, 302));
    EXPECT_EQ(content->width(), 640);
}

TEST_F(PanelWindowTest, IsNeverWiderThanTheScreen) {
    themes.setTheme(themeOf(44));
    open();
    EXPECT_EQ(window->panelGeometry().left(), 0);
    EXPECT_EQ(window->panelGeometry().width(), 1000);
    EXPECT_EQ(content->width(), 998);
}

TEST_F(PanelWindowTest, FollowsTheWorkArea) {
    open();
    screen.available.adjust(0, 20, 0, 0);
    compositing.setActive(true);
    EXPECT_EQ(window->panelGeometry().top(), 54);
}

TEST_F(PanelWindowTest, RemembersTheLastGoodAnchor) {
    open({.pointer = QPoint(300, 15)});
    close();
    open({});
    EXPECT_EQ(window->panelGeometry().center().x(), 299);
    close();
    open({.activation = QPoint(0, 25)});
    EXPECT_EQ(window->panelGeometry().center().x(), 299);
}

TEST_F(PanelWindowTest, WithoutAnyAnchorItIsWhereTheStatusAreaUsuallyIs) {
    open({});
    EXPECT_EQ(window->panelGeometry(), QRect(678, 30, 322, 302));
}

TEST_F(PanelWindowTest, IsASmallWindowWhereItCannotBePlaced) {
    compositing.setActive(true);
    make(false);
    open();
    EXPECT_EQ(window->size(), QSize(320, 300));
    EXPECT_EQ(window->panelRect(), QRect(0, 0, 320, 300));
    EXPECT_TRUE(window->mask().isEmpty());
    setContentHeight(350);
    EXPECT_EQ(window->size(), QSize(320, 350));
    EXPECT_EQ(content->size(), QSize(320, 350));
    setContentHeight(5000);
    EXPECT_EQ(window->height(), window->screen()->availableGeometry().height());
    EXPECT_EQ(content->height(), window->height());
}

TEST_F(PanelWindowTest, SquareWithABorderWithoutCompositing) {
    open();
    const QRect panel = window->panelRect();
    const QColor background = themes.theme().color(ColorRole::Background);
    const QImage image = picture();
    const QColor corner = image.pixelColor(panel.topLeft());
    EXPECT_EQ(corner.alpha(), 255);
    EXPECT_LT(corner.lightness(), background.lightness());
    EXPECT_EQ(image.pixelColor(panel.center().x(), panel.bottom()), corner);
    EXPECT_EQ(image.pixelColor(panel.topLeft() + QPoint(2, 2)), background);
}

TEST_F(PanelWindowTest, RoundWithAShadowWithCompositing) {
    compositing.setActive(true);
    open();
    const QRect panel = window->panelRect();
    const QImage image = picture();
    EXPECT_NE(image.pixelColor(panel.topLeft()).alpha(), 255) << "outside of the round corner";
    EXPECT_EQ(
        image.pixelColor(panel.topLeft() + QPoint(11, 0)),
        themes.theme().color(ColorRole::Background));
    const int below = image.pixelColor(panel.center().x(), panel.bottom() + 3).alpha();
    const int farBelow = image.pixelColor(panel.center().x(), panel.bottom() + 15).alpha();
    EXPECT_GT(below, farBelow);
    EXPECT_GT(farBelow, 0);
}

TEST_F(PanelWindowTest, FollowsTheThemeWhileOpen) {
    open();
    themes.setTheme(themeOf(10, ColorScheme::Dark));
    EXPECT_EQ(
        picture().pixelColor(window->panelRect().topLeft() + QPoint(2, 2)),
        themes.theme().color(ColorRole::Background));
}

TEST_F(PanelWindowTest, FollowsCompositingWhileOpen) {
    open();
    compositing.setActive(true);
    EXPECT_EQ(window->panelGeometry(), QRect(340, 34, 320, 300));
    compositing.setActive(false);
    EXPECT_EQ(window->panelGeometry(), QRect(339, 30, 322, 302));
}

} // namespace lumora::tests
