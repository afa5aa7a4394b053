#include "companion/calendars/KeptBody.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

const KeptBody sample{
    .etag = "\"1\"",
    .lastModified = "",
    .fetchedAt = std::chrono::sys_seconds(std::chrono::seconds(1'741'075'200)),
    .body = QByteArray("BEGIN\nnot the end\n\n\0x", 21)};

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(KeptBody, ReadsAsItWasWritten) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"new/folders/a.calendar"_s);
    keepBody(path, sample);
    EXPECT_EQ(readKeptBody(path), sample);
}

TEST(KeptBody, IsForItsOwnerOnly) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"new/a.calendar"_s);
    keepBody(path, sample);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(QFileInfo(path).permissions() & others, QFile::Permissions());
    EXPECT_EQ(QFileInfo(QFileInfo(path).path()).permissions() & others, QFile::Permissions());
}

TEST(KeptBody, MayBeLargerThanASettingsFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.calendar"_s);
    KeptBody large = sample;
    large.body = QByteArray(10 * 1024 * 1024, 'x');
    keepBody(path, large);
    EXPECT_EQ(readKeptBody(path), large);
}

TEST(KeptBody, ThatIsSomethingElseIsNone) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.calendar"_s);
    EXPECT_EQ(readKeptBody(path), std::nullopt);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("BEGIN:VCALENDAR\n1\n2\n3\n4\n"),
          QByteArray("lumora-service calendar 1\nsoon\n\n\nbody"),
          QByteArray("lumora-service calendar 1\n12\n\"1\"")}) {
        write(path, bytes);
        EXPECT_EQ(readKeptBody(path), std::nullopt) << bytes.constData();
    }
}

TEST(KeptBody, HasANameThatTellsNoAddress) {
    const QString one = keptBodyPath(u"/cache"_s, QUrl(u"https://example.org/secret"_s));
    EXPECT_TRUE(one.startsWith(u"/cache/"_s));
    EXPECT_FALSE(one.contains(u"secret"_s));
    EXPECT_NE(one, keptBodyPath(u"/cache"_s, QUrl(u"https://example.org/secret?2"_s)));
}

} // namespace lumora::companion::tests
