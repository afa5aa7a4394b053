#include "briefing/TextBounds.h"
#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "ui/panel/ActionRows.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/ErrorBanner.h"
#include "ui/panel/SpendingSection.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Counts what happens to a panel and everything in it.
class Witness final : public QObject {
public:
    explicit Witness(QWidget& panel) {
        panel.installEventFilter(this);
        for (QWidget* widget : panel.findChildren<QWidget*>())
            widget->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        m_events += u"%1 to %2"_s.arg(event->type())
                        .arg(QLatin1StringView(object->metaObject()->className()));
        return false;
    }

    const QStringList& events() const { return m_events; }

private:
    QStringList m_events;
};

Briefing eventfulDay() {
    const Instant now = FakeClock::defaultStart;
    Briefing briefing = makeBriefing({
        makeEvent(
            {.start = now + 10min,
             .end = now + 25min,
             .location = u"Room 4"_s,
             .meetingUrl = u"https://meet.example/a"_s}),
        makeEvent({.title = u"Fair <b>&amp;</b> fun"_s, .allDay = true}),
    });
    briefing.habits = {
        .done = 1,
        .total = 2,
        .items = {
            {u"read"_s, u"Read & write"_s, true, 1, 1, 4},
            {u"drink"_s, u"Drink"_s, false, 2, 8, 0}}};
    briefing.chores = {.count = 7, .top = {{u"water"_s, u"Water plants"_s, u"Balcony"_s, 3}}};
    briefing.focus.productiveShare = 0.456;
    briefing.spending = Spending{
        .mtd = 1234.56,
        .sameDayLastMonth = 1000,
        .deltaFraction = 0.2,
        .top = {{u"food"_s, u"Food"_s, u"🍎"_s, u"#1E90FF"_s, 99}},
        .asOf = u"2025-03-03"_s,
        .stale = true};
    return briefing;
}

class PanelRefreshTest : public testing::Test {
protected:
    PanelRefreshTest() {
        m_panel.lastUpdated = m_panel.clock.now();
        m_panel.show(eventfulDay());
    }

    void expectUntouchedByTheSameAgain() {
        const QList before = m_panel.view.findChildren<QWidget*>();
        Witness witness(m_panel.view);
        m_panel.state = LoadState::loaded(*m_panel.lastGood);
        m_panel.render();
        EXPECT_EQ(witness.events(), QStringList());
        EXPECT_EQ(m_panel.view.findChildren<QWidget*>(), before);
    }

    ActionRow* rowOf(const QString& id) const {
        for (auto* row : m_panel.view.findChildren<ActionRow*>())
            if (row->id() == id)
                return row;
        return nullptr;
    }

    ViewHarness m_panel;
};

} // namespace

TEST_F(PanelRefreshTest, TheSameBriefingTouchesNoWidget) {
    expectUntouchedByTheSameAgain();
}

TEST_F(PanelRefreshTest, TheSameBriefingTouchesNoRevealedFigure) {
    auto* spending = m_panel.view.findChild<SpendingSection*>();
    QTest::mouseClick(spending->revealButton(), Qt::LeftButton);
    m_panel.render();
    expectUntouchedByTheSameAgain();
}

TEST_F(PanelRefreshTest, TheSameBriefingTouchesNoFoldedSection) {
    m_panel.preferences.set(u"section.collapsed.habits"_s, u"true"_s);
    m_panel.render();
    expectUntouchedByTheSameAgain();
}

TEST_F(PanelRefreshTest, TheSameFailureTouchesNoWidget) {
    m_panel.state = LoadState::failed(u"Server error (503)"_s);
    m_panel.actionError = u"No such habit"_s;
    m_panel.render();
    Witness witness(m_panel.view);
    m_panel.render();
    EXPECT_EQ(witness.events(), QStringList());
}

TEST_F(PanelRefreshTest, ATickTouchesNothingWhileAmountsAreHidden) {
    Witness witness(m_panel.view);
    m_panel.pass(30s);
    EXPECT_EQ(witness.events(), QStringList());
}

TEST_F(PanelRefreshTest, AChangedHabitTouchesItsRow) {
    ActionRow* read = rowOf(u"read"_s);
    Witness witness(m_panel.view);
    m_panel.lastGood->habits.items[0].streak = 5;
    m_panel.render();
    EXPECT_FALSE(witness.events().isEmpty());
    EXPECT_EQ(rowOf(u"read"_s), read);
    EXPECT_TRUE(textsOf(read->content()).contains(u"5🔥"_s));
}

