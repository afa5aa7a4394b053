#include "companion/program/Worker.h"

#include "companion/program/Actions.h"

#include <utility>

namespace lumora::companion {

namespace {

/// A briefing is made every minute; one that is older was made before the machine slept.
constexpr std::chrono::seconds longestAge{90};
constexpr std::chrono::minutes tick{1};

std::chrono::sys_seconds systemNow() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

} // namespace

class Worker::Inside final : public QObject {
public:
    Inside(Worker& outside, ServiceSettings settings)
        : m_outside(outside)
        , m_sources(
              std::move(settings),
              {&systemNow, &QTimeZone::systemTimeZone, QDBusConnection::sessionBus()}) {
        // Many changes at once are one briefing.
        m_soon.setSingleShot(true);
        m_soon.setInterval(0);
        connect(&m_soon, &QTimer::timeout, this, &Inside::make);
        connect(&m_sources, &Sources::changed, &m_soon, qOverload<>(&QTimer::start));
        connect(&m_tick, &QTimer::timeout, this, &Inside::refresh);
        m_tick.setTimerType(Qt::VeryCoarseTimer);
        m_tick.start(tick);
        refresh();
    }

    void refresh() {
        m_sources.refreshDue();
        make();
    }

    void make() {
        const auto now = m_sources.now();
        auto briefing = std::make_shared<const QByteArray>(briefingText(m_sources.parts(), now));
        const std::lock_guard lock(m_outside.m_mutex);
        m_outside.m_made = {std::move(briefing), now};
    }

    void act(const ServiceAction& action, std::function<void(HttpAnswer)> answer) {
        perform(action, m_sources, [this, answer = std::move(answer)](const HttpAnswer& answered) {
            make();
            answer(answered);
        });
    }

private:
    Worker& m_outside;
    Sources m_sources;
    QTimer m_soon;
    QTimer m_tick;
};

Worker::Worker(ServiceSettings settings) {
    m_thread.setObjectName(QStringLiteral("sources"));
    m_thread.start();
    auto* const starter = new QObject;
    starter->moveToThread(&m_thread);
    QMetaObject::invokeMethod(
        starter,
        [this, starter, settings = std::move(settings)] {
            m_inside = new Inside(*this, settings);
            connect(&m_thread, &QThread::finished, m_inside, &QObject::deleteLater);
            starter->deleteLater();
        },
        Qt::BlockingQueuedConnection);
}

Worker::~Worker() {
    m_thread.quit();
    m_thread.wait();
}

void Worker::withBriefing(std::function<void(std::shared_ptr<const QByteArray>)> then) {
    const Made ready = made();
    const auto age = systemNow() - ready.at;
    if (ready.briefing && age >= std::chrono::seconds::zero() && age < longestAge)
        return then(ready.briefing);
    QMetaObject::invokeMethod(m_inside, [this, then = std::move(then)] {
        m_inside->refresh();
        QMetaObject::invokeMethod(this, [this, then] { then(made().briefing); });
    });
}

void Worker::act(ServiceAction action, std::function<void(HttpAnswer)> answer) {
    QMetaObject::invokeMethod(
        m_inside, [this, action = std::move(action), answer = std::move(answer)] {
            m_inside->act(action, [this, answer](const HttpAnswer& answered) {
                QMetaObject::invokeMethod(this, [answer, answered] { answer(answered); });
            });
        });
}

Worker::Made Worker::made() {
    const std::lock_guard lock(m_mutex);
    return m_made;
}

} // namespace lumora::companion
