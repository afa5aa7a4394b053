#include "companion/focus/ActivityQuery.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

QStringList pathFrom(const QJsonValue& value) {
    QStringList path;
    for (const QJsonValue part : value.toArray())
        path += part.toString();
    return path;
}

/// The server splits a query into statements wherever a semicolon stands, in texts too.
bool canBeAsked(const ActivityCategory& category) {
    return !category.regex.isEmpty() && !category.regex.contains(u';') &&
           !category.path.join(QChar()).contains(u';');
}

QString rulesText(const std::vector<ActivityCategory>& categories) {
    QJsonArray rules;
    for (const ActivityCategory& category : categories) {
        if (!canBeAsked(category))
            continue;
        rules.append(QJsonArray{
            QJsonArray::fromStringList(category.path),
            QJsonObject{
                {u"type"_s, u"regex"_s},
                {u"regex"_s, category.regex},
                {u"ignore_case"_s, category.ignoresCase}}});
    }
    QString text = QString::fromUtf8(QJsonDocument(rules).toJson(QJsonDocument::Compact));
    // The server's language has no escapes but that of quotes: a backslash stands for itself.
    return text.replace(u"\\\\"_s, u"\\"_s);
}

QString instantText(std::chrono::sys_seconds instant) {
    return QDateTime::fromSecsSinceEpoch(instant.time_since_epoch().count(), QTimeZone::utc())
        .toString(u"yyyy-MM-dd'T'HH:mm:ss+00:00"_s);
}

bool isBelow(const QStringList& path, const QStringList& above) {
    return !above.isEmpty() && path.mid(0, above.size()) == above;
}

QStringList namedPath(const QString& name) {
    QStringList path;
    for (const QString& part : name.split(u'>'))
        path += part.trimmed();
    return path;
}

/// The score of the nearest category at or above `path` that has one.
double scoreOf(QStringList path, const std::vector<ActivityCategory>& categories) {
    for (; !path.isEmpty(); path.removeLast()) {
        const auto category = std::ranges::find(categories, path, &ActivityCategory::path);
        if (category != categories.end() && category->score)
            return *category->score;
    }
    return 0;
}

} // namespace

tl::expected<std::vector<ActivityCategory>, QString> categoriesIn(QByteArrayView json) {
    const auto document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isArray())
        return tl::unexpected(u"ActivityWatch has no categories"_s);
    std::vector<ActivityCategory> categories;
    for (const QJsonValue value : document.array()) {
        ActivityCategory category;
        category.path = pathFrom(value[u"name"_s]);
        const QJsonValue rule = value[u"rule"_s];
        if (rule[u"type"_s].toString() == u"regex")
            category.regex = rule[u"regex"_s].toString();
        category.ignoresCase = rule[u"ignore_case"_s].toBool();
        if (const QJsonValue score = value[u"data"_s][u"score"_s]; score.isDouble())
            category.score = score.toDouble();
        if (!category.path.isEmpty())
            categories.push_back(std::move(category));
    }
    return categories;
}

QByteArray activityQuery(
    const std::vector<ActivityCategory>& categories, std::chrono::sys_seconds from,
    std::chrono::sys_seconds until) {
    const QJsonArray statements{
        u"afk = query_bucket(find_bucket(\"aw-watcher-afk_\"));"_s,
        u"win = query_bucket(find_bucket(\"aw-watcher-window_\"));"_s,
        u"win = filter_period_intersect(win, filter_keyvals(afk, \"status\", [\"not-afk\"]));"_s,
        u"win = categorize(win, %1);"_s.arg(rulesText(categories)),
        u"RETURN = merge_events_by_keys(win, [\"$category\"]);"_s,
    };
    const QJsonObject body{
        {u"timeperiods"_s, QJsonArray{instantText(from) + u'/' + instantText(until)}},
        {u"query"_s, statements}};
    return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

tl::expected<std::vector<ActivityTime>, QString> timesIn(QByteArrayView json) {
    const auto document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isArray() || !document[0].isArray())
        return tl::unexpected(u"ActivityWatch answered something else than times"_s);
    std::vector<ActivityTime> times;
    for (const QJsonValue event : document[0].toArray()) {
        const double seconds = event[u"duration"_s].toDouble(-1);
        if (!std::isfinite(seconds) || seconds < 0)
            return tl::unexpected(u"ActivityWatch answered something else than times"_s);
        times.push_back({pathFrom(event[u"data"_s][u"$category"_s]), seconds});
    }
    return times;
}

FocusPart focusFrom(
    const std::vector<ActivityTime>& times, const std::vector<ActivityCategory>& categories,
    const QStringList& productive) {
    const auto isProductive = [&](const QStringList& path) {
        if (productive.isEmpty())
            return scoreOf(path, categories) > 0;
        return std::ranges::any_of(
            productive, [&](const QString& name) { return isBelow(path, namedPath(name)); });
    };
    double all = 0;
    double part = 0;
    for (const ActivityTime& time : times) {
        all += time.seconds;
        part += isProductive(time.path) ? time.seconds : 0;
    }
    return all > 0 ? FocusPart{part / all} : FocusPart{};
}

} // namespace lumora::companion
