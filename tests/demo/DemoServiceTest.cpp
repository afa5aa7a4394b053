#include "demo/DemoService.h"

#include "demo/DemoActions.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using namespace lumora;

namespace {

const Instant kServiceNoon = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4) + 12h;

class DemoServiceTest : public testing::Test {
protected:
    Instant real = kServiceNoon;

    std::unique_ptr<DemoService> make(DemoScenario scenario) {
        return std::make_unique<DemoService>(
            scenario, "key", DemoClock([this] { return real; }), QTimeZone::utc());
    }

    std::unique_ptr<DemoService> service = make(DemoScenario::Busy);

    DemoAnswer get(const QByteArray& path, const QByteArray& token = "key") {
        return service->answer({"GET", path, token, {}});
    }

    DemoAnswer post(const QByteArray& path, const QByteArray& body) {
        return service->answer({"POST", path, "key", body});
    }

    DemoAnswer act(const QByteArray& body) { return post("/api/briefing/action", body); }

    void control(const QByteArray& body) { ASSERT_EQ(post("/control", body).status, 200); }

    static QJsonObject object(const DemoAnswer& answer) {
        return QJsonDocument::fromJson(answer.body).object();
    }

    QJsonObject briefing() {
        const auto answer = get("/api/briefing");
        EXPECT_EQ(answer.status, 200);
        return object(answer);
    }
};

bool hasError(const DemoAnswer& answer) {
    return QJsonDocument::fromJson(answer.body)[u"error"_s].isString() &&
           answer.contentType == "application/json";
}

} // namespace

TEST_F(DemoServiceTest, EveryPathAsksForTheToken) {
    for (const QByteArray path : {"/api/briefing", "/api/inbox", "/control"}) {
        EXPECT_EQ(get(path).status, 200) << path.toStdString();
        for (const QByteArray token : {"", "other", "KEY", "key "}) {
            const auto answer = get(path, token);
            EXPECT_EQ(answer.status, 401) << path.toStdString();
            EXPECT_TRUE(hasError(answer));
        }
    }
    const auto refused = service->answer(
        {"POST", "/api/briefing/action", "other", R"({"type":"chore.done","id":"plants"})"});
    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(briefing()[u"chores"_s][u"count"_s].toInteger(), 6);
}

TEST_F(DemoServiceTest, OtherPathsAndMethods) {
    EXPECT_EQ(get("/").status, 404);
    EXPECT_EQ(get("/api/briefing/actions").status, 404);
    EXPECT_TRUE(hasError(get("/")));
    const auto answer = get("/api/briefing/action");
    EXPECT_EQ(answer.status, 405);
    EXPECT_EQ(answer.allow, "POST");
    EXPECT_TRUE(hasError(answer));
    EXPECT_EQ(post("/api/briefing", "{}").status, 405);
    EXPECT_EQ(service->answer({"PUT", "/control", "key", "{}"}).allow, "GET, HEAD, POST");
}

TEST_F(DemoServiceTest, ActionsShowInTheNextBriefing) {
    EXPECT_EQ(act(R"({"type":"habit.toggle","id":"read"})").body, R"({"ok":true})");
    EXPECT_EQ(briefing()[u"habits"_s][u"done"_s].toInteger(), 2);
    EXPECT_EQ(act(R"({"type":"chore.done","id":"plants"})").status, 200);
    const auto chores = briefing()[u"chores"_s].toObject();
    EXPECT_EQ(chores[u"count"_s].toInteger(), 5);
    EXPECT_EQ(chores[u"top"_s].toArray().size(), 4);
    EXPECT_EQ(act(R"({"type":"capture","text":"milk"})").status, 200);
    const auto inbox = QJsonDocument::fromJson(get("/api/inbox").body).array();
    ASSERT_EQ(inbox.size(), 1);
    EXPECT_EQ(inbox[0][u"text"_s].toString(), u"milk"_s);
    EXPECT_EQ(inbox[0][u"at"_s].toString(), u"2025-03-04T12:00:00Z"_s);
}

TEST_F(DemoServiceTest, ARefusedActionAnswersItsReason) {
    const auto answer = act(R"({"type":"chore.done","id":"nothing"})");
    EXPECT_EQ(answer.status, 404);
    EXPECT_TRUE(hasError(answer));
}

