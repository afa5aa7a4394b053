#include "linux/session/DesktopPlatform.h"

#include "linux/appearance/JoinedAppearance.h"
#include "linux/appearance/PanelToneMonitor.h"
#include "linux/appearance/PortalAppearance.h"
#include "linux/autostart/AutostartRegistry.h"
#include "linux/http/CurlHttpTransport.h"
#include "linux/notifications/DesktopNotificationCenter.h"
#include "linux/preferences/ConfFilePreferences.h"
#include "linux/secrets/LibsecretStore.h"
#include "linux/session/DesktopUrlOpener.h"
#include "linux/session/LogindWakeMonitor.h"
#include "linux/session/NetworkManagerMonitor.h"
#include "linux/session/SpareMemory.h"
#include "linux/session/WaylandModule.h"
#include "linux/session/WindowSystem.h"
#include "linux/time/SystemClock.h"
#include "linux/tray/LinuxStatusItem.h"
#include "platform/memory/MemoryLoginItems.h"
#include "platform/memory/MemoryPreferences.h"
#include "platform/memory/MemorySecretStore.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QProcessEnvironment>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Makes what there is to see of the desktop: its wishes for windows, and its place for symbols.
void makeAppearances(PlatformFamily& family) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    // The portal states what the user has chosen; the window system's settings only hint at dark
    // colours, but know the font.
    std::vector<std::unique_ptr<DesktopAppearance>> sources;
    sources.push_back(std::make_unique<PortalAppearance>(bus));
    if (auto windowSystem = makeWindowSystemAppearance())
        sources.push_back(std::move(windowSystem));
    family.appearance = std::make_unique<JoinedAppearance>(std::move(sources));
    // The family lets go of the status item, and with it of the bar, before the appearance. Bars of
    // desktops without a portal go by the window system's theme as well.
    auto bar =
        std::make_unique<PanelToneMonitor>(bus, desktop, *family.appearance, *family.preferences);
    family.statusItem = std::make_unique<LinuxStatusItem>(
        bus, *family.preferences, std::move(bar),
        LinuxStatusItem::Options{
            .desktop = desktop, .tray = {.watch = &watchTray}, .trayKeeper = &trayKeeper});
}

/// What both desktops have in common: everything that remembers nothing.
PlatformFamily makeCommonPlatform(std::unique_ptr<Preferences> preferences) {
    PlatformFamily family;
    // The layer changes the program's environment, of which other programs shall see nothing, and
    // has to do so before there are threads that read it.
    const auto environment = QProcessEnvironment::systemEnvironment();
    family.panelLayer = makePanelLayer();
    family.urls = std::make_unique<DesktopUrlOpener>(DesktopUrlOpener::Options{
        .platform = QGuiApplication::platformName(),
        .hasLayer = family.panelLayer != nullptr,
        .environment = environment,
    });
    family.preferences = std::move(preferences);
    family.clock = std::make_unique<SystemClock>();
    family.transport = std::make_unique<CurlHttpTransport>();
    family.wake = std::make_unique<LogindWakeMonitor>();
    family.network = std::make_unique<NetworkManagerMonitor>();
    family.notifications =
        std::make_unique<DesktopNotificationCenter>(QDBusConnection::sessionBus(), *family.clock);
    family.compositing = makeCompositing();
    family.returnSpareMemory = &returnSpareMemory;
    makeAppearances(family);
    return family;
}

} // namespace

PlatformFamily makeDesktopPlatform() {
    PlatformFamily family = makeCommonPlatform(std::make_unique<ConfFilePreferences>());
    family.secrets = std::make_unique<LibsecretStore>(QDBusConnection::sessionBus());
    family.loginItems = std::make_unique<AutostartRegistry>();
    return family;
}

PlatformFamily makeForgetfulPlatform() {
    PlatformFamily family = makeCommonPlatform(std::make_unique<MemoryPreferences>());
    family.secrets = std::make_unique<MemorySecretStore>();
    family.loginItems = std::make_unique<MemoryLoginItems>();
    return family;
}

} // namespace lumora
