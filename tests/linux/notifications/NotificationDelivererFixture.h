#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeNotificationServer.h"
#include "linux/notifications/NotificationDeliverer.h"
#include "support/BusProbe.h"
#include "support/Patience.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace lumora::tests {

using namespace Qt::Literals::StringLiterals;

class NotificationDelivererTest : public testing::Test {
protected:
    /// Starts the desktop's server, which answers no calls of `heldMethod`; the one before has to
    /// be gone. It is known on return.
    void startServer(const QString& heldMethod = {}) {
        desktop = std::make_unique<FakeNotificationServer>(bus.connect(), heldMethod);
        settle();
    }

    NotificationRequest request(const QString& title) const {
        return {
            .identifier = title + u"|1.0"_s,
            .title = title,
            .body = u"Starts in 5 min"_s,
            .userInfo = {{u"meetingUrl"_s, u"https://meet.example/"_s + title}},
            .button = u"Join"_s,
            .fireTime = clock.now(),
        };
    }

    /// Waits until everything that `sender` sent before has been heard.
    void settle(const QDBusConnection& sender) const {
        BusProbe(sender, connection.baseService())
            .call(u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
        QCoreApplication::processEvents();
    }

    void settle() const { settle(desktop ? desktop->bus() : other); }

    bool showsCount(qsizetype count) {
        return QTest::qWaitFor([&] { return desktop->shown.size() == count; }, patience);
    }

    /// Delivers, and waits until the deliverer has heard that it is shown.
    void deliverAndConfirm(const QString& title) {
        const auto count = desktop->shown.size() + 1;
        deliverer.deliver(request(title));
        ASSERT_TRUE(showsCount(count));
        settle();
    }

    QStringList opened() const {
        QStringList links;
        for (const auto& response : responses)
            links += response.at(0).toMap().value(u"meetingUrl"_s).toString();
        return links;
    }

    QStringList titles() const {
        QStringList shown;
        for (const auto& notification : desktop->shown)
            shown += notification.summary;
        return shown;
    }

    PrivateBus bus;
    FakeClock clock;
    QDBusConnection connection = bus.connect();
    NotificationServer server{connection};
    NotificationDeliverer deliverer{server, clock};
    QSignalSpy responses{&deliverer, &NotificationDeliverer::responded};
    QDBusConnection other = bus.connect();
    std::unique_ptr<FakeNotificationServer> desktop;
};

} // namespace lumora::tests
