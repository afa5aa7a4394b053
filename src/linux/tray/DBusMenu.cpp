#include "linux/tray/DBusMenu.h"

#include "texts/PlainText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Kind = StatusMenuRow::Kind;

// A single underscore would underline the next letter.
QString menuLabel(const QString& label) {
    return singleLine(label).replace(u'_', "__"_L1);
}

// Absent properties have the protocol's defaults: enabled, visible, of type "standard".
QVariantMap rowProperties(const StatusMenuRow& row) {
    switch (row.kind) {
    case Kind::Action:
        return {{u"label"_s, menuLabel(row.label)}};
    case Kind::Text:
        return {{u"label"_s, menuLabel(row.label)}, {u"enabled"_s, false}};
    case Kind::Separator:
        return {{u"type"_s, u"separator"_s}};
    }
    return {};
}

QVariantMap onlyNamed(const QVariantMap& properties, const QStringList& names) {
    if (names.isEmpty())
        return properties;
    QVariantMap some;
    for (const QString& name : names) {
        if (properties.contains(name))
            some.insert(name, properties.value(name));
    }
    return some;
}

// An action is the same while its command is, whatever it is called today; texts have nothing but
// their order.
QString identityOf(const StatusMenuRow& row) {
    return QString::number(int(row.kind)) + u':' + QString::number(int(row.command));
}

// A separator belongs to what follows it. GNOME's extension does not move rows: a separator that
// stood elsewhere before stays there.
QString identityOf(const QList<StatusMenuRow>& rows, qsizetype index) {
    const QString own = identityOf(rows.at(index));
    const bool separates = rows.at(index).kind == Kind::Separator && index + 1 < rows.size();
    return separates ? own + u'/' + identityOf(rows.at(index + 1)) : own;
}

} // namespace

DBusMenu::DBusMenu(const QDBusConnection& bus, QObject* parent)
    : ExportedObject(bus, u"/MenuBar"_s, u"com.canonical.dbusmenu"_s, parent) {
    registerTrayTypes();
}

void DBusMenu::setRows(const QList<StatusMenuRow>& rows) {
    const QList<Entry> before = std::exchange(m_entries, entriesFor(rows));
    QList<DBusMenuItemProperties> updated;
    for (const Entry& entry : m_entries) {
        const auto old = std::ranges::find(before, entry.id, &Entry::id);
        if (old != before.end() && old->row != entry.row)
            updated += {entry.id, rowProperties(entry.row)};
    }
    if (!updated.isEmpty()) {
        sendSignal(
            u"ItemsPropertiesUpdated"_s,
            {QVariant::fromValue(updated), QVariant::fromValue(QList<DBusMenuItemKeys>())});
    }
    if (!std::ranges::equal(before, m_entries, {}, &Entry::id, &Entry::id))
        sendSignal(u"LayoutUpdated"_s, {++m_revision, 0});
}

QList<DBusMenu::Entry> DBusMenu::entriesFor(const QList<StatusMenuRow>& rows) {
    QList<Entry> entries;
    QHash<QString, int> ids;
    QHash<QString, int> seen;
    for (qsizetype index = 0; index < rows.size(); ++index) {
        const QString identity = identityOf(rows, index);
        const QString key = identity + u'#' + QString::number(seen[identity]++);
        const auto known = m_ids.constFind(key);
        const int id = known != m_ids.constEnd() ? *known : ++m_lastId;
        ids.insert(key, id);
        entries += {id, rows.at(index)};
    }
    m_ids = ids;
    return entries;
}

const DBusMenu::Entry* DBusMenu::find(int id) const {
    const auto entry = std::ranges::find(m_entries, id, &Entry::id);
    return entry == m_entries.end() ? nullptr : &*entry;
}

std::optional<QVariantMap> DBusMenu::propertiesOf(int id) const {
    if (id == 0)
        return QVariantMap{{u"children-display"_s, u"submenu"_s}};
    const Entry* entry = find(id);
    return entry ? std::optional(rowProperties(entry->row)) : std::nullopt;
}

QVariantMap DBusMenu::properties() const {
    return {
        {u"Version"_s, 3U},
        {u"TextDirection"_s, u"ltr"_s},
        {u"Status"_s, u"normal"_s},
        {u"IconThemePath"_s, QStringList()},
    };
}

