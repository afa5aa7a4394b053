#include "ui/panel/CollapsibleSection.h"

#include "support/ViewHarness.h"

#include <QAnimationDriver>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int contentHeight = 40;

/// Moves animations by hand.
class HandDriver final : public QAnimationDriver {
public:
    HandDriver() { install(); }

    ~HandDriver() override { uninstall(); }

    qint64 elapsed() const override { return m_elapsed; }

    void pass(qint64 milliseconds) {
        settle(); // an animation begins with the event loop
        m_elapsed += milliseconds;
        advance();
        settle();
    }

private:
    qint64 m_elapsed = 0;
};

/// Content of a fixed height with one button.
class Content final : public QWidget {
public:
    explicit Content(const ThemeSource& themes)
        : button(new RowButton(themes, {}, this)) {}

    QSize sizeHint() const override { return {100, contentHeight}; }

    RowButton* button;
};

class CollapsibleSectionTest : public testing::Test {
protected:
    explicit CollapsibleSectionTest(std::optional<qint64> badge = {})
        : m_content(new Content(m_themes))
        , m_section(
              m_themes, {.title = u"Chores due"_s, .systemImage = u"checklist"_s, .badge = badge},
              m_content) {
        m_section.setSummary(u"7 due"_s);
        m_section.resize(304, m_section.sizeHint().height());
        m_section.show();
        settle();
    }

    double chevron() const { return m_section.header()->content().items.back().rotation; }

    int height() const { return m_section.sizeHint().height(); }

    int headerHeight() const { return m_section.header()->height(); }

    ThemeSource m_themes{plainTheme()};
    Content* m_content;
    CollapsibleSection m_section;
    QSignalSpy m_toggled{&m_section, &CollapsibleSection::toggled};
};

class StillSectionTest : public CollapsibleSectionTest {
protected:
    StillSectionTest() { m_themes.setTheme(stillTheme()); }
};

} // namespace

TEST_F(StillSectionTest, ExpandedShowsItsContentSixBelowTheHeader) {
    EXPECT_EQ(textsOf(m_section.header()->content()), QStringList{u"CHORES DUE"_s});
    const int below = m_section.header()->contentsMargins().bottom();
    EXPECT_EQ(m_content->mapTo(&m_section, QPoint()).y() - headerHeight() + below, 6);
    EXPECT_EQ(height(), headerHeight() - below + 6 + contentHeight);
    EXPECT_EQ(m_content->height(), contentHeight);
    EXPECT_DOUBLE_EQ(chevron(), 0);
    EXPECT_EQ(m_section.header()->toolTip(), u"Collapse Chores due"_s);
}

TEST_F(StillSectionTest, FoldedShowsItsSummaryAlone) {
    m_section.setCollapsed(true);
    settle();
    EXPECT_EQ(textsOf(m_section.header()->content()), (QStringList{u"CHORES DUE"_s, u"7 due"_s}));
    EXPECT_EQ(height(), headerHeight());
    EXPECT_FALSE(m_content->isVisible());
    EXPECT_DOUBLE_EQ(chevron(), -90);
    EXPECT_EQ(m_section.header()->toolTip(), u"Expand Chores due"_s);
    const RowGeometry geometry = m_section.header()->itemGeometry();
    EXPECT_DOUBLE_EQ(geometry.items.back().right(), 304 - 4 - 4);
}

TEST_F(StillSectionTest, ASummaryThatComesWhileFoldedIsShown) {
    m_section.setCollapsed(true);
    m_section.setSummary(u"8 due"_s);
    EXPECT_TRUE(textsOf(m_section.header()->content()).contains(u"8 due"_s));
    m_section.setSummary(std::nullopt);
    EXPECT_EQ(textsOf(m_section.header()->content()), QStringList{u"CHORES DUE"_s});
}

TEST_F(StillSectionTest, TheWholeHeaderAsksForTheOtherState) {
    RowButton* header = m_section.header();
    EXPECT_EQ(header->width(), m_section.width());
    QTest::mouseClick(header, Qt::LeftButton, {}, QPoint(150, 1));
    EXPECT_EQ(m_toggled.takeFirst(), QVariantList{true});
    EXPECT_FALSE(m_section.isCollapsed());
    m_section.setCollapsed(true);
    QTest::keyClick(header, Qt::Key_Space);
    EXPECT_EQ(m_toggled.takeFirst(), QVariantList{false});
}

TEST_F(StillSectionTest, FoldedContentCannotBeReachedByTab) {
    m_section.header()->setFocus();
    QTest::keyClick(&m_section, Qt::Key_Tab);
    EXPECT_EQ(m_section.focusWidget(), m_content->button);
    m_section.setCollapsed(true);
    m_section.header()->setFocus();
    QTest::keyClick(&m_section, Qt::Key_Tab);
    EXPECT_NE(m_section.focusWidget(), m_content->button);
}

TEST_F(StillSectionTest, ABadgeStandsBesideTheTitle) {
    CollapsibleSection section(
        m_themes, {.title = u"Inbox"_s, .systemImage = u"calendar"_s, .badge = 12},
        new Content(m_themes));
    const RowContent& row = section.header()->content();
    ASSERT_EQ(row.items.at(2).kind, RowItem::Kind::Badge);
    EXPECT_EQ(textsOf(row), (QStringList{u"INBOX"_s, u"12"_s}));
}

TEST_F(CollapsibleSectionTest, FoldsInFifteenHundredthsOfASecond) {
    HandDriver driver;
    const int expanded = height();
    m_section.setCollapsed(true);
    EXPECT_TRUE(m_section.isCollapsed());
    driver.pass(75);
    EXPECT_NEAR(height(), headerHeight() + (6 + contentHeight) / 2.0, 1);
    EXPECT_NEAR(chevron(), -45, 1);
    EXPECT_EQ(m_content->height(), contentHeight);
    driver.pass(74);
    EXPECT_TRUE(m_content->isVisible());
    driver.pass(1);
    EXPECT_FALSE(m_content->isVisible());
    EXPECT_EQ(height(), headerHeight());
    EXPECT_DOUBLE_EQ(chevron(), -90);

    m_section.setCollapsed(false);
    driver.pass(150);
    EXPECT_EQ(height(), expanded);
    EXPECT_DOUBLE_EQ(chevron(), 0);
}

TEST_F(CollapsibleSectionTest, EasesInAndOut) {
    HandDriver driver;
    m_section.setCollapsed(true);
    driver.pass(30); // a fifth of the time
    EXPECT_LT(1 - m_section.fold()->openness(), 0.15);
    driver.pass(90);
    EXPECT_GT(1 - m_section.fold()->openness(), 0.85);
}

TEST_F(CollapsibleSectionTest, TurnsRoundHalfWay) {
    HandDriver driver;
    m_section.setCollapsed(true);
    driver.pass(75);
    const double halfway = m_section.fold()->openness();
    m_section.setCollapsed(false);
    EXPECT_NEAR(m_section.fold()->openness(), halfway, 0.01);
    driver.pass(150);
    EXPECT_DOUBLE_EQ(m_section.fold()->openness(), 1);
    EXPECT_TRUE(m_content->isVisible());
}

TEST_F(CollapsibleSectionTest, AHiddenSectionFoldsAtOnce) {
    m_section.hide();
    m_section.setCollapsed(true);
    EXPECT_DOUBLE_EQ(m_section.fold()->openness(), 0);
}
