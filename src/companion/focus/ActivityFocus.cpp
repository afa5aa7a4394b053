#include "companion/focus/ActivityFocus.h"

#include "companion/focus/ActivityQuery.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

using Done = std::function<void(PartOutcome<FocusPart>)>;

constexpr std::chrono::seconds longestAnswer{10};

QUrl below(QUrl url, const QString& path) {
    QString base = url.path();
    while (base.endsWith(u'/'))
        base.chop(1);
    url.setPath(base + path);
    return url;
}

/// The body of an answer that says it is one.
tl::expected<QByteArray, QString> bodyOf(const WebOutcome& outcome) {
    if (!outcome)
        return tl::unexpected(u"ActivityWatch: "_s + outcome.error());
    if (outcome->status != 200)
        return tl::unexpected(u"ActivityWatch answered %1"_s.arg(outcome->status));
    return outcome->body;
}

} // namespace

AskForPart<FocusPart> activityFocus(
    ActivitySettings settings, Web& web,
    std::function<std::chrono::sys_seconds(std::chrono::sys_seconds now)> dayStart) {
    return [settings = std::move(settings), &web,
            dayStart = std::move(dayStart)](std::chrono::sys_seconds now, const Done& done) {
        WebRequest rules;
        rules.url = below(settings.url, u"/api/0/settings/classes"_s);
        rules.longest = longestAnswer;
        const auto ask = [settings, &web, from = dayStart(now), now,
                          done](const WebOutcome& answered) {
            const auto categories = bodyOf(answered).and_then(&categoriesIn);
            if (!categories)
                return done(tl::unexpected(categories.error()));
            WebRequest query;
            query.url = below(settings.url, u"/api/0/query/"_s);
            query.headers = {{"Content-Type", "application/json"}};
            query.body = activityQuery(*categories, from, now);
            query.longest = longestAnswer;
            web.send(query, [settings, categories = *categories, done](const WebOutcome& outcome) {
                done(bodyOf(outcome).and_then(&timesIn).map([&](const auto& times) {
                    return focusFrom(times, categories, settings.productive);
                }));
            });
        };
        web.send(rules, ask);
    };
}

} // namespace lumora::companion
