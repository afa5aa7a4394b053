#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <atomic>
#include <memory>

namespace lumora::tests {

/// Owns a name on a bus, in a thread of its own, and is of no use there.
class FaultyBusService {
public:
    enum class Fault {
        Hangs,   ///< answers nothing, ever
        Refuses, ///< answers every call with an error
        Babbles, ///< answers every call with values of types that nobody expects
    };

    FaultyBusService(PrivateBus& bus, const QString& name, Fault fault);
    ~FaultyBusService();
    FaultyBusService(const FaultyBusService&) = delete;
    FaultyBusService& operator=(const FaultyBusService&) = delete;

    /// Sends the signal `count` times, each time with values of types that nobody expects.
    void flood(const QString& path, const QString& interface, const QString& signal, int count);

    /// How many calls came.
    int calls() const { return m_calls; }

private:
    class Answers;

    QDBusConnection m_connection;
    std::atomic<int> m_calls = 0;
    QThread m_thread;
    std::unique_ptr<Answers> m_answers;
};

} // namespace lumora::tests
