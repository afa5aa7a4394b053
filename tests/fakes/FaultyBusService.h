#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <memory>
#include <ostream>

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

private:
    class Answers;

    QDBusConnection m_connection;
    QThread m_thread;
    std::unique_ptr<Answers> m_answers;
};

/// How gtest prints a fault in the names of tests.
void PrintTo(FaultyBusService::Fault fault, std::ostream* out);

} // namespace lumora::tests
