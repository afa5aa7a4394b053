#include "linux/appearance/BarThemes.h"

#include "linux/appearance/StyleColor.h"

#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

const QString windowColor = u"Colors:Window/BackgroundNormal"_s;

/// The first file called `name` in `folders`; empty for none.
QString find(const QStringList& folders, const QString& name) {
    for (const QString& folder : folders) {
        const QString path = folder + u'/' + name;
        if (QFile::exists(path))
            return path;
    }
    return {};
}

/// The value under `key` in the first of the files called `name` that has it; absent for none.
QVariant valueInFirst(const QStringList& folders, const QString& name, const QString& key) {
    for (const QString& folder : folders) {
        const QString path = folder + u'/' + name;
        if (!QFile::exists(path))
            continue;
        if (const QVariant value = QSettings(path, QSettings::IniFormat).value(key);
            value.isValid())
            return value;
    }
    return {};
}

/// Whether a colour like "42,46,50" is dark; absent when it is none.
std::optional<bool> isDarkTriple(const QVariant& value) {
    const QStringList parts = value.toStringList();
    if (parts.size() < 3)
        return std::nullopt;
    return isDark(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
}

std::optional<bool> isDarkColorFile(const QString& path) {
    return path.isEmpty() ? std::nullopt
                          : isDarkTriple(QSettings(path, QSettings::IniFormat).value(windowColor));
}

/// Between the user's own files and the system's come those of the chosen look as a whole.
QStringList plasmaConfig(const XdgFolders& folders) {
    QStringList config = folders.config;
    if (!config.isEmpty())
        config.insert(1, config.first() + u"/kdedefaults"_s);
    return config;
}

std::optional<bool> plasmaWindowsAreDark(const XdgFolders& folders) {
    const QStringList config = plasmaConfig(folders);
    if (const auto dark = isDarkTriple(valueInFirst(config, u"kdeglobals"_s, windowColor)))
        return dark;
    const QString scheme = valueInFirst(config, u"kdeglobals"_s, u"ColorScheme"_s).toString();
    return scheme.isEmpty()
               ? std::nullopt
               : isDarkColorFile(find(folders.data, u"color-schemes/%1.colors"_s.arg(scheme)));
}

/// The bar's background in a style sheet: the first one given to the bar itself.
QString barBackground(const QString& sheet) {
    static const QRegularExpression rule(
        u"LXQtPanel[^{}]*#BackgroundWidget\\s*\\{[^}]*?background(?:-color)?\\s*:([^;}]*)"_s);
    return rule.match(sheet).captured(1);
}

} // namespace

XdgFolders XdgFolders::ofSession() {
    return {
        .config = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
        .data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation),
    };
}

QStringList plasmaBarFiles(const XdgFolders& folders) {
    QStringList files;
    for (const QString& folder : plasmaConfig(folders).mid(0, 2))
        files << folder + u"/plasmarc"_s << folder + u"/kdeglobals"_s;
    return files;
}

std::optional<bool> plasmaBarIsDark(const XdgFolders& folders) {
    const QVariant named = valueInFirst(plasmaConfig(folders), u"plasmarc"_s, u"Theme/name"_s);
    const QString theme = named.isValid() ? named.toString() : u"default"_s;
    const QString colors = find(folders.data, u"plasma/desktoptheme/%1/colors"_s.arg(theme));
    // A theme without colours of its own takes those of the windows.
    return colors.isEmpty() ? plasmaWindowsAreDark(folders) : isDarkColorFile(colors);
}

QStringList lxqtBarFiles(const XdgFolders& folders) {
    return {folders.config.value(0) + u"/lxqt/lxqt.conf"_s};
}

std::optional<bool> lxqtBarIsDark(const XdgFolders& folders, bool windowsAreDark) {
    const QString theme =
        valueInFirst(folders.config + folders.data, u"lxqt/lxqt.conf"_s, u"theme"_s).toString();
    const QString path = find(folders.data, u"lxqt/themes/%1/lxqt-panel.qss"_s.arg(theme));
    QFile sheet(path);
    if (path.isEmpty() || !sheet.open(QIODevice::ReadOnly))
        return std::nullopt;
    return isDarkBackground(barBackground(QString::fromUtf8(sheet.readAll())), windowsAreDark);
}

} // namespace lumora
