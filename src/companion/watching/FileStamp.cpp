#include "companion/watching/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace lumora::companion {

FileStamp fileStamp(const QString& path) {
    struct stat status{};

    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {
        .device = status.st_dev,
        .node = status.st_ino,
        .size = status.st_size,
        .seconds = status.st_ctim.tv_sec,
        .nanoseconds = status.st_ctim.tv_nsec};
}

} // namespace lumora::companion
