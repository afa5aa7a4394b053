#pragma once

#include "linux/tray/LabelForm.h"
#include "linux/tray/LabelPixmaps.h"
#include "linux/tray/StatusAreaHost.h"
#include "linux/tray/StatusNotifierSession.h"
#include "linux/tray/XEmbedItem.h"
#include "platform/BarAppearance.h"
#include "platform/Preferences.h"
#include "platform/StatusItem.h"

#include <QDBusConnection>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lumora {

/// Of all screens, in whole device pixels per point: what is drawn for that is sharp on each.
[[nodiscard]] int largestScale();

/// The status item of Linux desktops: an item on the session bus with a text and a menu, or an
/// icon in a tray of the old kind where nobody takes such items. It goes where there is a place,
/// whenever one comes or goes.
class LinuxStatusItem final : public StatusItem {
    Q_OBJECT

public:
    struct Options {
        QString desktop; ///< the session's XDG_CURRENT_DESKTOP
        XEmbedItem::Options tray = {};
        StatusAreaHost::NameOf nameOf = &processName;
        /// The program that keeps the tray of the old kind; empty where that cannot be known.
        std::function<QString()> trayKeeper = [] { return QString(); };
        std::function<int()> scale = &largestScale; ///< of the bar, in device pixels per point
        /// After the item was taken by a host that may still be starting, and from then on three
        /// times as long each time.
        std::chrono::milliseconds insistence = std::chrono::milliseconds(600);

        /// Opens another connection to the session bus under a name of ours.
        std::function<QDBusConnection(const QString& name)> connect = [](const QString& name) {
            return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        };
    };

    /// `bar` is where the item is shown. `preferences` outlive it.
    LinuxStatusItem(
        const QDBusConnection& sessionBus, const Preferences& preferences,
        std::unique_ptr<BarAppearance> bar, Options options);

    void show(const StatusItemContent& content) override;
    [[nodiscard]] QString unavailableReason() const override;

private:
    void appear();
    void onPlaceChanged();
    void insist();
    bool isGnomeShell() const;
    void present();
    LabelForm formFor(const QString& keeper, bool isOldTray) const;
    LabelPicture pictureFor(const LabelForm& form) const;
    void draw(const LabelForm& form);
    void drawInTray();

    QDBusConnection m_bus;
    const Preferences& m_preferences;
    Options m_options;
    std::unique_ptr<BarAppearance> m_bar;
    StatusAreaHost m_host;
    XEmbedItem m_tray;
    StatusNotifierSession* m_session = nullptr; ///< a child; null before the first content
    QTimer m_insistence;
    int m_insisted = 0; ///< how often, since the item was taken
    int m_appearances = 0;
    StatusItemContent m_content;
    QList<IconPixmap> m_pixmaps;
    std::optional<LabelPicture> m_drawn; ///< in `m_pixmaps`
    std::optional<LabelPicture> m_drawnInTray;
    bool m_hasTextBeside = false; ///< whether the session was last given a text
};

} // namespace lumora
