#include "linux/secrets/SecretUnlocker.h"

#include "linux/secrets/SecretServiceNames.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

SecretUnlocker::SecretUnlocker(QDBusConnection bus)
    : m_bus(std::move(bus)) {}

void SecretUnlocker::foundLocked(const QString& collectionPath) {
    if (m_progress != Progress::Idle)
        return;
    m_progress = Progress::Checking;
    m_collection = collectionPath;
    check();
}

void SecretUnlocker::foundUnlocked() {
    forgetPrompt();
    m_progress = Progress::Idle;
}

void SecretUnlocker::unlockReported(const QString& collectionPath) {
    if (m_progress == Progress::Asked && collectionPath == m_collection)
        foundUnlocked();
}

void SecretUnlocker::serviceChanged() {
    forgetPrompt();
    m_progress = Progress::Idle;
}

void SecretUnlocker::check() {
    // The answer comes after every signal of the past, so a late report of an unlocking before the
    // locking that was found is not taken for one after it.
    callSecretService(
        m_bus, this, m_collection, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
        {secretService::collectionInterface, u"Locked"_s}, [this](const QDBusPendingCall& call) {
            if (m_progress != Progress::Checking)
                return;
            if (call.reply().arguments().value(0).value<QDBusVariant>().variant().toBool())
                unlock();
            else
                m_progress = Progress::Idle;
        });
}

void SecretUnlocker::unlock() {
    m_progress = Progress::Asked;
    const QList<QDBusObjectPath> objects{QDBusObjectPath(m_collection)};
    callSecretService(
        m_bus, this, secretService::path, secretService::serviceInterface, u"Unlock"_s,
        {QVariant::fromValue(objects)}, [this](const QDBusPendingCall& call) {
            if (call.isError() || m_progress != Progress::Asked)
                return;
            const auto prompt = call.reply().arguments().value(1).value<QDBusObjectPath>().path();
            if (prompt.startsWith(u'/') && prompt.size() > 1)
                showPrompt(prompt);
            else
                Q_EMIT unlocked();
        });
}

void SecretUnlocker::showPrompt(const QString& promptPath) {
    forgetPrompt();
    m_prompt = promptPath;
    m_bus.connect(
        secretService::name, m_prompt, secretService::promptInterface, u"Completed"_s, this,
        SLOT(promptCompleted(QDBusMessage)));
    callSecretService(
        m_bus, this, m_prompt, secretService::promptInterface, u"Prompt"_s, {QString()},
        [this, promptPath](const QDBusPendingCall& call) {
            if (call.isError() && m_prompt == promptPath)
                forgetPrompt();
        });
}

void SecretUnlocker::promptCompleted(const QDBusMessage& message) {
    // The question counts as asked until the collection is seen unlocked: were it still locked
    // now, asking again at once could go on forever.
    const bool isDismissed = message.arguments().value(0, true).toBool();
    forgetPrompt();
    if (!isDismissed)
        Q_EMIT unlocked();
}

void SecretUnlocker::forgetPrompt() {
    if (m_prompt.isEmpty())
        return;
    m_bus.disconnect(
        secretService::name, m_prompt, secretService::promptInterface, u"Completed"_s, this,
        SLOT(promptCompleted(QDBusMessage)));
    m_prompt.clear();
}

} // namespace lumora
