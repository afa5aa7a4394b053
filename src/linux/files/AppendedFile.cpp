#include "linux/files/AppendedFile.h"

#include "linux/files/WholeFile.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Closes a file descriptor with its own end.
class OpenFile {
public:
    explicit OpenFile(int descriptor)
        : m_descriptor(descriptor) {}

    ~OpenFile() {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int descriptor() const { return m_descriptor; }

private:
    const int m_descriptor;
};

tl::unexpected<QString> notAppended(const QString& path, int error) {
    return tl::unexpected<QString>(
        pathForPeople(path) + u": "_s +
        QString::fromLocal8Bit(std::generic_category().message(error)));
}

/// Whether the file of this size ends within a line.
bool endsWithinLine(int descriptor, off_t size) {
    char last = '\n';
    return size > 0 && pread(descriptor, &last, 1, size - 1) == 1 && last != '\n';
}

bool makeFolder(const QString& path) {
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    return parent != path && makeFolder(parent) &&
           QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

tl::expected<void, QString> appendLines(const QString& path, const QByteArray& lines) {
    if (!makeFolder(QFileInfo(path).path()))
        return notAppended(QFileInfo(path).path(), errno);
    constexpr mode_t ownerOnly = 0600;
    const OpenFile file(open(
        QFile::encodeName(path).constData(),
        O_RDWR | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, ownerOnly));

    struct stat status{};

    if (file.descriptor() < 0 || fstat(file.descriptor(), &status) != 0)
        return notAppended(path, errno);
    if (!S_ISREG(status.st_mode))
        return notAppended(path, EINVAL);
    QByteArray bytes = lines;
    if (endsWithinLine(file.descriptor(), status.st_size))
        bytes.prepend('\n');
    // One write, so that two programs' lines never mix. What a full disk takes half of is ended by
    // the next line that goes there.
    const ssize_t written = write(file.descriptor(), bytes.constData(), size_t(bytes.size()));
    if (written < 0)
        return notAppended(path, errno);
    if (written != bytes.size())
        return notAppended(path, ENOSPC);
    return {};
}

} // namespace lumora
