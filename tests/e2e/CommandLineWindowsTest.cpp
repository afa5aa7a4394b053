#include "e2e/XDesktop.h"
#include "support/PrivateDisplay.h"
#include "support/ProgramHarness.h"

#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <utility>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Has the place of the running program, and keeps what it is asked to do.
class Asked : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        calls += call.member() + u' ' + call.arguments().value(0).toString();
        return bus.send(call.createReply());
    }

    QStringList calls;
};

/// A user at a screen who works the windows by commands.
class CommandLineWindows : public testing::Test {
protected:
    void SetUp() override {
        lumora.setVariable(u"DISPLAY"_s, QString::fromLatin1(display.name()));
        lumora.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        lumora.start();
        ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}})); // nothing is set up
    }

    void TearDown() override { lumora.end(); }

    /// Runs a command, which has nothing to say.
    void succeed(const QStringList& arguments) {
        const auto outcome = lumora.run(arguments);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "");
    }

    ProgramHarness lumora;
    const QString panel = u"Lumora"_s;
    PrivateDisplay display;
    XDesktop desktop{display.name()};
};

} // namespace

TEST(CommandLineWindowTokens, LetAWindowComeToTheFront) {
    ProgramHarness lumora;
    Asked running;
    QDBusConnection bus = lumora.sessionBus().connect();
    ASSERT_TRUE(bus.registerVirtualObject(u"/com/lumora/app"_s, &running));
    ASSERT_TRUE(bus.registerService(u"com.lumora.app"_s));
    const auto askForAll = [&lumora] {
        for (const QStringList& arguments :
             {QStringList(), {u"show"_s}, {u"toggle"_s}, {u"settings"_s}, {u"hide"_s}})
            EXPECT_EQ(lumora.run(arguments).exitCode, 0);
    };
    lumora.setVariable(u"DESKTOP_STARTUP_ID"_s, u"old"_s);
    askForAll();
    EXPECT_EQ(
        std::exchange(running.calls, {}),
        QStringList(
            {u"Open old"_s, u"Open old"_s, u"Toggle old"_s, u"OpenSettings old"_s, u"Hide "_s}));
    lumora.setVariable(u"XDG_ACTIVATION_TOKEN"_s, u"new"_s);
    askForAll();
    EXPECT_EQ(
        running.calls,
        QStringList(
            {u"Open new"_s, u"Open new"_s, u"Toggle new"_s, u"OpenSettings new"_s, u"Hide "_s}));
}

TEST_F(CommandLineWindows, ASecondStartOpensThePanel) {
    EXPECT_EQ(desktop.windows(panel), 0);
    succeed({});
    EXPECT_TRUE(desktop.focuses(panel));
    succeed({});
    EXPECT_TRUE(desktop.focuses(panel));
    EXPECT_EQ(desktop.windows(panel), 1);
}

TEST_F(CommandLineWindows, TogglesThePanel) {
    succeed({u"toggle"_s});
    EXPECT_TRUE(desktop.focuses(panel));
    succeed({u"toggle"_s});
    EXPECT_TRUE(desktop.hides(panel));
    succeed({u"toggle"_s});
    EXPECT_TRUE(desktop.focuses(panel));
}

TEST_F(CommandLineWindows, ShowsAndHidesThePanel) {
    succeed({u"hide"_s});
    EXPECT_EQ(desktop.windows(panel), 0);
    succeed({u"show"_s});
    EXPECT_TRUE(desktop.focuses(panel));
    succeed({u"show"_s});
    EXPECT_TRUE(desktop.focuses(panel));
    EXPECT_EQ(desktop.windows(panel), 1);
    succeed({u"hide"_s});
    EXPECT_TRUE(desktop.hides(panel));
    succeed({u"hide"_s});
}
