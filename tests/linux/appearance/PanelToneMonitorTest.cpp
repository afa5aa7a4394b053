#include "linux/appearance/PanelToneMonitor.h"

#include "fakes/FakeAppearance.h"
#include "fakes/FakePortal.h"
#include "fakes/FakePreferences.h"
#include "linux/appearance/PortalAppearance.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QApplication>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QPalette>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using tests::patience;

namespace {

/// Xfce's settings with the panel's dark mode alone.
class FakeXfconf : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.xfce.Xfconf")

public:
    FakeXfconf(QDBusConnection bus, std::optional<bool> darkMode)
        : m_darkMode(darkMode) {
        bus.registerObject(
            u"/org/xfce/Xfconf"_s, this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(u"org.xfce.Xfconf"_s);
    }

    void change(const QString& channel, bool value) {
        Q_EMIT PropertyChanged(channel, u"/panels/dark-mode"_s, QDBusVariant(value));
    }

    void remove() { Q_EMIT PropertyRemoved(u"xfce4-panel"_s, u"/panels/dark-mode"_s); }

public Q_SLOTS:

    QDBusVariant GetProperty(const QString& channel, const QString& property) {
        if (m_darkMode && channel == u"xfce4-panel" && property == u"/panels/dark-mode")
            return QDBusVariant(*m_darkMode);
        sendErrorReply(u"org.xfce.Xfconf.Error.PropertyNotFound"_s, u"no such property"_s);
        return {};
    }

Q_SIGNALS:
    void
    PropertyChanged(const QString& channel, const QString& property, const QDBusVariant& value);
    void PropertyRemoved(const QString& channel, const QString& property);

private:
    std::optional<bool> m_darkMode;
};

/// The application's palette for the length of a test.
class PaletteGuard {
public:
    ~PaletteGuard() { QApplication::setPalette(m_before); }

    static void setWindow(const QColor& color) {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, color);
        QApplication::setPalette(palette);
    }

private:
    QPalette m_before = QApplication::palette();
};

using Preference = DesktopAppearance::Preference;

const QString portalGroup = u"org.freedesktop.appearance"_s;

class PanelToneMonitorTest : public testing::Test {
protected:
    PanelToneMonitorTest() { PaletteGuard::setWindow(Qt::white); }

    PaletteGuard m_palette;
    tests::PrivateBus m_bus;
    tests::FakeAppearance m_wishes; ///< in the portal's place
    tests::FakePreferences m_preferences;
};

TEST_F(PanelToneMonitorTest, FollowsThePaletteWhereNothingElseIsKnown) {
    PanelToneMonitor monitor(m_bus.connect(), u"MATE"_s, m_wishes, m_preferences);
    const QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);

    PaletteGuard::setWindow(Qt::black);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 1);

    PaletteGuard::setWindow(QColor(0x10, 0x10, 0x10)); // as dark as before
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(PanelToneMonitorTest, WorksWithoutABus) {
    const QDBusConnection none(u"none"_s);
    const PortalAppearance portal(none);
    const PanelToneMonitor monitor(none, u"XFCE"_s, portal, m_preferences);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, KnowsAPreferenceThatIsThereAlready) {
    m_wishes.setWishes({.colorScheme = Preference::Dark});
    const PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s, m_wishes, m_preferences);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, FollowsThePreferenceBeforeThePalette) {
    PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s, m_wishes, m_preferences);
    const QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    m_wishes.setWishes({.colorScheme = Preference::Dark});
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 1);

    m_wishes.setWishes({.colorScheme = Preference::Light});
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    PaletteGuard::setWindow(Qt::black);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    EXPECT_EQ(changed.size(), 2);

    m_wishes.setWishes({}); // the palette is all that is left
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 3);
}

TEST_F(PanelToneMonitorTest, NothingChangesABarThatIsAlwaysDark) {
    PanelToneMonitor monitor(m_bus.connect(), u"ubuntu:GNOME"_s, m_wishes, m_preferences);
    const QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);

    m_wishes.setWishes({.colorScheme = Preference::Light});
    PaletteGuard::setWindow(Qt::black);
    PaletteGuard::setWindow(Qt::white);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 0);
}