TEST_F(DemoServiceTest, SpendingComesByTheServicesClock) {
    const auto before = briefing()[u"spending"_s].toObject();
    EXPECT_TRUE(object(act(R"({"type":"spending.refresh"})"))[u"queued"_s].toBool());
    real += 3s;
    EXPECT_EQ(briefing()[u"spending"_s].toObject(), before);
    real += 1s;
    const auto after = briefing()[u"spending"_s].toObject();
    EXPECT_NE(after[u"generatedAt"_s], before[u"generatedAt"_s]);
    EXPECT_FALSE(after[u"stale"_s].toBool());
    EXPECT_FALSE(object(act(R"({"type":"spending.refresh"})"))[u"queued"_s].toBool(true));
    control(R"({"advanceSeconds":56})");
    EXPECT_TRUE(object(act(R"({"type":"spending.refresh"})"))[u"queued"_s].toBool());
}

TEST_F(DemoServiceTest, FiguresNobodyLookedAtLandBeforeTheNextRefresh) {
    const auto before = briefing()[u"spending"_s][u"mtd"_s].toDouble();
    ASSERT_TRUE(object(act(R"({"type":"spending.refresh"})"))[u"queued"_s].toBool());
    real += 60s;
    ASSERT_TRUE(object(act(R"({"type":"spending.refresh"})"))[u"queued"_s].toBool());
    const auto between = briefing()[u"spending"_s][u"mtd"_s].toDouble();
    EXPECT_GT(between, before);
    real += 4s;
    EXPECT_GT(briefing()[u"spending"_s][u"mtd"_s].toDouble(), between);
}

TEST_F(DemoServiceTest, EqualStampsMeanEqualBriefings) {
    const auto first = briefing();
    EXPECT_EQ(first[u"generatedAt"_s].toDouble(), 1741089600.0);
    real += 30s;
    EXPECT_EQ(briefing(), first);
    act(R"({"type":"habit.toggle","id":"read"})");
    const auto second = briefing();
    EXPECT_EQ(second[u"generatedAt"_s].toDouble(), 1741089630.0);
    act(R"({"type":"habit.toggle","id":"read"})");
    EXPECT_GT(briefing()[u"generatedAt"_s].toDouble(), 1741089630.0);
    control(R"({"advanceSeconds":-86400})");
    EXPECT_GT(briefing()[u"generatedAt"_s].toDouble(), 1741089630.0);
}

TEST_F(DemoServiceTest, MovingTheClockLeavesTheEventsInPlace) {
    const auto before = briefing();
    control(R"({"now":"2025-03-05T13:00:00Z"})");
    const auto after = briefing();
    EXPECT_EQ(after[u"eventsToday"_s], before[u"eventsToday"_s]);
    EXPECT_EQ(after[u"date"_s].toString(), u"2025-03-05"_s);
    control(R"({"advanceSeconds":86400})");
    EXPECT_EQ(briefing()[u"date"_s].toString(), u"2025-03-06"_s);
    EXPECT_EQ(briefing()[u"eventsToday"_s], before[u"eventsToday"_s]);
}

TEST_F(DemoServiceTest, TheDayMovesOnItsOwn) {
    const auto teamSync = [&] { return briefing()[u"eventsToday"_s][5][u"start"_s].toString(); };
    ASSERT_EQ(teamSync(), u"2025-03-04T12:12:00Z"_s);
    control(R"({"shiftDaySeconds":-1200})");
    EXPECT_EQ(teamSync(), u"2025-03-04T11:52:00Z"_s);
    control(R"({"shiftDaySeconds":-1200})");
    EXPECT_EQ(teamSync(), u"2025-03-04T11:32:00Z"_s);
    control(R"({"dayFrom":"2025-03-04T08:00:00Z"})");
    EXPECT_EQ(teamSync(), u"2025-03-04T08:12:00Z"_s);
    EXPECT_EQ(
        object(get("/control")), (QJsonObject{
                                     {u"scenario"_s, u"busy"_s},
                                     {u"now"_s, u"2025-03-04T12:00:00Z"_s},
                                     {u"dayFrom"_s, u"2025-03-04T08:00:00Z"_s}}));
}

TEST_F(DemoServiceTest, TheDayBeginsOnAWholeMinuteAndMovesByTheSecond) {
    real = kServiceNoon + 17s + 3ms;
    service = make(DemoScenario::Busy);
    const auto teamSync = [&] { return briefing()[u"eventsToday"_s][5][u"start"_s].toString(); };
    EXPECT_EQ(teamSync(), u"2025-03-04T12:13:00Z"_s);
    control(R"({"shiftDaySeconds":-418})");
    EXPECT_EQ(teamSync(), u"2025-03-04T12:06:02Z"_s);
}