bool DBusMenu::handleCall(const QDBusMessage& call) {
    const QString method = call.member() + u'(' + call.signature() + u')';
    if (method == u"GetLayout(iias)")
        answerLayout(call);
    else if (method == u"GetGroupProperties(aias)")
        answerGroupProperties(call);
    else if (method == u"GetProperty(is)")
        answerProperty(call);
    else if (method == u"Event(isvu)")
        takeEvent(call);
    else if (method == u"EventGroup(a(isvu))")
        takeEventGroup(call);
    else if (method == u"AboutToShow(i)")
        answerAboutToShow(call);
    else if (method == u"AboutToShowGroup(ai)")
        answerAboutToShowGroup(call);
    else
        return false;
    return true;
}

void DBusMenu::answerLayout(const QDBusMessage& call) {
    const int id = call.arguments().at(0).toInt();
    const int depth = call.arguments().at(1).toInt();
    const QStringList names = call.arguments().at(2).toStringList();
    const std::optional<QVariantMap> own = propertiesOf(id);
    if (!own) {
        fail(call, QDBusError::InvalidArgs, u"No row %1"_s.arg(id));
        return;
    }
    DBusMenuLayout layout{id, onlyNamed(*own, names), {}};
    if (id == 0 && depth != 0) {
        for (const Entry& entry : m_entries)
            layout.children += {entry.id, onlyNamed(rowProperties(entry.row), names), {}};
    }
    if (id == 0 && depth != 0)
        m_handedOut = m_revision;
    reply(call, {m_revision, QVariant::fromValue(layout)});
}

void DBusMenu::answerGroupProperties(const QDBusMessage& call) const {
    auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    const QStringList names = call.arguments().at(1).toStringList();
    if (ids.isEmpty()) {
        ids += 0;
        for (const Entry& entry : m_entries)
            ids += entry.id;
    }
    QList<DBusMenuItemProperties> found;
    for (const int id : ids) {
        if (const std::optional<QVariantMap> all = propertiesOf(id))
            found += {id, onlyNamed(*all, names)};
    }
    reply(call, {QVariant::fromValue(found)});
}

void DBusMenu::answerProperty(const QDBusMessage& call) const {
    const int id = call.arguments().at(0).toInt();
    const QString name = call.arguments().at(1).toString();
    const QVariantMap all = propertiesOf(id).value_or(QVariantMap());
    if (all.contains(name))
        reply(call, {QVariant::fromValue(QDBusVariant(all.value(name)))});
    else
        fail(call, QDBusError::InvalidArgs, u"Row %1 has no property %2"_s.arg(id).arg(name));
}

// A host that was told of new rows while it was still reading the old ones may have missed it.
bool DBusMenu::needsReading() const {
    return m_handedOut != m_revision;
}

void DBusMenu::answerAboutToShow(const QDBusMessage& call) const {
    const int id = call.arguments().at(0).toInt();
    if (unknownAmong({id}).isEmpty())
        reply(call, {needsReading()});
    else
        fail(call, QDBusError::InvalidArgs, u"No row %1"_s.arg(id));
}

void DBusMenu::answerAboutToShowGroup(const QDBusMessage& call) const {
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    const QList<int> needing = needsReading() && ids.contains(0) ? QList<int>{0} : QList<int>();
    reply(call, {QVariant::fromValue(needing), QVariant::fromValue(unknownAmong(ids))});
}

void DBusMenu::takeEvent(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const int id = arguments.at(0).toInt();
    if (!unknownAmong({id}).isEmpty()) {
        fail(call, QDBusError::InvalidArgs, u"No row %1"_s.arg(id));
        return;
    }
    reply(call);
    perform({{id, arguments.at(1).toString(), {}, arguments.at(3).toUInt()}});
}

void DBusMenu::takeEventGroup(const QDBusMessage& call) {
    const auto events = qdbus_cast<QList<DBusMenuEvent>>(call.arguments().at(0));
    QList<int> ids;
    for (const DBusMenuEvent& event : events)
        ids += event.id;
    const QList<int> unknown = unknownAmong(ids);
    if (!ids.isEmpty() && unknown.size() == ids.size()) {
        fail(call, QDBusError::InvalidArgs, u"None of these rows exist"_s);
        return;
    }
    reply(call, {QVariant::fromValue(unknown)});
    perform(events);
}

QList<int> DBusMenu::unknownAmong(const QList<int>& ids) const {
    QList<int> unknown;
    for (const int id : ids) {
        if (id != 0 && !find(id))
            unknown += id;
    }
    return unknown;
}

void DBusMenu::perform(const QList<DBusMenuEvent>& events) {
    for (const DBusMenuEvent& event : events) {
        const Entry* entry = find(event.id);
        if (event.name == u"clicked" && entry && entry->row.kind == Kind::Action)
            Q_EMIT chosen(entry->row.command);
    }
}

} // namespace lumora
