#include "e2e/AccessibleTree.h"
#include "e2e/ConfiguredProgram.h"
#include "support/Patience.h"
#include "support/ScriptedServer.h"
#include "support/TestCertificates.h"

#include <QDBusVariant>
#include <QJsonArray>
#include <QProcess>
#include <QSslServer>
#include <QTest>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString settingsTitle = u"Settings"_s;

/// Keeps what the accessibility bus says of texts that change.
class TextListener : public QObject {
    Q_OBJECT

public:
    explicit TextListener(const QDBusConnection& bus)
        : m_bus(bus) {
        QDBusMessage listen = QDBusMessage::createMethodCall(
            u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
            u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
        listen.setArguments({u"object:text-changed"_s});
        m_bus.call(listen);
        m_bus.connect(
            {}, {}, u"org.a11y.atspi.Event.Object"_s, u"TextChanged"_s, this,
            SLOT(hear(QDBusMessage)));
    }

    /// Whether the text comes, one character after the other; what is said arrives in its own time.
    testing::AssertionResult comesToHear(const QString& text) const {
        const auto has = [&] { return heard.join(QString()).contains(text); };
        return QTest::qWaitFor(has, patience)
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << heard.join(QString()).toStdString();
    }

    QStringList heard;

private Q_SLOTS:

    void hear(const QDBusMessage& change) {
        heard += change.arguments().value(3).value<QDBusVariant>().variant().toString();
    }

private:
    QDBusConnection m_bus;
};

/// A new user in front of a real display with a keyboard, and a real keyring without a token.
class Settings : public testing::Test {
protected:
    void SetUp() override { keyring.startUnlocked(); }

    /// Opens the settings the way people do who have never seen the program before.
    void openSettings() {
        ASSERT_EQ(lumora.run({}).exitCode, 0);
        ASSERT_TRUE(tree.comesToBe(u"Lumora"_s, [](const AccessibleNode& panel) {
            return panel.has(u"active"_s) && panel.find(settingsTitle, u"push button"_s).exists();
        }));
        ASSERT_TRUE(tree.press(tree.window(u"Lumora"_s).find(settingsTitle, u"push button"_s)));
        ASSERT_TRUE(tree.comesToBe(settingsTitle, [](const AccessibleNode& settings) {
            return settings.has(u"active"_s);
        }));
    }

    /// Real key presses, for whatever has the keyboard, and questions to the display.
    QByteArray xdotool(const QStringList& arguments) {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, QString::fromLatin1(tree.display()));
        tool.setProcessEnvironment(environment);
        tool.start(u"xdotool"_s, arguments);
        EXPECT_TRUE(tool.waitForFinished(patience));
        EXPECT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
        return tool.readAllStandardOutput();
    }

    /// Goes to a control by its mnemonic and replaces what is in it.
    void fillIn(const QString& mnemonic, const QString& text) {
        xdotool(
            {u"key"_s, u"alt+"_s + mnemonic, u"ctrl+a"_s, u"type"_s, u"--delay"_s, u"1"_s, text});
    }

    testing::AssertionResult comesToSay(const QString& text) {
        return tree.comesToBe(settingsTitle, [&text](const AccessibleNode& settings) {
            return settings.find(text, u"label"_s).exists();
        });
    }

    testing::AssertionResult testEndsWith(const QString& endpoint, const QString& line) {
        fillIn(u"e"_s, endpoint);
        xdotool({u"key"_s, u"alt+t"_s});
        return comesToSay(line);
    }

    /// As the window system tells it, in pixels.
    QByteArray windowWidth() {
        const QByteArray told =
            xdotool({u"search"_s, u"--name"_s, settingsTitle, u"getwindowgeometry"_s});
        const qsizetype start = told.indexOf("Geometry: ");
        EXPECT_GE(start, 0) << told.toStdString();
        return told.sliced(start, told.indexOf('x', start) - start);
    }

    QString storedToken() {
        keyring.secretTool(
            {u"lookup"_s, u"service"_s, u"com.lumora.app"_s, u"account"_s, u"briefingToken"_s});
        return QString::fromUtf8(keyring.output());
    }

