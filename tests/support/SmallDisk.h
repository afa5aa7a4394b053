#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <sys/mount.h>

#include <cerrno>
#include <cstring>

namespace lumora::tests {

/// A disk of its own with room for very little, where the system lets this process have one.
class SmallDisk {
public:
    /// Room for `pages` pages of 4096 bytes.
    explicit SmallDisk(int pages) {
        const QByteArray options = "size=" + QByteArray::number(pages * 4096);
        m_isThere = mount("lumora-tests", place(), "tmpfs", 0, options.constData()) == 0;
        m_error = m_isThere ? 0 : errno;
    }

    ~SmallDisk() {
        if (m_isThere)
            umount2(place(), MNT_DETACH);
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere() const { return m_isThere; }

    /// Why there is none.
    const char* whyNot() const { return std::strerror(m_error); }

    QString filePath(const QString& name) const { return m_folder.filePath(name); }

    /// Takes all the room that is left.
    void fill() const {
        QFile filler(filePath(QStringLiteral("filler")));
        if (!filler.open(QFile::WriteOnly | QFile::Unbuffered))
            return;
        while (filler.write(QByteArray(4096, 'x')) > 0) {
        }
    }

    /// Gives the room free that `fill` took.
    void clear() const { QFile::remove(filePath(QStringLiteral("filler"))); }

private:
    const char* place() const { return m_place.constData(); }

    QTemporaryDir m_folder;
    QByteArray m_place = QFile::encodeName(m_folder.path());
    bool m_isThere = false;
    int m_error = 0;
};

} // namespace lumora::tests
