#include "texts/ActionTargets.h"

#include "briefing/TextBounds.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

template <typename Item>
tl::expected<QString, QString>
meantBy(const QString& idOrName, const std::vector<Item>& items, const QString& kind) {
    if (std::ranges::find(items, idOrName, &Item::id) != items.end())
        return idOrName;
    const QString name = idOrName.trimmed();
    QStringList ids;
    for (const Item& item : items) {
        if (item.name.trimmed().compare(name, Qt::CaseInsensitive) == 0)
            ids += item.id;
    }
    if (ids.isEmpty())
        return tl::unexpected(u"There is no %1 \"%2\""_s.arg(kind, idOrName));
    if (ids.size() > 1)
        return tl::unexpected(u"There are %1 %2s \"%3\"; say which by its id: %4"_s.arg(
            QString::number(ids.size()), kind, idOrName,
            beginning(ids.join(u", "_s), longestLine)));
    return ids.first();
}

} // namespace

tl::expected<QString, QString> habitMeantBy(const QString& idOrName, const Briefing& briefing) {
    return meantBy(idOrName, briefing.habits.items, u"habit"_s);
}

tl::expected<QString, QString> choreMeantBy(const QString& idOrName, const Briefing& briefing) {
    return meantBy(idOrName, briefing.chores.top, u"chore"_s);
}

} // namespace lumora
