#include "linux/appearance/X11Appearance.h"

#include "linux/appearance/X11Client.h"
#include "linux/appearance/XSettingsBytes.h"
#include "support/Patience.h"

#include <QSignalSpy>
#include <QTest>

namespace lumora::tests {
namespace {

class X11AppearanceTest : public X11ClientTest {
protected:
    bool xSettingsAreManaged() const {
        return X11Selection(connection.get(), "_XSETTINGS_S").owner() != XCB_WINDOW_NONE;
    }
};

constexpr auto property = "_XSETTINGS_SETTINGS";

QByteArray withFont(const QByteArray& font) {
    return XSettingsBytes().text("Gtk/FontName", font).bytes();
}

SelectionOwner startSettings(const QByteArray& display) {
    return {display, "_XSETTINGS_S0"};
}

QString fontOf(const DesktopAppearance& appearance) {
    const auto& font = appearance.wishes().font;
    return font ? font->family : QString();
}

TEST_F(X11AppearanceTest, WishesForNothingWithoutAManager) {
    EXPECT_EQ(X11Appearance(connection.get()).wishes(), DesktopAppearance::Wishes());
}

TEST_F(X11AppearanceTest, WishesForNothingWhileTheManagerSaysNothing) {
    const auto manager = startSettings(display.name());
    EXPECT_EQ(X11Appearance(connection.get()).wishes(), DesktopAppearance::Wishes());
}

TEST_F(X11AppearanceTest, ReadsWhatTheManagerSays) {
    auto manager = startSettings(display.name());
    manager.setProperty(property, withFont("Inter 10"));
    EXPECT_EQ(fontOf(X11Appearance(connection.get())), QStringLiteral("Inter"));
}

TEST_F(X11AppearanceTest, FollowsAChange) {
    auto manager = startSettings(display.name());
    manager.setProperty(property, withFont("Inter 10"));
    const X11Appearance appearance(connection.get());
    const QSignalSpy changed(&appearance, &DesktopAppearance::changed);
    manager.setProperty(property, withFont("Lato 11"));
    deliverEvents();
    EXPECT_EQ(fontOf(appearance), QStringLiteral("Lato"));
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(X11AppearanceTest, IsNotConcernedWithOtherProperties) {
    auto manager = startSettings(display.name());
    const X11Appearance appearance(connection.get());
    manager.setProperty("SOMETHING_ELSE", withFont("Inter 10"));
    deliverEvents();
    EXPECT_EQ(fontOf(appearance), QString());
}

TEST_F(X11AppearanceTest, PicksUpAManagerThatComesLater) {
    const X11Appearance appearance(connection.get());
    auto manager = startSettings(display.name());
    deliverEvents();
    manager.setProperty(property, withFont("Inter 10"));
    deliverEvents();
    EXPECT_EQ(fontOf(appearance), QStringLiteral("Inter"));
}

TEST_F(X11AppearanceTest, KeepsTheWishesBetweenTwoManagers) {
    auto first = std::make_unique<SelectionOwner>(display.name(), "_XSETTINGS_S0");
    first->setProperty(property, withFont("Inter 10"));
    const X11Appearance appearance(connection.get());
    first.reset();
    // The server notices the end of a connection in its own time.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            deliverEvents();
            return !xSettingsAreManaged();
        },
        patience));
    EXPECT_EQ(fontOf(appearance), QStringLiteral("Inter"));
    auto second = startSettings(display.name());
    deliverEvents();
    second.setProperty(property, withFont("Lato 11"));
    deliverEvents();
    EXPECT_EQ(fontOf(appearance), QStringLiteral("Lato"));
}

} // namespace
} // namespace lumora::tests
