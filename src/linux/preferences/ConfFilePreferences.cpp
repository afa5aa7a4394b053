#include "linux/preferences/ConfFilePreferences.h"

#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
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
    m_announced = read().bytes;
    watch();

    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, [this] {
        watch();
        if (announce(read().bytes))
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
    const auto document = IniDocument::parse(read().bytes);
    return document ? document->value(key) : std::nullopt;
}

bool ConfFilePreferences::setValue(const QString& key, const QString& text) {
    const Content content = read();
    if (!content.readable)
        return false;
    auto document = IniDocument::parse(content.bytes);
    if (document && document->value(key) == text)
        return true;
    if (!document && !setAside(content.bytes))
        return false;
    if (!document)
        document.emplace();
    document->setValue(key, text);
    if (!write(document->bytes()))
        return false;
    watch();
    announce(document->bytes());
    return true;
}

ConfFilePreferences::Content ConfFilePreferences::read() const {
    // Without waiting: a pipe in the file's place would hold the reader up.
    const int descriptor =
        open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return {errno == ENOENT || errno == ENOTDIR, {}};
    QFile file;

    struct stat status{};

    const bool isFile = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                        file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle);
    if (!isFile) {
        close(descriptor);
        return {false, {}};
    }
    const QByteArray bytes = file.readAll();
    return {file.error() == QFile::NoError, bytes};
}

QString ConfFilePreferences::target() const {
    const QFileInfo info(m_path);
    if (!info.isSymLink())
        return m_path;
    return info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
}

bool ConfFilePreferences::setAside(const QByteArray& bytes) const {
    QString name = m_path + u".corrupt"_s;
    for (int count = 2; QFileInfo::exists(name); ++count)
        name = u"%1.corrupt.%2"_s.arg(m_path).arg(count);
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
