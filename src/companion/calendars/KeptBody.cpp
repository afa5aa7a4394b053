#include "companion/calendars/KeptBody.h"

#include "companion/agenda/CalendarText.h"
#include "linux/files/WholeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr QByteArrayView firstLine = "lumora-service calendar 1";
constexpr qint64 largestKept = longestCalendarText + qint64{64} * 1024;
const QString ending = u".calendar"_s;

// The next line of `text`, which it is taken off; absent when there is none.
std::optional<QByteArray> takeLine(QByteArray& text) {
    const qsizetype end = text.indexOf('\n');
    if (end < 0)
        return std::nullopt;
    QByteArray line = text.first(end);
    text.remove(0, end + 1);
    return line;
}

} // namespace

QString keptBodyPath(const QString& folder, const QUrl& url) {
    const QByteArray name =
        QCryptographicHash::hash(url.toEncoded(), QCryptographicHash::Sha256).toHex();
    return folder + u'/' + QString::fromLatin1(name) + ending;
}

std::optional<KeptBody> readKeptBody(const QString& path) {
    auto text = readFile(path, largestKept);
    if (!text || takeLine(*text) != firstLine.toByteArray())
        return std::nullopt;
    const auto seconds = takeLine(*text);
    const auto etag = takeLine(*text);
    const auto lastModified = takeLine(*text);
    bool isNumber = false;
    const qint64 fetchedAt = seconds.value_or(QByteArray()).toLongLong(&isNumber);
    if (!lastModified || !isNumber)
        return std::nullopt;
    return KeptBody{
        .etag = *etag,
        .lastModified = *lastModified,
        .fetchedAt = std::chrono::sys_seconds(std::chrono::seconds(fetchedAt)),
        .body = *std::move(text)};
}

void keepBody(const QString& path, const KeptBody& kept) {
    const QString folder = QFileInfo(path).path();
    if (!QDir().exists(folder)) {
        QDir().mkpath(QFileInfo(folder).path());
        QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const auto seconds = kept.fetchedAt.time_since_epoch().count();
    const QByteArray text = firstLine.toByteArray() + '\n' + QByteArray::number(qint64{seconds}) +
                            '\n' + kept.etag + '\n' + kept.lastModified + '\n' + kept.body;
    std::ignore = replaceFile(path, text, QFile::ReadOwner | QFile::WriteOwner, largestKept);
}

void forgetOtherBodies(const QString& folder, const QList<QUrl>& urls) {
    QStringList used;
    for (const QUrl& url : urls)
        used += QFileInfo(keptBodyPath(folder, url)).fileName();
    const QStringList kept = QDir(folder).entryList({u'*' + ending}, QDir::Files);
    for (const QString& name : kept) {
        if (!used.contains(name))
            QFile::remove(folder + u'/' + name);
    }
}

} // namespace lumora::companion
