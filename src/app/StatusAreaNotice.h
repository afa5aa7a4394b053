#pragma once

#include <QString>

namespace lumora {

class Clock;
class NotificationCenter;
class Preferences;
class StatusItem;

/// Tells the user, once in their life with the program, that no bar shows it: they would look for
/// it in vain.
class StatusAreaNotice {
public:
    /// Everything must outlive the notice. `desktop` is the session's XDG_CURRENT_DESKTOP.
    struct Dependencies {
        const StatusItem& item;
        NotificationCenter& notifications;
        Preferences& preferences;
        Clock& clock;
        QString desktop;
    };

    explicit StatusAreaNotice(Dependencies dependencies);

    /// Tells it if the item is shown nowhere by now.
    void tell();

private:
    Dependencies m_with;
};

} // namespace lumora
