#include "demo/DemoActions.h"

#include "demo/DemoInstant.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace lumora {

using namespace Qt::Literals::StringLiterals;

namespace {

using Reply = tl::expected<QJsonObject, DemoFault>;

/// What the bank reports with every refresh.
constexpr double kNewlySpent = 41.60;

tl::unexpected<DemoFault> fault(int status, const QString& message) {
    return tl::unexpected(DemoFault{status, message});
}

QJsonObject done() {
    return {{u"ok"_s, true}};
}

/// The text member `name`; an error when it is missing or no text.
tl::expected<QString, DemoFault> textMember(const QJsonObject& action, const QString& name) {
    const auto value = action[name];
    if (!value.isString())
        return fault(400, u"The action needs a text \"%1\""_s.arg(name));
    return value.toString();
}

Reply toggleHabit(DemoData& data, const QString& id) {
    const auto habit = std::ranges::find(data.habits, id, &DemoHabit::id);
    if (habit == data.habits.end())
        return fault(404, u"There is no habit \"%1\""_s.arg(id));
    if (habit->isDone()) {
        habit->count = 0;
        habit->streak = std::max(0, habit->streak - 1);
    } else {
        ++habit->count;
        habit->streak += habit->isDone() ? 1 : 0;
    }
    return done();
}

Reply finishChore(DemoData& data, const QString& id) {
    if (data.chores.removeIf([&](const DemoChore& chore) { return chore.id == id; }) == 0)
        return fault(404, u"There is no chore \"%1\" due"_s.arg(id));
    return done();
}

Reply capture(DemoData& data, const QString& text, Instant now) {
    if (text.trimmed().isEmpty())
        return fault(400, u"There is nothing to capture"_s);
    data.inbox.append({text, now});
    return done();
}

QJsonObject declined(const QString& reason) {
    return {{u"ok"_s, true}, {u"queued"_s, false}, {u"reason"_s, reason}};
}

QJsonObject refreshSpending(DemoData& data, Instant now) {
    if (!data.spending)
        return declined(u"No account is connected"_s);
    auto& asked = data.spending->refreshAsked;
    if (asked && *asked <= now && now - *asked < kSpendingPause)
        return declined(u"Spending was refreshed less than a minute ago"_s);
    asked = now;
    data.spending->refreshUnderWay = true;
    return {{u"ok"_s, true}, {u"queued"_s, true}};
}

double toCents(double amount) {
    return std::round(amount * 100.0) / 100.0;
}

} // namespace

Reply performDemoAction(DemoData& data, const QByteArray& body, Instant now) {
    const auto document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return fault(400, u"The body is not a JSON object"_s);
    const auto action = document.object();
    const auto type = textMember(action, u"type"_s);
    if (!type)
        return tl::unexpected(type.error());
    if (*type == "habit.toggle"_L1)
        return textMember(action, u"id"_s).and_then([&](const QString& id) {
            return toggleHabit(data, id);
        });
    if (*type == "chore.done"_L1)
        return textMember(action, u"id"_s).and_then([&](const QString& id) {
            return finishChore(data, id);
        });
    if (*type == "capture"_L1)
        return textMember(action, u"text"_s).and_then([&](const QString& text) {
            return capture(data, text, now);
        });
    if (*type == "spending.refresh"_L1)
        return refreshSpending(data, now);
    return fault(400, u"There is no action \"%1\""_s.arg(*type));
}

void settleSpending(DemoData& data, Instant now, const QTimeZone& zone) {
    if (!data.spending)
        return;
    auto& spending = *data.spending;
    if (!spending.refreshUnderWay || !spending.refreshAsked)
        return;
    const auto asked = *spending.refreshAsked;
    if (asked <= now && now - asked < kSpendingJob)
        return;
    const auto landed = asked + kSpendingJob;
    spending.refreshUnderWay = false;
    spending.monthToDate = toCents(spending.monthToDate + kNewlySpent);
    spending.top.front().amount = toCents(spending.top.front().amount + kNewlySpent);
    spending.asOf = demoDate(landed, zone).toString(Qt::ISODate);
    spending.generatedAt = demoStamp(landed);
    spending.stale = false;
}

} // namespace lumora
