#include "linux/commands/DesktopApplication.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QByteArray tokenIn(const QVariantMap& platformData) {
    const QString token = platformData.value(u"activation-token"_s).toString();
    const QString older = platformData.value(u"desktop-startup-id"_s).toString();
    return (token.isEmpty() ? older : token).toUtf8();
}

} // namespace

DesktopApplication::DesktopApplication(Actions actions, QObject* object)
    : QDBusAbstractAdaptor(object)
    , m_actions(std::move(actions)) {}

void DesktopApplication::Activate(const QVariantMap& platformData) {
    m_actions.open(tokenIn(platformData));
}

void DesktopApplication::Open(const QStringList&, const QVariantMap& platformData) {
    m_actions.open(tokenIn(platformData));
}

void DesktopApplication::ActivateAction(
    const QString& name, const QVariantList&, const QVariantMap& platformData) {
    if (name == u"settings")
        m_actions.openSettings(tokenIn(platformData));
    else if (name == u"refresh")
        m_actions.refresh();
    else if (name == u"quit")
        m_actions.quit();
}

} // namespace lumora
