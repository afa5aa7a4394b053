#include "support/PanelFixture.h"
#include "ui/rows/ContentScroller.h"

#include <QLayout>

#include <cstdlib>
#include <limits>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Whether `part` is a line one point high in the divider's colour.
bool isDivider(QWidget& part) {
    const QColor seen = painted(part).pixelColor(part.width() - 1, 0);
    const QColor wanted = plainTheme().color(ColorRole::Divider);
    return part.height() == 1 && std::abs(seen.alpha() - wanted.alpha()) <= 1;
}

} // namespace

using MenuBarViewTest = PanelTest;

TEST_F(MenuBarViewTest, IsThreeHundredAndTwentyWideWhateverItShows) {
    m_panel.render();
    EXPECT_EQ(m_panel.view.width(), 320);
    EXPECT_GT(m_panel.view.sizeHint().height(), 50);
    Briefing briefing = fullDay();
    briefing.eventsToday[0].title = QString(10'240, u'W');
    briefing.habits.done = std::numeric_limits<qint64>::min();
    m_panel.show(briefing);
    EXPECT_EQ(m_panel.view.width(), 320);
    EXPECT_EQ(m_panel.view.sizeHint().width(), 320);
    EXPECT_EQ(cutOff(m_panel.view), "");
}

TEST_F(MenuBarViewTest, HasRoomForEverythingItShows) {
    for (const double points : roomyFontSizes) {
        m_panel.themes.setTheme(stillTheme(points));
        m_panel.lastGood.reset();
        for (const LoadState& state :
             {LoadState::loading(), LoadState::failed(u"Not configured — open Settings"_s)}) {
            m_panel.state = state;
            m_panel.isConfigured = false;
            m_panel.render();
            EXPECT_EQ(cutOff(m_panel.view), "") << points;
        }
        m_panel.lastUpdated = m_panel.clock.now() - 50s;
        m_panel.show(fullDay());
        if (RowButton* reveal = buttonNamed(m_panel.view, u"Show month-to-date"_s))
            QTest::mouseClick(reveal, Qt::LeftButton);
        m_panel.actionError = u"A very long message "_s.repeated(12);
        m_panel.render();
        EXPECT_EQ(cutOff(m_panel.view), "") << points;
        for (const QString& title : titles())
            section(title)->setCollapsed(true);
        m_panel.render();
        EXPECT_EQ(cutOff(m_panel.view), "") << points;
        for (const QString& title : titles())
            section(title)->setCollapsed(false);
    }
}

TEST_F(MenuBarViewTest, StacksItsPartsWithoutGaps) {
    m_panel.show(fullDay());
    int bottom = 0;
    QList<QWidget*> inOrder;
    for (int i = 0; i < m_panel.view.layout()->count(); ++i) {
        QWidget* part = m_panel.view.layout()->itemAt(i)->widget();
        if (part->isVisible())
            inOrder += part;
    }
    ASSERT_EQ(inOrder.size(), 7);
    for (const QWidget* part : inOrder) {
        EXPECT_EQ(part->x(), 0);
        EXPECT_EQ(part->width(), 320);
        EXPECT_EQ(part->y(), bottom);
        bottom = part->geometry().bottom() + 1;
    }
    EXPECT_EQ(bottom, m_panel.view.height());
    EXPECT_NE(qobject_cast<const PaintedRow*>(inOrder[0]), nullptr);
    EXPECT_TRUE(isDivider(*inOrder[1]));
    EXPECT_EQ(inOrder[2], m_panel.view.scroller());
    EXPECT_TRUE(inOrder[2]->isAncestorOf(m_panel.view.briefing()));
    EXPECT_TRUE(isDivider(*inOrder[3]));
    EXPECT_EQ(inOrder[4], m_panel.view.capture());
    EXPECT_TRUE(isDivider(*inOrder[5]));
    EXPECT_EQ(inOrder[6], m_panel.view.footer());
}

TEST_F(MenuBarViewTest, OnlyTheMiddleGivesWayWhereTheScreenIsTooLow) {
    m_panel.show(fullDay());
    const int header = m_panel.view.scroller()->y();
    const int rest = m_panel.view.height() - m_panel.view.scroller()->geometry().bottom();
    m_panel.view.resize(320, 250);
    settle();
    const ContentScroller& scroller = *m_panel.view.scroller();
    EXPECT_TRUE(scroller.isScrollable());
    EXPECT_EQ(scroller.y(), header);
    EXPECT_EQ(m_panel.view.height() - scroller.geometry().bottom(), rest);
    EXPECT_EQ(inPanel(m_panel.view.footer()).bottom() + 1, 250);
}

TEST_F(MenuBarViewTest, AsksForMoreHeightAsItsContentGrows) {
    m_panel.show(fullDay());
    const int before = m_panel.view.sizeHint().height();
    Briefing more = fullDay();
    more.habits.items.push_back({u"walk"_s, u"Walk"_s, false, 0, 1, 0});
    m_panel.show(more);
    EXPECT_GT(m_panel.view.sizeHint().height(), before);
    EXPECT_FALSE(m_panel.view.scroller()->isScrollable());
}

TEST(MirroredMenuBarViewTest, FromTheRightEverythingIsMirrored) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const auto restore = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
    ViewHarness panel;
    panel.show(fullDay());
    const auto* row = shown<ActionRow>(panel.view).front();
    const RowGeometry inside = row->itemGeometry();
    EXPECT_GT(inside.items.front().left(), inside.items.back().right());
    const auto left = [&panel](const QWidget* widget) {
        return widget->mapTo(&panel.view, widget->contentsRect().topLeft()).x();
    };
    EXPECT_GT(
        left(buttonNamed(panel.view, u"Refresh"_s)), left(buttonNamed(panel.view, u"Settings"_s)));
    EXPECT_EQ(left(buttonNamed(panel.view, u"Quit Lumora"_s)), 12);
    EXPECT_EQ(left(shown<EventRow>(panel.view).front()->joinButton()), 12);
    EXPECT_EQ(inside.direction, Qt::RightToLeft);
    panel.preferences.set(u"section.collapsed.habits"_s, u"true"_s);
    panel.render();
    for (const auto* found : shown<CollapsibleSection>(panel.view)) {
        if (found->isCollapsed()) {
            EXPECT_DOUBLE_EQ(found->header()->content().items.back().rotation, 90);
        }
    }
}

