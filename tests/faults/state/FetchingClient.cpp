#include "faults/state/FetchingClient.h"

#include "platform/PreferenceKeys.h"
#include "platform/Spawn.h"
#include "support/Patience.h"

#include <QEventLoop>
#include <QRegularExpression>
#include <QTimer>

#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

QCoro::Task<> ImpatientClock::wait(std::chrono::milliseconds duration) {
    QMetaObject::invokeMethod(
        &m_queue, [this, duration] { m_clock.advance(duration); }, Qt::QueuedConnection);
    return m_clock.wait(duration);
}

FetchingClient::FetchingClient(HttpLimits limits)
    : m_wire(limits)
    , m_state({
          .clock = m_clock,
          .preferences = m_preferences,
          .secrets = m_secrets,
          .keychain = m_keychain,
          .service = m_service,
          .reminders = m_reminders,
          .wake = m_wake,
      }) {
    const bool isReady = m_keychain.setToken(u"t0ken"_s) &&
                         m_state.setRefreshMinutes(365 * 24 * 60); // the test alone fetches
    if (!isReady)
        throw std::runtime_error("nothing can be stored");
}

void FetchingClient::setEndpoint(const QString& endpoint) {
    if (!m_state.setEndpointURL(endpoint))
        throw std::runtime_error("the endpoint cannot be stored");
}

void FetchingClient::fetch() {
    QEventLoop loop;
    bool done = false;
    spawn(&loop, m_state.refresh(), [&] {
        done = true;
        loop.quit();
    });
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    if (!done)
        loop.exec();
    if (!done)
        throw std::runtime_error("the fetch does not end");
}

FetchEnd FetchingClient::end() const {
    StatusReport now = status();
    // What it calls a name depends on curl's version.
    static const QRegularExpression kind(u"(?<=matches target )[a-z0-9 ]+ (?=')"_s);
    if (now.message)
        now.message->remove(kind);
    return {now.state, now.message};
}

std::optional<double> FetchingClient::briefing() const {
    const auto& shown = m_state.lastGood();
    return shown ? std::optional(shown->generatedAt) : std::nullopt;
}

std::vector<std::chrono::milliseconds> FetchingClient::takeWaits() {
    const auto& all = m_clock.waits();
    const auto from = all.begin() + std::ptrdiff_t(std::exchange(m_waitsTaken, all.size()));
    return {from, all.end()};
}

int FetchingClient::takeTries() {
    return std::exchange(m_transport.count, 0);
}

void FetchingClient::forget() {
    m_item.contents.clear();
    m_reminders.scheduled.clear();
}

} // namespace lumora::tests
