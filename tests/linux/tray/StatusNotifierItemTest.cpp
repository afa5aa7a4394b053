#include "linux/tray/StatusNotifierItem.h"

#include "linux/tray/BusNames.h"
#include "support/BusProbe.h"
#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace lumora {
namespace {

class StatusNotifierItemTest : public testing::Test {
protected:
    StatusNotifierItemTest() {
        m_probe.listen(itemPath, itemInterface);
        m_probe.listen(itemPath, u"org.freedesktop.DBus.Properties"_s);
        m_item.setContent(m_content);
        m_probe.forget();
    }

    QVariant property(const char* name) {
        return m_probe.property(itemPath, itemInterface, QString::fromLatin1(name));
    }

    StatusToolTip toolTip() { return qdbus_cast<StatusToolTip>(property("ToolTip")); }

    QDBusMessage call(const QString& method, const QVariantList& arguments) {
        return m_probe.call(itemPath, itemInterface, method, arguments);
    }

    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    StatusNotifierItem m_item{m_connection};
    BusProbe m_probe{m_bus.connect(), m_connection.baseService()};
    StatusItemContent m_content{
        .symbol = u"calendar"_s,
        .text = u"Standup · 12m"_s,
        .title = u"Lumora: Standup"_s,
        .toolTipTitle = u"Lumora"_s,
        .toolTipBody = u"Standup in 12 minutes"_s,
        .menu = {}};
};

TEST_F(StatusNotifierItemTest, SaysWhatItIs) {
    EXPECT_EQ(property("Category"), u"ApplicationStatus"_s);
    EXPECT_EQ(property("Id"), u"lumora"_s);
    EXPECT_EQ(property("Title"), u"Lumora: Standup"_s);
    EXPECT_EQ(property("Status"), u"Active"_s);
    EXPECT_EQ(property("WindowId"), 0);
    EXPECT_EQ(property("IconName"), QString());
    EXPECT_EQ(property("ItemIsMenu"), false);
    EXPECT_EQ(property("Menu").value<QDBusObjectPath>().path(), u"/MenuBar"_s);
    EXPECT_EQ(property("XAyatanaLabel"), u"Standup · 12m"_s);
    EXPECT_EQ(property("XAyatanaLabelGuide"), u"Standup · 88m"_s);
    EXPECT_EQ(toolTip(), (StatusToolTip{u"Lumora"_s, u"Standup in 12 minutes"_s}));
}

TEST_F(StatusNotifierItemTest, AnswersAllPropertiesAtOnce) {
    const QVariantMap all = m_probe.allProperties(itemPath, itemInterface);
    for (auto [name, value] : all.asKeyValueRange())
        EXPECT_TRUE(property(name.toLatin1().constData()).isValid()) << name.toStdString();
    EXPECT_EQ(all.value(u"Id"_s), u"lumora"_s);
    EXPECT_EQ(all.value(u"XAyatanaLabel"_s), u"Standup · 12m"_s);
}

TEST_F(StatusNotifierItemTest, HasNoLabelPropertyWithoutText) {
    for (const std::optional<QString>& none :
         {std::optional<QString>(), std::optional(QString())}) {
        m_content.text = u"something"_s;
        m_item.setContent(m_content);
        m_content.text = none;
        m_item.setContent(m_content);

        EXPECT_FALSE(property("XAyatanaLabel").isValid());
        EXPECT_FALSE(property("XAyatanaLabelGuide").isValid());
        const QVariantMap all = m_probe.allProperties(itemPath, itemInterface);
        EXPECT_FALSE(all.contains(u"XAyatanaLabel"_s));
        EXPECT_FALSE(all.contains(u"XAyatanaLabelGuide"_s));
        EXPECT_TRUE(all.contains(u"Title"_s));
    }
}

TEST_F(StatusNotifierItemTest, TellsThatTheLabelChanged) {
    m_content.text = u"Standup · 11m"_s;
    m_item.setContent(m_content);

    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"XAyatanaNewLabel"_s, u"PropertiesChanged"_s));
    EXPECT_THAT(
        m_probe.signalsNamed(u"XAyatanaNewLabel"_s),
        ElementsAre(QVariantList{u"Standup · 11m"_s, u"Standup · 88m"_s}));
    const QVariantList change = m_probe.signalsNamed(u"PropertiesChanged"_s).value(0);
    EXPECT_EQ(change.at(0), itemInterface);
    EXPECT_EQ(
        qdbus_cast<QVariantMap>(change.at(1)), (QVariantMap{
                                                   {u"XAyatanaLabel"_s, u"Standup · 11m"_s},
                                                   {u"XAyatanaLabelGuide"_s, u"Standup · 88m"_s}}));
    EXPECT_TRUE(change.at(2).toStringList().isEmpty());
}

