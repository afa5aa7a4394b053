#include "e2e/AccessibleTree.h"
#include "e2e/ConfiguredProgram.h"
#include "e2e/XDesktop.h"
#include "support/Patience.h"

#include <QFile>
#include <QJsonArray>
#include <QTest>

#include <algorithm>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString panelTitle = u"Lumora"_s;

/// The entry with this identity in one of the briefing's lists; empty when there is none.
QJsonObject entry(const QJsonValue& list, const QString& id) {
    const QJsonArray entries = list.toArray();
    const auto found = std::ranges::find_if(
        entries, [&](const QJsonValue& candidate) { return candidate[u"id"_s] == id; });
    return found == entries.end() ? QJsonObject() : found->toObject();
}

/// A person who has the panel open and works in it with mouse and keyboard.
class PanelDriving : public ConfiguredProgram {
protected:
    void SetUp() override {
        ConfiguredProgram::SetUp();
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
        openPanel();
    }

    void openPanel() {
        ASSERT_EQ(lumora.run({u"show"_s}).exitCode, 0);
        ASSERT_TRUE(desktop.focuses(panelTitle));
    }

    bool comesToShow(const QString& beginning) {
        return tree.comesToBe(panelTitle, [&](const AccessibleNode& panel) {
            return panel.findShown(beginning).exists();
        });
    }

    bool goesAway(const QString& beginning) {
        return tree.comesToBe(panelTitle, [&](const AccessibleNode& panel) {
            return !panel.findShown(beginning).exists();
        });
    }

    void clickOn(const QString& beginning) {
        ASSERT_TRUE(comesToShow(beginning)) << beginning.toStdString();
        const AccessibleNode target = tree.window(panelTitle).findShown(beginning);
        const QRect place = tree.place(target);
        ASSERT_FALSE(place.isEmpty());
        desktop.click(place.center());
    }

    AccessibleTree tree{lumora};
    XDesktop desktop{tree.display()};
};

} // namespace

// The desktop entry and the rules in docs/DESKTOPS.md go by it.
TEST_F(PanelDriving, TheWindowHasTheClassOfTheProgram) {
    EXPECT_EQ(desktop.windowClass(panelTitle), QStringList({u"lumora"_s, u"lumora"_s}));
}

TEST_F(PanelDriving, NothingForWaylandIsLoaded) {
    QFile maps(u"/proc/%1/maps"_s.arg(lumora.program().processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray loaded = maps.readAll();
    EXPECT_TRUE(loaded.contains("libQt6XcbQpa"));
    EXPECT_FALSE(loaded.contains("wayland"));
}

TEST_F(PanelDriving, AClickTogglesAHabit) {
    ASSERT_FALSE(entry(service.briefing()[u"habits"_s][u"items"_s], u"read"_s)[u"done"_s].toBool());
    clickOn(u"Read twenty pages, not done"_s);
    EXPECT_TRUE(comesToShow(u"Read twenty pages, done"_s));
    EXPECT_TRUE(entry(service.briefing()[u"habits"_s][u"items"_s], u"read"_s)[u"done"_s].toBool());
}

TEST_F(PanelDriving, AClickMarksAChoreDone) {
    ASSERT_FALSE(entry(service.briefing()[u"chores"_s][u"top"_s], u"kettle"_s).isEmpty());
    clickOn(u"Descale the kettle"_s);
    EXPECT_TRUE(goesAway(u"Descale the kettle"_s));
    EXPECT_TRUE(entry(service.briefing()[u"chores"_s][u"top"_s], u"kettle"_s).isEmpty());
}

TEST_F(PanelDriving, AClickRevealsSpendingAndAnotherHidesIt) {
    const auto showsAmounts = [](const AccessibleNode& panel) {
        return panel.spoken().contains(u'$');
    };
    EXPECT_FALSE(showsAmounts(tree.window(panelTitle)));
    clickOn(u"Show month-to-date"_s);
    EXPECT_TRUE(tree.comesToBe(panelTitle, showsAmounts));
    clickOn(u"Hide again"_s);
    EXPECT_TRUE(tree.comesToBe(
        panelTitle, [&](const AccessibleNode& panel) { return !showsAmounts(panel); }));
}

TEST_F(PanelDriving, AClickFoldsASectionForGood) {
    clickOn(u"Habits"_s);
    EXPECT_TRUE(goesAway(u"Read twenty pages"_s));
    EXPECT_TRUE(lumora.preferencesFile().contains("\nsection.collapsed.habits=true\n"));
    clickOn(u"Habits"_s);
    EXPECT_TRUE(comesToShow(u"Read twenty pages"_s));
}

TEST_F(PanelDriving, AThoughtAndReturnReachTheInbox) {
    desktop.type(u"stray keys"_s); // nothing has been asked to take them
    clickOn(u"Capture a thought"_s);
    desktop.type(u"A bell for the bicycle"_s);
    desktop.press(u"Return"_s);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return service.inbox() == QStringList(u"A bell for the bicycle"_s); }, patience));
    EXPECT_TRUE(tree.comesToBe(panelTitle, [](const AccessibleNode& panel) {
        return panel.findShown(u"Capture a thought"_s).text.isEmpty();
    }));
}

TEST_F(PanelDriving, ControlRRefreshes) {
    leaveMeetingsBehind();
    desktop.press(u"ctrl+r"_s);
    EXPECT_TRUE(lumora.comesToShow({{u"text"_s, u"1/5"_s}}));
    EXPECT_EQ(desktop.windows(panelTitle), 1);
}

TEST_F(PanelDriving, ControlQEndsTheProgram) {
    desktop.press(u"ctrl+q"_s);
    EXPECT_EQ(lumora.waitForEnd().exitCode, 0);
}

TEST_F(PanelDriving, EscapeCloses) {
    desktop.press(u"Escape"_s);
    EXPECT_TRUE(desktop.hides(panelTitle));
    openPanel();
}

TEST_F(PanelDriving, AClickIntoAnotherWindowCloses) {
    desktop.clickElsewhere();
    EXPECT_TRUE(desktop.hides(panelTitle));
    openPanel();
}
