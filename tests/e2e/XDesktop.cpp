#include "e2e/XDesktop.h"

#include "support/Patience.h"

#include <QRect>
#include <QRegularExpression>
#include <QTest>

#include <sys/prctl.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString otherTitle = u"Somebody else"_s;
constexpr QRect otherPlace(60, 300, 300, 200);

} // namespace

void XDesktop::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

XDesktop::XDesktop(const QByteArray& display)
    : m_environment(QProcessEnvironment::systemEnvironment())
    , m_other(xcb_connect(display.constData(), nullptr)) {
    m_environment.insert(u"DISPLAY"_s, QString::fromLatin1(display));
    m_environment.insert(u"HOME"_s, m_home.path());
    m_environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    startWindowManager();
    openOtherWindow();
}

XDesktop::~XDesktop() {
    m_windowManager.terminate();
    m_windowManager.waitForFinished(patience);
}

void XDesktop::startWindowManager() {
    m_windowManager.setProcessEnvironment(m_environment);
    m_windowManager.setStandardErrorFile(QProcess::nullDevice());
    // A test that is killed takes it along.
    m_windowManager.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_windowManager.start(u"openbox"_s, {u"--sm-disable"_s});
    if (!m_windowManager.waitForStarted(patience))
        throw std::runtime_error("openbox did not start");
}

// It is there once the window manager has given it the focus, as it does with what opens first.
void XDesktop::openOtherWindow() {
    auto* connection = m_other.get();
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const auto window = xcb_generate_id(connection);
    xcb_create_window(
        connection, 0, window, screen->root, otherPlace.x(), otherPlace.y(), otherPlace.width(),
        otherPlace.height(), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    const QByteArray title = otherTitle.toLatin1();
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
        std::uint32_t(title.size()), title.constData());
    const auto managed = [this] {
        return !xdotool({u"get_desktop"_s}).isEmpty() &&
               m_windowManager.state() == QProcess::Running;
    };
    if (!QTest::qWaitFor(managed, patience))
        throw std::runtime_error("no window manager came up");
    // A window manager that has only just come up may miss what is asked of it.
    const auto isShown = [&] {
        xcb_map_window(connection, window);
        xcb_flush(connection);
        return windows(otherTitle) == 1;
    };
    if (!QTest::qWaitFor(isShown, patience))
        throw std::runtime_error("the other window did not open");
}

QStringList XDesktop::xdotool(const QStringList& arguments) {
    QProcess tool;
    tool.setProcessEnvironment(m_environment);
    tool.setStandardErrorFile(QProcess::nullDevice());
    tool.start(u"xdotool"_s, arguments);
    if (!tool.waitForFinished(patience))
        throw std::runtime_error("xdotool did not end");
    return QString::fromUtf8(tool.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

QStringList XDesktop::visible(const QString& title) {
    const QString pattern = u'^' + QRegularExpression::escape(title) + u'$';
    return xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, pattern});
}

qsizetype XDesktop::windows(const QString& title) {
    return visible(title).size();
}

bool XDesktop::shows(const QString& title) {
    return QTest::qWaitFor([&] { return windows(title) == 1; }, patience);
}

bool XDesktop::hides(const QString& title) {
    return QTest::qWaitFor([&] { return windows(title) == 0; }, patience);
}

bool XDesktop::focuses(const QString& title) {
    const auto isFocused = [&] {
        const QStringList found = visible(title);
        return found.size() == 1 && xdotool({u"getwindowfocus"_s}) == found;
    };
    return QTest::qWaitFor(isFocused, patience);
}

QStringList XDesktop::windowClass(const QString& title) {
    const QStringList found = visible(title);
    if (found.size() != 1)
        return {};
    auto* connection = m_other.get();
    const auto cookie = xcb_get_property(
        connection, 0, found.first().toUInt(), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(connection, cookie, nullptr), &std::free);
    if (!reply)
        return {};
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return QString::fromLatin1(text, xcb_get_property_value_length(reply.get()))
        .split(QChar(u'\0'), Qt::SkipEmptyParts);
}

void XDesktop::click(QPoint place) {
    xdotool(
        {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
         u"1"_s});
}

void XDesktop::clickElsewhere() {
    click(otherPlace.center());
}

void XDesktop::press(const QString& keys) {
    xdotool({u"key"_s, keys});
}

void XDesktop::type(const QString& text) {
    xdotool({u"type"_s, text});
}

} // namespace lumora::tests
