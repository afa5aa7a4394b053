#pragma once

#include "linux/tray/ExportedObject.h"
#include "linux/tray/TrayTypes.h"
#include "platform/StatusItem.h"

#include <QHash>
#include <QList>

#include <optional>

namespace lumora {

/// The status item's menu at `/MenuBar` as `com.canonical.dbusmenu`, drawn by the host. One level
/// of rows; a row keeps its id for as long as it is in the menu, whatever happens around it.
class DBusMenu final : public ExportedObject {
    Q_OBJECT

public:
    explicit DBusMenu(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Replaces the rows; hosts hear of what changed and of nothing else.
    void setRows(const QList<StatusMenuRow>& rows);

Q_SIGNALS:
    /// An action row was chosen.
    void chosen(MenuCommand command);

protected:
    QVariantMap properties() const override;
    bool handleCall(const QDBusMessage& call) override;

private:
    struct Entry {
        int id = 0;
        StatusMenuRow row;
    };

    QList<Entry> entriesFor(const QList<StatusMenuRow>& rows);
    const Entry* find(int id) const;
    std::optional<QVariantMap> propertiesOf(int id) const;
    void answerLayout(const QDBusMessage& call);
    void answerGroupProperties(const QDBusMessage& call) const;
    void answerProperty(const QDBusMessage& call) const;
    void answerAboutToShow(const QDBusMessage& call) const;
    void answerAboutToShowGroup(const QDBusMessage& call) const;
    void takeEvent(const QDBusMessage& call);
    void takeEventGroup(const QDBusMessage& call);
    bool needsReading() const;
    QList<int> unknownAmong(const QList<int>& ids) const;
    void perform(const QList<DBusMenuEvent>& events);

    QList<Entry> m_entries;
    QHash<QString, int> m_ids; ///< by what makes a row the same row
    int m_lastId = 0;
    uint m_revision = 1;
    uint m_handedOut = 0; ///< the revision of the rows that a host read last; 0: none did
};

} // namespace lumora
