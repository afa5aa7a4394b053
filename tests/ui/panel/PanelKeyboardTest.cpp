#include "support/PanelFixture.h"
#include "ui/access/FocusRing.h"
#include "ui/rows/ContentScroller.h"

#include <QScrollBar>
#include <QSignalSpy>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Somebody who uses the panel without a pointer.
class PanelKeyboardTest : public PanelTest {
protected:
    PanelKeyboardTest() {
        m_panel.view.activateWindow();
        m_panel.show(fullDay());
    }

    QString focused() const {
        const QWidget* widget = m_panel.view.focusWidget();
        return widget ? widget->accessibleName() : QString();
    }

    void press(Qt::Key key, int times = 1) {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(m_panel.view.focusWidget(), key);
    }

    /// What has the keyboard after each press of `key`, until that changes nothing any more.
    QStringList walk(Qt::Key key) {
        QStringList visited{focused()};
        for (;;) {
            press(key);
            if (focused() == visited.last())
                return visited;
            visited += focused();
        }
    }

    void focus(const QString& button) { buttonNamed(m_panel.view, button)->setFocus(); }
};

} // namespace

TEST_F(PanelKeyboardTest, ArrowsGoThroughAllThatIsReadAndStopAtTheEnds) {
    m_panel.actionError = u"No such habit"_s;
    m_panel.render();
    m_panel.view.setFocus();
    QStringList visited = walk(Qt::Key_Down);
    visited.removeIf([](const QString& name) { return name.contains(u"m, "); }); // events
    EXPECT_EQ(
        visited, (QStringList{
                     u"Today"_s,
                     u"No such habit"_s,
                     u"Next up"_s,
                     u"Join Standup"_s,
                     u"Habits"_s,
                     u"Read, not done, streak 4"_s,
                     u"Chores due"_s,
                     u"Water plants, 3 days overdue"_s,
                     u"Sweep, never done"_s,
                     u"Spending"_s,
                     u"Show month-to-date"_s,
                     u"2/5 done"_s,
                     u"Capture a thought"_s,
                 }))
        << visited.join(u'\n').toStdString();

    focus(u"Refresh"_s);
    EXPECT_EQ(
        walk(Qt::Key_Right),
        (QStringList{u"Refresh"_s, u"Open lumo"_s, u"Settings"_s, u"Quit Lumora"_s}));
    EXPECT_EQ(
        walk(Qt::Key_Left), (QStringList{
                                u"Quit Lumora"_s, u"Settings"_s, u"Open lumo"_s, u"Refresh"_s,
                                u"Capture a thought"_s}));
}

TEST_F(PanelKeyboardTest, HomeAndEndGoToTheEnds) {
    focus(u"Habits"_s);
    press(Qt::Key_End);
    EXPECT_EQ(focused(), u"Quit Lumora"_s);
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), u"Today"_s);
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), u"Today"_s);
}

TEST_F(PanelKeyboardTest, InTheFieldTheKeysEdit) {
    ThoughtEdit* edit = m_panel.view.capture()->edit();
    edit->setFocus();
    QTest::keyClicks(edit, u"milk"_s);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Home, Qt::Key_End}) {
        press(key);
        EXPECT_EQ(m_panel.view.focusWidget(), edit);
    }
    press(Qt::Key_Home);
    QTest::keyClicks(edit, u"oat "_s);
    EXPECT_EQ(edit->toPlainText(), u"oat milk"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"Send to Inbox"_s);
}

TEST_F(PanelKeyboardTest, TabGoesOnFromWhereTheArrowsStopped) {
    focus(u"Next up"_s);
    press(Qt::Key_Down); // the first event, which Tab passes by
    EXPECT_TRUE(focused().endsWith(u"Standup"_s)) << focused().toStdString();
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"Join Standup"_s);
    press(Qt::Key_Up);
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), u"Next up"_s);
}

