#include "linux/session/DesktopUrlOpener.h"

#include "support/Patience.h"
#include "support/ScopedEnvironment.h"

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {
namespace {

/// What the toolkit is asked to open.
class ToolkitOpener : public QObject {
    Q_OBJECT

public:
    ToolkitOpener() { QDesktopServices::setUrlHandler(u"https"_s, this, "open"); }

    ~ToolkitOpener() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    Q_INVOKABLE void open(const QUrl& url) {
        opened += url;
        token = qgetenv("XDG_ACTIVATION_TOKEN");
    }

    QList<QUrl> opened;
    QByteArray token; ///< that the last one would find
};

/// A desktop whose opener only writes down what it is started with.
class DesktopUrlOpenerTest : public testing::Test {
protected:
    DesktopUrlOpenerTest() {
        QFile script(folder.filePath(u"xdg-open"_s));
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\n"
                     "cd \"${0%/*}\"\n"
                     "echo \"$1 ${XDG_ACTIVATION_TOKEN-none} ${LUMORA_TEST_OWN-hidden}\" > new\n"
                     "mv new started\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    /// Opens the address on that platform. Whatever is set later, the environment is that of now.
    void open(const QString& platform, bool hasLayer, const QByteArray& token) const {
        DesktopUrlOpener opener({
            .platform = platform,
            .hasLayer = hasLayer,
            .environment = QProcessEnvironment::systemEnvironment(),
        });
        const ScopedEnvironment later("LUMORA_TEST_OWN", "seen");
        opener.open(url, token);
    }

    /// What the desktop's opener was started with; empty if it was not.
    QByteArray started() const {
        QFile file(folder.filePath(u"started"_s));
        if (!QTest::qWaitFor([&] { return file.exists(); }, patience))
            return {};
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }

    const QUrl url{u"https://example.org/a b"_s};
    QTemporaryDir folder;
    const ScopedEnvironment path{"PATH", QFile::encodeName(folder.path()) + ':' + qgetenv("PATH")};
    ToolkitOpener toolkit;
};

TEST_F(DesktopUrlOpenerTest, LeavesItToTheToolkitOnX11) {
    open(u"xcb"_s, false, "token");
    EXPECT_EQ(toolkit.opened, QList<QUrl>{url});
    EXPECT_EQ(toolkit.token, "token");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(DesktopUrlOpenerTest, LeavesItToTheToolkitWhereThatGetsItsOwnToken) {
    open(u"wayland"_s, false, {});
    EXPECT_EQ(toolkit.opened, QList<QUrl>{url});
}

TEST_F(DesktopUrlOpenerTest, HandsOnTheTokenThatItWasGiven) {
    open(u"wayland"_s, false, "token");
    EXPECT_EQ(started(), "https://example.org/a%20b token hidden");
    EXPECT_TRUE(toolkit.opened.isEmpty());
}

TEST_F(DesktopUrlOpenerTest, HandsOnTheTokenOfAPanelInTheLayer) {
    open(u"wayland-egl"_s, true, "token");
    EXPECT_EQ(started(), "https://example.org/a%20b token hidden");
    EXPECT_TRUE(toolkit.opened.isEmpty());
}

TEST_F(DesktopUrlOpenerTest, WaitsForNoTokenOfAPanelInTheLayer) {
    const ScopedEnvironment old("XDG_ACTIVATION_TOKEN", "old");
    open(u"wayland"_s, true, {});
    EXPECT_EQ(started(), "https://example.org/a%20b none hidden");
    EXPECT_TRUE(toolkit.opened.isEmpty());
}

TEST_F(DesktopUrlOpenerTest, LeavesItToTheToolkitWhereTheDesktopHasNoOpener) {
    const ScopedEnvironment nowhere("PATH", "/nowhere");
    open(u"wayland"_s, true, "token");
    EXPECT_EQ(toolkit.opened, QList<QUrl>{url});
    EXPECT_EQ(toolkit.token, "token");
}

} // namespace
} // namespace lumora::tests

#include "DesktopUrlOpenerTest.moc"
