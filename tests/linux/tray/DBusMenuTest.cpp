#include "linux/tray/DBusMenu.h"

#include "linux/tray/BusNames.h"
#include "support/BusProbe.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;

namespace lumora {
namespace {

using Kind = StatusMenuRow::Kind;

const StatusMenuRow openRow{Kind::Action, MenuCommand::Open, u"Open Lumora"_s};
const StatusMenuRow meetingRow{Kind::Text, {}, u"Standup in 12m"_s};
const StatusMenuRow joinRow{Kind::Action, MenuCommand::Join, u"Join my_standup"_s};
const StatusMenuRow separatorRow{Kind::Separator, {}, {}};
const StatusMenuRow quitRow{Kind::Action, MenuCommand::Quit, u"Quit"_s};

struct Layout {
    uint revision = 0;
    DBusMenuLayout root;

    QList<int> ids() const {
        QList<int> ids;
        for (const DBusMenuLayout& child : root.children)
            ids += child.id;
        return ids;
    }
};

class DBusMenuTest : public testing::Test {
protected:
    DBusMenuTest() {
        m_probe.listen(menuPath, menuInterface);
        m_menu.setRows({openRow, meetingRow, joinRow, separatorRow, quitRow});
        m_probe.forget();
    }

    QDBusMessage call(const QString& method, const QVariantList& arguments) {
        return m_probe.call(menuPath, menuInterface, method, arguments);
    }

    Layout layout(int parent = 0, int depth = -1, const QStringList& names = {}) {
        const QVariantList answer = call(u"GetLayout"_s, {parent, depth, names}).arguments();
        return {answer.value(0).toUInt(), qdbus_cast<DBusMenuLayout>(answer.value(1))};
    }

