#include "ui/rows/ContentScroller.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

class ContentScrollerTest : public testing::Test {
protected:
    ContentScrollerTest() {
        content->setFixedWidth(320);
        layout->setContentsMargins({});
        layout->setSpacing(0);
        layout->addWidget(block);
        scroller.resize(320, 400);
    }

    /// Makes the content `height` points high and lets everybody know.
    void setContentHeight(int height) {
        block->setFixedHeight(height);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }

    void show() {
        scroller.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&scroller));
    }

    ThemeSource themes{Theme(ColorScheme::Light, QFont())};
    QWidget* content = new QWidget;
    QVBoxLayout* layout = new QVBoxLayout(content);
    QWidget* block = new QWidget;
    ContentScroller scroller{themes, content, nullptr};
    ScrollThumb* thumb = scroller.findChild<ScrollThumb*>();
};

TEST_F(ContentScrollerTest, ContentThatFitsIsShownAsItIs) {
    setContentHeight(400);
    show();
    EXPECT_EQ(scroller.contentHeight(320), 400);
    EXPECT_EQ(content->size(), QSize(320, 400));
    EXPECT_FALSE(scroller.isScrollable());
    EXPECT_FALSE(thumb->isVisible());
}

TEST_F(ContentScrollerTest, ContentThatDoesNotFitKeepsItsWidthAndScrolls) {
    setContentHeight(1000);
    show();
    EXPECT_EQ(content->size(), QSize(320, 1000));
    EXPECT_TRUE(scroller.isScrollable());
    EXPECT_EQ(scroller.verticalScrollBar()->maximum(), 600);
    EXPECT_FALSE(scroller.verticalScrollBar()->isVisible());
    EXPECT_TRUE(thumb->isVisible());
}

TEST_F(ContentScrollerTest, ReportsAndFollowsTheContentsHeight) {
    setContentHeight(300);
    show();
    const QSignalSpy changed(&scroller, &ContentScroller::contentChanged);
    setContentHeight(1000);
    EXPECT_GT(changed.count(), 0);
    EXPECT_EQ(content->height(), 1000);
    EXPECT_TRUE(thumb->isVisible());
    setContentHeight(200);
    EXPECT_EQ(content->height(), 200);
    EXPECT_FALSE(thumb->isVisible());
}

TEST_F(ContentScrollerTest, TextThatWrapsIsMeasuredAtThePanelsWidth) {
    auto* text = new QLabel(u"many words "_s.repeated(60));
    text->setWordWrap(true);
    layout->addWidget(text);
    setContentHeight(10);
    EXPECT_EQ(scroller.contentHeight(320), 10 + text->heightForWidth(320));
    EXPECT_GT(scroller.contentHeight(320), 10 + 2 * text->fontMetrics().height());
}

TEST_F(ContentScrollerTest, TheWheelScrolls) {
    setContentHeight(1000);
    show();
    QWheelEvent wheel(
        QPointF(100, 100), scroller.mapToGlobal(QPointF(100, 100)), {}, {0, -120}, Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(scroller.viewport(), &wheel);
    EXPECT_GT(scroller.verticalScrollBar()->value(), 0);
    EXPECT_EQ(content->y(), -scroller.verticalScrollBar()->value());
}

TEST_F(ContentScrollerTest, PagesScrollByWhatIsInView) {
    setContentHeight(1000);
    show();
    scroller.scrollByPage(1);
    EXPECT_EQ(scroller.verticalScrollBar()->value(), 400);
    scroller.scrollByPage(1);
    EXPECT_EQ(scroller.verticalScrollBar()->value(), 600);
    scroller.scrollByPage(-1);
    EXPECT_EQ(scroller.verticalScrollBar()->value(), 200);
}

TEST_F(ContentScrollerTest, WhatGetsTheFocusComesIntoView) {
    setContentHeight(1000);
    auto* field = new QLineEdit;
    layout->addWidget(field);
    show();
    scroller.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&scroller));
    field->setFocus();
    const int top = field->mapTo(&scroller, QPoint()).y();
    EXPECT_GE(top, 0);
    EXPECT_LE(top + field->height(), 400);
}

TEST_F(ContentScrollerTest, TheThumbShowsWhatPartIsInView) {
    setContentHeight(800);
    show();
    EXPECT_EQ(thumb->geometry(), QRect(310, 0, 10, 400));
    EXPECT_EQ(thumb->thumbRect(), QRect(3, 3, 4, 197));
    scroller.verticalScrollBar()->setValue(400);
    EXPECT_EQ(thumb->thumbRect(), QRect(3, 200, 4, 197));
}

TEST_F(ContentScrollerTest, TheThumbOfVeryLongContentCanStillBeHit) {
    setContentHeight(100'000);
    show();
    EXPECT_EQ(thumb->thumbRect().height(), 24);
    scroller.verticalScrollBar()->setValue(scroller.verticalScrollBar()->maximum());
    EXPECT_EQ(thumb->thumbRect().bottom(), 396);
}

TEST_F(ContentScrollerTest, TheThumbCanBeDragged) {
    setContentHeight(800);
    show();
    QTest::mousePress(thumb, Qt::LeftButton, {}, QPoint(5, 50));
    EXPECT_EQ(scroller.verticalScrollBar()->value(), 0);
    QTest::mouseMove(thumb, QPoint(5, 150));
    QTest::mouseRelease(thumb, Qt::LeftButton, {}, QPoint(5, 150));
    EXPECT_NEAR(thumb->thumbRect().top(), 103, 1);
    EXPECT_NEAR(scroller.verticalScrollBar()->value(), 203, 2);
}

TEST_F(ContentScrollerTest, APressBesideTheThumbBringsItThere) {
    setContentHeight(800);
    show();
    QTest::mousePress(thumb, Qt::LeftButton, {}, QPoint(5, 390));
    EXPECT_EQ(scroller.verticalScrollBar()->value(), 400);
}

TEST_F(ContentScrollerTest, NothingOfTheScrollerTakesTheFocus) {
    EXPECT_EQ(scroller.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(scroller.viewport()->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(thumb->focusPolicy(), Qt::NoFocus);
}

} // namespace
} // namespace lumora::tests
