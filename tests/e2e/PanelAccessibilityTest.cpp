#include "e2e/AccessibleTree.h"
#include "e2e/ConfiguredProgram.h"
#include "support/Patience.h"

#include <QJsonArray>
#include <QTest>

#include <algorithm>
#include <utility>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString windowTitle = u"Lumora"_s;

/// What is read out of `panel`, in order: the roles and names of all that can be seen.
QStringList readAloud(const AccessibleNode& panel) {
    QStringList heard;
    for (const AccessibleNode* node : panel.all()) {
        if (node->has(u"showing"_s) && !node->name.isEmpty())
            heard += node->role + u": "_s + node->name;
    }
    return heard;
}

/// Whether nothing stands above, or before on the same line, what is read before it.
testing::AssertionResult isReadAsItIsSeen(AccessibleTree& tree) {
    const AccessibleNode panel = tree.window(windowTitle);
    QRect place;
    const AccessibleNode* before = nullptr;
    for (const AccessibleNode* node : panel.all()) {
        if (!node->has(u"showing"_s) || node->name.isEmpty() || !node->children.empty())
            continue;
        const QRect previous = std::exchange(place, tree.place(*node));
        const bool follows = !before || place.top() >= previous.bottom() ||
                             (place.left() >= previous.right() && place.bottom() > previous.top());
        if (!follows)
            return testing::AssertionFailure()
                   << before->name.toStdString() << " is read before " << node->name.toStdString();
        before = node;
    }
    return before ? testing::AssertionSuccess() : testing::AssertionFailure() << "nothing is read";
}

AccessibleNode focusedIn(const AccessibleNode& panel) {
    for (const AccessibleNode* node : panel.all()) {
        if (node->has(u"focused"_s))
            return *node;
    }
    return {};
}

bool hasAlert(const std::vector<AccessibleNode>& nodes, const QString& message) {
    return std::ranges::any_of(nodes, [&](const AccessibleNode& node) {
        return node.role == u"alert message" && node.name == message;
    });
}

bool showsAmounts(const AccessibleNode& panel) {
    return panel.spoken().contains(u'$');
}

/// A person with a screen reader, whose service has a full day.
class PanelAccessibility : public ConfiguredProgram {
protected:
    /// Starts the program and opens its panel, as starting it once more does.
    void open(const QString& state = u"loaded"_s) {
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, state}}));
        show();
    }

    void show() {
        ASSERT_EQ(lumora.run({}).exitCode, 0);
        ASSERT_TRUE(comesToBe([](const AccessibleNode& panel) { return panel.has(u"active"_s); }));
    }

    testing::AssertionResult comesToBe(const std::function<bool(const AccessibleNode&)>& wanted) {
        return tree.comesToBe(windowTitle, wanted);
    }

    testing::AssertionResult comesToHave(const QString& name, const QString& state = {}) {
        return comesToBe([&](const AccessibleNode& panel) {
            const AccessibleNode node = panel.find(name);
            return node.exists() && (state.isEmpty() || node.has(state));
        });
    }

    /// The names of what has the keyboard after each press of `key`.
    QStringList focusedAfter(const QString& key, int presses) {
        QStringList names{focusedIn(tree.window(windowTitle)).name};
        for (int i = 0; i < presses; ++i) {
            pressKey(key);
            EXPECT_TRUE(comesToBe([&](const AccessibleNode& panel) {
                const AccessibleNode node = focusedIn(panel);
                return node.exists() && node.name != names.last();
            }));
            names += focusedIn(tree.window(windowTitle)).name;
        }
        return names.mid(1);
    }

    void pressKey(const QString& key) {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, QString::fromLatin1(tree.display()));
        tool.setProcessEnvironment(environment);
        tool.start(u"xdotool"_s, {u"key"_s, key});
        ASSERT_TRUE(tool.waitForFinished(patience));
        ASSERT_EQ(tool.exitCode(), 0);
    }

    AccessibleTree tree{lumora};
};

} // namespace

