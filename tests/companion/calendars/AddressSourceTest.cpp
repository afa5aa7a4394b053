#include "companion/calendars/AddressSource.h"

#include "CalendarWorld.h"

#include <gtest/gtest.h>

#include <deque>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using std::chrono::minutes;

/// Keeps requests until the test answers them.
class HeldWeb final : public Web {
public:
    void send(WebRequest request, std::function<void(WebOutcome)> done) override {
        requests.push_back(std::move(request));
        m_waiting.push_back(std::move(done));
    }

    void answer(const WebOutcome& outcome) {
        const auto done = std::move(m_waiting.front());
        m_waiting.pop_front();
        done(outcome);
    }

    std::vector<WebRequest> requests;

private:
    std::deque<std::function<void(WebOutcome)>> m_waiting;
};

WebAnswer good(const QByteArray& body, const QByteArray& etag = "\"1\"") {
    return {.status = 200, .body = body, .etag = etag, .lastModified = "then"};
}

class AddressSources : public testing::Test {
protected:
    AddressSources() {
        auto made = std::make_unique<HeldWeb>();
        web = made.get();
        world.web = std::move(made);
        world.calendars = {{.name = u"Work"_s, .place = IcsAddress{url}}};
        world.start();
    }

    // How many requests there are after all the time that has passed.
    std::size_t requests() {
        world.running->refreshDue();
        return web->requests.size();
    }

    QByteArray sent(const QByteArray& name) const {
        for (const auto& [key, value] : web->requests.back().headers) {
            if (key == name)
                return value;
        }
        return {};
    }

    const QUrl url{u"https://example.org/secret.ics"_s};
    CalendarWorld world;
    HeldWeb* web = nullptr;
};

} // namespace

TEST_F(AddressSources, AreAskedAtOnceAndThenAtIntervals) {
    EXPECT_EQ(requests(), 1U);
    EXPECT_EQ(web->requests[0].url, url);
    EXPECT_EQ(web->requests[0].longest, std::chrono::seconds(20));
    EXPECT_EQ(web->requests[0].largest, 10 * 1024 * 1024);
    world.now += minutes(60);
    EXPECT_EQ(requests(), 1U) << "one at a time";
    web->answer(good(calendarWith({"Standup"})));
    EXPECT_EQ(requests(), 1U + 1U) << "the interval counts from one request to the next";
    web->answer(good(calendarWith({"Standup"})));
    world.now += minutes(15) - std::chrono::seconds(1);
    EXPECT_EQ(requests(), 2U);
    world.now += std::chrono::seconds(1);
    EXPECT_EQ(requests(), 3U);
}

TEST_F(AddressSources, AreAskedAgainWhenTheClockWasPutBack) {
    requests();
    web->answer(good(calendarWith({})));
    world.now -= minutes(600);
    EXPECT_EQ(requests(), 2U);
}

TEST_F(AddressSources, AreOnlyAskedForWhatHasChanged) {
    requests();
    EXPECT_EQ(sent("If-None-Match"), "");
    EXPECT_EQ(sent("If-Modified-Since"), "");
    web->answer(good(calendarWith({"Standup"})));
    EXPECT_EQ(world.shown(), QStringList(u"Work: Standup"_s));
    world.now += minutes(15);
    requests();
    EXPECT_EQ(sent("If-None-Match"), "\"1\"");
    EXPECT_EQ(sent("If-Modified-Since"), "then");
    web->answer(WebAnswer{.status = 304, .body = {}, .etag = {}, .lastModified = {}});
    EXPECT_EQ(world.shown(), QStringList(u"Work: Standup"_s));
    EXPECT_EQ(world.state().readAt, world.now);
    EXPECT_EQ(world.state().error, std::nullopt);
}

