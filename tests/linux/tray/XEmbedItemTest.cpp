#include "linux/tray/XEmbedItem.h"

#include "linux/tray/TrayWindow.h"
#include "support/Patience.h"

#include <QAction>
#include <QApplication>
#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora {

using tests::patience;
using tests::TrayWindow;

namespace {

class XEmbedItemTest : public testing::Test {
protected:
    bool m_trayExists = true;
    int m_looks = 0;
    TrayWindow m_window;
    std::function<void()> m_trayChanges; ///< to be called when the tray is another one
    QPointer<QObject> m_watch;
    XEmbedItem m_item{
        {.grace = 1ms,
         .pause = 1ms,
         .settling = 1ms,
         .trayExists =
             [this] {
                 ++m_looks;
                 return m_trayExists;
             },
         .windows = [this] { return m_window.windows(); },
         .watch =
             [this](std::function<void()> changed) {
                 m_trayChanges = std::move(changed);
                 auto watch = std::make_unique<QObject>();
                 m_watch = watch.get();
                 return watch;
             }}};

    void SetUp() override {
        QPixmap dot(16, 16);
        dot.fill(Qt::black);
        m_item.setIcon(dot, {22, 22});
    }

    QSignalSpy m_shown{&m_item, &XEmbedItem::shown};
};

TEST_F(XEmbedItemTest, LeavesTheTrayAloneUntilItIsWanted) {
    m_item.setContent(
        {.symbol = u"calendar"_s,
         .text = {},
         .title = u"Lumora"_s,
         .toolTipTitle = u"Lumora"_s,
         .toolTipBody = {},
         .menu = {}});
    QCoreApplication::processEvents();
    EXPECT_EQ(m_looks, 0);
    EXPECT_FALSE(m_item.isShown());

    m_item.setWanted(true);
    EXPECT_EQ(m_looks, 0); // not before the grace is over
    EXPECT_TRUE(m_shown.wait(patience));
    EXPECT_TRUE(m_item.isShown());
}

TEST_F(XEmbedItemTest, LeavesTheMenuAloneWhileItsRowsStay) {
    StatusItemContent content{
        .symbol = u"calendar"_s,
        .text = {},
        .title = u"Lumora"_s,
        .toolTipTitle = u"Lumora"_s,
        .toolTipBody = u"Updated 1m ago"_s,
        .menu = {{StatusMenuRow::Kind::Action, MenuCommand::Quit, u"Quit"_s}}};
    m_item.setContent(content);
    m_item.setWanted(true);
    ASSERT_TRUE(m_shown.wait(patience));
    const auto rows = [] {
        QList<QPointer<QAction>> actions;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            for (QAction* const action : widget->actions())
                actions += action;
        }
        return actions;
    };
    const auto before = rows();
    ASSERT_EQ(before.size(), 1);

    content.toolTipBody = u"Updated 2m ago"_s;
    m_item.setContent(content);
    EXPECT_EQ(rows(), before);

    content.menu[0].label = u"End"_s;
    m_item.setContent(content);
    ASSERT_EQ(rows().size(), 1);
    EXPECT_EQ(rows()[0]->text(), u"End"_s);
}

TEST_F(XEmbedItemTest, AsksForTheRoomThatThePictureTakes) {
    m_item.setIcon(QPixmap(90, 22), {90, 22});
    m_item.setWanted(true);
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(m_window.room(), QSize(90, 22));
    EXPECT_EQ(m_window.roomOfOther(), QSize(0, 0));
    m_item.setIcon(QPixmap(70, 22), {70, 22});
    EXPECT_EQ(m_window.room(), QSize(70, 22));
}

TEST_F(XEmbedItemTest, GoesIntoATrayThatComesBackAsIntoANewOne) {
    m_item.setIcon(QPixmap(90, 22), {90, 22});
    m_item.setWanted(true);
    ASSERT_TRUE(m_shown.wait(patience));
    ASSERT_TRUE(m_trayChanges);
    m_window.forgetRoom();
    m_trayChanges();
    EXPECT_FALSE(m_item.isShown());
    m_trayChanges(); // the old one's end and the new one's start
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(m_shown.size(), 2);
    EXPECT_TRUE(m_item.isShown());
    EXPECT_EQ(m_window.room(), QSize(90, 22));

    m_item.setWanted(false);
    EXPECT_TRUE(m_watch.isNull()); // nobody is asked any more
}

TEST_F(XEmbedItemTest, AppearsWhenATrayDoes) {
    m_trayExists = false;
    m_item.setWanted(true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_looks >= 2; }, patience));
    EXPECT_FALSE(m_item.isShown());

    m_trayExists = true;
    EXPECT_TRUE(m_shown.wait(patience));
    EXPECT_TRUE(m_item.isShown());
}

TEST_F(XEmbedItemTest, GoesAndComesBack) {
    m_item.setWanted(true);
    ASSERT_TRUE(m_shown.wait(patience));
    m_item.setWanted(true); // already there
    m_item.setWanted(false);
    EXPECT_FALSE(m_item.isShown());

    m_item.setWanted(true);
    EXPECT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(m_shown.size(), 2);
}

TEST_F(XEmbedItemTest, StaysAwayWhenTheRealItemCameInTime) {
    m_item.setWanted(true);
    m_item.setWanted(false);
    QTimer later; // due after the look that was called off
    later.setSingleShot(true);
    QSignalSpy due(&later, &QTimer::timeout);
    later.start(5);
    ASSERT_TRUE(due.wait(patience));
    EXPECT_EQ(m_looks, 0);
    EXPECT_EQ(m_shown.size(), 0);
}

} // namespace
} // namespace lumora
