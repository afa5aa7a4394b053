#include "linux/preferences/ConfFilePreferences.h"

#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

[[nodiscard]] bool ensureFolder(const QString& path) {
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    return parent != path && ensureFolder(parent) &&
           QDir().mkdir(path, ownerOnly | QFile::ExeOwner);
}

QString nearestFolder(QString path) {
    while (!QFileInfo(path).isDir() && QFileInfo(path).path() != path)
        path = QFileInfo(path).path();
    return path;
}

} // namespace

QString ConfFilePreferences::defaultPath() {
    QString folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + u"/.config"_s;
    return QDir::cleanPath(folder) + u"/lumora/lumora.conf"_s;
}

ConfFilePreferences::ConfFilePreferences(const QString& path)
    : m_path(QFileInfo(path).absoluteFilePath()) {
    // Where it cannot be made, the nearest folder is watched, and each write tries again.
    std::ignore = ensureFolder(QFileInfo(m_path).path());
    m_announced = read().bytes.value_or(QByteArray());
    tellOfTrouble();
    watch();

    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, [this] {
        watch();
        tellOfTrouble();
        if (announce(read().bytes.value_or(QByteArray())))
            Q_EMIT changedElsewhere();
    });
    // Started once per burst, not anew by each event, so that constant traffic cannot hold it off.
    const auto settle = [this] {
        if (!m_settling.isActive())
            m_settling.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, settle);
}

std::optional<QString> ConfFilePreferences::value(const QString& key) const {
    const auto& document = read().document;
    return document ? document->value(key) : std::nullopt;
}

bool ConfFilePreferences::setValue(const QString& key, const QString& text) {
    const Content& content = read();
    if (!content.bytes)
        return false;
    if (content.document && content.document->value(key) == text)
        return true;
    if (!content.document && !setAside(*content.bytes))
        return false;
    IniDocument document = content.document.value_or(IniDocument());
    document.setValue(key, text);
    const QByteArray bytes = document.bytes();
    if (!write(bytes))
        return false;
    watch();
    announce(bytes);
    return true;
}

// Every use reads the file. Taken apart is only what is new: one look at a window asks for a dozen
// preferences.
const ConfFilePreferences::Content& ConfFilePreferences::read() const {
    auto bytes = readFile(m_path);
    if (!bytes && bytes.error().isAbsent)
        bytes = QByteArray();
    if (bytes != m_content.bytes)
        m_content = {bytes, IniDocument::parse(bytes.value_or(QByteArray()))};
    return m_content;
}

void ConfFilePreferences::tellOfTrouble() {
    const auto& bytes = read().bytes;
    const QString trouble = bytes ? QString() : bytes.error().message;
    if (!trouble.isEmpty() && trouble != m_trouble)
        qWarning("lumora: all preferences have their defaults: %s", qUtf8Printable(trouble));
    m_trouble = trouble;
}

QString ConfFilePreferences::target() const {
    const QFileInfo info(m_path);
    if (!info.isSymLink())
        return m_path;
    return info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
}

bool ConfFilePreferences::setAside(const QByteArray& bytes) const {
    QString name = m_path + u".corrupt"_s;
    for (int count = 2; QFileInfo::exists(name); ++count) {
        if (readFile(name) == bytes)
            return true; // what followed has failed
        name = u"%1.corrupt.%2"_s.arg(m_path).arg(count);
    }
    return replaceFile(name, bytes, ownerOnly).has_value();
}

bool ConfFilePreferences::write(const QByteArray& bytes) {
    const QString path = target();
    return ensureFolder(QFileInfo(path).path()) && replaceFile(path, bytes, ownerOnly).has_value();
}

void ConfFilePreferences::watch() {
    const QString folder = nearestFolder(QFileInfo(m_path).path());
    const QString targetFolder = nearestFolder(QFileInfo(target()).path());
    QStringList wanted{folder, targetFolder};
    wanted.removeDuplicates();
    // What the path names may be another file by now: it is watched anew each time.
    m_watcher.removePath(m_path);
    if (QFileInfo(m_path).isFile())
        wanted += m_path;
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString& path : watched) {
        if (!wanted.contains(path))
            m_watcher.removePath(path);
    }
    for (const QString& path : std::as_const(wanted)) {
        if (!watched.contains(path))
            m_watcher.addPath(path);
    }
}

bool ConfFilePreferences::announce(const QByteArray& bytes) {
    if (bytes == m_announced)
        return false;
    m_announced = bytes;
    Q_EMIT changed();
    return true;
}

} // namespace lumora
