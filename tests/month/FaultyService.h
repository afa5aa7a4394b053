#pragma once

#include "platform/Clock.h"
#include "platform/HttpTransport.h"

#include <QPointer>

#include <random>
#include <set>

namespace lumora::tests {

/// A dashboard service, and the way to it, on which anything may go wrong; what does is drawn from
/// the month's one source of chance. Its briefings carry a number each instead of a time.
class FaultyService final : public QObject, public HttpTransport {
public:
    /// Both must outlive it.
    FaultyService(Clock& clock, std::mt19937& random);

    QCoro::Task<HttpOutcome> exchange(HttpRequest request) override;

    /// From now on every exchange ends well (or anything may happen again).
    void setWell(bool well) { m_well = well; }

    /// The place in order in which the answer with the briefing of this number came; absent for one
    /// that no answer carried.
    std::optional<std::size_t> cameAs(double number) const;

    /// How many exchanges ended, of which kinds.
    std::size_t exchangeCount() const { return m_exchangeCount; }

    const std::set<QString>& kindsSeen() const { return m_kindsSeen; }

private:
    struct Ending {
        QString kind;
        std::chrono::milliseconds after{};
        HttpOutcome outcome;
        std::optional<double> number = {}; ///< of the briefing in it
    };

    Ending draw(const HttpRequest& request);
    Ending goodAnswer(const HttpRequest& request);
    QByteArray briefing(double number) const;

    Clock& m_clock;
    std::mt19937& m_random;
    bool m_well = false;
    double m_lastNumber = 0;
    std::vector<double> m_came; ///< numbers of the briefings, in the order in which they came
    std::size_t m_exchangeCount = 0;
    std::set<QString> m_kindsSeen;
};

} // namespace lumora::tests
