#include "app/PanelController.h"

#include "fakes/RecordingUrlOpener.h"
#include "fakes/SwitchedCompositing.h"
#include "state/Ticker.h"
#include "support/Patience.h"
#include "support/StateHarness.h"
#include "support/WrittenTexts.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/EventsBody.h"
#include "ui/panel/SpendingSection.h"
#include "ui/theme/ThemeSource.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray spendingBody() {
    QByteArray body = briefingBody(1);
    body.insert(
        body.size() - 1,
        R"(,"spending":{"mtd":98765.4,"sameDayLastMonth":1000,"deltaFraction":0.2,"top":[],)"
        R"("asOf":"2025-03-03","generatedAt":1,"stale":false})");
    return body;
}

QByteArray habitBody(const QByteArray& name) {
    return briefingBody(1).replace(
        R"("items":[])", R"("items":[{"id":"h1","name":")" + name +
                             R"(","done":false,"count":0,"target":1,"streak":0}])");
}

bool showsAmount(const QWidget& window) {
    const QStringList spoken = spokenBy(QAccessible::queryAccessibleInterface(
        const_cast<QWidget*>(&window))); // the interface is for reading and doing
    return (writtenIn(window) + spoken).join(u'\n').remove(u',').contains(u"98765"_s);
}

/// Looks for amounts whenever anything in a window is painted.
class PaintWitness final : public QObject {
public:
    explicit PaintWitness(QWidget& window)
        : m_window(window) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
            withAmount += showsAmount(m_window) ? 1 : 0;
        }
        return false;
    }

    int paints = 0;
    int withAmount = 0;

private:
    QWidget& m_window;
};

/// Whether anything in `window`, hidden or not, has `text` for its name.
bool names(const QWidget& window, const QString& text) {
    const auto parts = window.findChildren<QWidget*>();
    return std::ranges::any_of(
        parts, [&](const QWidget* part) { return part->accessibleName().contains(text); });
}

/// The panel over a real state, opened and closed as the status item does.
class PanelControllerTest : public testing::Test {
protected:
    static constexpr auto rest = 2s; ///< until the panel is got ready

    void start() {
        harness.start();
        ticker.emplace(harness.clock);
        controller = std::make_unique<PanelController>(PanelController::Dependencies{
            .state = *harness.state,
            .ticker = *ticker,
            .preferences = harness.preferences,
            .clock = harness.clock,
            .urls = urls,
            .themes = themes,
            .compositing = compositing,
            .openSettings = [this](const QByteArray&) { ++settingsOpened; },
            .quit = [this] { ++quits; },
        });
    }

    void answer() {
        harness.transport.complete(0, FakeHttpTransport::answer(200, spendingBody()));
        StateHarness::settle();
    }

    /// Null until the controller has made one.
    static PanelWindow* panel() {
        PanelWindow* window = nullptr;
        for (QWidget* shown : QApplication::topLevelWidgets())
            window = window ? window : qobject_cast<PanelWindow*>(shown);
        return window;
    }

    PanelWindow* open() {
        controller->open({});
        PanelWindow* window = panel();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
        return window;
    }

    void close(PanelWindow& window) {
        window.hide();
        other.show();
        other.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    }

    StateHarness harness;
    std::optional<Ticker> ticker;
    const ThemeSource themes{Theme(ColorScheme::Light, QFont())};
    SwitchedCompositing compositing{false};
    RecordingUrlOpener urls;
    int settingsOpened = 0;
    int quits = 0;
    QWidget other;
    std::unique_ptr<PanelController> controller;
};

} // namespace

TEST_F(PanelControllerTest, ShowingALockedKeyringAsksNobodyToUnlockIt) {
    harness.secrets.setLookupTrouble(SecretLookup::Status::Locked);
    start();
    StateHarness::settle();
    ASSERT_TRUE(harness.state->state().isFailed());
    ASSERT_EQ(harness.secrets.unlockRequests(), 1); // the refresh did
    close(*open());
    open();
    EXPECT_EQ(harness.secrets.unlockRequests(), 1);
}

TEST_F(PanelControllerTest, OpensWithTheKeyboardAtTheTopWhateverItShows) {
    start();
    PanelWindow* window = open(); // loading
    const auto isAtTop = [] {
        return QApplication::focusWidget()->accessibleName().startsWith("Today"_L1);
    };
    EXPECT_TRUE(isAtTop());
    close(*window);
    harness.transport.complete(0, FakeHttpTransport::answer(401, "no"));
    StateHarness::settle();
    ASSERT_TRUE(harness.state->state().isFailed());
    open();
    EXPECT_TRUE(isAtTop());
    close(*window);
    spawn(harness.state->refresh());
    harness.transport.complete(1, FakeHttpTransport::answer(200, spendingBody()));
    StateHarness::settle();
    ASSERT_TRUE(harness.state->lastGood());
    open();
    EXPECT_TRUE(isAtTop());
    window->findChild<ThoughtEdit*>()->setFocus();
    close(*window);
    open();
    EXPECT_TRUE(isAtTop());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"Next up"_s);
}

TEST_F(PanelControllerTest, AReopenedPanelPaintsNoAmountOfAnEndedReveal) {
    start();
    answer();
    PanelWindow* window = open();
    QTest::mouseClick(window->findChild<SpendingSection*>()->revealButton(), Qt::LeftButton);
    ASSERT_TRUE(showsAmount(*window));
    close(*window);
    EXPECT_TRUE(showsAmount(*window)) << "or the rest proves nothing";
    harness.clock.advance(90s);
    EXPECT_FALSE(showsAmount(*window)) << "in a closed panel neither";

    const PaintWitness witness(*window);
    open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return witness.paints > 0; }, patience));
    EXPECT_EQ(witness.withAmount, 0);
}

