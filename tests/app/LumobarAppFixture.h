#pragma once

#include "app/LumobarApp.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeHttpTransport.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/RecordingUrlOpener.h"
#include "linux/commands/CommandServer.h"
#include "platform/memory/MemoryLoginItems.h"
#include "platform/memory/MemorySecretStore.h"
#include "support/PrivateBus.h"
#include "support/ScopedEnvironment.h"
#include "support/StateHarness.h"
#include "ui/window/PanelWindow.h"

#include <QApplication>
#include <QDBusPendingCall>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace lumora::tests {

/// The program over fakes, on the session bus that this test program has to itself.
class LumobarAppFixture : public testing::Test {
protected:
    /// One for all, since the process stays on the session bus that it has once joined.
    static PrivateBus& bus() {
        static PrivateBus instance;
        static const ScopedEnvironment environment(
            "DBUS_SESSION_BUS_ADDRESS", instance.address().toUtf8());
        return instance;
    }

    void SetUp() override {
        PlatformFamily& family = platform.emplace();
        clock = keep(family.clock, std::make_unique<FakeClock>());
        transport = keep(family.transport, std::make_unique<FakeHttpTransport>());
        item = keep(family.statusItem, std::make_unique<FakeStatusItem>());
        urls = keep(family.urls, std::make_unique<RecordingUrlOpener>());
        notifications = keep(family.notifications, std::make_unique<FakeNotificationCenter>());
        preferences = keep(family.preferences, std::make_unique<FakePreferences>());
        preferences->set(
            QStringLiteral("endpointURL"), QStringLiteral("https://day.example/api/briefing"));
        family.secrets = std::make_unique<MemorySecretStore>();
        EXPECT_TRUE(KeychainService(*family.secrets).setToken(QStringLiteral("t0ken")));
        family.loginItems = std::make_unique<MemoryLoginItems>();
        family.wake = std::make_unique<WakeMonitor>();
        network = keep(family.network, std::make_unique<NetworkMonitor>());
        appearance = keep(family.appearance, std::make_unique<FakeAppearance>());
        family.compositing = std::make_unique<Compositing>(false);
        family.returnSpareMemory = [this] { ++memoryReturns; };
        program = std::make_unique<LumobarApp>(family);
    }

    template <typename Interface, typename Fake>
    static Fake* keep(std::unique_ptr<Interface>& place, std::unique_ptr<Fake> fake) {
        Fake* const kept = fake.get();
        place = std::move(fake);
        return kept;
    }

    /// Starts the program and lets a status area take the item.
    void begin() {
        program->start();
        Q_EMIT item->shown();
        QCoreApplication::processEvents();
    }

    static bool isPanelOpen() {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
            return widget->isVisible() && qobject_cast<const PanelWindow*>(widget);
        });
    }

    /// Ends the program as its process does: the platform goes last, and completes what waits.
    void end() {
        program.reset();
        platform.reset();
    }

    QDBusPendingCall command(const QString& method) {
        return client.asyncCall(
            QDBusMessage::createMethodCall(commandService, commandPath, commandInterface, method));
    }

    QDBusConnection client = bus().connect();
    FakeClock* clock = nullptr;
    FakeHttpTransport* transport = nullptr;
    FakeStatusItem* item = nullptr;
    FakePreferences* preferences = nullptr;
    RecordingUrlOpener* urls = nullptr;
    FakeNotificationCenter* notifications = nullptr;
    NetworkMonitor* network = nullptr;
    FakeAppearance* appearance = nullptr;
    int memoryReturns = 0;
    std::optional<PlatformFamily> platform;
    std::unique_ptr<LumobarApp> program;
};

} // namespace lumora::tests
