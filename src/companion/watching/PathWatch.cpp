#include "companion/watching/PathWatch.h"

#include <QFile>
#include <QFileInfo>

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>

namespace lumora::companion {

namespace {

// A folder tells who comes and goes, a file what becomes of it. What is written into the files of a
// folder is another matter: a home has many that are none of ours.
constexpr uint32_t whatMatters =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr uint32_t ofFiles = IN_MODIFY | IN_ATTRIB;
constexpr uint32_t inFolders = IN_CLOSE_WRITE | IN_ATTRIB;

QString nearestPath(QString path) {
    while (!QFileInfo::exists(path) && QFileInfo(path).path() != path)
        path = QFileInfo(path).path();
    return path;
}

} // namespace

PathWatch::PathWatch(std::chrono::milliseconds settlingTime)
    : m_notices(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    , m_readable(QSocketNotifier::Read) {
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &PathWatch::happened);
    if (m_notices < 0)
        return;
    connect(&m_readable, &QSocketNotifier::activated, this, &PathWatch::receive);
    m_readable.setSocket(m_notices);
    m_readable.setEnabled(true);
}

PathWatch::~PathWatch() {
    m_readable.setEnabled(false);
    if (m_notices >= 0)
        close(m_notices);
}

void PathWatch::watch(const QStringList& paths, const QStringList& folders) {
    std::set<int> watches;
    const auto add = [&](const QString& path, uint32_t what) {
        const QByteArray name = QFile::encodeName(path);
        // What another path leads to as well is watched for both.
        const int made = inotify_add_watch(m_notices, name.constData(), what | IN_MASK_ADD);
        if (made >= 0)
            watches.insert(made);
    };
    for (const QString& path : paths) {
        const QString there = nearestPath(path);
        add(there, QFileInfo(there).isDir() ? whatMatters : whatMatters | ofFiles);
    }
    for (const QString& folder : folders) {
        const QString there = nearestPath(folder);
        add(there, there == folder ? whatMatters | inFolders : whatMatters);
    }
    for (const int old : m_watches) {
        if (!watches.contains(old))
            inotify_rm_watch(m_notices, old);
    }
    m_watches = std::move(watches);
}

void PathWatch::receive() {
    alignas(inotify_event) std::array<char, 4096> notices;
    bool isTold = false;
    for (ssize_t size = 0; (size = read(m_notices, notices.data(), notices.size())) > 0;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event notice{};
            std::memcpy(&notice, notices.data() + at, sizeof notice);
            at += ssize_t(sizeof notice) + notice.len;
            isTold = isTold || (notice.mask & IN_IGNORED) == 0; // which is no more than a farewell
        }
    }
    // Started once per burst, not anew by each notice, so that constant traffic cannot hold it off.
    if (isTold && !m_settling.isActive())
        m_settling.start();
}

} // namespace lumora::companion