    ProgramHarness lumora;
    RealKeyring keyring{lumora.sessionBus()};
    AccessibleTree tree{lumora};
    ServiceProcess service;
};

} // namespace

TEST_F(Settings, LeadANewUserToALoadedLabel) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"message"_s, u"Not configured — open Settings"_s}}));
    openSettings();
    TextListener listener(QDBusConnection(u"accessibility"_s));

    // The keyboard waits in the first field.
    const QString token = QString::fromLatin1(service.token());
    xdotool({u"type"_s, u"--delay"_s, u"1"_s, service.endpoint()});
    xdotool({u"key"_s, u"Tab"_s});
    xdotool({u"type"_s, u"--delay"_s, u"1"_s, token});
    xdotool({u"key"_s, u"Tab"_s, u"Tab"_s, u"Return"_s});
    const qsizetype events = service.briefing().value(u"eventsToday"_s).toArray().size();
    ASSERT_TRUE(comesToSay(u"✓ %1 events today"_s.arg(events)));
    EXPECT_TRUE(lumora.comesToShow({{u"mode"_s, u"countdown"_s}, {u"state"_s, u"loaded"_s}}));

    EXPECT_EQ(storedToken(), token);
    EXPECT_TRUE(lumora.preferencesFile().contains(service.endpoint().toUtf8()));
    EXPECT_FALSE(lumora.preferencesFile().contains(service.token()));
    const AccessibleNode window = tree.window(settingsTitle);
    EXPECT_TRUE(window.spoken().contains(service.endpoint()));
    EXPECT_FALSE(window.spoken().contains(token)) << window.spoken().toStdString();
    EXPECT_TRUE(listener.comesToHear(service.endpoint()));
    EXPECT_TRUE(listener.comesToHear(QString(token.size(), u'•')));
    const QString heard = listener.heard.join(QString());
    EXPECT_FALSE(heard.contains(token)) << heard.toStdString();
    EXPECT_FALSE(heard.contains(u'y')) << heard.toStdString();

    xdotool({u"key"_s, u"Escape"_s});
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return !tree.window(settingsTitle).has(u"showing"_s); }, patience));
    QCoreApplication::processEvents();
    EXPECT_FALSE(listener.heard.join(QString()).contains(token));
}

TEST_F(Settings, SayWhatIsWrong) {
    ScriptedServer page(ScriptedServer::always(
        ScriptedServer::answer("200 OK", "<!doctype html><title>Log in</title>")));
    const TestCertificates certificates(TestCertificates::Server::Expired);
    auto listener = std::make_unique<QSslServer>();
    listener->setSslConfiguration(certificates.serverConfiguration());
    ScriptedServer expired(ScriptedServer::always({}), std::move(listener));
    lumora.setVariable(u"SSL_CERT_FILE"_s, certificates.authorityFile());
    // Names are looked up here, not by a proxy.
    lumora.setVariable(u"no_proxy"_s, u"*"_s);

    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    openSettings();
    const QByteArray width = windowWidth();
    fillIn(u"a"_s, u"not-the-token"_s);
    EXPECT_TRUE(testEndsWith(service.endpoint(), u"✗ Token rejected (401)"_s));
    EXPECT_TRUE(testEndsWith(
        u"https://no-such-host.invalid/api/briefing"_s,
        u"✗ Host no-such-host.invalid not found"_s));
    EXPECT_TRUE(
        testEndsWith(page.url(u"/api/briefing"_s).toString(), u"✗ Invalid response from server"_s));
    EXPECT_TRUE(testEndsWith(
        expired.url(u"/api/briefing"_s, u"https"_s).toString(),
        u"✗ SSL handshake failed: certificate has expired"_s));
    EXPECT_TRUE(testEndsWith(
        u"http://dashboard.example/api/briefing"_s,
        u"✗ The endpoint must start with https:// to keep the token private; http:// works only "
        "for this computer"_s));
    EXPECT_TRUE(expired.requests().isEmpty());
    EXPECT_EQ(windowWidth(), width);
}

