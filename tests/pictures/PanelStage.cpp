#include "pictures/PanelStage.h"

#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "ui/window/PanelShadow.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

/// What is behind the panel: no colour of any theme.
constexpr QColor desktopColor(0x7a, 0x8b, 0x99);

constexpr int barHeight = 30;

} // namespace

PanelStage::PanelStage(const Look& look)
    : themes(adopt(look))
    , screen{.geometry = screenFor(look), .available = screenFor(look).adjusted(0, barHeight, 0, 0), .scale = double(look.scale)}
    , view(new MenuBarView({.themes = themes, .preferences = preferences, .clock = clock}))
    , window(
          view, {.themes = themes,
                 .compositing = compositing,
                 .clock = clock,
                 .screens = [this] { return QList<PlacementScreen>{screen}; }})
    , m_look(look) {
    window.setScreen(QGuiApplication::screenAt(screen.geometry.center()));
}

PanelStage::~PanelStage() {
    if (window.isVisible())
        letGo(window);
}

void PanelStage::open() {
    view->render({
        .state = state,
        .lastGood = lastGood,
        .lastUpdated = lastUpdated,
        .pending = pending,
        .actionError = actionError,
        .isConfigured = isConfigured,
        .hasDashboard = hasDashboard,
        .now = clock.now(),
    });
    if (!window.isVisible())
        window.showAt({.pointer = QPoint(screen.geometry.center().x(), barHeight / 2)});
    settle();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("The panel does not become active");
}

void PanelStage::open(const Briefing& briefing) {
    lastGood = briefing;
    lastUpdated = clock.now() - std::chrono::minutes(4);
    if (!state.isFailed())
        state = LoadState::loaded(briefing);
    open();
}

void PanelStage::narrow(QWidget& part) {
    constexpr QMargins around(10, 10, 10, 10);
    const QRect place(part.mapTo(&window, QPoint()), part.size());
    m_part = place.marginsAdded(around) & window.panelRect();
}

void PanelStage::focus(QWidget& target) {
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    target.setFocus(Qt::TabFocusReason);
    settle();
}

QWidget& PanelStage::button(const QString& name) {
    for (auto* button : shown<QAbstractButton>(*view))
        if (button->accessibleName() == name)
            return *button;
    qFatal("Nothing to press is called %s", qUtf8Printable(name));
}

QImage PanelStage::picture() {
    settle(); // and the panel is as high as it will be
    QRect part = m_part;
    if (part.isNull()) {
        const QMargins margins = compositing.isActive() ? PanelShadow::margins() : QMargins();
        part = window.panelRect().marginsAdded(margins) & window.rect();
    }
    return drawn(window, part, desktopColor);
}

Briefing pictureDay() {
    const Instant now = FakeClock::defaultStart;
    const auto minutes = [&](int count) { return now + std::chrono::minutes(count); };
    Briefing briefing = makeBriefing({
        makeEvent({.title = u"Public holiday"_s, .allDay = true}),
        makeEvent(
            {.title = u"Design review"_s,
             .start = minutes(10),
             .end = minutes(40),
             .location = u"Room 2.14"_s,
             .meetingUrl = u"https://meet.example/a"_s}),
        makeEvent(
            {.title = u"Customer interview"_s,
             .start = minutes(75),
             .end = minutes(120),
             .meetingUrl = u"https://meet.example/b"_s}),
        makeEvent({.title = u"One-to-one"_s, .start = minutes(210), .end = minutes(240)}),
    });
    briefing.habits = {
        .done = 2,
        .total = 4,
        .items = {
            {u"read"_s, u"Read"_s, false, 0, 1, 12},
            {u"water"_s, u"Drink water"_s, false, 3, 8, 0},
            {u"run"_s, u"Go for a run"_s, true, 1, 1, 4},
            {u"stretch"_s, u"Stretch"_s, true, 2, 2, 0},
        }};
    briefing.chores = {
        .count = 7,
        .top = {
            {u"plants"_s, u"Water the plants"_s, u"Balcony"_s, 3},
            {u"sweep"_s, u"Sweep the floor"_s, u"Hall"_s, 0},
            {u"filter"_s, u"Change the filter"_s, u"Kitchen"_s, std::nullopt},
        }};
    briefing.focus.productiveShare = 0.63;
    briefing.spending = Spending{
        .mtd = 1234.56,
        .sameDayLastMonth = 1100,
        .deltaFraction = 0.12,
        .top =
            {{u"groceries"_s, u"Groceries"_s, u"🛒"_s, u"#34a853"_s, 412.3},
             {u"food"_s, u"Eating out"_s, u"🍜"_s, u"#f29900"_s, 231.05},
             {u"travel"_s, u"Transport"_s, u"🚆"_s, u"#1a73e8"_s, 88}},
        .asOf = u"2025-03-03"_s};
    return briefing;
}

Briefing arabicDay() {
    Briefing briefing = pictureDay();
    briefing.eventsToday[1].title = u"مراجعة التصميم"_s;
    briefing.eventsToday[1].location = u"القاعة الكبرى"_s;
    briefing.eventsToday[2].title = u"مقابلة مع العميل (Q3)"_s;
    briefing.habits.items[0].name = u"القراءة"_s;
    briefing.habits.items[2].name = u"الجري"_s;
    briefing.chores.top[0].name = u"سقي النباتات"_s;
    briefing.spending->top[0].label = u"البقالة"_s;
    return briefing;
}

} // namespace lumora::tests
