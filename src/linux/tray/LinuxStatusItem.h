#pragma once

#include "linux/tray/StatusNotifierSession.h"
#include "linux/tray/XEmbedItem.h"
#include "platform/BarAppearance.h"
#include "platform/StatusItem.h"

#include <QDBusConnection>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lumora {

/// The status item of Linux desktops: an item on the session bus with a text and a menu, or an
/// icon in a tray of the old kind where nobody takes such items. It goes where there is a place,
/// whenever one comes or goes.
class LinuxStatusItem final : public StatusItem {
    Q_OBJECT

public:
    struct Options {
        QString desktop; ///< the session's XDG_CURRENT_DESKTOP
        XEmbedItem::Options tray = {};

        /// Opens another connection to the session bus under a name of ours.
        std::function<QDBusConnection(const QString& name)> connect = [](const QString& name) {
            return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        };
    };

    /// `bar` is where the item is shown.
    LinuxStatusItem(
        const QDBusConnection& sessionBus, std::unique_ptr<BarAppearance> bar, Options options);

    void show(const StatusItemContent& content) override;
    [[nodiscard]] QString unavailableReason() const override;

private:
    void appear();
    void onPlaceChanged();
    void draw();

    QDBusConnection m_bus;
    Options m_options;
    std::unique_ptr<BarAppearance> m_bar;
    XEmbedItem m_tray;
    StatusNotifierSession* m_session = nullptr; ///< a child; null before the first content
    int m_appearances = 0;
    StatusItemContent m_content;
    QList<IconPixmap> m_pixmaps;
    std::optional<std::pair<QString, SymbolTone>> m_drawn;
};

} // namespace lumora