TEST_F(StatusNotifierItemTest, TellsThatTheLabelIsGone) {
    m_content.text.reset();
    m_item.setContent(m_content);

    EXPECT_THAT(
        m_probe.signalsNamed(u"XAyatanaNewLabel"_s),
        ElementsAre(QVariantList{QString(), QString()}));
    const QVariantList change = m_probe.signalsNamed(u"PropertiesChanged"_s).value(0);
    EXPECT_TRUE(qdbus_cast<QVariantMap>(change.at(1)).isEmpty());
    EXPECT_THAT(
        change.at(2).toStringList(),
        UnorderedElementsAre(u"XAyatanaLabel"_s, u"XAyatanaLabelGuide"_s));
}

TEST_F(StatusNotifierItemTest, IsSilentWhenNothingChanged) {
    m_item.setPixmaps({{1, 1, QByteArray(4, 'x')}});
    m_probe.forget();

    m_item.setContent(m_content);
    m_item.setPixmaps({{1, 1, QByteArray(4, 'x')}});

    EXPECT_THAT(m_probe.signalNames(), ElementsAre());
}

TEST_F(StatusNotifierItemTest, TellsOfNothingThatItDoesNotShow) {
    m_content.symbol = u"checklist"_s;
    m_content.menu = {{StatusMenuRow::Kind::Action, MenuCommand::Quit, u"Quit"_s}};
    m_item.setContent(m_content);

    EXPECT_THAT(m_probe.signalNames(), ElementsAre());
}

TEST_F(StatusNotifierItemTest, TellsOfEachPartByItsOwnSignal) {
    m_content.title = u"Lumora"_s;
    m_item.setContent(m_content);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"NewTitle"_s, u"PropertiesChanged"_s));

    EXPECT_EQ(toolTip().body, u"Standup in 12 minutes"_s);
    m_probe.forget();
    m_content.toolTipBody = u"Standup in 11 minutes"_s;
    m_item.setContent(m_content);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"NewToolTip"_s));
    EXPECT_EQ(toolTip().body, u"Standup in 11 minutes"_s);

    m_probe.forget();
    m_item.setPixmaps({{1, 1, QByteArray(4, 'x')}});
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"NewIcon"_s, u"PropertiesChanged"_s));
    EXPECT_EQ(
        m_probe.signalsNamed(u"PropertiesChanged"_s).value(0).at(2).toStringList(),
        QStringList{u"IconPixmap"_s});
}

TEST_F(StatusNotifierItemTest, SendsPixmapsAsGiven) {
    const QList<IconPixmap> pixmaps{
        {1, 1, QByteArray::fromHex("ff112233")}, {2, 1, QByteArray::fromHex("0011223344556677")}};
    m_item.setPixmaps(pixmaps);

    EXPECT_EQ(qdbus_cast<QList<IconPixmap>>(property("IconPixmap")), pixmaps);
}

TEST_F(StatusNotifierItemTest, EscapesTheBodyOfTheToolTip) {
    m_content.toolTipBody = u"Q&A <b>bold</b>\nsecond line"_s;
    m_item.setContent(m_content);

    EXPECT_EQ(
        toolTip(), (StatusToolTip{u"Lumora"_s, u"Q&amp;A &lt;b&gt;bold&lt;/b&gt;\nsecond line"_s}));
}

TEST_F(StatusNotifierItemTest, MovesATitleThatSomeHostsWouldParse) {
    m_content.toolTipTitle = u"Q&A"_s;
    m_item.setContent(m_content);
    EXPECT_EQ(toolTip(), (StatusToolTip{u"Lumora"_s, u"Q&amp;A\nStandup in 12 minutes"_s}));

    m_content.toolTipBody.clear();
    m_item.setContent(m_content);
    EXPECT_EQ(toolTip(), (StatusToolTip{u"Lumora"_s, u"Q&amp;A"_s}));
}

TEST_F(StatusNotifierItemTest, LabelAndTitleArePlainLines) {
    m_content.text = u"Q&A\n<b>"_s;
    m_content.title = u"a\tb & c"_s;
    m_item.setContent(m_content);

    EXPECT_EQ(property("XAyatanaLabel"), u"Q&A <b>"_s);
    EXPECT_EQ(property("Title"), u"a b & c"_s);
}

TEST_F(StatusNotifierItemTest, ReportsEveryKindOfPress) {
    const QSignalSpy activated(&m_item, &StatusNotifierItem::activated);
    for (const char* method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        EXPECT_EQ(call(QString::fromLatin1(method), {10, 14}).type(), QDBusMessage::ReplyMessage);
    }

    ASSERT_EQ(activated.size(), 3);
    EXPECT_EQ(activated.at(0).at(0).toPoint(), QPoint(10, 14));
    EXPECT_EQ(activated.at(0).at(1).toByteArray(), QByteArray());
}

TEST_F(StatusNotifierItemTest, HandsATokenToOnePress) {
    const QSignalSpy activated(&m_item, &StatusNotifierItem::activated);
    call(u"ProvideXdgActivationToken"_s, {u"token-1"_s});
    call(u"Activate"_s, {0, 0});
    call(u"Activate"_s, {0, 0});

    ASSERT_EQ(activated.size(), 2);
    EXPECT_EQ(activated.at(0).at(1).toByteArray(), "token-1");
    EXPECT_EQ(activated.at(1).at(1).toByteArray(), "");
}

