// What a briefing of any size costs the event loop: one that it cannot show whole, with the panel
// closed, and open.

#include "app/LumobarAppFixture.h"
#include "support/Heartbeat.h"
#include "support/Patience.h"
#include "support/PrivateMemory.h"

#include <QTest>

#include <iostream>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The most work at a time. The release build is held to a tenth of it by hand; builds like this
/// one, on machines that have other things to do, take several times as long.
#if defined(__SANITIZE_ADDRESS__) || defined(LUMORA_COUNTS_LINES)
constexpr auto mostWork = 2000ms;
#else
constexpr auto mostWork = 500ms;
#endif

struct HugeBriefing {
    const char* name;
    QByteArray (*body)();
};

/// The smallest briefing with `items` in the list that stands as `list`, a pair of brackets.
QByteArray briefingWith(const QByteArray& list, int count, QByteArray (*item)(int)) {
    QByteArray items;
    for (int index = 0; index < count; ++index)
        items += (index == 0 ? "" : ",") + item(index);
    QByteArray filled = list;
    filled.replace("[]", '[' + items + ']');
    return briefingBody(2).replace(list, filled);
}

template <int Count>
QByteArray manyHabits() {
    return briefingWith(R"("items":[])", Count, [](int index) {
        return QByteArray(R"({"id":"h%","name":"Habit %","done":false,"count":0,"target":1,)"
                          R"("streak":0})")
            .replace('%', QByteArray::number(index));
    });
}

QByteArray manyChores() {
    return briefingWith(R"("top":[])", 100'000, [](int index) {
        return QByteArray(R"({"id":"c%","name":"Chore %","room":"Room","daysOverdue":%})")
            .replace('%', QByteArray::number(index));
    });
}

QByteArray manyEvents() {
    return briefingWith(R"("eventsToday":[])", 100'000, [](int index) {
        return QByteArray(R"({"title":"Event %","allDay":false,"start":"2025-03-04T09:10:00Z",)"
                          R"("end":"2025-03-04T09:20:00Z","feed":"Work",)"
                          R"("meetingUrl":"https://meet.example/%"})")
            .replace('%', QByteArray::number(index));
    });
}

/// An event and a habit whose names are `letter`, a million bytes of it.
QByteArray longNames(const char* letter) {
    const QByteArray text = QByteArray(letter).repeated(1'000'000 / int(qstrlen(letter)));
    QByteArray body = briefingBody(2);
    body.replace(
        R"("eventsToday":[])", R"("eventsToday":[{"title":")" + text +
                                   R"(","allDay":false,"start":"2025-03-04T09:10:00Z"}])");
    body.replace(
        R"("items":[])", R"("items":[{"id":"h","name":")" + text +
                             R"(","done":false,"count":0,"target":1,"streak":0}])");
    return body;
}

const HugeBriefing briefings[] = {
    {"1000Habits", &manyHabits<1000>},
    {"100000Habits", &manyHabits<100'000>},
    {"100000Chores", &manyChores},
    {"100000Events", &manyEvents},
    {"LatinNames", [] { return longNames("word "); }},
    {"ArabicNames", [] { return longNames("كلمة "); }},
    {"ThaiNames", [] { return longNames("คำ"); }},
    {"DevanagariNames", [] { return longNames("शब्द "); }},
    {"TibetanNames", [] { return longNames("ཚིག་"); }},
    {"HanNames", [] { return longNames("字"); }},
    {"NamesOfMarks", [] { return longNames("\u0301"); }},
    {"NamesOfBidiControls", [] { return longNames("\u202e"); }},
    {"NamesOfFamilies", [] { return longNames("👩‍👩‍👧‍👦"); }},
};

class HugeBriefingTest : public LumobarAppFixture,
                         public testing::WithParamInterface<std::tuple<HugeBriefing, bool>> {
protected:
    void SetUp() override {
        LumobarAppFixture::SetUp();
        begin();
        transport->complete(0, FakeHttpTransport::answer(200, briefingBody(1)));
        Q_EMIT item->commandChosen(MenuCommand::Open, {});
        outlastTimers(50ms); // opening, with all that is loaded for it
        clock->advance(1min);
        if (!isOpen)
            Q_EMIT item->activated({}, {});
        ASSERT_EQ(isPanelOpen(), isOpen);
    }

    const HugeBriefing& briefing = std::get<0>(GetParam());
    const bool isOpen = std::get<1>(GetParam());
};

} // namespace

TEST_P(HugeBriefingTest, DoesNotHoldUpTheEventLoop) {
    Q_EMIT item->commandChosen(MenuCommand::Refresh, {});
    ASSERT_EQ(transport->requests().size(), 2U);
    ASSERT_EQ(clock->pendingWaitCount(), 0U);
    const HttpOutcome answer = FakeHttpTransport::answer(200, briefing.body());

    Heartbeat heartbeat;
    heartbeat.start();
    transport->complete(1, answer);
    // What it showed before is let go of some seconds later.
    ASSERT_TRUE(QTest::qWaitFor([this] { return clock->pendingWaitCount() > 0; }, patience));
    outlastTimers(20ms);
    const auto arrives = heartbeat.stop();

    heartbeat.start();
    if (!isOpen)
        Q_EMIT item->activated({}, {});
    outlastTimers(20ms);
    const auto opens = heartbeat.stop();

    std::cout << briefing.name << ", panel " << (isOpen ? "open" : "closed") << ": arrives "
              << arrives.work.count() << " ms, opens " << opens.work.count() << " ms\n";
    EXPECT_LT(arrives.work, mostWork);
    EXPECT_LT(opens.work, mostWork);
}

INSTANTIATE_TEST_SUITE_P(
    , HugeBriefingTest, testing::Combine(testing::ValuesIn(briefings), testing::Bool()),
    [](const auto& test) {
        return std::string(std::get<0>(test.param).name) +
               (std::get<1>(test.param) ? "PanelOpen" : "PanelClosed");
    });
