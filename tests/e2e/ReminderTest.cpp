#include "e2e/ConfiguredProgram.h"
#include "e2e/NotingBrowser.h"
#include "support/NotificationDaemon.h"
#include "support/Patience.h"
#include "support/PrivateDisplay.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The program on a display with a real notification server, and a browser that only notes down
/// what it is to open.
class Reminder : public ConfiguredProgram {
protected:
    void SetUp() override {
        ConfiguredProgram::SetUp();
        lumora.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        lumora.setVariable(u"DISPLAY"_s, QString::fromLatin1(display.name()));
        service.control({{u"shiftDaySeconds"_s, 24 * 60 * 60}}); // nothing to remind of yet
    }

    // The program must not outlive its display.
    void TearDown() override {
        EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
        EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
    }

    testing::AssertionResult opens(const QByteArrayList& links) { return browser.opens(links); }

    QStringList remindedOf() const {
        QStringList titles;
        for (const auto& notification : server.shown())
            titles += notification.summary;
        return titles;
    }

    /// Moves the day so that the meeting is to be reminded of very soon, and tells the program: in
    /// time, on however busy a machine.
    void nearlyTimeFor(const QString& title) {
        const auto events = service.briefing().value(u"eventsToday"_s).toArray();
        for (const QJsonValue event : events) {
            if (event[u"title"_s].toString() != title)
                continue;
            const auto start = QDateTime::fromString(event[u"start"_s].toString(), Qt::ISODate);
            const auto wanted = QDateTime::currentDateTimeUtc().addMSecs(300'000 + leadTime());
            service.control({{u"shiftDaySeconds"_s, start.secsTo(wanted)}});
            time = wanted.addSecs(-300);
        }
        EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    }

    /// Some times as long as telling the program takes now, in milliseconds.
    qint64 leadTime() {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
        return 2000 + 4 * timer.elapsed();
    }

    /// Waits until it is past the time of the reminder, for the program too.
    void letTheTimePass() {
        const auto isOver = [this] { return QDateTime::currentDateTimeUtc() > time; };
        EXPECT_TRUE(QTest::qWaitFor(isOver, patience));
        EXPECT_FALSE(lumora.status().isEmpty()); // it has come to its event loop since
    }

    PrivateDisplay display;
    NotificationDaemon server{lumora.sessionBus(), display};
    NotingBrowser browser{lumora};
    QDateTime time; ///< of the reminder
};

} // namespace

TEST_F(Reminder, ItsClickOpensTheMeetingAlsoAfterTheServerWasRestarted) {
    server.start();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    nearlyTimeFor(u"Team sync"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server.shown().isEmpty(); }, patience));
    const NotificationDaemon::Shown expected{
        .app = u"Lumora"_s,
        .summary = u"Team sync"_s,
        .body = u"Starts in 5 min · Room 2.14"_s,
        .desktopEntry = u"com.lumora.app"_s,
    };
    EXPECT_EQ(server.shown().constFirst(), expected);
    server.click();
    EXPECT_TRUE(opens({"https://meet.example.com/team-sync"}));

    server.kill();
    server.start();
    nearlyTimeFor(u"Design review"_s);
    const auto isShown = [this] { return remindedOf().contains(u"Design review"_s); };
    ASSERT_TRUE(QTest::qWaitFor(isShown, patience));
    server.click();
    EXPECT_TRUE(
        opens({"https://meet.example.com/team-sync", "https://meet.example.com/design-review"}));
    EXPECT_EQ(remindedOf(), (QStringList{u"Team sync"_s, u"Design review"_s}));
}

TEST_F(Reminder, ThatFiresWithoutAServerIsShownByTheNext) {
    server.start();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    nearlyTimeFor(u"Team sync"_s);
    server.kill();
    letTheTimePass();
    EXPECT_EQ(remindedOf(), QStringList());
    server.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server.shown().isEmpty(); }, patience));
    server.click();
    EXPECT_TRUE(opens({"https://meet.example.com/team-sync"}));
    EXPECT_EQ(remindedOf(), QStringList{u"Team sync"_s});
}

TEST_F(Reminder, IsShownToWhoWantsOne) {
    server.start();
    lumora.writePreferences(
        {{u"endpointURL"_s, service.endpoint()}, {u"notifyBeforeMeetings"_s, u"false"_s}});
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    nearlyTimeFor(u"Team sync"_s);
    letTheTimePass();
    prefer(u"habits"_s);
    nearlyTimeFor(u"Design review"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !server.shown().isEmpty(); }, patience));
    EXPECT_EQ(remindedOf(), QStringList{u"Design review"_s});
}
