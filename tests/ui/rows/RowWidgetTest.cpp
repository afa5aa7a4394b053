#include "briefing/TextBounds.h"
#include "support/ViewHarness.h"
#include "ui/rows/WidgetTexts.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString longTitle = u"A title that is far too long for the line it has to stand on"_s;

class RowWidgetTest : public testing::Test {
protected:
    ~RowWidgetTest() override { QToolTip::hideText(); }

    /// What the pointer is told when it rests on `widget`; empty where it is told nothing.
    static QString toolTipOf(QWidget& widget) {
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
        return QCoreApplication::sendEvent(&widget, &event) ? QToolTip::text() : QString();
    }

    QColor middle(QWidget& widget) { return painted(widget).pixelColor(widget.width() / 2, 1); }

    static void enter(QWidget& widget) {
        QEnterEvent event({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(&widget, &event);
    }

    ThemeSource themes{stillTheme()};
    PaintedRow row{themes, {}};
    RowButton button{themes, {4, 3, 4, 3}};
};

} // namespace

TEST_F(RowWidgetTest, ATextThatIsCutShowsItselfWhole) {
    row.setContent({.items = {RowItem::shrinkingText(longTitle, {})}});
    row.resize(100, 20);
    row.show();
    EXPECT_EQ(toolTipOf(row), longTitle);
    row.resize(2000, 20);
    EXPECT_EQ(toolTipOf(row), QString());
}

TEST_F(RowWidgetTest, ACutTextStandsBelowTheToolTipUnlessThatSaysIt) {
    button.setContent({.items = {RowItem::shrinkingText(longTitle, {})}});
    button.resize(100, 20);
    button.show();
    setToolTipText(button, u"Expand Habits"_s);
    EXPECT_EQ(toolTipOf(button), u"Expand Habits\n"_s + longTitle);
    setToolTipText(button, u"Join "_s + longTitle);
    EXPECT_EQ(toolTipOf(button), u"Join "_s + longTitle);
}

TEST_F(RowWidgetTest, ACutTextIsNeverTakenForMarkup) {
    row.setContent({.items = {RowItem::shrinkingText(u"<b>bold</b> &amp; more"_s, {})}});
    row.resize(20, 20);
    row.show();
    EXPECT_EQ(toolTipOf(row), u"<span>&lt;b&gt;bold&lt;/b&gt; &amp;amp; more</span>"_s);
}

TEST_F(RowWidgetTest, AToolTipTurnsNothingThatStandsAroundAText) {
    setToolTipText(button, u"Toggle “Read\u202e”\u0007"_s);
    EXPECT_EQ(button.toolTip(), u"Toggle “Read” "_s);
    row.setContent({.items = {RowItem::shrinkingText(u"long\u202e title"_s, {})}});
    row.resize(20, 20);
    row.show();
    EXPECT_EQ(toolTipOf(row), u"long title"_s);
}

TEST_F(RowWidgetTest, AButtonHasAGroundUnderThePointerAndAStrongerOneWhilePressed) {
    button.setContent({.items = {RowItem::text(u"Refresh"_s, {})}});
    button.resize(button.sizeHint());
    button.show();
    EXPECT_EQ(middle(button).alpha(), 0);
    enter(button);
    EXPECT_EQ(middle(button).alpha(), themes.theme().color(ColorRole::Hover).alpha());
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(middle(button).alpha(), themes.theme().color(ColorRole::Pressed).alpha());
    EXPECT_GT(
        themes.theme().color(ColorRole::Pressed).alpha(),
        themes.theme().color(ColorRole::Hover).alpha());
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(middle(button).alpha(), themes.theme().color(ColorRole::Hover).alpha());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&button, &leave);
    EXPECT_EQ(middle(button).alpha(), 0);
}

TEST_F(RowWidgetTest, WhatIsUnderWayOrDisabledCannotBePressed) {
    button.setContent({.items = {RowItem::text(u"Refresh"_s, {})}});
    button.resize(button.sizeHint());
    button.show();
    enter(button);
    button.setBusy(true);
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(middle(button).alpha(), themes.theme().color(ColorRole::Hover).alpha());
    QTest::mouseRelease(&button, Qt::LeftButton);
    button.setEnabled(false);
    EXPECT_EQ(middle(button).alpha(), 0);
}

TEST_F(RowWidgetTest, PaddingFollowsTheTextSize) {
    EXPECT_EQ(button.contentsMargins(), QMargins(4, 3, 4, 3));
    themes.setTheme(stillTheme(22));
    EXPECT_EQ(button.contentsMargins(), QMargins(8, 6, 8, 6));
}

TEST_F(RowWidgetTest, KeepsNoMoreOfATextThanItShows) {
    const QString endless(100'000, u'x');
    row.setSpokenContent({.items = {RowItem::shrinkingText(endless, {})}});
    EXPECT_EQ(textsOf(row.content()), QStringList{beginning(endless, longestLine)});
    EXPECT_EQ(row.accessibleName(), beginning(endless, longestLine));
    row.resize(100, 20);
    row.show();
    EXPECT_LE(toolTipOf(row).size(), 500);
}

TEST_F(RowWidgetTest, NothingThatIsSpokenIsEndless) {
    const QString endless(100'000, u'x');
    setSpokenName(button, endless);
    EXPECT_EQ(button.accessibleName(), beginning(endless, longestPassage));
    setSpokenDescription(button, endless);
    EXPECT_EQ(button.accessibleDescription(), beginning(endless, longestPassage));
}
