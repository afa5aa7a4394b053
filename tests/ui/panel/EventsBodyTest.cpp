#include "ui/panel/EventsBody.h"

#include "support/Builders.h"
#include "support/ViewHarness.h"
#include "texts/PanelTexts.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Instant morning = at("2025-03-04T09:00:00Z");

BriefEvent meeting(const QString& title, std::chrono::minutes in) {
    return makeEvent({.title = title, .start = morning + in, .end = morning + in + 30min});
}

BriefEvent linked(const QString& url) {
    return makeEvent({.start = morning + 10min, .end = morning + 40min, .meetingUrl = url});
}

class EventsBodyTest : public testing::Test {
protected:
    EventsBodyTest() { m_body.show(); }

    void render(const std::vector<BriefEvent>& events, Instant when = morning) {
        const Briefing briefing = makeBriefing(events);
        m_body.render(briefing, PanelTexts::upcomingEvents(briefing, when), when, m_links);
        settle();
        m_body.resize(304, m_body.sizeHint().height());
        settle();
    }

    QList<EventRow*> rows() const { return shown<EventRow>(m_body); }

    QString titleOf(const EventRow* row) const { return textsOf(row->texts()->content()).at(1); }

    QFont::Weight weightOf(int row) const {
        return styleOf(rows().at(row)->texts()->content(), titleOf(rows().at(row))).weight;
    }

    ThemeSource m_themes{plainTheme()};
    LinkPolicy m_links;
    EventsBody m_body{m_themes};
    QSignalSpy m_joins{&m_body, &EventsBody::joinRequested};
};

} // namespace

TEST_F(EventsBodyTest, SaysThatNothingIsScheduled) {
    render({});
    EXPECT_EQ(shownTexts(m_body), QStringList{u"Nothing scheduled"_s});
    const auto* text = shown<PaintedRow>(m_body).front();
    EXPECT_EQ(
        styleOf(text->content(), u"Nothing scheduled"_s),
        (TextStyle{.color = ColorRole::Secondary}));
}

TEST_F(EventsBodyTest, SaysThatNothingIsLeft) {
    render({meeting(u"Past"_s, -60min)});
    EXPECT_EQ(shownTexts(m_body), QStringList{u"Nothing left today"_s});
}

TEST_F(EventsBodyTest, ShowsTenRowsAndHowManyMore) {
    std::vector<BriefEvent> events;
    for (int i = 0; i < 10; ++i)
        events.push_back(meeting(QString::number(i), std::chrono::minutes(i)));
    render(events);
    EXPECT_EQ(rows().size(), 10);
    EXPECT_EQ(shown<PaintedRow>(m_body).size(), 10);

    for (int i = 10; i < 13; ++i)
        events.push_back(meeting(QString::number(i), std::chrono::minutes(i)));
    render(events);
    EXPECT_EQ(rows().size(), 10);
    EXPECT_EQ(titleOf(rows().back()), u"9"_s);
    const auto* more = shown<PaintedRow>(m_body).back();
    EXPECT_EQ(textsOf(more->content()), QStringList{u"+3 more today"_s});
    EXPECT_EQ(
        styleOf(more->content(), u"+3 more today"_s),
        (TextStyle{.role = TextRole::Caption, .color = ColorRole::Secondary}));
}

TEST_F(EventsBodyTest, MarksTheNextMeetingAndItsDoubles) {
    const BriefEvent next = meeting(u"Standup"_s, 10min);
    render({meeting(u"Later"_s, 2h), next, next});
    EXPECT_EQ(weightOf(0), QFont::Normal);
    EXPECT_EQ(weightOf(1), QFont::DemiBold);
    EXPECT_EQ(weightOf(2), QFont::DemiBold);
}

TEST_F(EventsBodyTest, MarksNothingWithoutANextMeeting) {
    render({makeEvent({.title = u"Fair"_s, .allDay = true})});
    EXPECT_EQ(weightOf(0), QFont::Normal);
}

TEST_F(EventsBodyTest, TitlesLineUpAndButtonsStandAtTheEdge) {
    render({linked(u"https://meet.example/a"_s), makeEvent({.title = u"Any time"_s})});
    ASSERT_EQ(rows().size(), 2);
    for (const EventRow* row : rows()) {
        const RowGeometry geometry = row->texts()->itemGeometry();
        EXPECT_EQ(row->texts()->mapTo(&m_body, QPoint()).x(), 4);
        EXPECT_DOUBLE_EQ(geometry.items.at(0).width(), 58);
        EXPECT_DOUBLE_EQ(geometry.items.at(1).left(), 66);
    }
    const EventRow* row = rows().front();
    const RowButton* join = row->joinButton();
    const QRect face = join->contentsRect().translated(join->mapTo(&m_body, QPoint()));
    EXPECT_EQ(face.right() + 1, m_body.width() - 4);
    const QRect texts = row->texts()->contentsRect();
    EXPECT_EQ(face.left() - row->texts()->mapTo(&m_body, texts.topRight()).x() - 1, 8);
}

