#include "SomeArguments.h"

#include "linux/tray/TrayTypes.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

/// A colour as the portal sends it.
struct Parts {
    double first = 0;
    double second = 0;
    double third = 0;
};

static QDBusArgument& operator<<(QDBusArgument& out, const Parts& parts) {
    out.beginStructure();
    out << parts.first << parts.second << parts.third;
    out.endStructure();
    return out;
}

static const QDBusArgument& operator>>(const QDBusArgument& in, Parts& parts) {
    in.beginStructure();
    in >> parts.first >> parts.second >> parts.third;
    in.endStructure();
    return in;
}

} // namespace lumora::fuzz

Q_DECLARE_METATYPE(lumora::fuzz::Parts)

namespace lumora::fuzz {

namespace {

constexpr int mostWithin = 4; ///< levels, and items of each
constexpr qsizetype mostArguments = 8;

/// Texts that mean something to some of those that are asked, and any other.
QString someName(Input& input) {
    static const std::array names{
        u"clicked"_s,
        u"label"_s,
        u"enabled"_s,
        u"ToolTip"_s,
        u"XAyatanaLabel"_s,
        u"com.canonical.dbusmenu"_s,
        u"org.kde.StatusNotifierItem"_s,
        u"org.freedesktop.appearance"_s,
        u"color-scheme"_s,
        u"accent-color"_s,
        u"reduced-motion"_s,
        u"org.gnome.desktop.interface"_s,
        u"enable-animations"_s,
        u"org.kde.kdeglobals.KDE"_s,
        u"AnimationDurationFactor"_s,
        u"xfce4-panel"_s,
        u"/panels/dark-mode"_s,
        u"org.freedesktop.Secret.Collection"_s,
        u"Locked"_s,
    };
    const int index = input.below(int(names.size()) + 1);
    return size_t(index) < names.size() ? names[size_t(index)] : input.text().remove(u'\0');
}

QStringList someNames(Input& input) {
    QStringList list;
    for (int left = input.below(mostWithin); left > 0; --left)
        list += someName(input);
    return list;
}

QVariant someValue(Input& input, int level);

QVariantMap someMap(Input& input, int level) {
    QVariantMap map;
    for (int left = input.below(mostWithin); left > 0; --left)
        map.insert(someName(input), someValue(input, level));
    return map;
}

QList<int> someNumbers(Input& input) {
    QList<int> list;
    for (int left = input.below(mostWithin); left > 0; --left)
        list += input.number<qint8>();
    return list;
}

DBusMenuEvent someMenuEvent(Input& input, int level) {
    return {
        input.number<qint8>(), someName(input), QDBusVariant(someValue(input, level)),
        input.number<quint32>()};
}

QVariant somethingWithin(Input& input, int level) {
    switch (input.below(5)) {
    case 0:
        return QVariant::fromValue(QDBusVariant(someValue(input, level)));
    case 1:
        return someMap(input, level);
    case 2:
        return QVariantList{someValue(input, level), someValue(input, level)};
    case 3:
        return QVariant::fromValue(QList<DBusMenuEvent>{someMenuEvent(input, level)});
    default:
        return QVariant::fromValue(someMenuEvent(input, level));
    }
}

QVariant someValue(Input& input, int level) {
    switch (input.below(level < mostWithin ? 16 : 12)) {
    case 0:
        return input.flag();
    case 1:
        return int(input.number<qint8>());
    case 2:
        return input.number<quint32>();
    case 3:
        return input.number<qint64>();
    case 4:
        return input.number<quint64>();
    case 5:
        return input.number<double>();
    case 6:
        return QVariant::fromValue(input.number<quint16>());
    case 7:
        return someName(input);
    case 8:
        return QVariant::fromValue(QDBusObjectPath(u"/a/%1"_s.arg(input.below(100))));
    case 9:
        return someNames(input);
    case 10:
        return QVariant::fromValue(someNumbers(input));
    case 11:
        return QVariant::fromValue(
            Parts{input.number<double>(), input.number<double>(), input.number<double>()});
    default:
        return somethingWithin(input, level + 1);
    }
}

} // namespace

QVariantList someArguments(Input& input) {
    static const bool registered = [] {
        registerTrayTypes();
        qDBusRegisterMetaType<Parts>();
        return true;
    }();
    Q_UNUSED(registered)
    QVariantList arguments;
    while (!input.isAtEnd() && arguments.size() < mostArguments)
        arguments += someValue(input, 0);
    return arguments;
}

} // namespace lumora::fuzz