TEST_F(StatusNotifierItemTest, HandsATokenOutOnRequest) {
    call(u"ProvideXdgActivationToken"_s, {u"token-1"_s});
    EXPECT_EQ(m_item.takeActivationToken(), "token-1");
    EXPECT_EQ(m_item.takeActivationToken(), "");
}

TEST_F(StatusNotifierItemTest, TakesScrollingWithoutAnEffect) {
    const QSignalSpy activated(&m_item, &StatusNotifierItem::activated);
    EXPECT_EQ(call(u"Scroll"_s, {120, u"vertical"_s}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(activated.size(), 0);
}

TEST_F(StatusNotifierItemTest, RefusesWhatItDoesNotKnow) {
    const QSignalSpy activated(&m_item, &StatusNotifierItem::activated);
    EXPECT_EQ(call(u"Explode"_s, {}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(u"Activate"_s, {u"left"_s}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(
        m_probe.call(itemPath, u"org.example.Other"_s, u"Activate"_s, {1, 2}).type(),
        QDBusMessage::ErrorMessage);
    EXPECT_FALSE(property("Colour").isValid());
    const QString properties = u"org.freedesktop.DBus.Properties"_s;
    EXPECT_EQ(
        m_probe.call(itemPath, properties, u"GetAll"_s, {u"org.example.Other"_s}).type(),
        QDBusMessage::ErrorMessage);
    EXPECT_EQ(
        m_probe
            .call(
                itemPath, properties, u"Set"_s,
                {itemInterface, u"Title"_s, QVariant::fromValue(QDBusVariant(u"mine"_s))})
            .errorName(),
        u"org.freedesktop.DBus.Error.PropertyReadOnly"_s);
    EXPECT_EQ(property("Title"), u"Lumora: Standup"_s);
    EXPECT_EQ(activated.size(), 0);
}

TEST_F(StatusNotifierItemTest, TellsOfAnotherToolTipOnlyWhoeverReadTheLast) {
    const auto signalsAfter = [&](const QString& body) {
        m_probe.forget();
        m_content.toolTipBody = body;
        m_item.setContent(m_content);
        return m_probe.signalNames();
    };
    EXPECT_EQ(toolTip().body, u"Standup in 12 minutes"_s);
    EXPECT_THAT(signalsAfter(u"11"_s), ElementsAre(u"NewToolTip"_s));
    EXPECT_THAT(signalsAfter(u"10"_s), ElementsAre());
    EXPECT_EQ(property("Title"), u"Lumora: Standup"_s);
    EXPECT_THAT(signalsAfter(u"9"_s), ElementsAre()) << "the title alone was read";
    EXPECT_EQ(toolTip().body, u"9"_s) << "whenever it is read, it is of now";
    EXPECT_THAT(signalsAfter(u"8"_s), ElementsAre(u"NewToolTip"_s));
    EXPECT_THAT(signalsAfter(u"7"_s), ElementsAre());
    EXPECT_TRUE(m_probe.allProperties(itemPath, itemInterface).contains(u"ToolTip"_s));
    EXPECT_THAT(signalsAfter(u"6"_s), ElementsAre(u"NewToolTip"_s));
}

TEST_F(StatusNotifierItemTest, DescribesItselfCompletely) {
    QStringList described = m_probe.introspect(itemPath, itemInterface);

    QStringList expected = m_probe.allProperties(itemPath, itemInterface).keys();
    expected +=
        {u"Activate"_s,
         u"SecondaryActivate"_s,
         u"ContextMenu"_s,
         u"Scroll"_s,
         u"ProvideXdgActivationToken"_s,
         u"NewTitle"_s,
         u"NewIcon"_s,
         u"NewToolTip"_s,
         u"NewStatus"_s,
         u"XAyatanaNewLabel"_s};
    described.sort();
    expected.sort();
    EXPECT_EQ(described, expected);
}

TEST_F(StatusNotifierItemTest, LeavesTheBusWhenItEnds) {
    const QString other = u"/StatusNotifierItem"_s;
    QDBusConnection second = m_bus.connect();
    BusProbe probe(m_bus.connect(), second.baseService());
    {
        const StatusNotifierItem item(second);
        EXPECT_TRUE(probe.property(other, itemInterface, u"Id"_s).isValid());
    }
    EXPECT_FALSE(probe.property(other, itemInterface, u"Id"_s).isValid());
}

// GNOME's extension asks for a method of its own first and takes only this error for a no.
TEST_F(StatusNotifierItemTest, SaysWhichMethodsThereAreNot) {
    const QDBusMessage answer =
        m_probe.call(itemPath, itemInterface, u"XAyatanaSecondaryActivate"_s, {uint(4711)});
    EXPECT_EQ(answer.type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(answer.errorName(), u"org.freedesktop.DBus.Error.UnknownMethod"_s);
}

} // namespace
} // namespace lumora
