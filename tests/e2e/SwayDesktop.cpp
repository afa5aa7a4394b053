#include "e2e/SwayDesktop.h"

#include "support/Patience.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTest>

#include <sys/prctl.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

constexpr uid_t nobody = 65534;
constexpr int nearlyWhite = 230;

// The wallpaper is darker than the panel, and so is the bar.
constexpr auto config = R"(output X11-1 resolution %1x%2 position 0 0 scale %3
output X11-1 bg #203040 solid_color
bar {
    position top
    height %4
    tray_output none
    status_command while true; do echo; sleep 60; done
}
)"_L1;

/// The picture of everything that the X server shows.
QImage pictureOf(const QByteArray& display, QSize size) {
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(display.constData(), nullptr), &xcb_disconnect);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    const auto cookie = xcb_get_image(
        connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0,
        std::uint16_t(size.width()), std::uint16_t(size.height()), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(connection.get(), cookie, nullptr), &std::free);
    if (!reply)
        return {};
    return QImage(
               xcb_get_image_data(reply.get()), size.width(), size.height(), QImage::Format_RGB32)
        .copy();
}

} // namespace

bool SwayDesktop::isInstalled() {
    return !QStandardPaths::findExecutable(u"sway"_s).isEmpty() &&
           !QStandardPaths::findExecutable(u"swaybg"_s).isEmpty();
}

SwayDesktop::SwayDesktop(double scale)
    : m_scale(scale) {
    start(scale);
    // The bar's last row is there.
    const auto stands = [this] { return QFile::exists(socket()); };
    if (!QTest::qWaitFor(stands, patience))
        throw std::runtime_error("sway did not start");
}

void SwayDesktop::start(double scale) {
    QFile file(m_folder.filePath(u"config"_s));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("sway's configuration could not be written");
    const QString text =
        QString(config).arg(size.width()).arg(size.height()).arg(scale).arg(barThickness);
    file.write(text.toUtf8());
    file.close();
    const bool isRoot = geteuid() == 0;
    if (isRoot && chown(QFile::encodeName(m_folder.path()).constData(), nobody, nobody) != 0)
        throw std::runtime_error("sway's folder could not be given away");
    if (isRoot)
        QFile::setPermissions(file.fileName(), file.permissions() | QFile::ReadOther);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] :
         {std::pair(u"DISPLAY"_s, QString::fromLatin1(m_display.name())),
          {u"XDG_RUNTIME_DIR"_s, m_folder.path()},
          {u"HOME"_s, m_folder.path()},
          {u"WLR_BACKENDS"_s, u"x11"_s},
          {u"WLR_RENDERER"_s, u"pixman"_s},
          {u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s},
          {u"DBUS_SESSION_BUS_ADDRESS"_s, u"disabled:"_s}})
        environment.insert(name, value);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    m_compositor.setProcessEnvironment(environment);
    m_compositor.setStandardOutputFile(QProcess::nullDevice());
    m_compositor.setStandardErrorFile(QProcess::nullDevice());
    m_compositor.setChildProcessModifier([isRoot] {
        // It refuses to run as root.
        if (isRoot && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(1);
        // A test that is killed takes it along.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    m_compositor.start(u"sway"_s, {u"-c"_s, file.fileName()});
}

SwayDesktop::~SwayDesktop() {
    m_compositor.terminate();
    m_compositor.waitForFinished(patience);
}

QString SwayDesktop::socket() const {
    return m_folder.filePath(u"wayland-1"_s);
}

void SwayDesktop::xdotool(const QStringList& arguments) {
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(m_display.name()));
    tool.setProcessEnvironment(environment);
    tool.start(u"xdotool"_s, arguments);
    if (!tool.waitForFinished(patience) || tool.exitCode() != 0)
        throw std::runtime_error("xdotool did not do it");
}

void SwayDesktop::moveTo(QPoint place) {
    xdotool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
}

void SwayDesktop::click(QPoint place, int button) {
    // A pointer that has not moved may not be known to be over what has just appeared.
    moveTo(place - QPoint(1, 0));
    moveTo(place);
    xdotool({u"click"_s, QString::number(button)});
}

void SwayDesktop::press(const QString& keys) {
    xdotool({u"key"_s, keys});
}

void SwayDesktop::type(const QString& text) {
    xdotool({u"type"_s, text});
}

QRect SwayDesktop::bright() {
    const QImage picture = pictureOf(m_display.name(), size);
    QRect found;
    for (int y = int(barThickness * m_scale); y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) >= nearlyWhite)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

QRect SwayDesktop::comesToBeBright() {
    QRect seen;
    const auto settled = [&] {
        const QRect before = std::exchange(seen, bright());
        return !seen.isNull() && seen == before;
    };
    return QTest::qWaitFor(settled, patience) ? seen : QRect();
}

bool SwayDesktop::comesToBeDark() {
    return QTest::qWaitFor([this] { return bright().isNull(); }, patience);
}

} // namespace lumora::tests
