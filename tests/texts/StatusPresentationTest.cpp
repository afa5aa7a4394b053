#include "texts/StatusPresentation.h"

#include "briefing/TextBounds.h"
#include "support/Builders.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant statusNow = at("2025-03-04T09:00:00Z");

class StatusPresentationTest : public testing::Test {
protected:
    StatusItemContent content() const {
        return statusItemContent({
            .lastGood = briefing,
            .state = state,
            .lastUpdated = updated,
            .menuBarAmbient = ambient,
            .links = LinkPolicy(linkSchemes),
            .now = statusNow,
            .timeZone = QTimeZone::utc(),
            .locale = QLocale(u"en_US"_s),
        });
    }

    /// A good briefing with `events`, fetched four minutes ago.
    void load(std::vector<BriefEvent> events) {
        briefing.emplace();
        briefing->eventsToday = std::move(events);
        briefing->habits = {2, 5, {}};
        state = LoadState::loaded(*briefing);
        updated = statusNow - 4min;
    }

    static BriefEvent meeting(const QString& title, std::chrono::minutes in) {
        BriefEvent event;
        event.title = title;
        event.start = statusNow + in;
        event.end = statusNow + in + 45min;
        event.meetingUrl = u"https://meet.example/a"_s;
        return event;
    }

    QStringList labels() const {
        QStringList result;
        for (const auto& row : content().menu)
            result += row.kind == StatusMenuRow::Kind::Separator ? u"-"_s : row.label;
        return result;
    }

    std::optional<Briefing> briefing;
    LoadState state = LoadState::loading();
    std::optional<Instant> updated;
    QString ambient = u"habits"_s;
    QString linkSchemes;
};

} // namespace

TEST_F(StatusPresentationTest, BeforeAnythingLoaded) {
    EXPECT_EQ(content().symbol, u"calendar"_s);
    EXPECT_FALSE(content().text);
    EXPECT_EQ(content().title, u"Lumora"_s);
    EXPECT_EQ(content().toolTipTitle, u"Lumora"_s);
    EXPECT_EQ(content().toolTipBody, u"Loading…"_s);
}

TEST_F(StatusPresentationTest, AFailedFirstLoadSaysWhy) {
    state = LoadState::failed(u"Token rejected (401)"_s);
    EXPECT_EQ(content().symbol, u"calendar.badge.exclamationmark"_s);
    EXPECT_EQ(content().toolTipBody, u"Token rejected (401)"_s);
}

TEST_F(StatusPresentationTest, AFailureWithoutAReasonIsSaidAllTheSame) {
    for (const QString& message : {u""_s, u" \n"_s}) {
        state = LoadState::failed(message);
        EXPECT_EQ(content().toolTipBody, u"The refresh failed, and no reason was given"_s);
    }
}

