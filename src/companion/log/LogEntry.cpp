#include "companion/log/LogEntry.h"

#include <QDateTime>
#include <QList>

#include <algorithm>
#include <charconv>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

constexpr qint64 largestChange = 1'000'000;

/// A number of exactly this many digits; absent when something else stands there.
std::optional<int> digits(QByteArrayView text, qsizetype begin, qsizetype count) {
    int value = 0;
    const char* const first = text.data() + begin;
    const auto [end, error] = std::from_chars(first, first + count, value);
    const bool isPlain = *first >= '0' && *first <= '9';
    return error == std::errc() && end == first + count && isPlain ? std::optional(value)
                                                                   : std::nullopt;
}

struct WrittenTime {
    std::chrono::sys_seconds time;
    std::chrono::seconds offset;
};

/// "Z" or "+01:00".
std::optional<std::chrono::seconds> parseOffset(QByteArrayView text) {
    if (text == QByteArrayView("Z"))
        return std::chrono::seconds(0);
    if (text.size() != 6 || (text[0] != '+' && text[0] != '-') || text[3] != ':')
        return std::nullopt;
    const auto hours = digits(text, 1, 2);
    const auto minutes = digits(text, 4, 2);
    if (!hours || !minutes || *hours > 23 || *minutes > 59)
        return std::nullopt;
    const std::chrono::seconds offset = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
    return text[0] == '-' ? -offset : offset;
}

/// "2025-03-04T08:10:00+01:00"
std::optional<WrittenTime> parseTime(QByteArrayView text) {
    if (text.size() < 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' ||
        text[13] != ':' || text[16] != ':')
        return std::nullopt;
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 5, 2);
    const auto day = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    const auto offset = parseOffset(text.sliced(19));
    if (!year || !month || !day || !hour || !minute || !second || !offset)
        return std::nullopt;
    const std::chrono::year_month_day date{
        std::chrono::year(*year), std::chrono::month(unsigned(*month)),
        std::chrono::day(unsigned(*day))};
    if (*year == 0 || !date.ok() || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    const auto clocks = std::chrono::sys_days(date) + std::chrono::hours(*hour) +
                        std::chrono::minutes(*minute) + std::chrono::seconds(*second);
    return WrittenTime{clocks - *offset, *offset};
}

/// "+1", "-3" or "2".
std::optional<qint64> parseChange(QByteArrayView text) {
    if (text.startsWith('+') && text.size() > 1 && text[1] != '-')
        text = text.sliced(1);
    qint64 value = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || last != end || std::abs(value) > largestChange)
        return std::nullopt;
    return value;
}

bool isId(const QString& text) {
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return !text.trimmed().isEmpty() && std::ranges::none_of(text, isControl);
}

/// What stands between the tabs.
QList<QByteArrayView> fieldsOf(QByteArrayView line) {
    QList<QByteArrayView> fields;
    for (qsizetype begin = 0; fields.size() < 5;) {
        const qsizetype end = line.indexOf('\t', begin);
        if (end < 0) {
            fields += line.sliced(begin);
            break;
        }
        fields += line.sliced(begin, end - begin);
        begin = end + 1;
    }
    return fields;
}

QByteArray offsetText(std::chrono::seconds offset) {
    const auto minutes = std::abs(offset.count()) / 60;
    return QString::asprintf(
               "%c%02d:%02d", offset.count() < 0 ? '-' : '+', int(minutes / 60), int(minutes % 60))
        .toLatin1();
}

} // namespace

std::optional<LogEntry> parseLogLine(QByteArrayView line) {
    const auto fields = fieldsOf(line);
    if (fields.size() != 4)
        return std::nullopt;
    const auto written = parseTime(fields[0]);
    const QString id = QString::fromUtf8(fields[2]);
    if (!written || !isId(id))
        return std::nullopt;
    LogEntry entry{written->time, written->offset, LogEntry::Kind::Habit, id, 1};
    if (fields[1] == QByteArrayView("chore") && fields[3] == QByteArrayView("done")) {
        entry.kind = LogEntry::Kind::Chore;
        return entry;
    }
    const auto change = parseChange(fields[3]);
    if (fields[1] != QByteArrayView("habit") || !change)
        return std::nullopt;
    entry.change = *change;
    return entry;
}

LogEntries parseLog(QByteArrayView bytes) {
    LogEntries log;
    for (qsizetype begin = 0; begin < bytes.size();) {
        const qsizetype found = bytes.indexOf('\n', begin);
        const qsizetype end = found < 0 ? bytes.size() : found;
        QByteArrayView line = bytes.sliced(begin, end - begin);
        begin = end + 1;
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.trimmed().isEmpty() || line.startsWith('#'))
            continue;
        if (auto entry = parseLogLine(line))
            log.entries.push_back(*std::move(entry));
        else
            ++log.skipped;
    }
    return log;
}

QByteArray logLine(const LogEntry& entry) {
    const auto clocks = QDateTime::fromSecsSinceEpoch(
        (entry.time + entry.offset).time_since_epoch().count(), QTimeZone::utc());
    QByteArray line = clocks.toString(u"yyyy-MM-dd'T'HH:mm:ss"_s).toLatin1();
    line += offsetText(entry.offset);
    const bool isHabit = entry.kind == LogEntry::Kind::Habit;
    line += isHabit ? "\thabit\t" : "\tchore\t";
    line += entry.id.toUtf8() + '\t';
    if (!isHabit)
        line += "done";
    else
        line += (entry.change < 0 ? "" : "+") + QByteArray::number(entry.change);
    return line + '\n';
}

QDate dayOf(
    std::chrono::sys_seconds time, std::chrono::seconds offset, std::chrono::hours dayEnds) {
    const auto day = std::chrono::floor<std::chrono::days>(time + offset - dayEnds);
    return QDate(1970, 1, 1).addDays(day.time_since_epoch().count());
}

std::chrono::seconds offsetAt(std::chrono::sys_seconds time, const QTimeZone& zone) {
    const auto instant =
        QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), QTimeZone::utc());
    return std::chrono::seconds(zone.offsetFromUtc(instant));
}

} // namespace lumora::companion