TEST_F(DemoServiceTest, ABadControlChangesNothing) {
    const auto before = get("/control").body;
    for (const QByteArray body :
         {"", R"({"scenario":"empty","speed":2})", R"({"scenario":"empty","advanceSeconds":6e9})",
          R"({"scenario":"empty","shiftDaySeconds":-6e9})"}) {
        const auto answer = post("/control", body);
        EXPECT_EQ(answer.status, 400) << body.toStdString();
        EXPECT_TRUE(hasError(answer));
    }
    EXPECT_EQ(get("/control").body, before);
}

TEST_F(DemoServiceTest, WhatWasDoneOutlastsTroublesButNotTheDay) {
    act(R"({"type":"chore.done","id":"plants"})");
    act(R"({"type":"capture","text":"milk"})");
    control(R"({"scenario":"unauthorized"})");
    EXPECT_EQ(get("/api/briefing").status, 401);
    EXPECT_EQ(act(R"({"type":"chore.done","id":"bins"})").status, 401);
    control(R"({"scenario":"busy"})");
    EXPECT_EQ(briefing()[u"chores"_s][u"count"_s].toInteger(), 5);
    control(R"({"scenario":"empty"})");
    EXPECT_EQ(briefing()[u"chores"_s][u"count"_s].toInteger(-1), 0);
    control(R"({"scenario":"busy"})");
    EXPECT_EQ(briefing()[u"chores"_s][u"count"_s].toInteger(), 6);
    EXPECT_EQ(QJsonDocument::fromJson(get("/api/inbox").body).array().size(), 1);
}

TEST_F(DemoServiceTest, OfThreeFlakyRequestsTheThirdSucceeds) {
    service = make(DemoScenario::Flaky);
    const QByteArray toggle = R"({"type":"habit.toggle","id":"read"})";
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(get("/api/briefing").status, 503);
        EXPECT_EQ(get("/api/briefing", "other").status, 401); // not one of the three
        EXPECT_TRUE(get("/api/briefing").breakOff);
        EXPECT_EQ(get("/api/inbox").status, 200); // nor this
        const auto third = get("/api/briefing");
        EXPECT_EQ(third.status, 200);
        EXPECT_FALSE(third.breakOff);
    }
    EXPECT_EQ(act(toggle).status, 503);
    EXPECT_TRUE(act(toggle).breakOff);
    EXPECT_EQ(act(toggle).status, 200);
    control(R"({"scenario":"busy"})");
    EXPECT_EQ(briefing()[u"habits"_s][u"done"_s].toInteger(), 2);
}

TEST_F(DemoServiceTest, SlowAnswersAreTheUsualOnesLater) {
    const auto usual = get("/api/briefing");
    EXPECT_EQ(usual.delay, 0s);
    service = make(DemoScenario::Slow);
    const auto slow = get("/api/briefing");
    EXPECT_EQ(slow.delay, 3s);
    EXPECT_EQ(slow.body, usual.body);
    EXPECT_EQ(act(R"({"type":"chore.done","id":"plants"})").delay, 3s);
    EXPECT_EQ(get("/control").delay, 0s);
}

TEST_F(DemoServiceTest, ALoginPageStandsBeforeEverything) {
    service = make(DemoScenario::Html);
    for (const auto& answer : {get("/api/briefing"), act(R"({"type":"chore.done","id":"bins"})")}) {
        EXPECT_EQ(answer.status, 200);
        EXPECT_TRUE(answer.contentType.startsWith("text/html"));
        EXPECT_TRUE(answer.body.startsWith("<!DOCTYPE html>"));
    }
    control(R"({"scenario":"busy"})");
    EXPECT_EQ(briefing()[u"chores"_s][u"count"_s].toInteger(), 6);
}

TEST_F(DemoServiceTest, TheMalformedBriefingIsJsonAndTakesActions) {
    service = make(DemoScenario::Malformed);
    EXPECT_EQ(briefing()[u"eventsToday"_s][3][u"start"_s].toString(), u"2025-03-04"_s);
    EXPECT_EQ(act(R"({"type":"chore.done","id":"bins"})").status, 200);
}
