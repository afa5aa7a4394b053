// One small calendar for each thing that calendars do to whoever reads them, with what it has to
// show beside it: a line with days and zone, then one line for each event.

#include "ReadAgenda.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion::tests {

namespace {

const QDir calendarFolder(QStringLiteral(LUMORA_CALENDARS));

QString contents(const QString& name) {
    QFile file(calendarFolder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString written(std::chrono::sys_seconds time, const QTimeZone& zone, const QString& format) {
    return QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), zone).toString(format);
}

// Those of whole days by the days of the reader, the others by UTC.
QString line(const AgendaEvent& event, const QByteArray& zone) {
    const QTimeZone read = event.allDay ? QTimeZone(zone) : QTimeZone::utc();
    const QString format = event.allDay ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s;
    return written(event.start, read, format) + u' ' + written(event.end, read, format) + u' ' +
           event.title;
}

std::vector<std::string> calendarNames() {
    std::vector<std::string> names;
    const QStringList files = calendarFolder.entryList({u"*.ics"_s});
    for (const QString& file : files)
        names.push_back(file.chopped(4).toStdString());
    return names;
}

class CalendarFiles : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(CalendarFiles, ShowWhatStandsBesideThem) {
    const QString name = QString::fromStdString(GetParam());
    QStringList expected = contents(name + u".expected"_s).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_FALSE(expected.isEmpty());
    const QStringList head = expected.takeFirst().split(u' ');
    ASSERT_EQ(head.size(), 5);
    const Days days{.from = head[0], .to = head[2], .zone = head[4].toLatin1()};

    QStringList shown;
    for (const AgendaEvent& event : readAgenda(contents(name + u".ics"_s).toUtf8(), days))
        shown += line(event, days.zone);
    // In the order of the agenda, but that of equal times by their titles.
    std::ranges::sort(shown);
    std::ranges::sort(expected);
    EXPECT_EQ(shown.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All, CalendarFiles, testing::ValuesIn(calendarNames()), [](const auto& tested) {
        std::string name = tested.param;
        std::ranges::replace(name, '-', '_');
        return name;
    });

} // namespace lumora::companion::tests
