#pragma once

#include "demo/DemoClock.h"
#include "demo/DemoData.h"
#include "demo/DemoScenario.h"

#include <QByteArray>
#include <QJsonObject>
#include <QTimeZone>

#include <chrono>
#include <mutex>

namespace lumora {

/// A request, as far as the demo service looks at it.
struct DemoRequest {
    QByteArray method;
    QByteArray path;
    QByteArray token; ///< the X-Api-Key header; empty without one
    QByteArray body;
};

/// What the demo service wants answered.
struct DemoAnswer {
    int status = 200;
    QByteArray body = {};
    QByteArray contentType = "application/json";
    QByteArray allow = {};              ///< the Allow header; empty: none
    std::chrono::milliseconds delay{0}; ///< how long to wait before answering
    bool breakOff = false;              ///< close the connection before the body
};

/// The demo service without its network: one day, its data, and what each request gets. Its day is
/// laid out once, at the time of creation rounded up to the whole minute, as calendars do (see
/// DemoDay.h), and moved only by control requests, to the second. May be asked from several
/// threads.
class DemoService {
public:
    DemoService(DemoScenario scenario, QByteArray token, DemoClock clock, const QTimeZone& zone);

    DemoAnswer answer(const DemoRequest& request);

private:
    DemoAnswer answerApi(const DemoRequest& request);
    DemoAnswer briefing();
    DemoAnswer action(const QByteArray& body);
    DemoAnswer inbox() const;
    DemoAnswer control(const QByteArray& body);
    DemoAnswer status() const;
    void switchTo(DemoScenario scenario);
    QJsonObject stamped(QJsonObject briefing);

    std::mutex m_mutex;
    DemoScenario m_scenario;
    QByteArray m_token;
    DemoClock m_clock;
    QTimeZone m_zone;
    Instant m_dayFrom;
    DemoData m_data;
    unsigned m_flakyRequests = 0; ///< requests seen since the service became flaky
    QJsonObject m_lastBriefing;   ///< without its stamp
    double m_lastStamp = 0;       ///< of m_lastBriefing
};

} // namespace lumora
