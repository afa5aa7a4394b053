#pragma once

#include "fakes/FakeBar.h"
#include "fakes/FakePreferences.h"
#include "linux/tray/BusNames.h"
#include "linux/tray/LinuxStatusItem.h"
#include "linux/tray/TrayWindow.h"
#include "support/BusProbe.h"
#include "support/FakeWatcher.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace lumora::tests {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

inline StatusItemContent content() {
    return {
        .symbol = u"calendar.badge.clock"_s,
        .text = u"Standup · 12m"_s,
        .title = u"Lumora"_s,
        .toolTipTitle = u"Lumora"_s,
        .toolTipBody = u"Standup in 12 minutes"_s,
        .menu = {{StatusMenuRow::Kind::Action, MenuCommand::Open, u"Open Lumora"_s}}};
}

class LinuxStatusItemTest : public testing::Test {
protected:
    /// Without a time for it the item insists on nothing while a test lasts.
    explicit LinuxStatusItemTest(std::chrono::milliseconds insistence = 1h)
        : m_insistence(insistence) {}

    std::unique_ptr<FakeWatcher> watcher(bool hasHost = true) {
        return std::make_unique<FakeWatcher>(m_bus.connect(), hasHost);
    }

    QList<IconPixmap> pixmaps() {
        return qdbus_cast<QList<IconPixmap>>(
            m_probe.property(itemPath, itemInterface, u"IconPixmap"_s));
    }

    bool becomesAvailable(bool available) {
        return QTest::qWaitFor(
            [&] { return m_item.unavailableReason().isEmpty() == available; }, patience);
    }

    const std::chrono::milliseconds m_insistence;
    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    bool m_trayExists = false;
    TrayWindow m_window;
    QString m_host;   ///< the name of the watcher's process
    QString m_keeper; ///< of the tray of the old kind
    int m_scale = 1;
    FakePreferences m_preferences;
    FakeBar* const m_bar = new FakeBar; ///< the item's
    LinuxStatusItem m_item{
        m_connection,
        m_preferences,
        std::unique_ptr<BarAppearance>(m_bar),
        {.desktop = u"sway"_s,
         .tray =
             {.grace = 1ms,
              .pause = 1ms,
              .trayExists = [this] { return m_trayExists; },
              .windows = [this] { return m_window.windows(); }},
         .nameOf = [this](uint) { return m_host; },
         .trayKeeper = [this] { return m_keeper; },
         .scale = [this] { return m_scale; },
         .insistence = m_insistence}};
    BusProbe m_probe{m_bus.connect(), m_connection.baseService()};
    QSignalSpy m_shown{&m_item, &StatusItem::shown};
};

} // namespace lumora::tests
