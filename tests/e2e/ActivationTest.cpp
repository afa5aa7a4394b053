#include "e2e/XDesktop.h"
#include "support/Patience.h"
#include "support/PrivateDisplay.h"
#include "support/ProgramHarness.h"

#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A session whose bus knows how to start the program, as the installed file tells it.
class Activation : public testing::Test {
protected:
    Activation() {
        user.setVariable(u"DISPLAY"_s, QString::fromLatin1(display.name()));
        user.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        user.setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        // The bus starts programs with what the session has told it.
        qDBusRegisterMetaType<QMap<QString, QString>>();
        QMap<QString, QString> environment;
        const auto process = user.makeProcess();
        for (const QString& name : process->processEnvironment().keys())
            environment[name] = process->processEnvironment().value(name);
        call(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
            u"UpdateActivationEnvironment"_s, {QVariant::fromValue(environment)});
    }

    void TearDown() override {
        EXPECT_EQ(user.run({u"quit"_s}).exitCode, 0);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !runs(); }, patience));
    }

    /// Installs what describes the program to the bus; the folder that it is in.
    QString installService() {
        QFile description(QStringLiteral(LUMORA_SERVICE_DESCRIPTION));
        EXPECT_TRUE(description.open(QFile::ReadOnly));
        QFile installed(folder.filePath(u"com.lumora.app.service"_s));
        EXPECT_TRUE(installed.open(QFile::WriteOnly));
        installed.write(
            description.readAll().replace("@program@", user.makeProcess()->program().toUtf8()));
        return folder.path();
    }

    void call(
        const QString& service, const QString& path, const QString& interfaceName,
        const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(service, path, interfaceName, method);
        message.setArguments(arguments);
        const auto answer = connection.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.isFinished(); }, patience));
        EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
    }

    /// What a desktop does with the entry.
    void activate(const QString& method, const QVariantList& arguments) {
        call(
            u"com.lumora.app"_s, u"/com/lumora/app"_s, u"org.freedesktop.Application"_s, method,
            arguments);
    }

    bool runs() { return connection.interface()->isServiceRegistered(u"com.lumora.app"_s); }

    ProgramHarness user;
    QTemporaryDir folder;
    PrivateBus bus{installService()};
    QDBusConnection connection = bus.connect();
    PrivateDisplay display;
    XDesktop desktop{display.name()};
};

} // namespace

TEST_F(Activation, StartsTheProgramAndOpensItsPanel) {
    ASSERT_FALSE(runs());
    activate(u"Activate"_s, {QVariantMap()});
    EXPECT_TRUE(runs());
    EXPECT_TRUE(desktop.focuses(u"Lumora"_s));
}

TEST_F(Activation, AnActionStartsItToo) {
    ASSERT_FALSE(runs());
    activate(u"ActivateAction"_s, {u"refresh"_s, QVariantList(), QVariantMap()});
    EXPECT_TRUE(runs());
    EXPECT_EQ(desktop.windows(u"Lumora"_s), 0);
}

TEST_F(Activation, CommandsDoNotStartIt) {
    for (const QString& command : {u"status"_s, u"toggle"_s, u"agenda"_s, u"refresh"_s})
        EXPECT_EQ(user.run({command}).exitCode, 3);
    EXPECT_FALSE(runs());
    activate(u"Activate"_s, {QVariantMap()}); // for the end
}
