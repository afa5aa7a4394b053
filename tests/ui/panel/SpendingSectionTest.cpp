#include "ui/panel/SpendingSection.h"

#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "support/WrittenTexts.h"
#include "ui/panel/SpendingFigures.h"

#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

Briefing briefingWith(const Spending& spending) {
    Briefing briefing = makeBriefing();
    briefing.spending = spending;
    return briefing;
}

Spending figures() {
    return {
        .mtd = 98765.4,
        .sameDayLastMonth = 76543,
        .deltaFraction = 0.29,
        .top =
            {{u"food"_s, u"Food"_s, u"🍎"_s, u"#1E90FF"_s, 54321},
             {u"rent"_s, u"Rent"_s, u"🏠"_s, u"#abc"_s, 43210}},
        .asOf = u"2025-03-03"_s,
        .generatedAt = 1,
        .stale = true,
    };
}

QString digitsOf(const QString& text) {
    QString digits;
    for (const QChar c : text)
        if (c.isDigit())
            digits += c;
    return digits;
}

class SpendingSectionTest : public testing::Test {
protected:
    SpendingSection* body() const { return m_panel.view.findChild<SpendingSection*>(); }

    SpendingFigures* revealed() const { return body()->figures(); }

    RowButton* header() const { return buttonNamed(m_panel.view, u"Spending"_s); }

    void reveal() {
        QTest::mouseClick(body()->revealButton(), Qt::LeftButton);
        m_panel.render();
    }

    /// Whether any amount is to be found in a widget, the accessible tree or the clipboard.
    bool amountIsAnywhere() const {
        QStringList everything = writtenIn(m_panel.view);
        everything += spokenBy(QAccessible::queryAccessibleInterface(&m_panel.view));
        everything += QApplication::clipboard()->text();
        for (const QString& amount : {u"98765"_s, u"54321"_s, u"43210"_s})
            for (const QString& text : everything)
                if (digitsOf(text).contains(amount))
                    return true;
        return false;
    }

    mutable ViewHarness m_panel;
};

} // namespace

TEST_F(SpendingSectionTest, ShowsAThousandBucketsAndHowManyMore) {
    Spending many = figures();
    many.top.assign(1000, many.top.front());
    m_panel.show(briefingWith(many));
    reveal();
    EXPECT_FALSE(shownTexts(*revealed()).join(u'\n').contains(u" more"_s));
    many.top.insert(many.top.end(), 4, many.top.front());
    m_panel.show(briefingWith(many));
    EXPECT_EQ(shownTexts(*revealed()).count(u"Food"_s), 1000);
    EXPECT_EQ(shownTexts(*revealed()).count(u"+4 more"_s), 1);
    const QStringList spoken = spokenBy(QAccessible::queryAccessibleInterface(revealed()));
    EXPECT_EQ(spoken.filter(u"+4 more"_s).size(), 1);
}

TEST_F(SpendingSectionTest, IsThereOnlyWithFigures) {
    m_panel.show(makeBriefing());
    EXPECT_EQ(header(), nullptr);
    m_panel.show(briefingWith(figures()));
    EXPECT_NE(header(), nullptr);
    m_panel.show(makeBriefing());
    EXPECT_EQ(header(), nullptr);
}

TEST_F(SpendingSectionTest, StartsHiddenBehindAButton) {
    m_panel.show(briefingWith(figures()));
    RowButton* button = body()->revealButton();
    EXPECT_EQ(textsOf(button->content()), QStringList{u"Show month-to-date"_s});
    EXPECT_EQ(symbolsOf(button->content()), QStringList{u"eye"_s});
    EXPECT_EQ(
        styleOf(button->content(), u"Show month-to-date"_s),
        (TextStyle{.color = ColorRole::Secondary}));
    EXPECT_DOUBLE_EQ(button->content().spacing, 6);
    EXPECT_EQ(button->toolTip(), u"Reveal spending for this viewing"_s);
    EXPECT_EQ(revealed(), nullptr);
}

TEST_F(SpendingSectionTest, HiddenAmountsAreNowhere) {
    m_panel.show(briefingWith(figures()));
    EXPECT_FALSE(amountIsAnywhere());
    QTest::mouseClick(header(), Qt::LeftButton);
    EXPECT_TRUE(textsOf(header()->content()).contains(u"hidden"_s));
    EXPECT_FALSE(amountIsAnywhere());
}

