#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString systemMessage(int error) {
    return QString::fromLocal8Bit(std::generic_category().message(error));
}

tl::unexpected<QString> failure(const QString& place, const QString& message) {
    return tl::unexpected<QString>(pathForPeople(place) + u": "_s + message);
}

tl::unexpected<ReadFailure> notRead(const QString& path, const QString& message) {
    return tl::unexpected<ReadFailure>({.message = failure(path, message).value()});
}

tl::unexpected<ReadFailure> notRead(const QString& path, int error) {
    auto failure = notRead(path, systemMessage(error));
    failure.value().isAbsent = error == ENOENT || error == ENOTDIR;
    return failure;
}

/// Writes past all buffers: of bytes that a file still holds when it closes, nobody would hear that
/// they could not be written.
bool writeAll(int descriptor, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = write(descriptor, bytes.data(), std::size_t(bytes.size()));
        if (written < 0 && errno != EINTR)
            return false;
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return true;
}

} // namespace

QString pathForPeople(const QString& path) {
    const QString home = QDir::homePath() + u'/';
    return path.startsWith(home) ? u"~/"_s + path.sliced(home.size()) : path;
}

tl::expected<QByteArray, ReadFailure> readFile(const QString& path, qint64 largest) {
    const QByteArray name = QFile::encodeName(path);

    struct stat status{};

    if (stat(name.constData(), &status) != 0)
        return notRead(path, errno);
    if (S_ISDIR(status.st_mode))
        return notRead(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        return notRead(path, u"Not a regular file"_s);
    if (status.st_size > largest)
        return notRead(path, EFBIG);

    // Without waiting: by now a pipe may stand there, and some files of the system's are like one.
    const int descriptor = open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle))
        return notRead(path, errno);
    // Room for what is there and one byte: where that comes too, the file has grown since.
    QByteArray bytes = file.read(status.st_size + 1);
    if (bytes.size() > status.st_size)
        bytes += file.read(largest + 1 - bytes.size());
    if (file.error() != QFile::NoError)
        return notRead(path, file.errorString());
    if (bytes.size() > largest)
        return notRead(path, EFBIG);
    return bytes;
}

tl::expected<void, QString> replaceFile(
    const QString& path, const QByteArray& bytes, QFile::Permissions permissions, qint64 largest) {
    if (bytes.size() > largest)
        return failure(path, systemMessage(EFBIG)); // nobody could read it again
    const QString folder = QFileInfo(path).path();
    // Without a name until it is whole, where the file system can do that: a crash leaves nothing.
    QTemporaryFile file(folder + u"/.lumora-XXXXXX"_s);
    if (!file.open() || !file.setPermissions(permissions))
        return failure(folder, file.errorString());
    // Synced, because a power cut must not find the new name on the disk and the bytes not. The
    // folder needs no syncing: where the new name is lost, the old file stands there, whole. That
    // costs the last change at most, and spares every keystroke in a setting another wait.
    if (!writeAll(file.handle(), bytes) || fsync(file.handle()) != 0)
        return failure(folder, systemMessage(errno));
    const QString name = file.fileName();
    if (name.isEmpty())
        return failure(folder, file.errorString());
    if (std::rename(QFile::encodeName(name).constData(), QFile::encodeName(path).constData()) != 0)
        return failure(path, systemMessage(errno));
    file.setAutoRemove(false);
    return {};
}

} // namespace lumora
