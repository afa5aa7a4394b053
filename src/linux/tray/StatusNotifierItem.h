#pragma once

#include "linux/tray/ExportedObject.h"
#include "linux/tray/TrayTypes.h"
#include "platform/StatusItem.h"

#include <QByteArray>
#include <QPoint>

#include <optional>

namespace lumora {

/// The program's `org.kde.StatusNotifierItem` at `/StatusNotifierItem`: symbol, text, tool tip
/// and presses. It knows neither who shows it nor what the symbol looks like.
class StatusNotifierItem final : public ExportedObject {
    Q_OBJECT

public:
    explicit StatusNotifierItem(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Takes title, text and tool tip from `content`; signals tell only of what changed.
    void setContent(const StatusItemContent& content);

    /// The symbol in several sizes.
    void setPixmaps(const QList<IconPixmap>& pixmaps);

    /// The name of the symbol among the desktop's icons; empty: only its pixmaps are shown.
    void setIconName(const QString& name);

    /// Tells hosts of the symbol once more.
    void announcePixmaps() const;

    /// The activation token that a host gave for the next activation, if any; it serves once.
    QByteArray takeActivationToken();

Q_SIGNALS:
    /// A press of whichever button. `position` is in screen coordinates and often wrong;
    /// `activationToken` is empty where the host gave none.
    void activated(QPoint position, QByteArray activationToken);

protected:
    QVariantMap properties() const override;
    void aboutToBeRead(const QString& name) override;
    bool handleCall(const QDBusMessage& call) override;

private:
    void setTitle(const QString& title, QVariantMap& changed);
    void setToolTip(const StatusToolTip& toolTip);
    void
    setLabel(const std::optional<QString>& label, QVariantMap& changed, QStringList& invalidated);

    QString m_title;
    std::optional<QString> m_label;
    StatusToolTip m_toolTip;
    bool m_toolTipRead = true; ///< since a host was last told of a new one, if one ever was
    QList<IconPixmap> m_pixmaps;
    QString m_iconName;
    QByteArray m_activationToken;
};

} // namespace lumora