TEST_F(StatusPresentationTest, TheTooltipHoldsTheFullTitleCountdownAndAge) {
    load({meeting(u"Quarterly planning review with everyone"_s, 12min)});
    briefing->eventsToday[0].location = u"Room 4"_s;
    EXPECT_EQ(content().text, u"Quarterly planni… · 12m"_s);
    EXPECT_EQ(content().title, u"Lumora: Quarterly planni… · 12m"_s);
    EXPECT_EQ(content().toolTipTitle, u"Quarterly planning review with everyone"_s);
    EXPECT_EQ(content().toolTipBody, u"In 12m, at 9:12 am · Room 4\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, AMeetingInProgressTellsWhenItEnds) {
    load({meeting(u"Standup"_s, -5min)});
    EXPECT_EQ(content().toolTipBody, u"Until 9:40 am\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, InTheInstantItStartsAMeetingIsInProgress) {
    load({meeting(u"Standup"_s, 0min)});
    EXPECT_EQ(content().toolTipBody, u"Until 9:45 am\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, BelowASecondAMeetingStartsNow) {
    load({meeting(u"Standup"_s, 0min)});
    briefing->eventsToday[0].start = statusNow + 500ms;
    EXPECT_EQ(content().toolTipBody, u"Now, at 9:00 am\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, BlanksAroundTitlesAndPlacesAreLeftOut) {
    load({meeting(u" Standup\t"_s, 5min)});
    briefing->eventsToday[0].location = u" \t "_s;
    EXPECT_EQ(content().toolTipTitle, u"Standup"_s);
    EXPECT_EQ(content().toolTipBody, u"In 5m, at 9:05 am\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, AMeetingWithoutATitleTakesNoPlaceForText) {
    load({meeting({}, -5min)});
    EXPECT_EQ(content().text, std::nullopt);
    EXPECT_EQ(content().title, u"Lumora"_s);
    EXPECT_EQ(content().symbol, u"record.circle"_s);
}

TEST_F(StatusPresentationTest, AnAmbientFigureIsSpelledOut) {
    load({});
    EXPECT_EQ(content().toolTipTitle, u"2 of 5 habits done"_s);
    ambient = u"chores"_s;
    briefing->chores.count = 1;
    EXPECT_EQ(content().toolTipTitle, u"1 chore due"_s);
    briefing->chores.count = 7;
    EXPECT_EQ(content().toolTipTitle, u"7 chores due"_s);
    ambient = u"focus"_s;
    briefing->focus.productiveShare = 0.42;
    EXPECT_EQ(content().toolTipTitle, u"42% focus"_s);
    ambient = u"none"_s;
    EXPECT_EQ(content().toolTipTitle, u"Lumora"_s);
}

TEST_F(StatusPresentationTest, ALaterMeetingIsAnnouncedBelowTheFigure) {
    load({meeting(u"Review"_s, 125min)});
    EXPECT_EQ(content().toolTipBody, u"Next: Review\nIn 2h5m, at 11:05 am\nUpdated 4m ago"_s);
}

TEST_F(StatusPresentationTest, AFailureAfterASuccessIsTold) {
    load({});
    state = LoadState::failed(u"Server error (503)"_s);
    EXPECT_EQ(content().toolTipBody, u"Updated 4m ago\nServer error (503)"_s);
    EXPECT_EQ(content().text, u"2/5"_s);
}

TEST_F(StatusPresentationTest, TheMenuOffersEverythingThatAClickWould) {
    load({});
    EXPECT_EQ(
        labels(),
        (QStringList{u"Open Lumora"_s, u"-"_s, u"Refresh"_s, u"Settings"_s, u"-"_s, u"Quit"_s}));
}

TEST_F(StatusPresentationTest, TheMenuOffersTheNextMeeting) {
    load({meeting(u"Review"_s, 125min)});
    EXPECT_EQ(
        labels(), (QStringList{
                      u"Open Lumora"_s, u"-"_s, u"11:05 am · Review"_s, u"Join Review"_s, u"-"_s,
                      u"Refresh"_s, u"Settings"_s, u"-"_s, u"Quit"_s}));
    EXPECT_EQ(content().menu[2].kind, StatusMenuRow::Kind::Text);
    EXPECT_EQ(content().menu[3].command, MenuCommand::Join);
}

TEST_F(StatusPresentationTest, WithoutALinkThereIsNothingToJoin) {
    load({meeting(u"Review"_s, 5min)});
    for (const auto& link :
         {std::optional<QString>(), std::optional(u""_s), std::optional(u"http://[nowhere"_s),
          std::optional(u"meet"_s), std::optional(u"file:///etc/passwd"_s)}) {
        briefing->eventsToday[0].meetingUrl = link;
        EXPECT_FALSE(labels().contains(u"Join Review"_s));
        EXPECT_TRUE(labels().contains(u"9:05 am · Review"_s));
    }
}

TEST_F(StatusPresentationTest, TheMenuJoinsByTheLinksThatTheUserAllows) {
    load({meeting(u"Review"_s, 5min)});
    briefing->eventsToday[0].meetingUrl = u"slack://open"_s;
    EXPECT_FALSE(labels().contains(u"Join Review"_s));
    linkSchemes = u"slack"_s;
    EXPECT_TRUE(labels().contains(u"Join Review"_s));
}

TEST_F(StatusPresentationTest, TheMeetingOfTheLabelIsTheOneOffered) {
    // One is in progress, the next is more than half an hour away: the label shows the first.
    load({meeting(u"Running"_s, -5min), meeting(u"Later"_s, 60min)});
    EXPECT_EQ(content().text, u"Running"_s);
    EXPECT_TRUE(labels().contains(u"Join Running"_s));
}

TEST_F(StatusPresentationTest, AHugeTitleDoesNotBlowUpTheMenu) {
    load({meeting(QString(10'000, u'x'), 5min)});
    for (const QString& label : labels())
        EXPECT_LT(label.size(), 100);
}

TEST_F(StatusPresentationTest, TheMenuShowsFortyEightCharactersOfATitle) {
    const QString fits(48, u'x');
    load({meeting(fits, 5min)});
    EXPECT_TRUE(labels().contains(u"Join "_s + fits));
    briefing->eventsToday[0].title += u'x';
    EXPECT_TRUE(labels().contains(u"Join "_s + fits + u'…'));
}

TEST_F(StatusPresentationTest, NoTextFromOutsideTurnsTheOthers) {
    load({meeting(u"Stand\u202eup\u001b"_s, 5min)});
    briefing->eventsToday[0].location = u"Room\u2067 4"_s;
    state = LoadState::failed(u"broken\u009b\n\u202eas ever"_s);
    EXPECT_EQ(content().text, u"Standup  · 5m"_s);
    EXPECT_EQ(content().toolTipTitle, u"Standup"_s);
    EXPECT_EQ(
        content().toolTipBody, u"In 5m, at 9:05 am · Room 4\nUpdated 4m ago\nbroken \nas ever"_s);
    EXPECT_TRUE(labels().contains(u"Join Standup"_s)) << labels().join(u'|').toStdString();
}

TEST(FailureText, IsNeverInvisible) {
    EXPECT_EQ(failureText(u"Server error (503)"_s), u"Server error (503)"_s);
    for (const QString& nothing : {u""_s, u" \n"_s, u"\u202e"_s, u"\u0007"_s})
        EXPECT_EQ(failureText(nothing), u"The refresh failed, and no reason was given"_s);
}

TEST_F(StatusPresentationTest, ATitleOfSeveralLinesIsOne) {
    load({meeting(u"Stand\nup\u2028now"_s, 5min)});
    briefing->eventsToday[0].location = u"Room\r\n4"_s;
    EXPECT_EQ(content().text, u"Stand up now · 5m"_s);
    EXPECT_EQ(content().toolTipTitle, u"Stand up now"_s);
    EXPECT_EQ(content().toolTipBody, u"In 5m, at 9:05 am · Room  4\nUpdated 4m ago"_s);
    EXPECT_TRUE(labels().contains(u"Join Stand up now"_s));
}

TEST_F(StatusPresentationTest, NoTextIsLongerThanIsRead) {
    const QString endless = u"ประชุม 👩‍👩‍👧 <&>\u202e"_s.repeated(50'000);
    BriefEvent near = meeting(endless, 10min);
    near.location = endless;
    BriefEvent far = near;
    *far.start += 5h;
    *far.end += 5h;
    for (const BriefEvent& event : {near, far}) {
        load({event});
        state = LoadState::failed(endless);
        const StatusItemContent shown = content();
        EXPECT_LE(shown.text.value_or(QString()).size(), 600);
        EXPECT_LE(shown.title.size(), 600);
        EXPECT_LE(shown.toolTipTitle.size(), longestLine);
        EXPECT_LE(shown.toolTipBody.size(), 2 * longestLine + longestPassage + 100);
        for (const StatusMenuRow& row : shown.menu)
            EXPECT_LE(row.label.size(), longestPassage);
    }
}

TEST(LinkToJoin, IsThatOfTheMeetingThatIsOnOrComesNext) {
    const auto link = [](const QString& url) { return std::optional(url); };
    const Briefing briefing = makeBriefing(
        {makeEvent(
             {.start = at("2025-03-04T09:00:00Z"),
              .end = at("2025-03-04T10:00:00Z"),
              .meetingUrl = link(u"https://a.example/on"_s)}),
         makeEvent(
             {.start = at("2025-03-04T10:30:00Z"),
              .end = at("2025-03-04T11:00:00Z"),
              .meetingUrl = link(u"file:///etc/passwd"_s)}),
         makeEvent(
             {.start = at("2025-03-04T11:00:00Z"),
              .end = at("2025-03-04T12:00:00Z"),
              .meetingUrl = link(u"https://a.example/next"_s)})});
    const auto joinedAt = [&](std::string_view now) {
        return linkToJoin(briefing, at(now), LinkPolicy()).value_or(QUrl()).toString();
    };
    EXPECT_EQ(joinedAt("2025-03-04T09:30:00Z"), u"https://a.example/on"_s);
    EXPECT_EQ(joinedAt("2025-03-04T10:15:00Z"), u"https://a.example/next"_s);
    EXPECT_EQ(joinedAt("2025-03-04T10:40:00Z"), u"https://a.example/next"_s);
    EXPECT_EQ(joinedAt("2025-03-04T12:30:00Z"), QString());
}