TEST_F(PanelAccessibility, ReadsTheDayWithNamesAndRoles) {
    open();
    const AccessibleNode panel = tree.window(windowTitle);
    QStringList heard = readAloud(panel);
    ASSERT_EQ(heard.value(0), u"frame: Lumora"_s);
    EXPECT_TRUE(heard.value(1).startsWith("label: Today, updated "_L1));
    EXPECT_EQ(heard.value(2), u"push button: Next up"_s);

    const qsizetype habits = heard.indexOf(u"push button: Habits"_s);
    ASSERT_GT(habits, 5);
    int joins = 0;
    for (qsizetype i = 3; i < habits; ++i) {
        if (!heard.at(i).startsWith("push button: Join "_L1))
            continue;
        ++joins;
        const QString meeting = heard.at(i).mid(qsizetype(sizeof("push button: Join ") - 1));
        EXPECT_TRUE(heard.at(i - 1).startsWith("label: "_L1));
        EXPECT_TRUE(heard.at(i - 1).contains(meeting));
    }
    EXPECT_GT(joins, 2);

    const QStringList expected{
        u"push button: Habits"_s,
        u"push button: Morning stretch, done, streak 12"_s,
        u"push button: Glass of water, not done, 2 of 8"_s,
        u"push button: Read twenty pages, not done, streak 4"_s,
        u"push button: Walk outside, not done"_s,
        u"push button: Language lesson, not done, streak 31"_s,
        u"push button: Chores due"_s,
        u"push button: Descale the kettle, 5 days overdue"_s,
        u"push button: Water the plants, 1 day overdue"_s,
        u"push button: Take out the recycling, due today"_s,
        u"push button: Clear the balcony drain, never done"_s,
        u"push button: Spending"_s,
        u"push button: Show month-to-date"_s,
        u"label: 1/5 done 42% focus"_s,
        u"text: Capture a thought"_s,
        u"push button: Refresh"_s,
        u"push button: Open lumo"_s,
        u"push button: Settings"_s,
        u"push button: Quit Lumora"_s,
    };
    EXPECT_EQ(heard.mid(habits).join(u'\n'), expected.join(u'\n'));
}

TEST_F(PanelAccessibility, ReadsItInTheOrderInWhichItIsSeen) {
    service.control({{u"scenario"_s, u"quiet"_s}});
    open();
    EXPECT_TRUE(isReadAsItIsSeen(tree));

    // Rows come, and others move.
    service.control({{u"scenario"_s, u"busy"_s}});
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Refresh"_s)));
    ASSERT_TRUE(comesToHave(u"Water the plants, 1 day overdue"_s));
    EXPECT_TRUE(isReadAsItIsSeen(tree));
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Show month-to-date"_s)));
    ASSERT_TRUE(comesToHave(u"Hide again"_s));
    EXPECT_TRUE(isReadAsItIsSeen(tree));
}

TEST_F(PanelAccessibility, TellsWhetherASectionIsFolded) {
    open();
    const AccessibleNode habits = tree.window(windowTitle).find(u"Habits"_s, u"push button"_s);
    EXPECT_TRUE(habits.has(u"expandable"_s));
    EXPECT_TRUE(habits.has(u"expanded"_s));
    EXPECT_FALSE(habits.has(u"collapsed"_s));

    ASSERT_TRUE(tree.press(habits));
    ASSERT_TRUE(comesToHave(u"Habits"_s, u"collapsed"_s));
    EXPECT_TRUE(comesToBe([](const AccessibleNode& panel) {
        return !panel.spoken().contains(u"Morning stretch"_s);
    }));
    EXPECT_FALSE(tree.window(windowTitle).find(u"Habits"_s).has(u"expanded"_s));
    EXPECT_EQ(tree.window(windowTitle).find(u"Habits"_s).description, u"1/5 done"_s);

    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Habits"_s)));
    EXPECT_TRUE(comesToHave(u"Morning stretch, done, streak 12"_s, u"showing"_s));
}

