#include "companion/connecting/ClientSettings.h"

#include "linux/preferences/IniDocument.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace lumora;
using namespace lumora::companion;

namespace {

const QByteArray endpoint = "http://127.0.0.1:8764/api/briefing";

/// The endpoint as Lumora reads it.
QString endpointIn(const QByteArray& preferences) {
    const auto document = IniDocument::parse(preferences);
    return document ? document->value(u"endpointURL"_s).value_or(u"(none)"_s) : u"(no file)"_s;
}

} // namespace

TEST(ClientSettings, AreReadByLumora) {
    for (const QByteArray before :
         {"", "\n", "[General]\n", "endpointURL=old\n", "refreshMinutes=5",
          "# mine\n\n[Other]\na=b\n",
          "[General]\nendpointURL = https://old\nrefreshMinutes=5\n[Other]\nendpointURL=kept\n",
          "[General]\r\na=b\r\n", "a=b\n[Other]\nc=d\n[General]\ne=f\n[Last]\n",
          "[General]\nendpointURL=a\nendpointURL=b\n", "[Other]\nx=1\n[General]"}) {
        const QByteArray after = withEndpoint(before, endpoint);
        EXPECT_EQ(endpointIn(after), QString::fromLatin1(endpoint)) << after.constData();
        EXPECT_EQ(withEndpoint(after, endpoint), after);
    }
}

TEST(ClientSettings, KeepEveryOtherLine) {
    EXPECT_EQ(
        withEndpoint("; mine\n[General]\na=b\n\n[Other]\nendpointURL=kept\n", endpoint),
        "; mine\n[General]\nendpointURL=" + endpoint + "\na=b\n\n[Other]\nendpointURL=kept\n");
    EXPECT_EQ(
        withEndpoint("[General]\r\na=b\r\nendpointURL=old\r\n", endpoint),
        "[General]\r\na=b\r\nendpointURL=" + endpoint + "\r\n");
    EXPECT_EQ(withEndpoint("", endpoint), "[General]\nendpointURL=" + endpoint + '\n');
}

TEST(ClientSettings, AreStoredForTheUserAlone) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"new/lumora/lumora.conf"_s);
    ASSERT_TRUE(storeEndpoint(path, endpoint));
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_EQ(endpointIn(file.readAll()), QString::fromLatin1(endpoint));
    EXPECT_FALSE(file.permissions() & (QFile::ReadGroup | QFile::ReadOther));
}

TEST(ClientSettings, AreStoredWhereALinkLeads) {
    QTemporaryDir folder;
    ASSERT_TRUE(QFile::link(folder.filePath(u"far"_s), folder.filePath(u"link"_s)));
    ASSERT_TRUE(storeEndpoint(folder.filePath(u"link"_s), endpoint));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"link"_s)).isSymLink());
    EXPECT_TRUE(QFileInfo(folder.filePath(u"far"_s)).isFile());
}

TEST(ClientSettings, StayAsTheyAreWhereTheyCannotBeRead) {
    QTemporaryDir folder;
    EXPECT_FALSE(storeEndpoint(folder.path(), endpoint));
}