TEST_F(SpendingSectionTest, RevealedAmountsCanBeSeenAndHeard) {
    m_panel.show(briefingWith(figures()));
    reveal();
    EXPECT_TRUE(amountIsAnywhere());
    const QString heard =
        digitsOf(spokenBy(QAccessible::queryAccessibleInterface(&m_panel.view)).join(u'\n'));
    for (const QString& amount : {u"98765"_s, u"54321"_s, u"43210"_s})
        EXPECT_TRUE(heard.contains(amount)) << amount.toStdString();
}

TEST_F(SpendingSectionTest, HidingTakesEveryAmountAway) {
    m_panel.show(briefingWith(figures()));
    reveal();
    QTest::mouseClick(revealed()->hideButton(), Qt::LeftButton);
    settle();
    EXPECT_EQ(revealed(), nullptr);
    EXPECT_TRUE(body()->revealButton()->isVisible());
    EXPECT_FALSE(amountIsAnywhere());
}

TEST_F(SpendingSectionTest, HidesItselfAtTheFirstTickFromNinetySecondsOn) {
    m_panel.show(briefingWith(figures()));
    reveal();
    m_panel.pass(89s);
    EXPECT_NE(revealed(), nullptr);
    m_panel.clock.advance(1s);
    m_panel.render();
    EXPECT_NE(revealed(), nullptr);
    m_panel.pass(0s);
    EXPECT_EQ(revealed(), nullptr);
    EXPECT_FALSE(amountIsAnywhere());
}

TEST_F(SpendingSectionTest, RevealingAgainLastsAnotherNinetySeconds) {
    m_panel.show(briefingWith(figures()));
    reveal();
    m_panel.pass(120s);
    EXPECT_EQ(revealed(), nullptr);
    reveal();
    m_panel.pass(89s);
    EXPECT_NE(revealed(), nullptr);
    m_panel.pass(1s);
    EXPECT_EQ(revealed(), nullptr);
}

TEST_F(SpendingSectionTest, FoldedItTellsTheFigureOnlyWhileRevealed) {
    m_panel.show(briefingWith(figures()));
    reveal();
    QTest::mouseClick(header(), Qt::LeftButton);
    settle();
    const QString summary = textsOf(header()->content()).at(1);
    EXPECT_TRUE(summary.endsWith(u" MTD"));
    EXPECT_EQ(digitsOf(summary), u"98765"_s);
    m_panel.pass(90s);
    EXPECT_EQ(textsOf(header()->content()).at(1), u"hidden"_s);
    EXPECT_FALSE(amountIsAnywhere());
}

TEST_F(SpendingSectionTest, ABriefingWithoutFiguresLeavesNoneBehind) {
    m_panel.show(briefingWith(figures()));
    reveal();
    QTest::mouseClick(header(), Qt::LeftButton);
    settle();
    m_panel.show(makeBriefing());
    EXPECT_FALSE(amountIsAnywhere());
}

TEST_F(SpendingSectionTest, ShowsTotalPaceBucketsAndAge) {
    m_panel.show(briefingWith(figures()));
    reveal();
    QStringList rows;
    for (const auto* row : shown<PaintedRow>(*revealed()))
        rows += textsOf(row->content()).join(u' ');
    ASSERT_EQ(rows.size(), 5);
    EXPECT_TRUE(rows.at(0).endsWith(u" MTD"));
    EXPECT_EQ(rows.at(1), u"29% ahead of last month"_s);
    EXPECT_TRUE(rows.at(2).startsWith(u"🍎 Food "));
    EXPECT_TRUE(rows.at(3).startsWith(u"🏠 Rent "));
    EXPECT_EQ(rows.at(4), u"as of 2025-03-03"_s);
    EXPECT_EQ(
        shown<PaintedRow>(*revealed()).back()->toolTip(),
        u"The daily rollup hasn't run today — hit refresh for current figures"_s);
}

TEST_F(SpendingSectionTest, RowsAreSixApart) {
    m_panel.show(briefingWith(figures()));
    reveal();
    const QList rows = shown<PaintedRow>(*revealed());
    ASSERT_EQ(rows.size(), 5);
    for (int i = 2; i < rows.size(); ++i) {
        const int above =
            rows.at(i - 1)->mapTo(revealed(), QPoint(0, rows.at(i - 1)->height())).y();
        EXPECT_EQ(rows.at(i)->mapTo(revealed(), QPoint()).y() - above, 6) << i;
    }
    const RowButton* hide = revealed()->hideButton();
    const RowButton* refresh = revealed()->refreshButton();
    const auto face = [this](const RowButton* button) {
        return button->contentsRect().translated(button->mapTo(revealed(), QPoint()));
    };
    EXPECT_EQ(face(hide).right() + 1, revealed()->width() - 4);
    EXPECT_EQ(face(hide).left() - (face(refresh).right() + 1), 6);
}