TEST_F(AddressSources, KeepWhatTheyHaveWhenAnythingFails) {
    requests();
    web->answer(good(calendarWith({"Standup"})));
    const std::pair<WebOutcome, QString> failures[] = {
        {tl::unexpected(u"The server was not found"_s), u"The server was not found"_s},
        {WebAnswer{.status = 500, .body = calendarWith({"No"}), .etag = {}, .lastModified = {}},
         u"The server answered 500"_s},
        {good("<html>Sign in</html>"), u"The answer is no calendar"_s}};
    for (const auto& [outcome, words] : failures) {
        world.now += minutes(15);
        requests();
        web->answer(outcome);
        EXPECT_EQ(world.shown(), QStringList(u"Work: Standup"_s));
        EXPECT_EQ(world.state().error, words);
        EXPECT_EQ(world.state().readAt, morning);
    }
    world.now += minutes(15);
    requests();
    EXPECT_EQ(sent("If-None-Match"), "\"1\"") << "of what is shown, not of what was refused";
    web->answer(good(calendarWith({"Retro"})));
    EXPECT_EQ(world.shown(), QStringList(u"Work: Retro"_s));
    EXPECT_EQ(world.state().error, std::nullopt);
}

TEST_F(AddressSources, TakeNoUnchangedForAnAnswerWhereTheyHaveNothing) {
    requests();
    web->answer(WebAnswer{.status = 304, .body = {}, .etag = {}, .lastModified = {}});
    EXPECT_EQ(world.state().error, u"The server answered 304"_s);
}

TEST_F(AddressSources, AreTriedAgainSoonAndThenLessOften) {
    std::size_t asked = 0;
    for (const int wait : {1, 2, 4, 8, 15, 15}) {
        EXPECT_EQ(requests(), ++asked);
        web->answer(tl::unexpected(u"No"_s));
        world.now += minutes(wait) - std::chrono::seconds(1);
        EXPECT_EQ(requests(), asked) << wait;
        world.now += std::chrono::seconds(1);
    }
}

TEST_F(AddressSources, AreThereAtOnceAfterAStart) {
    requests();
    web->answer(good(calendarWith({"Standup"})));
    world.now += minutes(5);
    world.start();
    EXPECT_EQ(world.shown(), QStringList(u"Work: Standup"_s));
    EXPECT_EQ(world.state().readAt, morning);
    requests();
    EXPECT_EQ(sent("If-None-Match"), "\"1\"");
}

TEST_F(AddressSources, TellHowOldTheyAreAfterAStartWithoutNetwork) {
    requests();
    web->answer(good(calendarWith({"Standup"})));
    world.now += minutes(5 * 60);
    world.start();
    for (const int wait : {1, 2, 4, 8}) {
        requests();
        web->answer(tl::unexpected(u"No"_s));
        EXPECT_EQ(world.shown(), QStringList(u"Work: Standup"_s)) << "there may be one soon";
        world.now += minutes(wait);
    }
    requests();
    web->answer(tl::unexpected(u"No"_s));
    const QStringList shown{u"Work: Work: not updated for 5 hours"_s, u"Work: Standup"_s};
    EXPECT_EQ(world.shown(), shown);
    world.now += minutes(15);
    requests();
    web->answer(good(calendarWith({"Standup"})));
    EXPECT_EQ(world.shown(), shown.mid(1));
    // From now on it fails from when it fails.
    world.now += minutes(15);
    requests();
    web->answer(tl::unexpected(u"No"_s));
    world.now += minutes(170);
    requests();
    web->answer(tl::unexpected(u"No"_s));
    EXPECT_EQ(world.shown(), shown.mid(1));
}

TEST_F(AddressSources, LeaveNothingOfAnAddressThatIsGivenUp) {
    requests();
    web->answer(good(calendarWith({"Standup"})));
    const QString kept = keptBodyPath(world.path(u"cache/calendars"_s), url);
    EXPECT_TRUE(QFile::exists(kept));
    world.start();
    EXPECT_TRUE(QFile::exists(kept));
    world.calendars.clear();
    world.start();
    EXPECT_FALSE(QFile::exists(kept));
}

TEST_F(AddressSources, ThatMayNotBeFetchedSaySo) {
    world.calendars = {{.name = u"Open"_s, .place = IcsAddress{QUrl(u"http://example.org/"_s)}}};
    world.start();
    EXPECT_EQ(requests(), 0U);
    EXPECT_EQ(world.state().error, u"Only https addresses are fetched"_s);
}

TEST_F(AddressSources, MayBeGoneWhenTheAnswerComes) {
    requests();
    world.running.reset();
    web->answer(good(calendarWith({"Standup"})));
    SUCCEED();
}

} // namespace lumora::companion::tests
