#include "linux/tray/LinuxStatusItemFixture.h"

#include <gmock/gmock.h>

using namespace lumora;
using namespace lumora::tests;
using testing::ElementsAre;

TEST_F(LinuxStatusItemTest, DrawsTheSymbolInTheSizesOfPanels) {
    m_item.show(content());
    QList<int> sizes;
    for (const IconPixmap& pixmap : pixmaps()) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.bytes.size(), 4 * pixmap.width * pixmap.height);
        sizes += pixmap.width;
    }
    EXPECT_THAT(sizes, ElementsAre(16, 22, 24, 32, 44, 48));
}

TEST_F(LinuxStatusItemTest, DrawsTheSymbolAnewForAnotherBar) {
    m_item.show(content());
    const QVariant onDark = m_probe.property(itemPath, itemInterface, u"IconPixmap"_s);
    m_probe.listen(itemPath, itemInterface);
    m_bar->setTone(SymbolTone::Dark);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre(u"NewIcon"_s));
    const QVariant onLight = m_probe.property(itemPath, itemInterface, u"IconPixmap"_s);
    EXPECT_NE(
        qdbus_cast<QList<IconPixmap>>(onDark).last(),
        qdbus_cast<QList<IconPixmap>>(onLight).last());
}

TEST_F(LinuxStatusItemTest, DrawsSymbolAndTextWhereThereIsRoomForThem) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    const QList<IconPixmap> drawn = pixmaps();
    ASSERT_EQ(drawn.size(), 1);
    EXPECT_GT(drawn.first().width, 3 * drawn.first().height);
    EXPECT_FALSE(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s).isValid());

    StatusItemContent textless = content();
    textless.text.reset();
    m_item.show(textless);
    EXPECT_EQ(pixmaps().size(), 6);
}

TEST_F(LinuxStatusItemTest, DrawsSymbolAndTextSharplyOnSharpScreens) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    ASSERT_EQ(pixmaps().size(), 1);
    EXPECT_EQ(pixmaps().first().height, 22);
    m_scale = 2;
    m_item.show(content()); // within a minute
    ASSERT_EQ(pixmaps().size(), 1);
    EXPECT_EQ(pixmaps().first().height, 44);
}

TEST_F(LinuxStatusItemTest, NamesItsIconWhereNothingDrawnIsShown) {
    m_host = u"ayatana-indicat"_s;
    const auto name = [this] { return m_probe.property(itemPath, itemInterface, u"IconName"_s); };
    auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_TRUE(QTest::qWaitFor([&] { return name() == u"com.lumora.app-symbolic"_s; }, patience));
    EXPECT_EQ(pixmaps().size(), 6);
    m_host = u"waybar"_s;
    panel.reset();
    panel = watcher();
    EXPECT_TRUE(QTest::qWaitFor([&] { return name() == QString(); }, patience));
}

TEST_F(LinuxStatusItemTest, DrawsTheShortTextInsteadOfTheSymbolInSquares) {
    m_host = u"kded6"_s;
    const auto panel = watcher();
    m_item.show(content()); // which has no short text
    ASSERT_TRUE(m_shown.wait(patience));
    const QList<IconPixmap> symbol = pixmaps();
    StatusItemContent shortened = content();
    shortened.shortText = u"12m"_s;
    m_item.show(shortened);
    const QList<IconPixmap> text = pixmaps();
    ASSERT_EQ(text.size(), 6);
    EXPECT_EQ(text.last().width, text.last().height);
    EXPECT_NE(text.last(), symbol.last());
    EXPECT_FALSE(m_probe.property(itemPath, itemInterface, u"XAyatanaLabel"_s).isValid());

    // Another symbol behind it makes no difference.
    shortened.symbol = u"calendar"_s;
    m_probe.listen(itemPath, itemInterface);
    m_item.show(shortened);
    EXPECT_THAT(m_probe.signalNames(), ElementsAre());
}

TEST_F(LinuxStatusItemTest, TakesTheUsersWordForIt) {
    m_host = u"waybar"_s;
    const auto panel = watcher();
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_EQ(pixmaps().size(), 1);
    m_preferences.set(u"label"_s, u"symbol"_s);
    EXPECT_EQ(pixmaps().size(), 6);
    m_preferences.set(u"label"_s, u"text"_s);
    EXPECT_EQ(pixmaps().size(), 1);
}

TEST_F(LinuxStatusItemTest, TakesMoreThanASquareInAnOldTrayThatHasRoom) {
    m_trayExists = true;
    m_keeper = u"trayer"_s;
    m_item.show(content());
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_GT(m_window.room().width(), 60);

    m_keeper.clear();
    StatusItemContent later = content();
    later.text = u"Standup · 11m"_s;
    m_item.show(later);
    EXPECT_EQ(m_window.room().width(), 22);
}

TEST_F(LinuxStatusItemTest, LooksAtTheKeeperOfAnOldTrayOnceItIsThere) {
    m_item.show(content());
    m_keeper = u"trayer"_s;
    m_trayExists = true;
    ASSERT_TRUE(m_shown.wait(patience));
    EXPECT_GT(m_window.room().width(), 60);
}