TEST_F(PanelRefreshTest, ARowKeepsFocusAndSpinnerAcrossABriefing) {
    ActionRow* drink = rowOf(u"drink"_s);
    drink->setFocus();
    m_panel.pending = {u"habit:drink"_s};
    m_panel.render();
    std::swap(m_panel.lastGood->habits.items[0], m_panel.lastGood->habits.items[1]);
    m_panel.render();
    EXPECT_EQ(rowOf(u"drink"_s), drink);
    EXPECT_EQ(m_panel.view.focusWidget(), drink);
    EXPECT_TRUE(drink->isPending());
}

TEST_F(PanelRefreshTest, TheHalfTypedThoughtSurvivesRefreshesAndFailures) {
    ThoughtEdit* edit = m_panel.view.capture()->edit();
    edit->setFocus();
    QTest::keyClicks(edit, u"half a tho"_s);
    const int cursor = edit->textCursor().position();

    Briefing other = eventfulDay();
    other.eventsToday.clear();
    m_panel.show(other);
    m_panel.state = LoadState::failed(u"Token rejected (401)"_s);
    m_panel.actionError = u"Inbox is full"_s;
    m_panel.render();
    m_panel.pending = {u"capture"_s};
    m_panel.render();
    m_panel.pending = {};
    m_panel.render();

    EXPECT_EQ(edit->toPlainText(), u"half a tho"_s);
    EXPECT_EQ(edit->textCursor().position(), cursor);
    EXPECT_EQ(m_panel.view.focusWidget(), edit);
    QTest::keyClicks(edit, u"ught"_s);
    EXPECT_EQ(edit->toPlainText(), u"half a thought"_s);
}

TEST_F(PanelRefreshTest, ABriefingOfOddTextsBreaksNothing) {
    const QString endless = QString(10'240, u'"') + u'\n';
    Briefing odd = eventfulDay();
    for (const QString& text : {u""_s, u"a\nb"_s, u"\"'<&\\"_s, endless}) {
        odd.eventsToday.push_back(makeEvent({.title = text, .location = text, .meetingUrl = text}));
        odd.eventsToday.push_back(odd.eventsToday.back());
        odd.habits.items.push_back({text, text, false, 3, 1'000'000'000'000, 1'000'000'000'000});
        odd.habits.items.push_back(odd.habits.items.back());
        odd.chores.top.push_back({text, text, text, std::numeric_limits<qint64>::max()});
        odd.chores.top.push_back(odd.chores.top.back());
        odd.spending->top.push_back({text, text, text, text, 1e300});
    }
    odd.spending->mtd = -1e300;
    odd.spending->asOf = endless;
    m_panel.show(odd);
    auto* spending = m_panel.view.findChild<SpendingSection*>();
    QTest::mouseClick(spending->revealButton(), Qt::LeftButton);
    m_panel.render();
    EXPECT_EQ(m_panel.view.findChildren<ActionRow*>().size(), 2 + 8 + 1 + 8);
    EXPECT_EQ(m_panel.view.width(), 320);
    for (const auto* widget : shown<QWidget>(m_panel.view)) {
        EXPECT_LE(widget->mapTo(&m_panel.view, QPoint(widget->width(), 0)).x(), 320);
        EXPECT_LE(widget->toolTip().size(), 6000);
    }
    EXPECT_FALSE(painted(m_panel.view).isNull());
    expectUntouchedByTheSameAgain();

    m_panel.show(eventfulDay());
    EXPECT_EQ(m_panel.view.findChildren<ActionRow*>().size(), 3);
}

TEST_F(PanelRefreshTest, NothingInThePanelKeepsAnEndlessText) {
    const QString endless = u"ประชุม 👩‍👩‍👧 \u202e"_s.repeated(2000);
    Briefing odd = eventfulDay();
    odd.eventsToday.front().title = endless;
    odd.eventsToday.front().location = endless;
    odd.habits.items.front().name = endless;
    odd.chores.top.front().name = endless;
    odd.spending->top.push_back({endless, endless, endless, endless, 1});
    odd.spending->asOf = endless;
    odd.spending->stale = true;
    m_panel.show(odd);
    auto* spending = m_panel.view.findChild<SpendingSection*>();
    QTest::mouseClick(spending->revealButton(), Qt::LeftButton);
    m_panel.state = LoadState::failed(endless);
    m_panel.actionError = endless;
    m_panel.render();
    for (const auto* widget : m_panel.view.findChildren<QWidget*>()) {
        EXPECT_LE(widget->accessibleName().size(), 2 * longestLine + 100);
        EXPECT_LE(widget->accessibleDescription().size(), longestPassage);
        EXPECT_LE(widget->toolTip().size(), 6000);
    }
    for (const QString& text : shownTexts(m_panel.view))
        EXPECT_LE(text.size(), longestLine);
    for (const auto* banner : shown<ErrorBanner>(m_panel.view))
        EXPECT_LE(banner->message()->size(), longestPassage);
}