TEST_F(PanelAccessibility, TellsThatARowIsBusyUntilItIsAnswered) {
    open();
    service.control({{u"scenario"_s, u"slow"_s}});
    const QString walk = u"Walk outside, not done"_s;
    EXPECT_FALSE(tree.window(windowTitle).find(walk).has(u"busy"_s));
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(walk)));
    EXPECT_TRUE(comesToHave(walk, u"busy"_s));
    service.control({{u"scenario"_s, u"busy"_s}});
    ASSERT_TRUE(comesToBe([&](const AccessibleNode& panel) {
        const AccessibleNode row = panel.find(u"Walk outside, done, streak 1"_s);
        return row.exists() && !row.has(u"busy"_s);
    }));
}

TEST_F(PanelAccessibility, HasTheAmountsOnlyWhileTheyAreRevealed) {
    open();
    EXPECT_FALSE(showsAmounts(tree.window(windowTitle)));
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Show month-to-date"_s)));
    EXPECT_TRUE(comesToBe(showsAmounts));
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Hide again"_s)));
    EXPECT_TRUE(comesToBe([](const AccessibleNode& panel) { return !showsAmounts(panel); }));
}

TEST_F(PanelAccessibility, ABannerIsAnnouncedWhenItAppears) {
    open();
    tree.listen();
    service.stop();
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Refresh"_s)));
    ASSERT_TRUE(comesToHave(u"Connection refused"_s, u"showing"_s));
    EXPECT_TRUE(hasAlert(tree.appeared(), u"Connection refused"_s));

    service.restart();
    service.control({{u"scenario"_s, u"unauthorized"_s}});
    ASSERT_TRUE(tree.press(tree.window(windowTitle).find(u"Refresh"_s)));
    ASSERT_TRUE(comesToBe(
        [](const AccessibleNode& panel) { return !panel.find(u"Connection refused"_s).exists(); }));
    EXPECT_TRUE(hasAlert(tree.appeared(), lumora.status().value(u"message"_s).toString()));
}

TEST_F(PanelAccessibility, ABannerThatIsThereAlreadyIsAnnouncedWhenThePanelOpens) {
    service.control({{u"scenario"_s, u"unauthorized"_s}});
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    tree.listen();
    show();
    EXPECT_TRUE(hasAlert(tree.appeared(), lumora.status().value(u"message"_s).toString()));
    EXPECT_TRUE(comesToHave(u"Today"_s, u"focused"_s)) << "and not the field";
}

TEST_F(PanelAccessibility, OpensWithTheKeyboardAtTheTopAndGoesOnFromThere) {
    open();
    EXPECT_TRUE(focusedIn(tree.window(windowTitle)).name.startsWith("Today"_L1));
    ASSERT_TRUE(tree.focus(tree.window(windowTitle).find(u"Habits"_s)));
    ASSERT_TRUE(comesToHave(u"Habits"_s, u"focused"_s));
    EXPECT_EQ(
        focusedAfter(u"Tab"_s, 2), (QStringList{
                                       u"Morning stretch, done, streak 12"_s,
                                       u"Glass of water, not done, 2 of 8"_s,
                                   }));
    EXPECT_EQ(
        focusedAfter(u"Up"_s, 2),
        (QStringList{u"Morning stretch, done, streak 12"_s, u"Habits"_s}));
    pressKey(u"space"_s);
    EXPECT_TRUE(comesToHave(u"Habits"_s, u"collapsed"_s));
    EXPECT_EQ(focusedAfter(u"End"_s, 1), QStringList{u"Quit Lumora"_s});
    EXPECT_EQ(focusedAfter(u"Up"_s, 4).last(), u"Capture a thought"_s);
    pressKey(u"Up"_s);
    pressKey(u"x"_s);
    EXPECT_TRUE(comesToBe([](const AccessibleNode& seen) {
        const AccessibleNode field = seen.find(u"Capture a thought"_s);
        return field.text == u"x" && field.has(u"focused"_s);
    })) << "in the field the arrows move the cursor";
}