TEST_F(Settings, HaveTheProgramStartAtLogin) {
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    openSettings();
    const auto entries = [this] {
        return lumora.filesAtHome().filter(u"/autostart/com.lumora.app.desktop"_s);
    };
    ASSERT_TRUE(entries().isEmpty());
    xdotool({u"key"_s, u"alt+l"_s});
    ASSERT_TRUE(QTest::qWaitFor([&] { return entries().size() == 1; }, patience));
    QFile entry(entries().first());
    ASSERT_TRUE(entry.open(QFile::ReadOnly));
    EXPECT_TRUE(entry.readAll().contains("\nExec=" + lumora.program().program().toUtf8() + '\n'));
    const auto isOn = [](const AccessibleNode& settings) {
        return settings.find(u"Launch at login"_s, u"check box"_s).has(u"checked"_s);
    };
    EXPECT_TRUE(tree.comesToBe(settingsTitle, isOn));
    xdotool({u"key"_s, u"alt+l"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return entries().isEmpty(); }, patience));
}

TEST_F(Settings, FollowTheFile) {
    lumora.writePreferences({{u"refreshMinutes"_s, u"7"_s}});
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"failed"_s}}));
    openSettings();
    const auto notifies = [](const AccessibleNode& settings) {
        return settings.find(u"Notify 5 minutes before meetings"_s).has(u"checked"_s);
    };
    ASSERT_TRUE(tree.comesToBe(settingsTitle, notifies));
    EXPECT_TRUE(tree.window(settingsTitle).spoken().contains(u"7 minutes"_s));
    lumora.writePreferences({
        {u"notifyBeforeMeetings"_s, u"false"_s},
        {u"refreshMinutes"_s, u"30"_s},
        {u"endpointURL"_s, u"https://elsewhere.example"_s},
    });
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [&](const AccessibleNode& settings) {
        const QString spoken = settings.spoken();
        return !notifies(settings) && spoken.contains(u"https://elsewhere.example"_s) &&
               settings.find(u"30 minutes"_s, u"combo box"_s).exists();
    }));
    EXPECT_FALSE(lumora.preferencesFile().contains("menuBarAmbient"));
}

TEST_F(Settings, HoldWhatCannotBeStored) {
    // What is no file is left alone, whatever it is.
    ASSERT_TRUE(QDir().mkpath(lumora.preferencesPath()));
    const QString complaint =
        u"Not stored (~/config/lumora/lumora.conf: Is a directory). It holds until Lumora ends."_s;
    const auto notifies = [](const AccessibleNode& settings) {
        return settings.find(u"Notify 5 minutes before meetings"_s).has(u"checked"_s);
    };
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"message"_s, u"Not configured — open Settings"_s}}));
    openSettings();
    fillIn(u"a"_s, QString::fromLatin1(service.token()));
    fillIn(u"e"_s, service.endpoint());
    EXPECT_TRUE(comesToSay(complaint));
    xdotool({u"key"_s, u"alt+n"_s});
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [&](const AccessibleNode& settings) {
        return !notifies(settings) && settings.spoken().count(complaint) == 2;
    }));
    xdotool({u"key"_s, u"alt+t"_s});
    EXPECT_TRUE(lumora.comesToShow({{u"mode"_s, u"countdown"_s}, {u"state"_s, u"loaded"_s}}));
    const AccessibleNode settings = tree.window(settingsTitle);
    EXPECT_TRUE(settings.spoken().contains(service.endpoint()));
    EXPECT_FALSE(notifies(settings));
    EXPECT_TRUE(QFileInfo(lumora.preferencesPath()).isDir());

    ASSERT_TRUE(QDir().rmdir(lumora.preferencesPath()));
    xdotool({u"key"_s, u"alt+n"_s});
    EXPECT_TRUE(tree.comesToBe(settingsTitle, [&](const AccessibleNode& shown) {
        return notifies(shown) && !shown.spoken().contains(complaint);
    }));
    EXPECT_EQ(
        lumora.preferencesFile(),
        "[General]\nendpointURL=" + service.endpoint().toUtf8() + "\nnotifyBeforeMeetings=true\n");
}

#include "SettingsTest.moc"
