#pragma once

#include "platform/Background.h"
#include "platform/Clock.h"
#include "platform/Compositing.h"
#include "platform/DesktopAppearance.h"
#include "platform/HttpTransport.h"
#include "platform/LoginItemRegistry.h"
#include "platform/NetworkMonitor.h"
#include "platform/NotificationCenter.h"
#include "platform/PanelLayer.h"
#include "platform/Preferences.h"
#include "platform/SecretStore.h"
#include "platform/StatusItem.h"
#include "platform/UrlOpener.h"
#include "platform/WakeMonitor.h"

#include <functional>
#include <memory>

namespace lumora {

/// One implementation of everything that the operating system does for the program. Members end
/// in reverse order: those that others wait for last, so that whoever waits gets an answer.
struct PlatformFamily {
    std::unique_ptr<Background> background = std::make_unique<Background>();
    std::unique_ptr<Clock> clock;
    std::unique_ptr<HttpTransport> transport;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<SecretStore> secrets;
    std::unique_ptr<LoginItemRegistry> loginItems;
    std::unique_ptr<WakeMonitor> wake;
    std::unique_ptr<NetworkMonitor> network;
    std::unique_ptr<UrlOpener> urls;
    std::unique_ptr<NotificationCenter> notifications;
    std::unique_ptr<DesktopAppearance> appearance;
    std::unique_ptr<Compositing> compositing;
    std::unique_ptr<PanelLayer> panelLayer; ///< null where windows go where they are asked to
    std::unique_ptr<StatusItem> statusItem;

    /// Gives back to the system the memory that the program has freed.
    std::function<void()> returnSpareMemory = [] {};
};

} // namespace lumora
