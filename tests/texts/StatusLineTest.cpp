#include "texts/StatusLine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

StatusReport showing(const std::optional<QString>& text, const QString& tooltip = {}) {
    StatusReport report;
    report.mode = u"now"_s;
    report.state = u"loaded"_s;
    report.text = text;
    report.tooltip = tooltip;
    return report;
}

QString line(const QString& text, StatusFormat format) {
    return statusLine(showing(text), format);
}

QJsonObject forWaybar(const StatusReport& report) {
    const QString line = statusLine(report, StatusFormat::Waybar);
    EXPECT_FALSE(line.contains(u'\n'));
    return QJsonDocument::fromJson(line.toUtf8()).object();
}

/// What a parser of Pango markup shows for `line`; fails where that is not plain text.
QString shownFrom(const QString& line) {
    QXmlStreamReader reader(u"<markup>"_s + line + u"</markup>"_s);
    reader.readNextStartElement();
    const QString text = reader.readElementText();
    EXPECT_FALSE(reader.hasError()) << line.toStdString();
    return text;
}

/// Titles that bars or terminals would take for more than text.
const QStringList hostileTitles{
    u"R&D sync"_s,
    u"&amp; &#x41; &nbsp;"_s,
    u"<b>big</b> <span foreground='red'>red</span>"_s,
    u"a < b > c"_s,
    u"<!-- --> <![CDATA[ ]]> <?a ?>"_s,
    u"it's \"so\" \\ so"_s,
    u"%{A1:poweroff:}now%{A}"_s,
    u"%%{F#f00}%{{%{"_s,
    u"100%"_s,
    u"{} {icon} {0} $text $(id) `id` ^c#f00^"_s,
};

const StatusFormat everyFormat[] = {
    StatusFormat::Text,    StatusFormat::Json,     StatusFormat::Waybar,
    StatusFormat::Polybar, StatusFormat::I3blocks, StatusFormat::I3statusRust,
};

} // namespace

TEST(StatusFormats, HaveNames) {
    EXPECT_EQ(
        statusFormatNames(),
        (QStringList{
            u"text"_s, u"json"_s, u"waybar"_s, u"polybar"_s, u"i3blocks"_s, u"i3status-rust"_s}));
    qsizetype index = 0;
    for (const StatusFormat format : everyFormat)
        EXPECT_EQ(statusFormat(statusFormatNames().value(index++)), format);
    for (const QString& other : {u""_s, u"yaml"_s, u"Text"_s, u"i3status"_s})
        EXPECT_EQ(statusFormat(other), std::nullopt) << other.toStdString();
}

TEST(StatusLine, IsEmptyForALabelWithoutText) {
    for (const StatusFormat format :
         {StatusFormat::Text, StatusFormat::Polybar, StatusFormat::I3statusRust})
        EXPECT_EQ(statusLine(showing(std::nullopt), format), QString());
    EXPECT_EQ(forWaybar(showing(std::nullopt)).value(u"text"_s), QString());
}

TEST(StatusLine, ForI3blocksIsNeverEmpty) {
    // It would go on to show the line before.
    EXPECT_EQ(statusLine(showing(std::nullopt), StatusFormat::I3blocks), u" "_s);
    EXPECT_EQ(statusLine(showing(u""_s), StatusFormat::I3blocks), u" "_s);
}

TEST(StatusLine, OfCommonTextIsTheSameForEverybody) {
    const QString text = u"Design review · 12m 🎉"_s;
    for (const StatusFormat format :
         {StatusFormat::Text, StatusFormat::Polybar, StatusFormat::I3blocks,
          StatusFormat::I3statusRust})
        EXPECT_EQ(line(text, format), text);
    EXPECT_EQ(forWaybar(showing(text)).value(u"text"_s), text);
}

