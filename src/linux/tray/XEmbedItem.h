#pragma once

#include "platform/StatusItem.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSize>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <memory>

namespace lumora {

/// An icon in a system tray of the old kind, for desktops without status items. The toolkit's tray
/// is not touched before it is wanted and some time has gone by: it decides once per process how it
/// works, and a desktop that is just starting may yet bring a place for the real item.
class XEmbedItem final : public QObject {
    Q_OBJECT

public:
    struct Options {
        std::chrono::milliseconds grace = std::chrono::seconds(4);  ///< before the first look
        std::chrono::milliseconds pause = std::chrono::seconds(30); ///< between further looks
        std::chrono::milliseconds settling = std::chrono::milliseconds(500); ///< of a new tray
        std::function<bool()> trayExists = &QSystemTrayIcon::isSystemTrayAvailable;
        /// This program's windows. The toolkit has one of its own for an icon in a tray on X11.
        std::function<QWidgetList()> windows = &QApplication::topLevelWidgets;
        /// Has `changed` called whenever another program keeps the tray, or none does any more, as
        /// long as what it returns lives. Null where nobody tells.
        std::function<std::unique_ptr<QObject>(std::function<void()> changed)> watch =
            [](const std::function<void()>&) { return nullptr; };
    };

    explicit XEmbedItem(Options options, QObject* parent = nullptr);
    ~XEmbedItem() override;

    void setContent(const StatusItemContent& content);

    /// Trays that know more than squares give the icon its `room`, in points.
    void setIcon(const QIcon& icon, QSize room);

    /// Whether the icon should be in the tray; it appears when there is one.
    void setWanted(bool wanted);

    bool isShown() const { return m_tray && m_trayExists(); }

Q_SIGNALS:
    void shown();
    void activated(QPoint position);
    void chosen(MenuCommand command);

private:
    void look();
    void onTrayChanged();
    void onPressed(QSystemTrayIcon::ActivationReason reason);
    void fillMenu();
    void showInTray();
    void askForRoom();

    std::function<bool()> m_trayExists;
    std::function<QWidgetList()> m_windows;
    std::function<std::unique_ptr<QObject>(std::function<void()>)> m_makeWatch;
    std::chrono::milliseconds m_grace;
    std::chrono::milliseconds m_pause;
    std::chrono::milliseconds m_settling;
    QTimer m_timer;
    StatusItemContent m_content;
    QIcon m_icon;
    QSize m_room;
    std::unique_ptr<QObject> m_watch; ///< while the item is wanted, from when there was a tray
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_tray; ///< exists while the icon is in the tray
    QPointer<QWidget> m_window;              ///< of the icon; null where the toolkit has none
};

} // namespace lumora
