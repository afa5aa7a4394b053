#include "companion/settings/NewSettings.h"

#include <QRandomGenerator>

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

/// `text` as a text of TOML.
QString quoted(const QString& text) {
    QString result = u"\""_s;
    for (const QChar character : text) {
        if (character == u'"' || character == u'\\')
            result += u'\\';
        if (character.category() == QChar::Other_Control)
            result += u"\\u%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
        else
            result += character;
    }
    return result + u'"';
}

QString line(const QString& key, const QString& text) {
    return key + u" = "_s + quoted(text) + u'\n';
}

QString placeLine(const CalendarPlace& place) {
    if (const auto* address = std::get_if<IcsAddress>(&place))
        return line(u"url"_s, QString::fromUtf8(address->url.toEncoded()));
    if (const auto* file = std::get_if<IcsFile>(&place))
        return line(u"file"_s, file->path);
    if (const auto* folder = std::get_if<IcsFolder>(&place))
        return line(u"dir"_s, folder->path);
    return u"gnome = true\n"_s;
}

constexpr auto head = R"(# What lumora-service tells Lumora. It is read again whenever it changes.

)";

constexpr auto tail = R"(
# Calendars, each with one of url, file, dir and gnome:
# [[calendar]]
# name = "Team"
# url = "https://calendar.example.org/private-1234/basic.ics"
# [[habit]]
# id = "water"
# name = "Drink water"
# target = 8
# [[chore]]
# id = "plants"
# name = "Water the plants"
# room = "Living room"
# days = 7
)";

} // namespace

QByteArray newSettingsText(const NewSettings& settings) {
    QString text = QString::fromLatin1(head);
    text += line(u"token"_s, QString::fromLatin1(settings.token));
    text += u"port = %1\n"_s.arg(settings.port);
    text += u"# day_ends = 3 # the first hours behind midnight belong to the day before\n"_s;
    for (const CalendarSettings& calendar : settings.calendars)
        text += u"\n[[calendar]]\n"_s + line(u"name"_s, calendar.name) + placeLine(calendar.place);
    QStringList ids;
    for (const QString& name : settings.habits) {
        ids += idFor(name, ids);
        text += u"\n[[habit]]\n"_s + line(u"id"_s, ids.last()) + line(u"name"_s, name);
    }
    ids.clear();
    for (const ChoreSettings& chore : settings.chores) {
        ids += idFor(chore.name, ids);
        text += u"\n[[chore]]\n"_s + line(u"id"_s, ids.last()) + line(u"name"_s, chore.name) +
                u"days = %1\n"_s.arg(chore.days);
    }
    if (!settings.inbox.isEmpty())
        text += u"\n[capture]\n"_s + line(u"file"_s, settings.inbox);
    if (!settings.journal.isEmpty())
        text += u"\n[spending]\n"_s + line(u"hledger"_s, settings.journal);
    return (text + QString::fromLatin1(tail)).toUtf8();
}

QString idFor(const QString& name, const QStringList& taken) {
    QString base;
    for (const QChar character : name.toLower()) {
        if (character.isLetterOrNumber())
            base += character;
        else if (!base.isEmpty() && !base.endsWith(u'-'))
            base += u'-';
    }
    while (base.endsWith(u'-'))
        base.chop(1);
    if (base.isEmpty())
        base = u"item"_s;
    QString id = base;
    for (int count = 2; taken.contains(id); ++count)
        id = u"%1-%2"_s.arg(base).arg(count);
    return id;
}

QByteArray newToken() {
    std::array<quint32, 8> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words)
        .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

} // namespace lumora::companion
