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
#include <QPainter>
#include <QWidget>

#include <curl/curl.h>

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

size_t drop(const char*, size_t size, size_t count, void*) {
    return size * count;
}

// Certificates are found in the way that Lumora finds them, one of the test's own in SSL_CERT_FILE.
void get(const QByteArray& url) {
    CURL* const transfer = curl_easy_init();
    curl_easy_setopt(transfer, CURLOPT_URL, url.constData());
    curl_easy_setopt(transfer, CURLOPT_CAPATH, "/etc/ssl/certs");
    curl_easy_setopt(transfer, CURLOPT_CAINFO, qgetenv("SSL_CERT_FILE").constData());
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, &drop);
    curl_easy_perform(transfer);
    curl_easy_cleanup(transfer);
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
    QObject::connect(&registered, &QDBusPendingCallWatcher::finished, &item, [&arguments] {
        if (arguments.value(1) == u"--get")
            get(arguments.value(2).toUtf8());
    });
    return QApplication::exec();
}

#include "Floor.moc"