TEST_F(MenuBarViewTest, TheHeaderIsPaddedTwelveByTen) {
    m_panel.lastUpdated = m_panel.clock.now() - 50s;
    m_panel.show(fullDay());
    const auto* header = shown<PaintedRow>(m_panel.view).front();
    EXPECT_EQ(textsOf(header->content()), (QStringList{u"Today"_s, u"1m ago"_s}));
    const RowGeometry inside = header->itemGeometry();
    EXPECT_EQ(header->height(), int(inside.height) + 10 + 10);
    EXPECT_DOUBLE_EQ(inside.items.back().right(), 320 - 12 - 12);
    EXPECT_EQ(header->accessibleName(), u"Today, updated 1m ago"_s);
}

TEST_F(MenuBarViewTest, TheHeaderHasNoAgeBeforeTheFirstSuccess) {
    m_panel.render();
    EXPECT_EQ(textsOf(shown<PaintedRow>(m_panel.view).front()->content()), QStringList{u"Today"_s});
}

TEST_F(MenuBarViewTest, TheAgeStandsStillUntilTheNextRender) {
    m_panel.lastUpdated = m_panel.clock.now();
    m_panel.show(fullDay());
    m_panel.pass(10min);
    EXPECT_TRUE(texts().contains(u"just now"_s));
    m_panel.render();
    EXPECT_TRUE(texts().contains(u"10m ago"_s));
}

