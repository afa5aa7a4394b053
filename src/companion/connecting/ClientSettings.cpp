#include "companion/connecting/ClientSettings.h"

#include "linux/files/WholeFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
constexpr auto endpointKey = "endpointURL";

bool isHeader(const QByteArray& line) {
    return line.startsWith('[') && line.endsWith(']');
}

bool setsEndpoint(const QByteArray& line) {
    const qsizetype equals = line.indexOf('=');
    return equals > 0 && line.first(equals).trimmed() == endpointKey;
}

/// Where the file is that a link there leads to, even to one that is yet to be made.
QString targetOf(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() ? info.symLinkTarget() : path;
}

} // namespace

QByteArray withEndpoint(const QByteArray& preferences, const QByteArray& endpoint) {
    const QByteArray lineBreak = preferences.contains("\r\n") ? "\r\n" : "\n";
    const QByteArray wanted = endpointKey + ("=" + endpoint);
    QList<QByteArray> lines = preferences.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast(); // what stands behind the last end of a line
    qsizetype header = -1;  // of [General], where a key's last line counts
    bool inGeneral = true;
    bool isSet = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (isHeader(line)) {
            inGeneral = line == "[General]";
            header = inGeneral ? i : header;
        } else if (inGeneral && setsEndpoint(line)) {
            lines[i] = wanted;
            isSet = true;
        }
    }
    if (!isSet && header < 0)
        lines.prepend("[General]");
    if (!isSet)
        lines.insert(header < 0 ? 1 : header + 1, wanted);
    QByteArray text;
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        text += line + lineBreak;
    }
    return text;
}

tl::expected<void, QString> storeEndpoint(const QString& path, const QByteArray& endpoint) {
    const QString target = targetOf(path);
    const auto before = readFile(target);
    if (!before && !before.error().isAbsent)
        return tl::unexpected(before.error().message);
    QDir().mkpath(QFileInfo(target).path()); // without it, writing fails and says why
    return replaceFile(target, withEndpoint(before.value_or(QByteArray()), endpoint), ownerOnly);
}

void askToRefresh() {
    const QString beside = QCoreApplication::applicationDirPath() + u"/lumora"_s;
    QProcess lumora;
    lumora.setProgram(QFileInfo(beside).isExecutable() ? beside : u"lumora"_s);
    lumora.setArguments({u"refresh"_s});
    // That it does not run is no news to anybody.
    lumora.setStandardOutputFile(QProcess::nullDevice());
    lumora.setStandardErrorFile(QProcess::nullDevice());
    lumora.startDetached();
}

} // namespace lumora::companion
