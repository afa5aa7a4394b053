#include "app/SettingsController.h"

#include "support/SettingsHarness.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/theme/ThemeSource.h"

#include <QApplication>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class SettingsControllerTest : public testing::Test, protected SettingsHarness {
protected:
    static QList<SettingsWindow*> windows() {
        QList<SettingsWindow*> found;
        const auto all = QApplication::topLevelWidgets();
        for (QWidget* widget : all) {
            if (auto* const window = qobject_cast<SettingsWindow*>(widget))
                found += window;
        }
        return found;
    }

    const ThemeSource themes{Theme(ColorScheme::Light, QFont())};
    SettingsController controller{
        {
            .state = *state,
            .preferences = preferences,
            .secrets = secrets,
            .keychain = keychain,
            .service = service,
            .loginItems = loginItems,
            .reminders = reminders,
        },
        themes};
};

} // namespace

TEST_F(SettingsControllerTest, CostsNothingUntilItIsAskedFor) {
    EXPECT_TRUE(windows().isEmpty());
}

TEST_F(SettingsControllerTest, ThereIsOneWindow) {
    controller.open({});
    ASSERT_EQ(windows().size(), 1);
    SettingsWindow* const window = windows().first();
    EXPECT_TRUE(window->isVisible());
    controller.open("a token");
    EXPECT_EQ(windows(), QList<SettingsWindow*>{window});

    window->close();
    EXPECT_FALSE(window->isVisible());
    controller.open({});
    EXPECT_EQ(windows(), QList<SettingsWindow*>{window});
    EXPECT_TRUE(window->isVisible());
}

TEST_F(SettingsControllerTest, AMinimizedWindowComesBack) {
    controller.open({});
    SettingsWindow* const window = windows().first();
    window->findChild<QLineEdit*>()->setText(u"https://half"_s);
    window->showMinimized();
    controller.open({});
    EXPECT_FALSE(window->isMinimized());
    EXPECT_EQ(window->findChild<QLineEdit*>()->text(), u"https://half"_s);
}

TEST_F(SettingsControllerTest, TheWindowIsOnTheScreenWhileMinimizedAndKeepsTheToken) {
    controller.open({});
    SettingsWindow* const window = windows().first();
    window->showMinimized();
    settle();
    EXPECT_EQ(window->findChildren<QLineEdit*>().at(1)->text(), u"t0ken"_s);
}

TEST_F(SettingsControllerTest, ShowsWhatWasChangedWhileItWasClosed) {
    controller.open({});
    SettingsWindow* const window = windows().first();
    window->close();
    preferences.set(u"endpointURL"_s, u"https://elsewhere"_s);
    EXPECT_EQ(window->findChild<QLineEdit*>()->text(), u"https://day.example/api/briefing"_s);
    controller.open({});
    EXPECT_EQ(window->findChild<QLineEdit*>()->text(), u"https://elsewhere"_s);
}
