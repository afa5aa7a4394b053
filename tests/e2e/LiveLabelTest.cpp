#include "e2e/ConfiguredProgram.h"
#include "support/Patience.h"

#include <QDateTime>
#include <QJsonArray>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class LiveLabel : public ConfiguredProgram {
protected:
    /// When the service says that a meeting starts.
    QDateTime startOf(const QString& title) {
        const auto events = service.briefing().value(u"eventsToday"_s).toArray();
        for (const QJsonValue event : events) {
            if (event[u"title"_s].toString() == title)
                return QDateTime::fromString(event[u"start"_s].toString(), Qt::ISODate);
        }
        return {};
    }

    /// Waits, without asking for the status, until the status area would show the text; an
    /// absent one is invalid.
    bool labelBecomes(const QVariant& text) {
        return QTest::qWaitFor(
            [&] { return lumora.itemProperty(u"XAyatanaLabel"_s) == text; }, patience);
    }
};

} // namespace

TEST_F(LiveLabel, CountsDownToTheNextMeeting) {
    const QDateTime start = startOf(u"Team sync"_s);
    const qint64 mostMinutes = QDateTime::currentDateTimeUtc().secsTo(start) / 60;
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({
        {u"mode"_s, u"countdown"_s},
        {u"symbol"_s, u"calendar.badge.clock"_s},
        {u"state"_s, u"loaded"_s},
        {u"message"_s, QJsonValue::Null},
    }));
    const QString text = lumora.status().value(u"text"_s).toString();
    const qint64 leastMinutes = QDateTime::currentDateTimeUtc().secsTo(start) / 60;

    // A minute may pass while the program starts.
    QStringList possible;
    for (qint64 minutes = leastMinutes; minutes <= mostMinutes; ++minutes)
        possible += u"Team sync · %1m"_s.arg(minutes);
    EXPECT_TRUE(possible.contains(text)) << text.toStdString();
    EXPECT_LE(mostMinutes, 12);
}

TEST_F(LiveLabel, ShowsTheMeetingOnceItRuns) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"mode"_s, u"countdown"_s}}));
    service.control({{u"shiftDaySeconds"_s, -1200}});
    const auto refreshed = lumora.run({u"refresh"_s});
    EXPECT_EQ(refreshed.exitCode, 0) << refreshed.err.toStdString();
    EXPECT_TRUE(lumora.comesToShow({
        {u"mode"_s, u"now"_s},
        {u"symbol"_s, u"record.circle"_s},
        {u"text"_s, u"Team sync"_s},
        {u"state"_s, u"loaded"_s},
    }));
    EXPECT_TRUE(labelBecomes(u"Team sync"_s));
}

TEST_F(LiveLabel, FollowsTheChoiceInTheFileWithoutARestart) {
    leaveMeetingsBehind();
    lumora.start();
    const auto shows = [this](const QString& mode, const QString& symbol, const QJsonValue& text) {
        return lumora.comesToShow({{u"mode"_s, mode}, {u"symbol"_s, symbol}, {u"text"_s, text}});
    };
    EXPECT_TRUE(shows(u"habits"_s, u"checkmark.circle"_s, u"1/5"_s));

    prefer(u"focus"_s);
    EXPECT_TRUE(labelBecomes(u"42%"_s));
    EXPECT_TRUE(shows(u"focus"_s, u"brain.head.profile"_s, u"42%"_s));

    prefer(u"chores"_s);
    EXPECT_TRUE(labelBecomes(u"6"_s));
    EXPECT_TRUE(shows(u"chores"_s, u"checklist"_s, u"6"_s));

    prefer(u"none"_s);
    EXPECT_TRUE(labelBecomes(QVariant()));
    EXPECT_TRUE(shows(u"idle"_s, u"calendar"_s, QJsonValue::Null));

    prefer(u"weather"_s);
    EXPECT_TRUE(labelBecomes(u"1/5"_s));
    EXPECT_TRUE(shows(u"habits"_s, u"checkmark.circle"_s, u"1/5"_s));
}

TEST_F(LiveLabel, FillsTheSymbolWhenEverythingIsDone) {
    service.control({{u"scenario"_s, u"quiet"_s}});
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({
        {u"mode"_s, u"habits"_s},
        {u"symbol"_s, u"checkmark.circle.fill"_s},
        {u"text"_s, u"5/5"_s},
    }));
}

TEST_F(LiveLabel, ShowsAnErrorWhenTheFirstFetchFails) {
    service.control({{u"scenario"_s, u"unauthorized"_s}});
    lumora.start();
    EXPECT_TRUE(lumora.comesToShow({
        {u"mode"_s, u"error"_s},
        {u"symbol"_s, u"calendar.badge.exclamationmark"_s},
        {u"text"_s, QJsonValue::Null},
        {u"state"_s, u"failed"_s},
        {u"message"_s, u"Token rejected (401)"_s},
        {u"lastUpdated"_s, QJsonValue::Null},
    }));
    EXPECT_TRUE(labelBecomes(QVariant()));
    const auto refreshed = lumora.run({u"refresh"_s});
    EXPECT_EQ(refreshed.exitCode, 1);
    EXPECT_EQ(refreshed.err, "lumora: Token rejected (401)\n");
}

TEST_F(LiveLabel, KeepsWhatItHasWhenTheServiceDies) {
    leaveMeetingsBehind();
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"text"_s, u"1/5"_s}, {u"state"_s, u"loaded"_s}}));
    const QJsonObject before = lumora.status();

    service.stop();
    const auto refreshed = lumora.run({u"refresh"_s});
    const QJsonObject after = lumora.status();
    EXPECT_EQ(refreshed.exitCode, 1);
    EXPECT_EQ(after.value(u"state"_s), u"failed"_s);
    const QString message = after.value(u"message"_s).toString();
    EXPECT_FALSE(message.isEmpty());
    EXPECT_EQ(refreshed.err, "lumora: " + message.toUtf8() + "\n");
    for (const QString& kept : {u"mode"_s, u"symbol"_s, u"text"_s, u"lastUpdated"_s})
        EXPECT_EQ(after.value(kept), before.value(kept)) << kept.toStdString();
    EXPECT_EQ(lumora.itemProperty(u"XAyatanaLabel"_s), u"1/5"_s);

    service.restart();
    leaveMeetingsBehind();
    EXPECT_EQ(lumora.run({u"refresh"_s}).exitCode, 0);
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}, {u"message"_s, QJsonValue::Null}}));
}
