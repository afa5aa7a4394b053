#include "fakes/FakeSecretService.h"

#include "support/WireSecret.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

using Attributes = QMap<QString, QString>;
using WireSecrets = QMap<QDBusObjectPath, WireSecret>;

namespace {

const QString service = u"org.freedesktop.secrets"_s;
const QString root = u"/org/freedesktop/secrets"_s;
const QDBusObjectPath collection(u"/org/freedesktop/secrets/collection/box"_s);
const QDBusObjectPath item(u"/org/freedesktop/secrets/collection/box/1"_s);
const QDBusObjectPath session(u"/org/freedesktop/secrets/session/1"_s);
const QDBusObjectPath prompt(u"/org/freedesktop/secrets/prompt/1"_s);
const QDBusObjectPath none(u"/"_s);
const QString collectionInterface = u"org.freedesktop.Secret.Collection"_s;
const QString itemInterface = u"org.freedesktop.Secret.Item"_s;

} // namespace

class FakeSecretService::Answers final : public QDBusVirtualObject {
public:
    explicit Answers(QDBusConnection connection)
        : m_connection(std::move(connection)) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        ++counts[message.member()];
        if (unanswered.contains(message.member()))
            return true;
        if (const auto answer = reply(message))
            m_connection.send(message.createReply(*answer));
        else
            m_connection.send(message.createErrorReply(QDBusError::NotSupported, u"no"_s));
        return true;
    }

    void leave() {
        m_connection.unregisterService(service);
        m_connection.unregisterObject(root, QDBusConnection::UnregisterTree);
    }

    void announceLock() {
        auto signal = QDBusMessage::createSignal(
            collection.path(), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
        signal.setArguments(
            {collectionInterface, QVariantMap{{u"Locked"_s, locked}}, QStringList()});
        m_connection.send(signal);
    }

    void endPrompt(bool dismissed) {
        auto signal = QDBusMessage::createSignal(
            prompt.path(), u"org.freedesktop.Secret.Prompt"_s, u"Completed"_s);
        signal.setArguments({dismissed, QVariant::fromValue(QDBusVariant(QString()))});
        m_connection.send(signal);
    }

    QHash<QString, int> counts;
    QSet<QString> unanswered;
    bool hasItem = false;
    bool locked = false;
    bool confirmsRemoval = false;

private:
    using Objects = QList<QDBusObjectPath>;

    std::optional<QVariantList> reply(const QDBusMessage& message) {
        const QString method = message.member();
        const QVariant noPrompt = QVariant::fromValue(none);
        const QVariant thePrompt = QVariant::fromValue(prompt);
        if (method == u"GetAll")
            return {{properties(message.path())}};
        if (method == u"Get") {
            const QVariant value =
                properties(message.path()).value(message.arguments()[1].toString());
            return {{QVariant::fromValue(QDBusVariant(value))}};
        }
        if (method == u"SearchItems")
            return {
                {QVariant::fromValue(hasItem ? Objects{item} : Objects()),
                 QVariant::fromValue(Objects())}};
        if (method == u"ReadAlias") {
            const bool isDefault = message.arguments()[0].toString() == u"default";
            return {{QVariant::fromValue(isDefault ? collection : none)}};
        }
        if (method == u"OpenSession" && message.arguments()[0].toString() == u"plain")
            return {{QVariant::fromValue(QDBusVariant(QString())), QVariant::fromValue(session)}};
        if (method == u"GetSecrets") {
            const WireSecrets secrets{{item, {session, {}, "from the fake", u"text/plain"_s}}};
            return {{QVariant::fromValue(secrets)}};
        }
        if (method == u"CreateItem")
            return {{QVariant::fromValue(item), noPrompt}};
        if (method == u"Delete") {
            hasItem = confirmsRemoval;
            return {{confirmsRemoval ? thePrompt : noPrompt}};
        }
        if (method == u"Unlock")
            return {{QVariant::fromValue(Objects()), thePrompt}};
        if (method == u"Prompt" || method == u"Dismiss")
            return QVariantList();
        return std::nullopt;
    }

    QVariantMap properties(const QString& path) const {
        if (path == root)
            return {{u"Collections"_s, QVariant::fromValue(Objects{collection})}};
        if (path == collection.path())
            return {{u"Locked"_s, locked}, {u"Label"_s, u"Box"_s}};
        if (path != item.path())
            return {};
        const Attributes attributes{
            {u"service"_s, u"com.example.test"_s}, {u"account"_s, u"main"_s}};
        return {
            {u"Locked"_s, false},
            {u"Label"_s, u"Item"_s},
            {u"Attributes"_s, QVariant::fromValue(attributes)}};
    }

    QDBusConnection m_connection;
};

FakeSecretService::FakeSecretService(PrivateBus& bus) {
    qDBusRegisterMetaType<WireSecret>();
    qDBusRegisterMetaType<WireSecrets>();
    qDBusRegisterMetaType<Attributes>();
    QDBusConnection connection = bus.connect();
    m_answers = std::make_unique<Answers>(connection);
    connection.registerVirtualObject(root, m_answers.get(), QDBusConnection::SubPath);
    m_answers->moveToThread(&m_thread);
    m_thread.start();
    connection.registerService(service);
}

FakeSecretService::~FakeSecretService() {
    onItsThread([this] { m_answers->leave(); });
    m_thread.quit();
    m_thread.wait();
}

QString FakeSecretService::collectionPath() {
    return collection.path();
}

void FakeSecretService::neverAnswer(const QString& method) {
    onItsThread([&] { m_answers->unanswered += method; });
}

void FakeSecretService::answerAgain() {
    onItsThread([&] { m_answers->unanswered.clear(); });
}

void FakeSecretService::setHasItem(bool hasItem) {
    onItsThread([&] { m_answers->hasItem = hasItem; });
}

void FakeSecretService::setLocked(bool locked, bool announced) {
    onItsThread([&] {
        m_answers->locked = locked;
        if (announced)
            m_answers->announceLock();
    });
}

void FakeSecretService::completePrompt(bool dismissed) {
    onItsThread([&] { m_answers->endPrompt(dismissed); });
}

void FakeSecretService::setConfirmsRemoval(bool confirms) {
    onItsThread([&] { m_answers->confirmsRemoval = confirms; });
}

int FakeSecretService::calls(const QString& method) const {
    int count = 0;
    onItsThread([&] { count = m_answers->counts.value(method); });
    return count;
}

void FakeSecretService::onItsThread(const std::function<void()>& change) const {
    QMetaObject::invokeMethod(m_answers.get(), change, Qt::BlockingQueuedConnection);
}

} // namespace lumora::tests
