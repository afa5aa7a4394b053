#include "linux/appearance/PanelToneMonitor.h"

#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QApplication>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusVariant>
#include <QPalette>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using tests::patience;

namespace {

/// A settings portal with one setting.
class ColorSchemePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    ColorSchemePortal(QDBusConnection bus, uint colorScheme)
        : m_colorScheme(colorScheme) {
        bus.registerObject(
            u"/org/freedesktop/portal/desktop"_s, this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }

    void change(const QString& group, uint value) {
        Q_EMIT SettingChanged(group, u"color-scheme"_s, QDBusVariant(value));
    }

public Q_SLOTS:

    QDBusVariant Read(const QString& group, const QString& key) {
        const bool known = group == u"org.freedesktop.appearance" && key == u"color-scheme";
        // A variant in a variant, as the real one answers.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(known ? m_colorScheme : 9)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    uint m_colorScheme;
};

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
        sendErrorReply(QDBusError::Failed, u"no such property"_s);
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

class PanelToneMonitorTest : public testing::Test {
protected:
    PanelToneMonitorTest() { PaletteGuard::setWindow(Qt::white); }

    PaletteGuard m_palette;
    tests::PrivateBus m_bus;
};

TEST_F(PanelToneMonitorTest, FollowsThePaletteWhereNothingElseIsKnown) {
    PanelToneMonitor monitor(m_bus.connect(), u"MATE"_s);
    const QSignalSpy changed(&monitor, &PanelToneMonitor::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);

    PaletteGuard::setWindow(Qt::black);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 1);

    PaletteGuard::setWindow(QColor(0x10, 0x10, 0x10)); // as dark as before
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(PanelToneMonitorTest, WorksWithoutABus) {
    const PanelToneMonitor monitor(QDBusConnection(u"none"_s), u"XFCE"_s);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, ReadsAndFollowsThePortal) {
    ColorSchemePortal portal(m_bus.connect(), 1);
    PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s);
    QSignalSpy changed(&monitor, &PanelToneMonitor::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);

    portal.change(u"org.example.other"_s, 2); // somebody else's setting
    portal.change(u"org.freedesktop.appearance"_s, 2);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(PanelToneMonitorTest, ReadsAPortalThatComesLater) {
    PanelToneMonitor monitor(m_bus.connect(), u"KDE"_s);
    QSignalSpy changed(&monitor, &PanelToneMonitor::toneChanged);
    const ColorSchemePortal portal(m_bus.connect(), 1);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
}

TEST_F(PanelToneMonitorTest, ReadsAndFollowsXfcesPanel) {
    FakeXfconf xfconf(m_bus.connect(), false);
    PanelToneMonitor monitor(m_bus.connect(), u"XFCE"_s);
    QSignalSpy changed(&monitor, &PanelToneMonitor::toneChanged);
    EXPECT_EQ(monitor.tone(), SymbolTone::Light); // the panel's default is dark
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Dark);

    xfconf.change(u"xfwm4"_s, true); // another program's setting
    xfconf.change(u"xfce4-panel"_s, true);
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);

    xfconf.change(u"xfce4-panel"_s, false);
    ASSERT_TRUE(changed.wait(patience));
    xfconf.remove();
    ASSERT_TRUE(changed.wait(patience));
    EXPECT_EQ(monitor.tone(), SymbolTone::Light);
    EXPECT_EQ(changed.size(), 4);
}

TEST_F(PanelToneMonitorTest, AsksXfceNothingOnOtherDesktops) {
    const FakeXfconf xfconf(m_bus.connect(), true);
    const ColorSchemePortal portal(m_bus.connect(), 1);
    PanelToneMonitor monitor(m_bus.connect(), u"MATE"_s);
    QSignalSpy changed(&monitor, &PanelToneMonitor::toneChanged);
    ASSERT_TRUE(changed.wait(patience)); // by the portal
    EXPECT_EQ(changed.size(), 1);
}

} // namespace
} // namespace lumora

#include "PanelToneMonitorTest.moc"
