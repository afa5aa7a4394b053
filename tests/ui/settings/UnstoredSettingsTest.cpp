#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/SettingsModel.h"
#include "ui/settings/SettingsView.h"
#include "ui/settings/SettingsWindowFixture.h"

#include <QSignalSpy>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString fullDisk = u"~/.config/lumora: No space left on device"_s;
const QString notStored =
    u"Not stored (~/.config/lumora: No space left on device). It holds until Lumora ends."_s;

/// The settings of a user whose preferences cannot be stored for a while.
class UnstoredSettings : public SettingsWindowTest {
protected:
    void SetUp() override { preferences.storeError = fullDisk; }

    /// What the window says is not stored, from top to bottom.
    QStringList complaints() const {
        QStringList found;
        for (const auto* text : shown<FormText>(*window))
            if (text->text().startsWith(u"Not stored"))
                found += text->text();
        return found;
    }

    /// The complaint that is next below `control`; null when there is none.
    const FormText* complaintBelow(const QWidget* control) const {
        const int bottom = inWindow(control).bottom();
        for (const auto* text : shown<FormText>(*window)) {
            const int gap = inWindow(text).top() - bottom;
            if (text->text() == notStored && gap > 0 && gap <= points(5))
                return text;
        }
        return nullptr;
    }
};

} // namespace

// The model

TEST_F(UnstoredSettings, HoldEveryChoiceAndSayWhy) {
    SettingsModel& settings = open();
    const std::array keys{
        PreferenceKeys::endpointURL.name, PreferenceKeys::refreshMinutes.name,
        PreferenceKeys::notifyBeforeMeetings.name, PreferenceKeys::menuBarAmbient.name};
    for (const QString& key : keys)
        EXPECT_EQ(settings.unstoredMessage(key), std::nullopt) << key.toStdString();

    settings.setEndpointURL(u"https://b"_s);
    settings.setRefreshMinutes(5);
    settings.setNotifyBeforeMeetings(false);
    settings.setMenuBarAmbient(MenuBarAmbient::None);
    EXPECT_EQ(settings.endpointURL(), u"https://b"_s);
    EXPECT_EQ(settings.refreshMinutes(), 5);
    EXPECT_FALSE(settings.notifyBeforeMeetings());
    EXPECT_EQ(settings.menuBarAmbient(), MenuBarAmbient::None);
    for (const QString& key : keys)
        EXPECT_EQ(settings.unstoredMessage(key), notStored) << key.toStdString();

    // What follows from a choice follows from it all the same.
    EXPECT_EQ(clock.timerIntervals(), std::vector<std::chrono::seconds>{std::chrono::minutes(5)});
    EXPECT_EQ(reminders.authorizationRequests, 1);
}

TEST_F(UnstoredSettings, AreToldOfOnceWithTheLatestReason) {
    SettingsModel& settings = open();
    settings.setMenuBarAmbient(MenuBarAmbient::Focus);
    preferences.storeError = u"it is read-only"_s;
    QStringList told;
    QObject::connect(&settings, &SettingsModel::changed, &settings, [&] {
        told += settings.unstoredMessage(PreferenceKeys::endpointURL.name).value_or(QString());
    });
    settings.setEndpointURL(u"https://b"_s);
    EXPECT_EQ(told, QStringList{u"Not stored (it is read-only). It holds until Lumora ends."_s});
}

TEST_F(UnstoredSettings, AreStoredWithTheNextChoice) {
    SettingsModel& settings = open();
    settings.setEndpointURL(u"https://b"_s);
    preferences.storeError.reset();
    const QSignalSpy changed(&settings, &SettingsModel::changed);
    settings.setMenuBarAmbient(MenuBarAmbient::None);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(settings.unstoredMessage(PreferenceKeys::endpointURL.name), std::nullopt);
    EXPECT_EQ(settings.endpointURL(), u"https://b"_s);
}

// The window

TEST_F(UnstoredSettings, WhatIsTypedStandsInItsField) {
    show();
    EXPECT_EQ(complaints(), QStringList());
    endpoint()->setFocus();
    endpoint()->selectAll();
    QTest::keyClicks(endpoint(), u"https://b.example/api"_s);
    EXPECT_EQ(endpoint()->text(), u"https://b.example/api"_s);
    EXPECT_TRUE(endpoint()->hasFocus());
    EXPECT_EQ(complaints(), QStringList{notStored});
    lumora::tests::settle();
    const FormText* const complaint = complaintBelow(endpoint());
    ASSERT_NE(complaint, nullptr);
    EXPECT_EQ(complaint->color(), ColorRole::Orange);
    EXPECT_EQ(cutOff(*window), "");
    reopen();
    EXPECT_EQ(endpoint()->text(), u"https://b.example/api"_s);
    EXPECT_EQ(complaints(), QStringList{notStored});
}

TEST_F(UnstoredSettings, EveryControlKeepsItsStateWithTheReasonBelowIt) {
    show();
    auto* const notify = named<FormSwitch>(u"Notify 5 minutes before meetings"_s);
    notify->click();
    EXPECT_FALSE(notify->isChecked());
    auto* const every = named<FormPicker>(u"Every"_s);
    QTest::keyClick(every, Qt::Key_Down);
    EXPECT_EQ(every->shownText(), u"15 minutes"_s);
    auto* const ambient = named<FormPicker>(u"Menu bar shows"_s);
    QTest::keyClick(ambient, Qt::Key_End);
    EXPECT_EQ(ambient->shownText(), u"Nothing"_s);
    lumora::tests::settle();
    for (QWidget* control : std::initializer_list<QWidget*>{notify, every, ambient})
        EXPECT_NE(complaintBelow(control), nullptr) << spokenName(control).toStdString();
    EXPECT_EQ(complaints().size(), 3);

    preferences.storeError.reset();
    notify->click();
    EXPECT_EQ(complaints(), QStringList());
    EXPECT_EQ(every->shownText(), u"15 minutes"_s);
}
