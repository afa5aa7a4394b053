#include "Service.h"

#include "support/Fixtures.h"

#include <QSslServer>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using tests::ScriptedServer;

Service::Service() {
    auto listener = std::make_unique<QSslServer>();
    listener->setSslConfiguration(m_certificates.serverConfiguration());
    m_server = std::make_unique<ScriptedServer>(
        ScriptedServer::always(
            ScriptedServer::answer("200 OK", tests::fixture(u"briefing-full.json"_s))),
        std::move(listener));
}

QString Service::address() const {
    return m_server->url(u"/api/briefing"_s, u"https"_s).toString();
}

} // namespace lumora
