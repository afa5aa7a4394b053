#include "ui/panel/ActionRows.h"

#include "support/ViewHarness.h"

#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

Habit habit(const QString& id, const QString& name) {
    return {id, name, false, 0, 1, 0};
}

class ActionRowsTest : public testing::Test {
protected:
    ActionRowsTest() {
        m_rows.resize(296, 400);
        m_rows.show();
    }

    void render(const std::vector<Habit>& habits, const std::set<QString>& pending = {}) {
        m_rows.render(habitRows({.done = 0, .total = 0, .items = habits}), pending);
        settle();
    }

    QList<ActionRow*> rows() const { return shown<ActionRow>(m_rows); }

    ThemeSource m_themes{stillTheme()};
    ActionRows m_rows{m_themes};
    QSignalSpy m_triggered{&m_rows, &ActionRows::triggered};
};

void movePointer(QWidget& widget, bool inside) {
    if (inside) {
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(&widget, &enter);
    } else {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&widget, &leave);
    }
}

} // namespace

TEST(SectionRows, AreAThousandAtMost) {
    const std::vector<Habit> habits(1003, habit(u"read"_s, u"Read"_s));
    EXPECT_EQ(habitRows({.done = 0, .total = 0, .items = habits}).size(), 1000U);
    const std::vector<Chore> chores(1003, Chore{});
    EXPECT_EQ(choreRows({.count = 0, .top = chores}).size(), 1000U);
}