TEST_F(MenuBarViewTest, SectionsAreTwelveApartAndPaddedTwelveByTen) {
    m_panel.show(fullDay());
    const QRect content = inPanel(m_panel.view.briefing());
    const QList sections = shown<CollapsibleSection>(m_panel.view);
    ASSERT_EQ(sections.size(), 4);
    const auto top = [this](const CollapsibleSection* found) {
        return contentInPanel(found->header()).top();
    };
    EXPECT_EQ(top(sections.front()) - content.top(), 10);
    for (int i = 1; i < sections.size(); ++i)
        EXPECT_EQ(top(sections[i]) - (inPanel(sections[i - 1]).bottom() + 1), 12);
    const auto* focus = shown<PaintedRow>(*m_panel.view.briefing()).back();
    EXPECT_EQ(contentInPanel(focus).top() - (inPanel(sections.back()).bottom() + 1), 12);
    EXPECT_EQ(content.bottom() - inPanel(focus).bottom(), 10);

    for (const auto* found : sections) {
        // What is read begins and ends 12 from the panel's edges.
        const RowButton* header = found->header();
        const double left = inPanel(header).left() + 4;
        EXPECT_DOUBLE_EQ(left, 12);
        EXPECT_DOUBLE_EQ(left + header->itemGeometry().items.back().right(), 320 - 12);
    }
    const ActionRow* row = shown<ActionRow>(m_panel.view).front();
    EXPECT_EQ(inPanel(row).left() + row->contentsMargins().left(), 12);
    EXPECT_EQ(inPanel(shown<EventRow>(m_panel.view).front()).left(), 12);
    const auto* join = shown<EventRow>(m_panel.view).front()->joinButton();
    EXPECT_EQ(contentInPanel(join).right() + 1, 320 - 12);
}

TEST_F(MenuBarViewTest, AllSectionsBodiesBeginSixBelowTheirHeaders) {
    m_panel.show(fullDay());
    const auto gap = [this](const QString& title, const QWidget* first) {
        return inPanel(first).top() - (contentInPanel(section(title)->header()).bottom() + 1);
    };
    EXPECT_EQ(gap(u"Next up"_s, shown<EventRow>(m_panel.view).front()), 6);
    EXPECT_EQ(gap(u"Habits"_s, shown<ActionRow>(m_panel.view).front()), 6);
    EXPECT_EQ(gap(u"Chores due"_s, shown<ActionRow>(m_panel.view).at(1)), 6);
    EXPECT_EQ(gap(u"Spending"_s, buttonNamed(m_panel.view, u"Show month-to-date"_s)), 6);
}

TEST_F(MenuBarViewTest, ShowsTheSectionsThatHaveSomethingToShow) {
    m_panel.show(fullDay());
    EXPECT_EQ(titles(), (QStringList{u"Next up"_s, u"Habits"_s, u"Chores due"_s, u"Spending"_s}));

    Briefing empty = makeBriefing();
    empty.habits.done = 3;
    empty.habits.total = 4;
    empty.chores.count = 4;
    m_panel.show(empty);
    EXPECT_EQ(titles(), QStringList{u"Next up"_s});
    EXPECT_TRUE(texts().contains(u"3/4 done"_s));
}

