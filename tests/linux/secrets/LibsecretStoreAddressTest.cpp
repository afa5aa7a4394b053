#include "linux/secrets/LibsecretStoreFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace lumora;
using namespace lumora::tests;

TEST(LibsecretStoreWithoutBus, NeitherFindsNorStartsOne) {
    for (const QString& address : {QString(), u"autolaunch:"_s, u"unix:path=/nowhere/at/all"_s}) {
        LibsecretStore store(
            QDBusConnection(u"no such connection"_s), address, std::chrono::milliseconds(patience));
        EXPECT_EQ(store.lookup(key).status, Status::Unavailable);
        EXPECT_EQ(store.lookup(key).reason, u"There is no session bus"_s);
        EXPECT_FALSE(store.add(key, u"A token"_s, "s"));
        EXPECT_EQ(store.remove(key), SecretRemoval::Failed);
    }
}

TEST(LibsecretStoreBusAddress, IsTheSessionsOrElseTheUserBus) {
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());

    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/where");
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), u"unix:path=/some/where"_s);
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), QString());
    QFile socket(runtime.filePath(u"bus"_s));
    ASSERT_TRUE(socket.open(QFile::WriteOnly));
    EXPECT_EQ(LibsecretStore::sessionBusAddress(), u"unix:path="_s + socket.fileName());

    address.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS")
                     : qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    folder.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", folder);
}

TEST(KeyringOf, KnowsThoseThatDesktopsBring) {
    EXPECT_EQ(LibsecretStore::keyringOf(u"gnome-keyring-d"_s), u"GNOME Keyring"_s);
    for (const auto& process : {u"kwalletd5"_s, u"kwalletd6"_s, u"ksecretd"_s})
        EXPECT_EQ(LibsecretStore::keyringOf(process), u"KWallet"_s);
    EXPECT_EQ(LibsecretStore::keyringOf(u"keepassxc"_s), u"KeePassXC"_s);
    EXPECT_EQ(LibsecretStore::keyringOf(u"python3"_s), QString());
}
