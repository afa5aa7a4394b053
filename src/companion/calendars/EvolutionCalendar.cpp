#include "companion/calendars/EvolutionCalendar.h"

#include <QDBusObjectPath>
#include <QHash>
#include <QMap>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

using KeyFile = QHash<QString, QHash<QString, QString>>;
using Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

const QString sourceInterface = u"org.gnome.evolution.dataserver.Source"_s;

KeyFile parsed(const QString& text) {
    KeyFile file;
    QString group;
    const QStringList lines = text.split(u'\n');
    for (const QString& written : lines) {
        const QString line = written.trimmed();
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            group = line.sliced(1).chopped(1);
            file[group]; // it may be empty
        } else if (equals > 0 && !line.startsWith(u'#')) {
            file[group].insert(line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
        }
    }
    return file;
}

} // namespace

std::optional<EvolutionCalendar> evolutionCalendar(const QString& uid, const QString& keyFile) {
    const KeyFile file = parsed(keyFile);
    const auto calendar = file.constFind(u"Calendar"_s);
    if (uid.isEmpty() || calendar == file.constEnd())
        return std::nullopt;
    const auto general = file.value(u"Data Source"_s);
    const bool isShown =
        general.value(u"Enabled"_s) != u"false"_s && calendar->value(u"Selected"_s) != u"false"_s;
    const QString backend = calendar->value(u"BackendName"_s);
    if (!isShown || backend.isEmpty() || backend == u"weather"_s)
        return std::nullopt;
    const QString name = general.value(u"DisplayName"_s);
    return EvolutionCalendar{.uid = uid, .name = name.isEmpty() ? uid : name};
}

std::vector<EvolutionCalendar> evolutionCalendars(const QDBusArgument& objects) {
    std::vector<EvolutionCalendar> calendars;
    if (objects.currentSignature() != u"a{oa{sa{sv}}}"_s)
        return calendars;
    const Objects sources = qdbus_cast<Objects>(objects);
    for (const auto& interfaces : sources) {
        const QVariantMap source = interfaces.value(sourceInterface);
        const auto calendar = evolutionCalendar(
            source.value(u"UID"_s).toString(), source.value(u"Data"_s).toString());
        if (calendar)
            calendars.push_back(*calendar);
    }
    std::ranges::sort(calendars, {}, &EvolutionCalendar::name);
    return calendars;
}

QString newestName(const QStringList& names, const QString& stem) {
    QString newest;
    int highest = -1;
    for (const QString& name : names) {
        bool isNumber = false;
        const int number = name.startsWith(stem) ? name.sliced(stem.size()).toInt(&isNumber) : 0;
        if (isNumber && number > highest) {
            highest = number;
            newest = name;
        }
    }
    return newest;
}

} // namespace lumora::companion
