#include "linux/files/WholeFile.h"

#include <QFileInfo>
#include <QTemporaryFile>

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
    return tl::unexpected<QString>(place + u": "_s + message);
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

tl::expected<void, QString>
replaceFile(const QString& path, const QByteArray& bytes, QFile::Permissions permissions) {
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
