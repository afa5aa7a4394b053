#include "linux/preferences/ConfFilePreferences.h"

#include "linux/files/WatchedPaths.h"
#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <tuple>
#include <utility>

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
    m_known = read();
    tellOfTrouble();
    watch();

    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &ConfFilePreferences::lookForChanges);
    // Started once per burst, not anew by each event, so that constant traffic cannot hold it off.
    const auto settle = [this] {
        if (!m_settling.isActive())
            m_settling.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, settle);
}

std::optional<QString> ConfFilePreferences::value(const QString& key) const {
    if (const auto unstored = m_unstored.constFind(key); unstored != m_unstored.cend())
        return *unstored;
    const auto& document = read().document;
    return document ? document->value(key) : std::nullopt;
}

bool ConfFilePreferences::isStored(const QString& key) const {
    return !m_unstored.contains(key);
}

tl::expected<void, QString> ConfFilePreferences::setValue(const QString& key, const QString& text) {
    const auto before = value(key);
    m_unstored.insert(key, text);
    auto stored = store();
    if (stored) {
        m_unstored.clear();
    } else if (m_content.document && m_content.document->value(key) == text) {
        m_unstored.remove(key); // the user has taken back what could not be stored
        stored = {};
    }
    if (before != text)
        Q_EMIT changed();
    return stored;
}

/// Has the file say what it does not say yet.
tl::expected<void, QString> ConfFilePreferences::store() {
    const Content content = read();
    if (!content.bytes)
        return tl::unexpected(content.bytes.error().message);
    IniDocument document = content.document.value_or(IniDocument());
    for (auto entry = m_unstored.cbegin(); entry != m_unstored.cend(); ++entry) {
        if (document.value(entry.key()) != entry.value())
            document.setValue(entry.key(), entry.value());
    }
    const QByteArray bytes = document.bytes();
    if (bytes == *content.bytes)
        return {};
    auto written =
        (content.document ? tl::expected<void, QString>() : setAside(*content.bytes)).and_then([&] {
            return write(bytes);
        });
    if (!written)
        return written;
    watch();
    // A change by another program that nobody was told of yet is still to be told of.
    if (content.bytes == m_known.bytes)
        m_known = {bytes, document};
    return {};
}

// Every use reads the file. Taken apart is only what is new: one look at a window asks for a dozen
// preferences.
const ConfFilePreferences::Content& ConfFilePreferences::read() const {
    auto bytes = readFile(m_path);
    if (!bytes && bytes.error().isAbsent)
        bytes = QByteArray();
    if (bytes != m_content.bytes)
        m_content = {bytes, bytes ? IniDocument::parse(*bytes) : std::nullopt};
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

tl::expected<void, QString> ConfFilePreferences::setAside(const QByteArray& bytes) const {
    QString name = m_path + u".corrupt"_s;
    for (int count = 2; QFileInfo::exists(name); ++count) {
        if (readFile(name) == bytes)
            return {}; // what followed has failed
        name = u"%1.corrupt.%2"_s.arg(m_path).arg(count);
    }
    return replaceFile(name, bytes, ownerOnly);
}

tl::expected<void, QString> ConfFilePreferences::write(const QByteArray& bytes) const {
    const QString path = target();
    std::ignore = ensureFolder(QFileInfo(path).path()); // without it, writing fails and says why
    return replaceFile(path, bytes, ownerOnly);
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
    watchOnly(m_watcher, wanted);
}

void ConfFilePreferences::lookForChanges() {
    watch();
    tellOfTrouble();
    const Content known = std::exchange(m_known, read());
    if (known.bytes == m_known.bytes)
        return;
    // Whoever changed a key by hand since it could not be stored has the last word.
    if (known.document && m_known.document) {
        m_unstored.removeIf([&](QMap<QString, QString>::iterator unstored) {
            const QString& key = unstored.key();
            return known.document->value(key) != m_known.document->value(key);
        });
    }
    Q_EMIT changed();
    Q_EMIT changedElsewhere();
}

} // namespace lumora
