// A folder that vdirsyncer keeps: the program itself synchronises it with a calendar elsewhere.

#include "CalendarWorld.h"
#include "support/ProgramHarness.h"

#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

using lumora::tests::ProgramHarness;

class Synchronised : public testing::Test {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(u"vdirsyncer"_s).isEmpty())
            GTEST_SKIP() << "vdirsyncer is not installed";
        QByteArray configuration = R"([general]
status_path = "HOME/status/"
[pair both]
a = "elsewhere"
b = "here"
collections = ["office"]
[storage elsewhere]
type = "singlefile"
path = "HOME/elsewhere/%s.ics"
[storage here]
type = "filesystem"
path = "HOME/calendars/"
fileext = ".ics"
)";
        world.put(u"vdirsyncer"_s, configuration.replace("HOME", world.folder.path().toUtf8()));
    }

    /// Runs vdirsyncer, with an answer to whatever it may ask.
    void run(const QString& command) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"VDIRSYNCER_CONFIG"_s, world.path(u"vdirsyncer"_s));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(u"vdirsyncer"_s, {command});
        process.write("y\ny\n");
        process.closeWriteChannel();
        const auto outcome = ProgramHarness::finish(process);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    }

    void synchronise(const QByteArrayList& titles) const {
        world.put(u"elsewhere/office.ics"_s, calendarWith(titles));
        run(u"sync"_s);
    }

    CalendarWorld world;
};

} // namespace

TEST_F(Synchronised, FoldersAreReadAndFollowed) {
    world.put(u"elsewhere/office.ics"_s, calendarWith({"One", "Two"}));
    run(u"discover"_s);
    run(u"sync"_s);
    world.calendars = {{.name = u"Home"_s, .place = IcsFolder{world.path(u"calendars"_s)}}};
    world.start();
    EXPECT_EQ(world.shown(), QStringList({u"office: One"_s, u"office: Two"_s}));
    EXPECT_EQ(world.state().error, std::nullopt);

    synchronise({"One", "Two", "Three"});
    await([this] { return world.shown().size() == 3; });
    synchronise({"Three", "One"}); // each an hour from the other, and one is gone
    await([this] { return world.shown() == QStringList({u"office: Three"_s, u"office: One"_s}); });
}

} // namespace lumora::companion::tests