TEST_F(EventsBodyTest, ALongTitleLeavesTheButtonInItsPlace) {
    BriefEvent event = linked(u"https://meet.example/a"_s);
    event.title = QString(10'240, u'W');
    event.location = u"Room\n4\n"_s + event.title;
    render({event, linked(u"https://meet.example/b"_s)});
    EXPECT_EQ(rows().at(0)->joinButton()->geometry().right(), rows().at(0)->rect().right());
    const auto lineCount = [this](int row) {
        return textsOf(rows().at(row)->texts()->content()).size() - 1;
    };
    EXPECT_EQ(lineCount(0), 2);
    EXPECT_LT(rows().at(0)->height(), 2 * rows().at(1)->height() + 1);
    EXPECT_LE(rows().at(0)->joinButton()->toolTip().size(), 1000);
}

TEST_F(EventsBodyTest, ALineBreakInATitleMakesNoRowTaller) {
    render({meeting(u"a b"_s, 10min), meeting(u"a\nb"_s, 20min)});
    EXPECT_EQ(rows().at(0)->height(), rows().at(1)->height());
}

TEST_F(EventsBodyTest, TheJoinButtonOpensTheMeeting) {
    render({linked(u"https://meet.example/a"_s)});
    RowButton* join = rows().front()->joinButton();
    EXPECT_EQ(symbolsOf(join->content()), QStringList{u"video.fill"_s});
    EXPECT_EQ(join->content().items.front().style.color, ColorRole::Accent);
    EXPECT_EQ(join->toolTip(), u"Join Standup"_s);
    EXPECT_EQ(join->accessibleName(), u"Join Standup"_s);
    QTest::mouseClick(join, Qt::LeftButton);
    ASSERT_EQ(m_joins.size(), 1);
    EXPECT_EQ(m_joins.front().front().toUrl(), QUrl(u"https://meet.example/a"_s));
}

TEST_F(EventsBodyTest, OnlyTheButtonOfAnEventReacts) {
    render({linked(u"https://meet.example/a"_s)});
    QTest::mouseClick(rows().front()->texts(), Qt::LeftButton);
    QTest::mouseClick(rows().front(), Qt::LeftButton);
    EXPECT_TRUE(m_joins.isEmpty());
    EXPECT_EQ(rows().front()->texts()->focusPolicy(), Qt::NoFocus);
}

TEST_F(EventsBodyTest, TheButtonOfALaterMeetingIsSecondary) {
    BriefEvent later = linked(u"https://meet.example/b"_s);
    later.title = u"Later"_s;
    later.start = morning + 3h;
    later.end = morning + 4h;
    render({linked(u"https://meet.example/a"_s), later});
    EXPECT_EQ(
        rows().at(1)->joinButton()->content().items.front().style.color, ColorRole::Secondary);
}

TEST_F(EventsBodyTest, WithoutAUsableLinkThereIsNoButton) {
    std::vector<BriefEvent> events{makeEvent({.title = u"None"_s, .start = morning + 1h})};
    for (const QString& url :
         {u""_s, u"http://["_s, u"https://exa mple.org/%zz:::"_s, u"https:///a"_s, u"slack://a"_s})
        events.push_back(linked(url));
    render(events);
    ASSERT_EQ(rows().size(), 6);
    for (const EventRow* row : rows())
        EXPECT_FALSE(row->joinButton()->isVisibleTo(row)) << titleOf(row).toStdString();
}

TEST_F(EventsBodyTest, TheButtonComesAndGoesWithTheLinksThatTheUserAllows) {
    const std::vector events{linked(u"slack://a"_s)};
    const auto isThere = [&] {
        render(events);
        return rows().front()->joinButton()->isVisibleTo(rows().front());
    };
    EXPECT_FALSE(isThere());
    m_links = LinkPolicy(u"slack"_s);
    EXPECT_TRUE(isThere());
    m_links = LinkPolicy();
    EXPECT_FALSE(isThere());
}

TEST_F(EventsBodyTest, ACarelessLinkOpensAllTheSame) {
    render({linked(u" https://meet.example/a|b c"_s)});
    QTest::mouseClick(rows().front()->joinButton(), Qt::LeftButton);
    EXPECT_EQ(m_joins.value(0).value(0).toUrl().toEncoded(), "https://meet.example/a%7Cb%20c");
}

TEST_F(EventsBodyTest, AnEventIsAnnouncedWithTimeTitleAndPlace) {
    BriefEvent event = meeting(u"Standup"_s, 30min);
    event.location = u"Room 4"_s;
    render({event});
    EXPECT_EQ(rows().front()->texts()->accessibleName(), u"9:30 am, Standup, Room 4"_s);
}

TEST_F(EventsBodyTest, RowsKeepTheirWidgetsByTitleAndStart) {
    const BriefEvent standup = meeting(u"Standup"_s, 10min);
    const BriefEvent review = meeting(u"Review"_s, 60min);
    render({standup, review});
    const QList before = rows();
    render({meeting(u"Early"_s, 5min), review, standup});
    EXPECT_EQ(rows().mid(1), (QList{before.at(1), before.at(0)}));
    render({review});
    EXPECT_EQ(rows(), QList{before.at(1)});
}