TEST_F(PanelControllerTest, KeysWorkFromEverywhereInThePanel) {
    start();
    answer();
    PanelWindow* window = open();
    const std::size_t before = harness.transport.requests().size();
    for (QWidget* place :
         {QApplication::focusWidget(), static_cast<QWidget*>(window->findChild<ThoughtEdit*>())}) {
        place->setFocus();
        QTest::keyClick(place, Qt::Key_R, Qt::ControlModifier);
        QTest::keyClick(place, Qt::Key_Comma, Qt::ControlModifier);
        QTest::keyClick(place, Qt::Key_Q, Qt::ControlModifier);
    }
    EXPECT_EQ(harness.transport.requests().size(), before + 2);
    EXPECT_EQ(settingsOpened, 2);
    EXPECT_EQ(quits, 2);
}

TEST_F(PanelControllerTest, JoinsByTheLinksThatTheUserAllows) {
    start();
    QByteArray body = briefingBody(1);
    body.replace(
        R"("eventsToday":[])",
        R"("eventsToday":[{"title":"Standup","allDay":true,"meetingUrl":"slack://open"}])");
    EXPECT_TRUE(harness.preferences.setValue(u"linkSchemes"_s, u"slack"_s));
    harness.transport.complete(0, FakeHttpTransport::answer(200, body));
    StateHarness::settle();
    const auto* row = open()->findChild<EventRow*>();
    ASSERT_NE(row, nullptr);
    ASSERT_TRUE(row->joinButton()->isVisible());
    row->joinButton()->click();
    EXPECT_EQ(urls.opened, QList{QUrl(u"slack://open"_s)});
    EXPECT_TRUE(harness.preferences.setValue(u"linkSchemes"_s, u""_s));
    row->joinButton()->click(); // drawn before that
    EXPECT_EQ(urls.opened.size(), 1);
}

TEST_F(PanelControllerTest, GetsThePanelReadyOnceTheProgramRestsAfterTheFirstBriefing) {
    start();
    harness.clock.advance(1min);
    EXPECT_EQ(panel(), nullptr) << "there is no briefing yet";
    answer();
    harness.clock.advance(rest - 1ms);
    EXPECT_EQ(panel(), nullptr) << "there may be more to do";
    harness.clock.advance(1ms);
    PanelWindow* ready = panel();
    ASSERT_NE(ready, nullptr);
    EXPECT_FALSE(ready->isVisible());
    EXPECT_TRUE(names(*ready, u"Today, updated"_s));

    const PaintWitness witness(*ready);
    spawn(harness.state->refresh());
    harness.transport.complete(1, FakeHttpTransport::answer(200, briefingBody(2)));
    StateHarness::settle();
    harness.clock.advance(1min);
    EXPECT_EQ(witness.paints, 0) << "once is enough";
    EXPECT_EQ(open(), ready);
}

TEST_F(PanelControllerTest, DoesNotGetReadyWhatWasOpenedAlready) {
    start();
    answer();
    PanelWindow* window = open();
    close(*window);
    const PaintWitness witness(*window);
    harness.clock.advance(1min);
    EXPECT_EQ(witness.paints, 0);
    EXPECT_EQ(panel(), window);
}

TEST_F(PanelControllerTest, APanelThatIsGotReadyShowsTellsAndMarksNothing) {
    start();
    answer();
    spawn(harness.state->perform(LumoAction::habitToggle(u"h1"_s), u"h1"_s));
    harness.transport.complete(1, FakeHttpTransport::answer(401, "no"));
    StateHarness::settle();
    const QString error = harness.state->actionError().value();
    const QWidget* const focus = QApplication::focusWidget();
    harness.clock.advance(rest);
    ASSERT_NE(panel(), nullptr);
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_FALSE(panel()->testAttribute(Qt::WA_KeyboardFocusChange));
    EXPECT_FALSE(showsAmount(*panel()));
    EXPECT_FALSE(names(*panel(), error)) << "a failure is told when it is first shown";
    EXPECT_TRUE(names(*open(), error));
}

TEST_F(PanelControllerTest, APanelThatNobodySeesHoldsTheLastBriefing) {
    start();
    controller->letGo();
    EXPECT_EQ(panel(), nullptr) << "there is none yet";
    harness.transport.complete(0, FakeHttpTransport::answer(200, habitBody("xxx")));
    StateHarness::settle();
    PanelWindow* window = open();
    ASSERT_TRUE(names(*window, u"xxx"_s));
    const auto refreshTo = [this](std::size_t index, const QByteArray& body, int status = 200) {
        harness.clock.advance(1s);
        spawn(harness.state->refresh());
        harness.transport.complete(index, FakeHttpTransport::answer(status, body));
        StateHarness::settle();
    };
    close(*window);
    refreshTo(1, habitBody("Read"));
    EXPECT_TRUE(names(*window, u"xxx"_s)) << "one that may be opened at once is not kept busy";
    refreshTo(2, {}, 401);
    controller->letGo();
    EXPECT_FALSE(names(*window, u"xxx"_s));
    EXPECT_TRUE(names(*window, u"Read"_s));
    EXPECT_FALSE(names(*window, u"Token rejected"_s)) << "a failure is told when it is first shown";
    EXPECT_TRUE(names(*open(), u"Token rejected"_s));
    controller->letGo();
    EXPECT_TRUE(names(*window, u"Token rejected"_s)) << "what is seen stays";
}
