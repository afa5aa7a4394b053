#include "companion/program/RunningService.h"

#include "companion/connecting/ClientSettings.h"
#include "companion/program/Setup.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

RunningService::RunningService(Places places, std::function<void(QString)> complain)
    : m_places(std::move(places))
    , m_complain(std::move(complain))
    , m_watch(m_places.settingsFile) {
    connect(&m_watch, &FileWatch::changed, this, &RunningService::settingsChanged);
}

tl::expected<quint16, QStringList> RunningService::start() {
    m_watch.acknowledge();
    const auto settings = readSettingsFile(m_places);
    if (!settings)
        return tl::unexpected(settings.error());
    return serve(*settings).map_error([](const QString& reason) { return QStringList{reason}; });
}

tl::expected<quint16, QString> RunningService::serve(const ServiceSettings& settings) {
    // Nobody may be served by sources that are gone.
    m_server.reset();
    m_worker.reset();
    m_settings = settings;
    m_worker = std::make_unique<Worker>(settings);
    const ServiceHandlers handlers{
        [this](auto then) { m_worker->withBriefing(std::move(then)); },
        [this](const ServiceAction& action, auto answer) {
            m_worker->act(action, std::move(answer));
        }};
    m_server = std::make_unique<LoopbackServer>(settings.token, handlers);
    auto port = m_server->start(settings.port);
    if (port)
        askToRefresh();
    return port;
}

void RunningService::settingsChanged() {
    m_watch.acknowledge();
    const auto settings = readSettingsFile(m_places);
    if (!settings) {
        for (const QString& line : settings.error())
            m_complain(line);
        m_complain(u"the configuration of before goes on"_s);
        return;
    }
    if (*settings == m_settings)
        return;
    if (const auto port = serve(*settings); !port) {
        m_complain(port.error());
        Q_EMIT failed();
    }
}

} // namespace lumora::companion
