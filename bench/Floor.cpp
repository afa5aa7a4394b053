// lumora-bench-floor [--get URL]: what any program of this kind costs before it does anything.
//
// A bare application on the session bus that puts an item into the status area as early as it can,
// makes one request when a URL is given, and waits. A press on the item opens or closes a bare
// window with a panel's texts. Lumora's figures are compared with its.

#include <QApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPainter>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QWidget>

#include <memory>

using namespace Qt::Literals::StringLiterals;

/// A text of the panel, with its font's size beside the desktop's.
struct Line {
    double sizeFactor;
    QFont::Weight weight;
    QString text;
};

/// What the panel shows of the briefing that both programs fetch, from top to bottom.
const QList<Line>& lines() {
    static const QList<Line> all{
        {1, QFont::Bold, u"Today"_s},
        {0.77, QFont::Normal, u"just now"_s},
        {0.92, QFont::DemiBold, u"Next up"_s},
        {0.92, QFont::Normal, u"all-day"_s},
        {0.92, QFont::Normal, u"Zoë’s birthday 🎂"_s},
        {0.77, QFont::Normal, u"Home"_s},
        {0.92, QFont::DemiBold, u"Habits"_s},
        {0.92, QFont::Normal, u"Read"_s},
        {0.77, QFont::Normal, u"5🔥"_s},
        {0.92, QFont::Normal, u"Walk"_s},
        {0.77, QFont::Normal, u"2/4"_s},
        {0.92, QFont::DemiBold, u"Chores due"_s},
        {0.77, QFont::Bold, u"9"_s},
        {0.92, QFont::Normal, u"Water the plants"_s},
        {0.77, QFont::Normal, u"2d over"_s},
        {0.92, QFont::Normal, u"Clean the oven"_s},
        {0.92, QFont::DemiBold, u"Spending"_s},
        {0.92, QFont::Normal, u"Show month-to-date"_s},
        {0.77, QFont::Normal, u"1/3 habits · 42% focus"_s},
        {0.92, QFont::Normal, u"Capture a thought…"_s},
    };
    return all;
}

/// A window of the panel's size and place that paints the panel's texts, and nothing else.
class BareWindow final : public QWidget {
public:
    BareWindow()
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint) {
        setGeometry(480, 0, 320, 480);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const int step = height() / int(lines().size());
        int baseline = step;
        for (const Line& line : lines()) {
            QFont font = QApplication::font();
            font.setPointSizeF(font.pointSizeF() * line.sizeFactor);
            font.setWeight(line.weight);
            painter.setFont(font);
            painter.drawText(12, baseline, line.text);
            baseline += step;
        }
    }
};

/// The part of a status item that a press needs.
class BareItem final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")

public:
    explicit BareItem(QObject* parent)
        : QDBusAbstractAdaptor(parent) {}

public Q_SLOTS:

    // NOLINTNEXTLINE(readability-identifier-naming): the name on the bus
    void Activate(int /*x*/, int /*y*/) {
        if (!m_window)
            m_window = std::make_unique<BareWindow>();
        m_window->setVisible(!m_window->isVisible());
    }

private:
    std::unique_ptr<BareWindow> m_window; ///< null until first opened
};

namespace {

QDBusPendingCall registerItem(const QDBusConnection& bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
        u"org.kde.StatusNotifierWatcher"_s, u"RegisterStatusNotifierItem"_s);
    call << bus.baseService();
    return bus.asyncCall(call);
}

// Certificates beyond the system's are trusted in the way that Lumora trusts them.
QSslConfiguration trust() {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (!file.isEmpty()) {
        configuration.setCaCertificates(
            QSslConfiguration::systemCaCertificates() + QSslCertificate::fromPath(file));
    }
    return configuration;
}

void get(QNetworkAccessManager& network, const QString& url) {
    QNetworkRequest request{QUrl(url)};
    request.setSslConfiguration(trust());
    QNetworkReply* const reply = network.get(request);
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply] {
        reply->readAll();
        reply->deleteLater();
    });
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QDBusConnection bus = QDBusConnection::sessionBus();
    QObject item;
    new BareItem(&item);
    bus.registerObject(u"/StatusNotifierItem"_s, &item);
    const QDBusPendingCallWatcher registered(registerItem(bus));
    QNetworkAccessManager network;
    QObject::connect(
        &registered, &QDBusPendingCallWatcher::finished, &network, [&network, &arguments] {
            if (arguments.value(1) == u"--get")
                get(network, arguments.value(2));
        });
    return QApplication::exec();
}

#include "Floor.moc"