TEST_F(ActionRowsTest, ALastLineTellsHowManyMoreThereAre) {
    const auto values = habitRows(
        {.done = 0, .total = 0, .items = {habit(u"read"_s, u"Read"_s), habit(u"run"_s, u"Run"_s)}});
    m_rows.render(values, {}, 3);
    settle();
    EXPECT_EQ(shownTexts(m_rows), (QStringList{u"Read"_s, u"Run"_s, u"+3 more"_s}));
    const auto* more = shown<PaintedRow>(m_rows).back();
    EXPECT_EQ(more->accessibleName(), u"+3 more"_s);
    EXPECT_EQ(
        styleOf(more->content(), u"+3 more"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
    EXPECT_GE(more->y(), rows().back()->geometry().bottom());

    m_rows.render(values, {});
    settle();
    EXPECT_EQ(shownTexts(m_rows), (QStringList{u"Read"_s, u"Run"_s}));
}

TEST_F(ActionRowsTest, ARowIsPaddedFourByThree) {
    render({habit(u"read"_s, u"Read"_s)});
    ActionRow& row = *rows().front();
    EXPECT_EQ(row.contentsMargins(), QMargins(4, 3, 4, 3));
    const RowGeometry inside = row.itemGeometry();
    EXPECT_EQ(row.height(), int(inside.height) + 3 + 3);
    EXPECT_DOUBLE_EQ(inside.items.back().right(), row.width() - 4 - 4);
}

TEST_F(ActionRowsTest, TheWholeRowIsClickable) {
    render({habit(u"read"_s, u"Read"_s)});
    ActionRow* row = rows().front();
    for (const QPoint point :
         {QPoint(0, 0), row->rect().center(), QPoint(row->width() - 1, row->height() - 1)})
        QTest::mouseClick(row, Qt::LeftButton, {}, point);
    EXPECT_EQ(m_triggered.size(), 3);
    EXPECT_EQ(m_triggered.front(), (QVariantList{u"read"_s, u"habit:read"_s}));
}

TEST_F(ActionRowsTest, SpaceAndReturnPressARow) {
    render({habit(u"read"_s, u"Read"_s)});
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(rows().front(), key);
    EXPECT_EQ(m_triggered.size(), 3);
}

TEST_F(ActionRowsTest, APendingRowTurnsBeforeItsContentAndRefusesClicks) {
    render({habit(u"read"_s, u"Read"_s), habit(u"run"_s, u"Run"_s)}, {u"habit:read"_s});
    ActionRow* reading = rows().at(0);
    ActionRow* running = rows().at(1);
    ASSERT_EQ(reading->content().items.front().kind, RowItem::Kind::Spinner);
    EXPECT_EQ(reading->itemGeometry().items.front().size(), QSizeF(14, 14));
    EXPECT_EQ(symbolsOf(reading->content()), QStringList{u"circle"_s});
    EXPECT_EQ(textsOf(reading->content()), QStringList{u"Read"_s});
    QTest::mouseClick(reading, Qt::LeftButton);
    QTest::keyClick(reading, Qt::Key_Return);
    EXPECT_TRUE(m_triggered.isEmpty());

    EXPECT_FALSE(hasSpinner(running->content()));
    QTest::mouseClick(running, Qt::LeftButton);
    EXPECT_EQ(m_triggered.size(), 1);

    render({habit(u"read"_s, u"Read"_s), habit(u"run"_s, u"Run"_s)});
    EXPECT_FALSE(hasSpinner(reading->content()));
    QTest::mouseClick(reading, Qt::LeftButton);
    EXPECT_EQ(m_triggered.size(), 2);
}

TEST_F(ActionRowsTest, APendingRowKeepsTheKeyboard) {
    render({habit(u"read"_s, u"Read"_s)});
    rows().front()->setFocus();
    render({habit(u"read"_s, u"Read"_s)}, {u"habit:read"_s});
    EXPECT_EQ(m_rows.focusWidget(), rows().front());
}

TEST_F(ActionRowsTest, TheGroundUnderThePointerIsFaintAndRounded) {
    render({habit(u"read"_s, u"Read"_s)});
    ActionRow& row = *rows().front();
    const auto alpha = [&row](int x, int y) { return qAlpha(painted(row).pixel(x, y)); };
    constexpr int full = 18; // 0.07 of 255
    EXPECT_EQ(alpha(150, 1), 0);

    movePointer(row, true);
    EXPECT_TRUE(row.isHovering());
    EXPECT_NEAR(alpha(150, 1), full, 1);
    EXPECT_NEAR(alpha(0, row.height() / 2), full, 1);
    EXPECT_NEAR(alpha(row.width() - 1, row.height() / 2), full, 1);
    // A quarter circle of radius 5 leaves the corner out and covers what lies within it.
    EXPECT_EQ(alpha(0, 0), 0);
    EXPECT_LE(alpha(0, 1), full / 4);
    EXPECT_LE(alpha(1, 1), full * 3 / 4);
    EXPECT_NEAR(alpha(2, 2), full, 1);
    EXPECT_NEAR(alpha(5, 0), full, 1);

    movePointer(row, false);
    EXPECT_FALSE(row.isHovering());
    EXPECT_EQ(alpha(150, 1), 0);
}

TEST_F(ActionRowsTest, ARowThatLeavesTheScreenIsNoLongerUnderThePointer) {
    render({habit(u"read"_s, u"Read"_s)});
    movePointer(*rows().front(), true);
    m_rows.hide();
    m_rows.show();
    EXPECT_FALSE(rows().front()->isHovering());
}

TEST_F(ActionRowsTest, RowsKeepTheirWidgetsById) {
    const Habit read = habit(u"read"_s, u"Read"_s);
    const Habit run = habit(u"run"_s, u"Run"_s);
    const Habit sing = habit(u"sing"_s, u"Sing"_s);
    render({read, run});
    const QList before = rows();
    before.at(1)->setFocus();
    movePointer(*before.at(1), true);

    render({sing, run, read});
    EXPECT_EQ(rows().mid(1), (QList{before.at(1), before.at(0)}));
    EXPECT_EQ(textsOf(rows().front()->content()), QStringList{u"Sing"_s});
    EXPECT_EQ(m_rows.focusWidget(), before.at(1));
    EXPECT_TRUE(before.at(1)->isHovering());

    render({run});
    EXPECT_EQ(rows(), QList{before.at(1)});
    EXPECT_EQ(m_rows.findChildren<ActionRow*>().size(), 1);
    render({});
    EXPECT_TRUE(m_rows.findChildren<ActionRow*>().isEmpty());
}

TEST_F(ActionRowsTest, ARenamedHabitKeepsItsWidget) {
    render({habit(u"read"_s, u"Read"_s)});
    const QList before = rows();
    render({habit(u"read"_s, u"Read more"_s)});
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(textsOf(before.front()->content()), QStringList{u"Read more"_s});
    EXPECT_EQ(before.front()->toolTip(), u"Toggle “Read more”"_s);
}

TEST_F(ActionRowsTest, IdsMayRepeatOrBeEmpty) {
    const std::vector habits{habit(u"a"_s, u"First"_s),    habit(u"a"_s, u"Second"_s),
                             habit(u""_s, u"Third"_s),     habit(u""_s, u"Fourth"_s),
                             habit(u"a\n0"_s, u"Fifth"_s), habit(u"a\n1"_s, u"Sixth"_s)};
    render(habits, {u"habit:"_s});
    const QList before = rows();
    ASSERT_EQ(before.size(), 6);
    QStringList names;
    for (const ActionRow* row : before)
        names += textsOf(row->content());
    EXPECT_EQ(
        names,
        (QStringList{u"First"_s, u"Second"_s, u"Third"_s, u"Fourth"_s, u"Fifth"_s, u"Sixth"_s}));
    EXPECT_TRUE(hasSpinner(before.at(2)->content()));
    EXPECT_TRUE(hasSpinner(before.at(3)->content()));
    EXPECT_FALSE(hasSpinner(before.at(0)->content()));

    render(habits);
    EXPECT_EQ(rows(), before);
    QTest::mouseClick(before.at(1), Qt::LeftButton);
    QTest::mouseClick(before.at(2), Qt::LeftButton);
    QTest::mouseClick(before.at(5), Qt::LeftButton);
    EXPECT_EQ(m_triggered.at(0), (QVariantList{u"a"_s, u"habit:a"_s}));
    EXPECT_EQ(m_triggered.at(1), (QVariantList{u""_s, u"habit:"_s}));
    EXPECT_EQ(m_triggered.at(2), (QVariantList{u"a\n1"_s, u"habit:a\n1"_s}));
}

TEST_F(ActionRowsTest, NamesOfAnyKindStayOnOneLine) {
    const QString endless(10'240, u'W');
    render({
        habit(u"plain"_s, u"Read"_s),
        habit(u"lines"_s, u"Read\nand\r\nwrite"_s),
        habit(endless, endless),
        habit(u"empty"_s, QString()),
        habit(u"quotes"_s, u"<b>\"Salt\" & 'Pepper'</b>"_s),
    });
    ASSERT_EQ(rows().size(), 5);
    for (const ActionRow* row : rows()) {
        EXPECT_EQ(row->height(), rows().front()->height());
        EXPECT_LE(row->itemGeometry().items.back().right(), 296 - 4 - 4);
        EXPECT_LE(row->toolTip().size(), 1000);
    }
    QTest::mouseClick(rows().at(2), Qt::LeftButton);
    EXPECT_EQ(m_triggered.front().front(), endless);
}

TEST_F(ActionRowsTest, ToolTipsShowNamesAsTheyStand) {
    render({
        habit(u"a"_s, u"Salt & \"Pepper\""_s),
        habit(u"b"_s, u"<b>Bold</b>"_s),
        habit(u"c"_s, u"&lt;"_s),
    });
    // A tooltip is taken for rich text as soon as it looks like it.
    EXPECT_EQ(rows().at(0)->toolTip(), u"Toggle “Salt & \"Pepper\"”"_s);
    EXPECT_TRUE(Qt::mightBeRichText(rows().at(1)->toolTip()));
    EXPECT_TRUE(rows().at(1)->toolTip().contains(u"&lt;b&gt;Bold&lt;/b&gt;"));
    EXPECT_TRUE(Qt::mightBeRichText(rows().at(2)->toolTip()));
    EXPECT_TRUE(rows().at(2)->toolTip().contains(u"&amp;lt;"));
}

TEST_F(ActionRowsTest, RowsAreAnnouncedWithTheirState) {
    render({{u"read"_s, u"Read"_s, false, 0, 1, 4}});
    EXPECT_EQ(rows().front()->accessibleName(), u"Read, not done, streak 4"_s);
}

TEST(ChoreRows, SendTheirIdUnderTheirKey) {
    const std::vector<ActionRowValue> rows =
        choreRows({.count = 1, .top = {{u"water"_s, u"Water plants"_s, u"Balcony"_s, 3}}});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().id, u"water"_s);
    EXPECT_EQ(rows.front().key, u"chore:water"_s);
    EXPECT_EQ(rows.front().toolTip, u"Mark “Water plants” done"_s);
    EXPECT_EQ(rows.front().accessibleName, u"Water plants, 3 days overdue"_s);
    EXPECT_FALSE(textsOf(rows.front().content).contains(u"Balcony"_s));
}