    QDBusMessage event(int id, const QString& name) {
        return call(u"Event"_s, {id, name, QVariant::fromValue(QDBusVariant(QString())), uint(1)});
    }

    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    DBusMenu m_menu{m_connection};
    BusProbe m_probe{m_bus.connect(), m_connection.baseService()};
};

TEST_F(DBusMenuTest, LaysOutItsRows) {
    const DBusMenuLayout root = layout().root;

    EXPECT_EQ(root.id, 0);
    EXPECT_EQ(root.properties.value(u"children-display"_s), u"submenu"_s);
    ASSERT_EQ(root.children.size(), 5);
    EXPECT_EQ(root.children.at(0).properties, (QVariantMap{{u"label"_s, u"Open Lumora"_s}}));
    EXPECT_EQ(
        root.children.at(1).properties,
        (QVariantMap{{u"label"_s, u"Standup in 12m"_s}, {u"enabled"_s, false}}));
    EXPECT_EQ(root.children.at(2).properties, (QVariantMap{{u"label"_s, u"Join my__standup"_s}}));
    EXPECT_EQ(root.children.at(3).properties, (QVariantMap{{u"type"_s, u"separator"_s}}));
}

TEST_F(DBusMenuTest, LaysOutOnlyWhatWasAskedFor) {
    EXPECT_TRUE(layout(0, 0).root.children.isEmpty());
    EXPECT_EQ(layout(0, 1).root.children.size(), 5);

    const DBusMenuLayout labels = layout(0, -1, {u"label"_s}).root;
    EXPECT_TRUE(labels.properties.isEmpty());
    EXPECT_EQ(labels.children.at(1).properties, (QVariantMap{{u"label"_s, u"Standup in 12m"_s}}));

    const int quit = layout().ids().last();
    const DBusMenuLayout leaf = layout(quit).root;
    EXPECT_EQ(leaf.id, quit);
    EXPECT_EQ(leaf.properties.value(u"label"_s), u"Quit"_s);
    EXPECT_TRUE(leaf.children.isEmpty());

    EXPECT_EQ(call(u"GetLayout"_s, {4711, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(DBusMenuTest, AnswersPropertiesOfRows) {
    const QList<int> ids = layout().ids();
    const auto group = [&](const QList<int>& wanted, const QStringList& names) {
        return qdbus_cast<QList<DBusMenuItemProperties>>(
            call(u"GetGroupProperties"_s, {QVariant::fromValue(wanted), names})
                .arguments()
                .value(0));
    };
    EXPECT_EQ(group({}, {}).size(), 6);
    const auto two = group({ids.at(1), 4711, ids.at(4)}, {u"label"_s});
    ASSERT_EQ(two.size(), 2);
    EXPECT_EQ(two.at(0).id, ids.at(1));
    EXPECT_EQ(two.at(0).properties, (QVariantMap{{u"label"_s, u"Standup in 12m"_s}}));

    const QDBusMessage enabled = call(u"GetProperty"_s, {ids.at(1), u"enabled"_s});
    EXPECT_EQ(enabled.arguments().value(0).value<QDBusVariant>().variant(), false);
    EXPECT_EQ(
        call(u"GetProperty"_s, {ids.at(0), u"icon-name"_s}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(u"GetProperty"_s, {4711, u"label"_s}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(DBusMenuTest, HasTheProtocolsProperties) {
    EXPECT_EQ(
        m_probe.allProperties(menuPath, menuInterface), (QVariantMap{
                                                            {u"Version"_s, 3U},
                                                            {u"TextDirection"_s, u"ltr"_s},
                                                            {u"Status"_s, u"normal"_s},
                                                            {u"IconThemePath"_s, QStringList()}}));
}

TEST_F(DBusMenuTest, ReportsTheCommandOfAClickedAction) {
    const QSignalSpy chosen(&m_menu, &DBusMenu::chosen);
    EXPECT_EQ(event(layout().ids().at(4), u"clicked"_s).type(), QDBusMessage::ReplyMessage);

    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen.at(0).at(0).value<MenuCommand>(), MenuCommand::Quit);
}

TEST_F(DBusMenuTest, TakesOtherEventsWithoutAnEffect) {
    const QSignalSpy chosen(&m_menu, &DBusMenu::chosen);
    const QList<int> ids = layout().ids();
    EXPECT_EQ(event(0, u"opened"_s).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(event(ids.at(0), u"hovered"_s).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(event(ids.at(1), u"clicked"_s).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(event(4711, u"clicked"_s).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(chosen.size(), 0);
}

TEST_F(DBusMenuTest, TakesEventsInGroups) {
    const QSignalSpy chosen(&m_menu, &DBusMenu::chosen);
    const QList<int> ids = layout().ids();
    const auto group = [&](const QList<DBusMenuEvent>& events) {
        return call(u"EventGroup"_s, {QVariant::fromValue(events)});
    };
    const QDBusVariant none{QString()};

    const QDBusMessage answer = group(
        {{0, u"closed"_s, none, 1},
         {ids.at(0), u"clicked"_s, none, 1},
         {4711, u"clicked"_s, none, 1}});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>{4711});
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen.at(0).at(0).value<MenuCommand>(), MenuCommand::Open);

    EXPECT_EQ(group({{4711, u"clicked"_s, none, 1}}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(DBusMenuTest, NeedsAnUpdateWhereTheNewestRowsWereNotRead) {
    const auto needsUpdate = [this] {
        const QVariantList group =
            call(u"AboutToShowGroup"_s, {QVariant::fromValue(QList<int>{0})}).arguments();
        const bool needs = call(u"AboutToShow"_s, {0}).arguments().value(0).toBool();
        EXPECT_EQ(qdbus_cast<QList<int>>(group.value(0)).contains(0), needs);
        return needs;
    };
    EXPECT_TRUE(needsUpdate());
    layout(0, 0); // without the rows
    EXPECT_TRUE(needsUpdate());
    const int row = layout().ids().first();
    EXPECT_FALSE(needsUpdate());
    m_menu.setRows({quitRow, openRow});
    EXPECT_TRUE(needsUpdate());
    layout(row); // of one row alone
    EXPECT_TRUE(needsUpdate());
    layout(0, 1);
    EXPECT_FALSE(needsUpdate());
}

TEST_F(DBusMenuTest, NeedsNoUpdateBeforeItShows) {
    call(u"GetLayout"_s, {0, -1, QStringList()});
    EXPECT_EQ(call(u"AboutToShow"_s, {0}).arguments().value(0), false);
    EXPECT_EQ(call(u"AboutToShow"_s, {4711}).type(), QDBusMessage::ErrorMessage);
    const QVariantList group =
        call(u"AboutToShowGroup"_s, {QVariant::fromValue(QList<int>{0, 4711})}).arguments();
    EXPECT_TRUE(qdbus_cast<QList<int>>(group.value(0)).isEmpty());
    EXPECT_EQ(qdbus_cast<QList<int>>(group.value(1)), QList<int>{4711});
}

TEST_F(DBusMenuTest, IsSilentWhenNothingChanged) {
    const uint revision = layout().revision;
    m_menu.setRows({openRow, meetingRow, joinRow, separatorRow, quitRow});

    EXPECT_THAT(m_probe.signalNames(), ElementsAre());
    EXPECT_EQ(layout().revision, revision);
}

TEST_F(DBusMenuTest, ARowThatIsCalledDifferentlyStaysTheRow) {
    const Layout before = layout();
    const StatusMenuRow sooner{Kind::Text, {}, u"Standup in 11m"_s};
    const StatusMenuRow join{Kind::Action, MenuCommand::Join, u"Join now"_s};
    m_menu.setRows({openRow, sooner, join, separatorRow, quitRow});

    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"ItemsPropertiesUpdated"_s));
    const QVariantList change = m_probe.signalsNamed(u"ItemsPropertiesUpdated"_s).value(0);
    const auto updated = qdbus_cast<QList<DBusMenuItemProperties>>(change.at(0));
    ASSERT_EQ(updated.size(), 2);
    EXPECT_EQ(updated.at(0).id, before.ids().at(1));
    EXPECT_EQ(updated.at(0).properties.value(u"label"_s), u"Standup in 11m"_s);
    EXPECT_EQ(updated.at(1).id, before.ids().at(2));
    EXPECT_TRUE(qdbus_cast<QList<DBusMenuItemKeys>>(change.at(1)).isEmpty());

    const Layout after = layout();
    EXPECT_EQ(after.ids(), before.ids());
    EXPECT_EQ(after.revision, before.revision);
}

TEST_F(DBusMenuTest, RowsKeepTheirIdsWhenOthersComeAndGo) {
    const Layout before = layout();
    m_menu.setRows({openRow, separatorRow, quitRow});
    const Layout fewer = layout();
    m_menu.setRows({openRow, meetingRow, joinRow, separatorRow, quitRow});
    const Layout again = layout();

    EXPECT_EQ(
        m_probe.signalsNamed(u"LayoutUpdated"_s),
        (QList<QVariantList>{{before.revision + 1, 0}, {before.revision + 2, 0}}));
    EXPECT_EQ(fewer.revision, before.revision + 1);
    EXPECT_EQ(
        fewer.ids(), (QList<int>{before.ids().at(0), before.ids().at(3), before.ids().at(4)}));
    EXPECT_EQ(again.ids().at(4), before.ids().at(4));
    // An id is never given to another row: a late click must not hit the wrong one.
    EXPECT_FALSE(before.ids().contains(again.ids().at(1)));
}

// GNOME's extension adds and removes rows, and leaves those that moved where they were.
TEST_F(DBusMenuTest, NothingMovesWhenAMeetingComesOrGoes) {
    const StatusMenuRow refreshRow{Kind::Action, MenuCommand::Refresh, u"Refresh"_s};
    const auto menuWith = [&](const QList<StatusMenuRow>& meeting) {
        QList<StatusMenuRow> rows{openRow, separatorRow};
        rows += meeting;
        rows += {refreshRow, separatorRow, quitRow};
        return rows;
    };
    const QList<QList<StatusMenuRow>> menus{
        menuWith({}),
        menuWith({meetingRow, separatorRow}),
        menuWith({meetingRow, joinRow, separatorRow}),
    };
    const auto only = [](QList<int> ids, const QList<int>& others) {
        ids.removeIf([&others](int id) { return !others.contains(id); });
        return ids;
    };
    for (const auto& from : menus) {
        for (const auto& to : menus) {
            m_menu.setRows(from);
            const QList<int> before = layout().ids();
            m_menu.setRows(to);
            const QList<int> after = layout().ids();
            EXPECT_EQ(only(before, after), only(after, before))
                << from.size() << " rows, then " << to.size();
            EXPECT_GE(only(before, after).size(), menus.front().size());
        }
    }
}

TEST_F(DBusMenuTest, AnotherOrderIsAnotherLayout) {
    const Layout before = layout();
    m_menu.setRows({quitRow, meetingRow, joinRow, separatorRow, openRow});

    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"LayoutUpdated"_s));
    EXPECT_EQ(layout().ids().first(), before.ids().last());
}

TEST_F(DBusMenuTest, RowsWithTheSameCommandAreStillTwoRows) {
    m_menu.setRows({joinRow, joinRow, separatorRow, separatorRow});
    const QList<int> ids = layout().ids();
    ASSERT_EQ(ids.size(), 4);
    EXPECT_EQ(QSet<int>(ids.begin(), ids.end()).size(), 4);
}

TEST_F(DBusMenuTest, ShowsLabelsLiterally) {
    m_menu.setRows({{Kind::Action, MenuCommand::Open, u"a_b__c\n<i>&"_s}});
    EXPECT_EQ(layout().root.children.at(0).properties.value(u"label"_s), u"a__b____c <i>&"_s);
}

TEST_F(DBusMenuTest, DescribesItselfCompletely) {
    const QStringList described = m_probe.introspect(menuPath, menuInterface);
    EXPECT_THAT(
        described, testing::UnorderedElementsAre(
                       u"Version"_s, u"TextDirection"_s, u"Status"_s, u"IconThemePath"_s,
                       u"GetLayout"_s, u"GetGroupProperties"_s, u"GetProperty"_s, u"Event"_s,
                       u"EventGroup"_s, u"AboutToShow"_s, u"AboutToShowGroup"_s,
                       u"ItemsPropertiesUpdated"_s, u"LayoutUpdated"_s));
}

} // namespace
} // namespace lumora