TEST_F(PanelToneMonitorTest, FollowsTheUsersWord) {
    const PanelToneMonitor monitor(m_bus.connect(), u"sway"_s, m_wishes, m_preferences);
    const QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    m_preferences.set(u"barTone"_s, u"light"_s);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    EXPECT_EQ(changed.size(), 1);
    m_preferences.set(u"barTone"_s, u"auto"_s);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(PanelToneMonitorTest, FollowsTheBarsTheme) {
    const QTemporaryDir home;
    const auto write = [&](const QByteArray& theme) {
        QSaveFile file(home.filePath(u"plasmarc"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Theme]\nname=" + theme + '\n');
        EXPECT_TRUE(file.commit());
    };
    for (const QString& theme : {u"night"_s, u"day"_s}) {
        const QString folder = home.filePath(u"plasma/desktoptheme/"_s + theme);
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile colors(folder + u"/colors"_s);
        ASSERT_TRUE(colors.open(QIODevice::WriteOnly));
        colors.write("[Colors:Window]\nBackgroundNormal=");
        colors.write(theme == u"night" ? "42,46,50\n" : "239,240,241\n");
    }
    PanelToneMonitor monitor(
        m_bus.connect(), u"KDE"_s, m_wishes, m_preferences, {{home.path()}, {home.path()}});
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark); // nothing is said yet; the windows are light
    write("night");
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    write("day");
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    write("night"); // replaced a second time
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, ReadsAndFollowsThePortal) {
    tests::FakePortal portal(m_bus.connect(), {{portalGroup + u" color-scheme"_s, 1U}});
    const PortalAppearance appearance(m_bus.connect());
    PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s, appearance, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);

    portal.change(u"org.example.other"_s, u"color-scheme"_s, 2U); // somebody else's setting
    portal.change(portalGroup, u"color-scheme"_s, 2U);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(PanelToneMonitorTest, ReadsAPortalThatComesLater) {
    const PortalAppearance appearance(m_bus.connect());
    PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s, appearance, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    const tests::FakePortal portal(m_bus.connect(), {{portalGroup + u" color-scheme"_s, 1U}});
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, ReadsAndFollowsXfcesPanel) {
    FakeXfconf xfconf(m_bus.connect(), false);
    PanelToneMonitor monitor(m_bus.connect(), u"XFCE"_s, m_wishes, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light); // the panel's default is dark
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);

    xfconf.change(u"xfwm4"_s, true); // another program's setting
    xfconf.change(u"xfce4-panel"_s, true);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);

    xfconf.change(u"xfce4-panel"_s, false);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(changed.size(), 3);
    xfconf.change(u"xfce4-panel"_s, true);
    ASSERT_TRUE(changed.wait(patience));
    xfconf.remove(); // what is not set is off
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    EXPECT_EQ(changed.size(), 5);
}

TEST_F(PanelToneMonitorTest, TakesXfcesPanelToBeLikeTheWindowsWhereNothingIsSet) {
    const FakeXfconf xfconf(m_bus.connect(), std::nullopt);
    PanelToneMonitor monitor(m_bus.connect(), u"XFCE"_s, m_wishes, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
}

TEST_F(PanelToneMonitorTest, FollowsXfcesPanelBeforeThePreference) {
    m_wishes.setWishes({.colorScheme = Preference::Light});
    FakeXfconf xfconf(m_bus.connect(), false);
    PanelToneMonitor monitor(m_bus.connect(), u"XFCE"_s, m_wishes, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);

    xfconf.change(u"xfce4-panel"_s, true);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    m_wishes.setWishes({.colorScheme = Preference::Dark});
    m_wishes.setWishes({.colorScheme = Preference::Light});
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(PanelToneMonitorTest, ReadsXfcesPanelWhenItComesLater) {
    PanelToneMonitor monitor(m_bus.connect(), u"XFCE"_s, m_wishes, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    const FakeXfconf xfconf(m_bus.connect(), false);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
}

TEST_F(PanelToneMonitorTest, AsksXfceNothingOnOtherDesktops) {
    const FakeXfconf xfconf(m_bus.connect(), true);
    const tests::FakePortal portal(m_bus.connect(), {{portalGroup + u" color-scheme"_s, 1U}});
    const PortalAppearance appearance(m_bus.connect());
    PanelToneMonitor monitor(m_bus.connect(), u"MATE"_s, appearance, m_preferences);
    QSignalSpy changed(&monitor, &BarAppearance::toneChanged);
    ASSERT_TRUE(changed.wait(patience)); // by the portal
    EXPECT_EQ(changed.size(), 1);
}

} // namespace
} // namespace lumora

#include "PanelToneMonitorTest.moc"
