#include "demo/DemoService.h"

#include "demo/DemoActions.h"
#include "demo/DemoControl.h"
#include "demo/DemoDay.h"
#include "demo/DemoInstant.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

namespace lumora {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto kSlowness = 3s;

constexpr auto kLoginPage = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Sign in</title></head>
<body><h1>Sign in</h1>
<form method="post"><input name="user"><input name="password" type="password">
<button>Sign in</button></form></body></html>
)";

DemoAnswer json(const QJsonDocument& document, int status = 200) {
    return {.status = status, .body = document.toJson(QJsonDocument::Compact)};
}

DemoAnswer json(const QJsonObject& object, int status = 200) {
    return json(QJsonDocument(object), status);
}

DemoAnswer error(int status, const QString& message) {
    return json(QJsonObject{{u"error"_s, message}}, status);
}

/// The methods that `path` takes; empty for an unknown path.
QByteArrayList methodsOf(const QByteArray& path) {
    if (path == "/api/briefing" || path == "/api/inbox")
        return {"GET", "HEAD"};
    if (path == "/api/briefing/action")
        return {"POST"};
    if (path == "/control")
        return {"GET", "HEAD", "POST"};
    return {};
}

/// Whether two scenarios show the same day, so that what was done on it carries over.
bool sameDay(DemoScenario one, DemoScenario other) {
    const auto dayOf = [](DemoScenario scenario) {
        const bool ownDay = scenario == DemoScenario::Empty || scenario == DemoScenario::Quiet;
        return ownDay ? scenario : DemoScenario::Busy;
    };
    return dayOf(one) == dayOf(other);
}

} // namespace

DemoService::DemoService(
    DemoScenario scenario, QByteArray token, DemoClock clock, const QTimeZone& zone)
    : m_scenario(scenario)
    , m_token(std::move(token))
    , m_clock(std::move(clock))
    , m_zone(zone)
    , m_dayFrom(std::chrono::ceil<std::chrono::minutes>(m_clock.now()))
    , m_data(initialDemoData(scenario, m_dayFrom, m_zone)) {}

DemoAnswer DemoService::answer(const DemoRequest& request) {
    const std::lock_guard lock(m_mutex);
    const auto methods = methodsOf(request.path);
    if (methods.isEmpty())
        return error(404, u"There is nothing here"_s);
    if (!methods.contains(request.method)) {
        const auto allowed = methods.join(", ");
        auto refusal = error(405, u"This takes %1"_s.arg(QString::fromLatin1(allowed)));
        refusal.allow = allowed;
        return refusal;
    }
    if (request.token != m_token)
        return error(401, u"The token is not the one asked for"_s);
    if (request.path == "/control")
        return request.method == "POST" ? control(request.body) : status();
    if (request.path == "/api/inbox")
        return inbox();
    return answerApi(request);
}

DemoAnswer DemoService::answerApi(const DemoRequest& request) {
    const auto usual = [&] {
        return request.path == "/api/briefing" ? briefing() : action(request.body);
    };
    switch (m_scenario) {
    case DemoScenario::Unauthorized:
        return error(401, u"No token is accepted"_s);
    case DemoScenario::Html:
        return {.body = kLoginPage, .contentType = "text/html; charset=utf-8"};
    case DemoScenario::Slow: {
        auto answer = usual();
        answer.delay = kSlowness;
        return answer;
    }
    case DemoScenario::Flaky:
        switch (m_flakyRequests++ % 3) {
        case 0:
            return error(503, u"Out of order for a moment"_s);
        case 1:
            return {.breakOff = true};
        default:
            return usual();
        }
    default:
        return usual();
    }
}

DemoAnswer DemoService::briefing() {
    const auto now = m_clock.now();
    settleSpending(m_data, now, m_zone);
    return json(stamped(demoBriefing(m_scenario, m_dayFrom, now, m_data, m_zone)));
}

/// Equal stamps mean equal documents: the stamp is the time of the latest change, and later than
/// every earlier one even when the clock was set back.
QJsonObject DemoService::stamped(QJsonObject briefing) {
    if (m_lastBriefing != briefing) {
        m_lastBriefing = briefing;
        m_lastStamp = std::max(demoStamp(m_clock.now()), m_lastStamp + 0.001);
    }
    briefing[u"generatedAt"_s] = m_lastStamp;
    return briefing;
}

DemoAnswer DemoService::action(const QByteArray& body) {
    const auto now = m_clock.now();
    // Figures still on their way must land before a further request replaces their time.
    settleSpending(m_data, now, m_zone);
    const auto reply = performDemoAction(m_data, body, now);
    return reply ? json(*reply) : error(reply.error().status, reply.error().message);
}

DemoAnswer DemoService::inbox() const {
    QJsonArray texts;
    for (const auto& capture : m_data.inbox) {
        texts.append(
            QJsonObject{{u"text"_s, capture.text}, {u"at"_s, demoInstantText(capture.at, m_zone)}});
    }
    return json(QJsonDocument(texts));
}

DemoAnswer DemoService::control(const QByteArray& body) {
    const auto wanted = parseDemoControl(body, m_zone);
    if (!wanted)
        return error(400, wanted.error());
    const auto moved = [](Instant instant, std::optional<Seconds> by) {
        return by ? instant + std::chrono::round<Instant::duration>(*by) : instant;
    };
    const auto now = moved(wanted->now.value_or(m_clock.now()), wanted->advance);
    const auto dayFrom = moved(wanted->dayFrom.value_or(m_dayFrom), wanted->shiftDay);
    if (!isDemoInstant(now) || !isDemoInstant(dayFrom))
        return error(400, u"That is beyond the years 2000 to 2199"_s);
    if (wanted->now || wanted->advance)
        m_clock.set(now);
    m_dayFrom = dayFrom;
    if (const auto scenario = wanted->scenario)
        switchTo(*scenario);
    return status();
}

DemoAnswer DemoService::status() const {
    return json(QJsonObject{
        {u"scenario"_s, demoScenarioName(m_scenario)},
        {u"now"_s, demoInstantText(m_clock.now(), m_zone)},
        {u"dayFrom"_s, demoInstantText(m_dayFrom, m_zone)},
    });
}

void DemoService::switchTo(DemoScenario scenario) {
    if (!sameDay(m_scenario, scenario)) {
        auto inbox = std::move(m_data.inbox);
        m_data = initialDemoData(scenario, m_dayFrom, m_zone);
        m_data.inbox = std::move(inbox);
    }
    m_scenario = scenario;
    m_flakyRequests = 0;
}

} // namespace lumora