TEST(StatusLine, IsOneForEverybodyAndWithoutControlCharacters) {
    for (const StatusFormat format : everyFormat) {
        const QString shown =
            line(u"a\nb\r\nc\u2028d\u2029e\u001b[2Jf\u0007\tg\u0000h"_s + QChar(0), format);
        for (const QChar character : shown)
            EXPECT_GE(character.unicode(), u' ') << shown.toStdString();
    }
    EXPECT_EQ(line(u"a\nb\u001b[2J\u009b2Jc"_s, StatusFormat::Text), u"a b [2J 2Jc"_s);
    EXPECT_EQ(line(u"a\nb\u001b[2J\u009b2Jc"_s, StatusFormat::I3blocks), u"a b [2J 2Jc"_s);
    EXPECT_EQ(line(u"a\n%\n{A}"_s, StatusFormat::Polybar), u"a % {A}"_s);
}

TEST(StatusLine, AsTextIsTheLabelAsItStands) {
    for (const QString& title : hostileTitles)
        EXPECT_EQ(line(title, StatusFormat::Text), title);
}

TEST(StatusLine, ForPolybarHasNoTagAndReadsTheSame) {
    for (const QString& title : hostileTitles) {
        const QString shown = line(title, StatusFormat::Polybar);
        EXPECT_FALSE(shown.contains(u"%{"_s)) << shown.toStdString();
        EXPECT_EQ(QString(shown).remove(QChar(0x200c)), title);
    }
    EXPECT_EQ(
        line(u"%{A1:poweroff:}now%{A}"_s, StatusFormat::Polybar),
        u"%\u200c{A1:poweroff:}now%\u200c{A}"_s);
    EXPECT_EQ(line(u"42%"_s, StatusFormat::Polybar), u"42%"_s);
}

TEST(StatusLine, ForPangoIsNoMarkupAndReadsTheSame) {
    for (const StatusFormat format : {StatusFormat::I3blocks, StatusFormat::I3statusRust}) {
        for (const QString& title : hostileTitles) {
            const QString shown = line(title, format);
            EXPECT_FALSE(shown.contains(u'<') || shown.contains(u'>')) << shown.toStdString();
            EXPECT_EQ(shownFrom(shown), title);
        }
        EXPECT_EQ(line(u"R&D <b>"_s, format), u"R&amp;D &lt;b&gt;"_s);
    }
}

TEST(StatusLine, ForWaybarIsNoMarkupAndReadsTheSame) {
    for (const QString& title : hostileTitles) {
        const QJsonObject shown = forWaybar(showing(title, title + u"\nUpdated 4m ago"_s));
        EXPECT_EQ(shownFrom(shown.value(u"text"_s).toString()), title);
        EXPECT_EQ(shownFrom(shown.value(u"tooltip"_s).toString()), title + u"\nUpdated 4m ago"_s);
    }
}

TEST(StatusLine, ForWaybarSaysWhatKindItIs) {
    StatusReport report = showing(u"2/5"_s, u"2 of 5 habits done"_s);
    report.mode = u"habits"_s;
    EXPECT_EQ(
        forWaybar(report), (QJsonObject{
                               {u"text"_s, u"2/5"_s},
                               {u"tooltip"_s, u"2 of 5 habits done"_s},
                               {u"alt"_s, u"habits"_s},
                               {u"class"_s, QJsonArray{u"habits"_s}},
                           }));
    report.state = u"failed"_s;
    EXPECT_EQ(
        forWaybar(report).value(u"class"_s), (QJsonArray{u"habits"_s, u"failed"_s, u"stale"_s}));
    report.mode = u"error"_s; // nothing has ever been there that could be old
    EXPECT_EQ(forWaybar(report).value(u"class"_s), (QJsonArray{u"error"_s, u"failed"_s}));
}

TEST(StatusLine, AsJsonIsTheReport) {
    const StatusReport report = showing(u"R&D <b> %{A}"_s, u"a\nb"_s);
    EXPECT_EQ(statusLine(report, StatusFormat::Json).toUtf8(), report.toJson());
}
