#include "linux/appearance/X11Client.h"
#include "linux/appearance/XSettingsBytes.h"
#include "support/FakeWatcher.h"
#include "support/Patience.h"
#include "support/ProgramHarness.h"

#include <QDBusArgument>
#include <QTest>

#include <cstdint>
#include <optional>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether what is drawn into a status item's last pixels is light; absent while nothing is.
std::optional<bool> isLight(const QVariant& pixmaps) {
    if (!pixmaps.isValid())
        return std::nullopt;
    const auto argument = pixmaps.value<QDBusArgument>();
    int width = 0;
    int height = 0;
    QByteArray pixels; // four bytes each, the first for how opaque it is
    argument.beginArray();
    while (!argument.atEnd()) {
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
    }
    argument.endArray();
    for (qsizetype at = 0; at + 1 < pixels.size(); at += 4) {
        if (pixels[at] == '\xff')
            return std::uint8_t(pixels[at + 1]) > 128;
    }
    return std::nullopt;
}

/// A bar that looks like the theme which all programs of the desktop share, as MATE's does.
class BarTone : public testing::Test {
protected:
    void choose(const QByteArray& theme) {
        settings.setProperty(
            "_XSETTINGS_SETTINGS", XSettingsBytes().text("Net/ThemeName", theme).bytes());
    }

    bool becomesLight(bool light) {
        return QTest::qWaitFor(
            [&] {
                if (watcher.registered().isEmpty())
                    return false;
                BusProbe item(host, watcher.registered().last());
                const QVariant pixmaps = item.property(
                    u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, u"IconPixmap"_s);
                return isLight(pixmaps) == light;
            },
            patience);
    }

    PrivateDisplay display;
    SelectionOwner settings{display.name(), "_XSETTINGS_S0"};
    ProgramHarness lumora;
    FakeWatcher watcher{lumora.sessionBus().connect()};
    QDBusConnection host = lumora.sessionBus().connect();
};

} // namespace

TEST_F(BarTone, TheSymbolFollowsTheThemeThatProgramsShare) {
    lumora.setVariable(u"DISPLAY"_s, QString::fromLatin1(display.name()));
    lumora.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    lumora.setVariable(u"XDG_CURRENT_DESKTOP"_s, u"MATE"_s);
    choose("Adwaita-dark");
    lumora.start();
    EXPECT_TRUE(becomesLight(true));
    choose("Adwaita");
    EXPECT_TRUE(becomesLight(false));
    choose("Adwaita-dark");
    EXPECT_TRUE(becomesLight(true));
}
