#include "support/PanelFixture.h"

#include <QFontMetricsF>
#include <QSignalSpy>

#include <cmath>
#include <set>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

using PanelControlsTest = PanelTest;

TEST_F(PanelControlsTest, TheFooterIsPaddedTwelveByEight) {
    m_panel.show(fullDay());
    const QList buttons = shown<RowButton>(*m_panel.view.footer());
    ASSERT_EQ(buttons.size(), 4);
    const QRect footer = inPanel(m_panel.view.footer());
    int tallest = 0;
    for (const auto* button : buttons) {
        tallest = std::max(tallest, contentInPanel(button).height());
        for (const RowItem& item : button->content().items) {
            const TextStyle style = item.lines.empty() ? item.style : item.lines.front().style;
            EXPECT_EQ(style.role, TextRole::Callout);
        }
    }
    EXPECT_EQ(footer.height(), tallest + 8 + 8);
    EXPECT_EQ(contentInPanel(buttonNamed(m_panel.view, u"Refresh"_s)).left(), 12);
    EXPECT_EQ(contentInPanel(buttonNamed(m_panel.view, u"Quit Lumora"_s)).right() + 1, 320 - 12);
}

TEST_F(PanelControlsTest, TheFootersTextsStandOnOneLine) {
    for (const double points : {8.0, 9.0, 9.5, 10.0, 11.0, 13.0, 16.0}) {
        QFont font = QApplication::font();
        font.setPointSizeF(points);
        m_panel.themes.setTheme(Theme(ColorScheme::Light, font));
        m_panel.show(fullDay());
        const QFontMetricsF metrics(m_panel.themes.theme().font(TextRole::Callout));
        std::set<int> baselines;
        for (const auto* button : shown<RowButton>(*m_panel.view.footer())) {
            const RowGeometry geometry = button->itemGeometry();
            for (std::size_t i = 0; i < geometry.items.size(); ++i) {
                // As texts are painted: on whole points.
                const double top = button->contentOrigin().y() + geometry.items[i].top();
                if (!button->content().items[i].lines.empty())
                    baselines.insert(
                        inPanel(button).top() + int(std::round(top + metrics.ascent())));
            }
        }
        EXPECT_EQ(baselines.size(), 1U) << "at " << points << " points";
    }
}

TEST_F(PanelControlsTest, TheFootersButtonsReportWhatIsWanted) {
    m_panel.show(fullDay());
    PanelFooter* footer = m_panel.view.footer();
    const auto press = [&](const QString& name, void (PanelFooter::*signal)()) {
        QSignalSpy spy(footer, signal);
        QTest::mouseClick(buttonNamed(*footer, name), Qt::LeftButton);
        QTest::mouseClick(buttonNamed(*footer, name), Qt::LeftButton);
        EXPECT_EQ(spy.size(), 2) << name.toStdString();
    };
    press(u"Refresh"_s, &PanelFooter::refreshRequested);
    press(u"Open lumo"_s, &PanelFooter::dashboardRequested);
    press(u"Settings"_s, &PanelFooter::settingsRequested);
    press(u"Quit Lumora"_s, &PanelFooter::quitRequested);
    EXPECT_EQ(shownTexts(*footer), (QStringList{u"Refresh"_s, u"Open lumo"_s, u"Settings"_s}));
    const RowButton* quit = buttonNamed(*footer, u"Quit Lumora"_s);
    EXPECT_EQ(symbolsOf(quit->content()), QStringList{u"power"_s});
    EXPECT_EQ(quit->toolTip(), u"Quit Lumora"_s);
    EXPECT_EQ(
        symbolsOf(buttonNamed(*footer, u"Refresh"_s)->content()),
        QStringList{u"arrow.clockwise"_s});
}

TEST_F(PanelControlsTest, WithoutADashboardThereIsNoButtonForIt) {
    m_panel.hasDashboard = false;
    m_panel.show(fullDay());
    EXPECT_EQ(buttonNamed(m_panel.view, u"Open lumo"_s), nullptr);
    m_panel.hasDashboard = true;
    m_panel.render();
    EXPECT_NE(buttonNamed(m_panel.view, u"Open lumo"_s), nullptr);
}

TEST_F(PanelControlsTest, RowsReportWhatWasClicked) {
    QSignalSpy habits(m_panel.view.briefing(), &BriefingView::habitToggled);
    QSignalSpy chores(m_panel.view.briefing(), &BriefingView::choreDone);
    QSignalSpy joins(m_panel.view.briefing(), &BriefingView::joinRequested);
    m_panel.show(fullDay());
    for (auto* row : shown<ActionRow>(m_panel.view))
        QTest::mouseClick(row, Qt::LeftButton);
    QTest::mouseClick(buttonNamed(m_panel.view, u"Join Standup"_s), Qt::LeftButton);
    ASSERT_EQ(habits.size(), 1);
    EXPECT_EQ(habits.front(), (QVariantList{u"read"_s, u"habit:read"_s}));
    ASSERT_EQ(chores.size(), 2);
    EXPECT_EQ(chores.front(), (QVariantList{u"water"_s, u"chore:water"_s}));
    EXPECT_EQ(joins.size(), 1);
}

TEST_F(PanelControlsTest, TabGoesThroughThePanelInReadingOrder) {
    m_panel.show(fullDay());
    Briefing other = fullDay();
    other.habits.items.insert(other.habits.items.begin(), {u"run"_s, u"Run"_s, false, 0, 1, 0});
    m_panel.show(other);
    section(u"Next up"_s)->header()->setFocus();
    QStringList visited;
    do {
        visited += m_panel.view.focusWidget()->accessibleName();
        QTest::keyClick(m_panel.view.focusWidget(), Qt::Key_Tab);
    } while (m_panel.view.focusWidget() != section(u"Next up"_s)->header() && visited.size() < 30);
    const QStringList expected{
        u"Next up"_s,
        u"Join Standup"_s,
        u"Habits"_s,
        u"Run, not done"_s,
        u"Read, not done, streak 4"_s,
        u"Chores due"_s,
        u"Water plants, 3 days overdue"_s,
        u"Sweep, never done"_s,
        u"Spending"_s,
        u"Show month-to-date"_s,
        u"Capture a thought"_s,
        u"Refresh"_s,
        u"Open lumo"_s,
        u"Settings"_s,
        u"Quit Lumora"_s,
        u"Today"_s,
    };
    EXPECT_EQ(visited, expected) << visited.join(u'\n').toStdString();

    QTest::keyClick(m_panel.view.focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(m_panel.view.focusWidget()->accessibleName(), u"Today"_s);
}

TEST_F(PanelControlsTest, TabPassesOverWhatIsFolded) {
    m_panel.show(fullDay());
    fold(u"Habits"_s);
    section(u"Habits"_s)->header()->setFocus();
    QTest::keyClick(m_panel.view.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(m_panel.view.focusWidget(), section(u"Chores due"_s)->header());
    QTest::keyClick(m_panel.view.focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(m_panel.view.focusWidget(), section(u"Habits"_s)->header());
}

TEST_F(PanelControlsTest, EverythingThatCanBePressedHasAName) {
    m_panel.show(fullDay());
    for (const auto* button : shown<RowButton>(m_panel.view))
        EXPECT_FALSE(button->accessibleName().isEmpty());
    for (const auto* row : shown<PaintedRow>(*m_panel.view.briefing()))
        EXPECT_TRUE(!row->accessibleName().isEmpty() || textsOf(row->content()).isEmpty());
}
