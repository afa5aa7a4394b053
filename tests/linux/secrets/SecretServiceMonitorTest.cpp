#include "linux/secrets/SecretServiceMonitor.h"

#include "linux/secrets/SecretServiceNames.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString secretItemPath = u"/org/freedesktop/secrets/collection/box/1"_s;

/// Answers every call with the same values.
class ConstantAnswers final : public QDBusVirtualObject {
public:
    explicit ConstantAnswers(const QDBusConnection& connection)
        : m_connection(connection) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        ++count;
        return m_connection.send(message.createReply(values));
    }

    QVariantList values;
    int count = 0;

private:
    QDBusConnection m_connection;
};

/// Listens to a service that sends and answers what the test says.
class SecretServiceMonitored : public testing::Test {
protected:
    SecretServiceMonitored() {
        qDBusRegisterMetaType<SecretAttributes>();
        service.registerVirtualObject(secretService::path, &answers, QDBusConnection::SubPath);
        service.registerService(secretService::name);
    }

    ~SecretServiceMonitored() override {
        service.unregisterObject(secretService::path, QDBusConnection::UnregisterTree);
    }

    void send(const QString& interface, const QString& name, const QVariantList& arguments) {
        auto signal = QDBusMessage::createSignal(secretItemPath, interface, name);
        signal.setArguments(arguments);
        service.send(signal);
    }

    /// Has it tell of the item, and answer the question that follows with `properties`.
    void touch(const QVariant& properties) {
        const int before = answers.count;
        answers.values = {properties};
        send(
            secretService::collectionInterface, u"ItemCreated"_s,
            {QVariant::fromValue(QDBusObjectPath(secretItemPath))});
        EXPECT_TRUE(QTest::qWaitFor([&] { return answers.count > before; }, patience));
    }

    PrivateBus bus;
    QDBusConnection service = bus.connect();
    ConstantAnswers answers{service};
    SecretServiceMonitor monitor{bus.connect()};
};

const QVariant numbers = QVariant::fromValue(QList<int>{1, 2, 3});

QVariant texts(const QString& name, const QString& text) {
    return QVariant::fromValue(SecretAttributes{{name, text}});
}

} // namespace

TEST_F(SecretServiceMonitored, ChangesOfOtherTypesAreNone) {
    QSignalSpy reports(&monitor, &SecretServiceMonitor::unlockReported);
    const auto change = [this](const QVariant& properties) {
        send(
            u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
            {secretService::collectionInterface, properties, QStringList()});
    };
    change(numbers);
    change(u"Locked"_s);
    change(texts(u"Locked"_s, u"false"_s));
    change(QVariantList{u"Locked"_s, false});
    EXPECT_TRUE(reports.isEmpty());
    change(QVariantMap{{u"Locked"_s, false}});
    EXPECT_TRUE(reports.wait(patience));
    EXPECT_EQ(reports.size(), 1);
}

TEST_F(SecretServiceMonitored, ItemsOfOtherTypesAreNone) {
    QSignalSpy items(&monitor, &SecretServiceMonitor::itemTouched);
    touch(numbers);
    touch(u"Attributes"_s);
    touch(texts(u"Attributes"_s, u"x"_s));
    touch(QVariantMap{{u"Attributes"_s, numbers}});
    touch(QVariantMap{{u"Attributes"_s, QVariantMap{{u"key"_s, 1}}}});
    touch(QVariantMap{{u"Attributes"_s, texts(u"key"_s, u"main"_s)}, {u"Locked"_s, false}});
    EXPECT_TRUE(!items.isEmpty() || items.wait(patience));
    EXPECT_EQ(items.size(), 1);
}