TEST_F(PanelKeyboardTest, SpaceAndReturnActWhereTheArrowsLead) {
    QSignalSpy chores(m_panel.view.briefing(), &BriefingView::choreDone);
    focus(u"Chores due"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    ASSERT_EQ(chores.size(), 2);
    EXPECT_EQ(chores.at(0).at(0), u"water"_s);
    EXPECT_EQ(chores.at(1).at(0), u"sweep"_s);
    focus(u"Habits"_s);
    press(Qt::Key_Space);
    EXPECT_TRUE(section(u"Habits"_s)->isCollapsed());
}

TEST_F(PanelKeyboardTest, WhatHasTheKeyboardIsMarkedOnceAKeyWasUsed) {
    const auto* ring = m_panel.view.findChild<FocusRing*>();
    m_panel.view.setAttribute(Qt::WA_KeyboardFocusChange, false);
    m_panel.view.setFocus();
    EXPECT_FALSE(ring->isVisible()) << "opening marks nothing";
    press(Qt::Key_Home);
    EXPECT_TRUE(ring->isVisible());
    for (int i = 0; i < 20; ++i) {
        const QWidget* marked = m_panel.view.focusWidget();
        const QRect text = marked->contentsRect().translated(inPanel(marked).topLeft());
        EXPECT_EQ(ring->geometry(), text.adjusted(-4, -3, 4, 3)) << focused().toStdString();
        press(Qt::Key_Tab);
    }
}

TEST_F(PanelKeyboardTest, TheMarkIsAroundTheTextInTheAccentColour) {
    focus(u"Refresh"_s);
    press(Qt::Key_Right);
    const QRect ring = m_panel.view.findChild<FocusRing*>()->geometry();
    const QImage image = painted(m_panel.view);
    const QColor accent = m_panel.themes.theme().color(ColorRole::Accent);
    EXPECT_EQ(image.pixelColor(ring.center().x(), ring.top() + 1), accent);
    EXPECT_EQ(image.pixelColor(ring.center().x(), ring.bottom()), accent);
    EXPECT_EQ(image.pixelColor(ring.left(), ring.center().y()), accent);
}

TEST_F(PanelKeyboardTest, TheMarkGoesAlongWithWhatItMarks) {
    focus(u"Chores due"_s);
    press(Qt::Key_Home);
    focus(u"Chores due"_s);
    const auto* ring = m_panel.view.findChild<FocusRing*>();
    const int before = ring->y();
    m_panel.preferences.set(u"section.collapsed.habits"_s, u"true"_s);
    m_panel.render();
    EXPECT_LT(ring->y(), before);
    EXPECT_EQ(ring->y() + 3, contentInPanel(section(u"Chores due"_s)->header()).y());
    Briefing none = fullDay();
    none.chores.top.clear();
    m_panel.show(none); // the section goes, and the keyboard to the next
    EXPECT_EQ(ring->y() + 3, contentInPanel(m_panel.view.focusWidget()).y());
}

TEST_F(PanelKeyboardTest, WhenARowGoesTheKeyboardMovesToTheNext) {
    focus(u"Water plants, 3 days overdue"_s);
    Briefing later = fullDay();
    later.chores.top.erase(later.chores.top.begin());
    m_panel.show(later);
    EXPECT_EQ(focused(), u"Sweep, never done"_s);
    later.chores.top.clear();
    m_panel.show(later);
    EXPECT_EQ(focused(), u"Spending"_s);
}

TEST_F(PanelKeyboardTest, WhatHasTheKeyboardIsScrolledIntoView) {
    Briefing briefing = fullDay();
    for (int i = 0; i < 60; ++i)
        briefing.habits.items.push_back({QString::number(i), u"Habit %1"_s.arg(i), false, 0, 1, 0});
    m_panel.show(briefing);
    m_panel.view.resize(320, 400);
    settle();
    MenuBarView& view = m_panel.view;
    const QRect header(0, 0, 320, view.scroller()->y());
    view.setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Tab, Qt::Key_End, Qt::Key_Home}) {
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(view.focusWidget(), key);
            const QRect place = inPanel(view.focusWidget());
            ASSERT_TRUE(view.rect().contains(place));
            const bool scrolls = view.scroller()->isAncestorOf(view.focusWidget());
            ASSERT_TRUE(!scrolls || view.scroller()->geometry().contains(place))
                << view.focusWidget()->accessibleName().toStdString();
        }
    }
    EXPECT_EQ(view.scroller()->verticalScrollBar()->value(), 0);
}

TEST_F(PanelKeyboardTest, PagesScrollWhatIsInTheMiddle) {
    m_panel.show(fullDay());
    m_panel.view.resize(320, 300);
    settle();
    ContentScroller* scroller = m_panel.view.scroller();
    ASSERT_TRUE(scroller->isScrollable());
    QTest::keyClick(&m_panel.view, Qt::Key_PageDown);
    EXPECT_GT(scroller->verticalScrollBar()->value(), 0);
    QTest::keyClick(&m_panel.view, Qt::Key_PageUp);
    EXPECT_EQ(scroller->verticalScrollBar()->value(), 0);
    QTest::keyClick(&m_panel.view, Qt::Key_PageDown);
    m_panel.view.scrollToTop();
    EXPECT_EQ(scroller->verticalScrollBar()->value(), 0);
}

TEST_F(PanelKeyboardTest, TheMarkIsNotSeenWhereWhatItMarksIsScrolledAway) {
    m_panel.show(fullDay());
    m_panel.view.resize(320, 300);
    settle();
    press(Qt::Key_Home);
    focus(u"Next up"_s);
    const auto* ring = m_panel.view.findChild<FocusRing*>();
    EXPECT_EQ(ring->mask().boundingRect(), ring->rect());
    QScrollBar* bar = m_panel.view.scroller()->verticalScrollBar();
    bar->setValue(bar->maximum());
    EXPECT_FALSE(ring->mask().intersects(ring->rect()));
}
