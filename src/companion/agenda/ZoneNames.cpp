#include "companion/agenda/ZoneNames.h"

#include <QHash>
#include <QList>

namespace lumora::companion {

namespace {

// The longest that any producer is known to write is a third of it.
constexpr qsizetype longestZoneName = 200;

const QHash<QByteArray, QByteArray>& namesInSmallLetters() {
    static const QHash<QByteArray, QByteArray> names = [] {
        QHash<QByteArray, QByteArray> made;
        const QList<QByteArray> ids = QTimeZone::availableTimeZoneIds();
        for (const QByteArray& id : ids)
            made.insert(id.toLower(), id);
        return made;
    }();
    return names;
}

// Not by QTimeZone itself: what begins with "UTC+" it makes a zone of that no file stands behind.
std::optional<QTimeZone> zoneByName(const QByteArray& name) {
    const auto known = namesInSmallLetters().constFind(name.toLower());
    if (known != namesInSmallLetters().constEnd())
        return QTimeZone(known.value());
    const QByteArray fromWindows = QTimeZone::windowsIdToDefaultIanaId(name);
    return fromWindows.isEmpty() ? std::nullopt : std::optional(QTimeZone(fromWindows));
}

} // namespace

std::optional<QTimeZone> systemZone(const QByteArray& name) {
    const QByteArray written = name.trimmed();
    if (written.isEmpty() || written.size() > longestZoneName)
        return std::nullopt;
    if (const auto zone = zoneByName(written))
        return zone;
    if (!written.startsWith('/'))
        return std::nullopt;
    // "/mozilla.org/20070129_1/America/New_York": the longest end that is a name.
    for (qsizetype slash = written.indexOf('/', 1); slash >= 0;
         slash = written.indexOf('/', slash + 1)) {
        if (const auto zone = zoneByName(written.sliced(slash + 1)))
            return zone;
    }
    return std::nullopt;
}

} // namespace lumora::companion
