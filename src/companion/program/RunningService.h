#pragma once

#include "companion/program/Places.h"
#include "companion/program/Worker.h"
#include "companion/server/LoopbackServer.h"
#include "companion/watching/FileWatch.h"

#include <tl/expected.hpp>

#include <memory>

namespace lumora::companion {

/// The service while it runs: a worker and a server, which begin anew when the configuration has
/// changed. One with faults changes nothing.
class RunningService final : public QObject {
    Q_OBJECT

public:
    /// `complain` gets a line for people.
    RunningService(Places places, std::function<void(QString)> complain);

    /// Reads the configuration and begins to serve. The error is lines for people. To be called
    /// once.
    [[nodiscard]] tl::expected<quint16, QStringList> start();

Q_SIGNALS:
    /// A changed configuration cannot be served, because its port is taken.
    void failed();

private:
    [[nodiscard]] tl::expected<quint16, QString> serve(const ServiceSettings& settings);
    void settingsChanged();

    const Places m_places;
    const std::function<void(QString)> m_complain;
    FileWatch m_watch;
    ServiceSettings m_settings;
    std::unique_ptr<Worker> m_worker;
    std::unique_ptr<LoopbackServer> m_server;
};

} // namespace lumora::companion