TEST_F(SpendingSectionTest, FreshFiguresHaveNoAge) {
    Spending spending = figures();
    spending.stale = false;
    m_panel.show(briefingWith(spending));
    reveal();
    for (const QString& text : shownTexts(*revealed()))
        EXPECT_FALSE(text.startsWith(u"as of"));
}

TEST_F(SpendingSectionTest, NewFiguresReplaceTheOldInPlace) {
    m_panel.show(briefingWith(figures()));
    reveal();
    const SpendingFigures* before = revealed();
    const QList rows = shown<PaintedRow>(*revealed());
    m_panel.pass(60s);
    Spending spending = figures();
    spending.mtd = 11111;
    std::swap(spending.top[0], spending.top[1]);
    m_panel.show(briefingWith(spending));
    EXPECT_EQ(revealed(), before);
    const QList now = shown<PaintedRow>(*revealed());
    EXPECT_EQ(now, (QList{rows[0], rows[1], rows[3], rows[2], rows[4]}));
    EXPECT_EQ(digitsOf(textsOf(now.front()->content()).front()), u"11111"_s);
    m_panel.pass(29s);
    EXPECT_NE(revealed(), nullptr);
    m_panel.pass(1s);
    EXPECT_EQ(revealed(), nullptr);
}

TEST_F(SpendingSectionTest, BucketKeysMayRepeatOrBeEmpty) {
    Spending spending = figures();
    const QString endless(10'240, u'W');
    spending.top = {
        {u"a"_s, u"One"_s, u""_s, u""_s, 1},
        {u"a"_s, u"Two\nlines"_s, u""_s, u""_s, 2},
        {u""_s, endless, endless, endless, 3},
        {u""_s, u""_s, u""_s, u""_s, 4}};
    m_panel.show(briefingWith(spending));
    reveal();
    EXPECT_EQ(shown<PaintedRow>(*revealed()).size(), 2 + 4 + 1);
    EXPECT_EQ(m_panel.view.width(), 320);
    EXPECT_EQ(cutOff(m_panel.view), "");
}

TEST_F(SpendingSectionTest, RefreshingTurnsAndCannotBePressedAgain) {
    QSignalSpy refreshes(m_panel.view.briefing(), &BriefingView::spendingRefreshRequested);
    m_panel.show(briefingWith(figures()));
    reveal();
    RowButton* refresh = revealed()->refreshButton();
    EXPECT_EQ(symbolsOf(refresh->content()), QStringList{u"arrow.clockwise"_s});
    EXPECT_EQ(refresh->toolTip(), u"Re-pull transactions from your banks"_s);
    QTest::mouseClick(refresh, Qt::LeftButton);
    EXPECT_EQ(refreshes.size(), 1);

    m_panel.pending = {u"spending"_s};
    m_panel.render();
    EXPECT_TRUE(hasSpinner(refresh->content()));
    EXPECT_FALSE(refresh->isEnabled());
    QTest::mouseClick(refresh, Qt::LeftButton);
    EXPECT_EQ(refreshes.size(), 1);

    m_panel.pending = {};
    m_panel.render();
    EXPECT_EQ(symbolsOf(refresh->content()), QStringList{u"arrow.clockwise"_s});
    EXPECT_TRUE(refresh->isEnabled());
}

TEST_F(SpendingSectionTest, TheHideButtonIsSecondary) {
    m_panel.show(briefingWith(figures()));
    reveal();
    const RowButton* hide = revealed()->hideButton();
    EXPECT_EQ(symbolsOf(hide->content()), QStringList{u"eye.slash"_s});
    EXPECT_EQ(hide->content().items.front().style.color, ColorRole::Secondary);
    EXPECT_EQ(hide->toolTip(), u"Hide again"_s);
}

TEST_F(SpendingSectionTest, TheKeyboardStaysInTheSection) {
    m_panel.show(briefingWith(figures()));
    body()->revealButton()->setFocus();
    QTest::keyClick(body()->revealButton(), Qt::Key_Return);
    settle();
    EXPECT_EQ(m_panel.view.focusWidget(), revealed()->hideButton());
    QTest::keyClick(revealed()->hideButton(), Qt::Key_Return);
    settle();
    EXPECT_EQ(m_panel.view.focusWidget(), body()->revealButton());
}