TEST_F(MenuBarViewTest, FoldedSectionsShowTheirDigests) {
    m_panel.show(fullDay());
    for (const QString& title : titles())
        fold(title);
    EXPECT_EQ(summaryOf(u"Next up"_s), u"2 left"_s);
    EXPECT_EQ(summaryOf(u"Habits"_s), u"2/5 done"_s);
    EXPECT_EQ(summaryOf(u"Chores due"_s), u"7 due"_s);
    EXPECT_EQ(summaryOf(u"Spending"_s), u"hidden"_s);
    EXPECT_TRUE(shown<ActionRow>(m_panel.view).isEmpty());
    EXPECT_TRUE(shown<EventRow>(m_panel.view).isEmpty());
    EXPECT_EQ(symbolsOf(section(u"Next up"_s)->header()->content()).front(), u"calendar"_s);
    EXPECT_EQ(symbolsOf(section(u"Habits"_s)->header()->content()).front(), u"flame"_s);
    EXPECT_EQ(symbolsOf(section(u"Chores due"_s)->header()->content()).front(), u"checklist"_s);
    EXPECT_EQ(symbolsOf(section(u"Spending"_s)->header()->content()).front(), u"creditcard"_s);
}

TEST_F(MenuBarViewTest, FoldingIsWrittenAtOnceAndReadBackByTheNextPanel) {
    m_panel.show(fullDay());
    const QStringList keys{u"events"_s, u"habits"_s, u"chores"_s, u"spending"_s};
    const QStringList all = titles();
    for (int i = 0; i < keys.size(); ++i) {
        const QString key = u"section.collapsed."_s + keys[i];
        EXPECT_EQ(m_panel.preferences.value(key), std::nullopt);
        QTest::mouseClick(section(all[i])->header(), Qt::LeftButton);
        EXPECT_EQ(m_panel.preferences.value(key), u"true"_s);
    }
    QTest::mouseClick(section(u"Habits"_s)->header(), Qt::LeftButton);
    EXPECT_EQ(m_panel.preferences.value(u"section.collapsed.habits"_s), u"false"_s);

    const MenuBarView restarted(
        {.themes = m_panel.themes, .preferences = m_panel.preferences, .clock = m_panel.clock});
    QList<bool> collapsed;
    for (const auto* found : restarted.findChildren<CollapsibleSection*>())
        collapsed += found->isCollapsed();
    EXPECT_EQ(collapsed, (QList{true, false, true, true}));
}

TEST_F(MenuBarViewTest, FoldingThatCannotBeStoredHoldsAllTheSame) {
    m_panel.show(fullDay());
    m_panel.preferences.storeError = u"no room"_s;
    fold(u"Habits"_s);
    EXPECT_TRUE(section(u"Habits"_s)->isCollapsed());
    m_panel.show(fullDay());
    m_panel.preferences.set(u"section.collapsed.chores"_s, u"true"_s);
    EXPECT_TRUE(section(u"Habits"_s)->isCollapsed());
    QTest::mouseClick(section(u"Habits"_s)->header(), Qt::LeftButton);
    EXPECT_FALSE(section(u"Habits"_s)->isCollapsed());
}

TEST_F(MenuBarViewTest, FoldingFromElsewhereIsSeen) {
    m_panel.show(fullDay());
    m_panel.preferences.set(u"section.collapsed.chores"_s, u"true"_s);
    EXPECT_TRUE(section(u"Chores due"_s)->isCollapsed());
    m_panel.preferences.set(u"section.collapsed.chores"_s, u"perhaps"_s);
    EXPECT_FALSE(section(u"Chores due"_s)->isCollapsed());
}

TEST_F(MenuBarViewTest, RefreshingUnfoldsNothing) {
    m_panel.show(fullDay());
    fold(u"Habits"_s);
    m_panel.show(makeBriefing());
    m_panel.show(fullDay());
    EXPECT_TRUE(section(u"Habits"_s)->isCollapsed());
}

TEST_F(MenuBarViewTest, FollowsAChangeOfFontAndScheme) {
    m_panel.show(fullDay());
    const int before = m_panel.view.height();
    QFont large = QApplication::font();
    large.setPointSizeF(22);
    m_panel.themes.setTheme(Theme(ColorScheme::Dark, large));
    settle();
    EXPECT_NEAR(m_panel.view.sizeHint().height(), 2 * before, before / 5.0);
    EXPECT_EQ(m_panel.view.sizeHint().width(), 640);
}
