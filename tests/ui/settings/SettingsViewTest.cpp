#include "ui/settings/SettingsView.h"

#include "ui/settings/FormPainting.h"
#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/SettingsWindowFixture.h"

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using SettingsViewTest = SettingsWindowTest;

} // namespace

// Content

TEST_F(SettingsViewTest, ShowsEveryTextInOrder) {
    show();
    QStringList texts;
    for (const auto* widget : shown<QWidget>(*window)) {
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            texts += label->text();
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            texts += button->text();
        else if (const auto* picker = qobject_cast<const FormPicker*>(widget))
            texts += picker->shownText();
    }
    EXPECT_EQ(
        texts.replaceInStrings(u"&"_s, QString()),
        (QStringList{
            u"Connection"_s,
            u"Endpoint URL"_s,
            u"API token"_s,
            u"Save token"_s,
            u"Test connection"_s,
            u"Refresh"_s,
            u"10 minutes"_s,
            u"Every"_s,
            u"General"_s,
            u"Launch at login"_s,
            u"Notify 5 minutes before meetings"_s,
            u"Habit progress"_s,
            u"Menu bar shows"_s,
            u"When no meeting is soon. An upcoming or in-progress meeting always takes over the "
            "menu bar."_s,
            u"The token is stored in your macOS keychain and sent as the X-Api-Key header to "
            "https://day.example/api/briefing. Set the matching secret server-side with firebase "
            "functions:secrets:set BRIEFING_TOKEN."_s,
        }));
}

TEST_F(SettingsViewTest, OffersTheChoicesInOrder) {
    show();
    const auto choices = [](const FormPicker* picker) {
        QStringList texts;
        for (int index = 0; index < picker->count(); ++index)
            texts += picker->itemText(index);
        return texts;
    };
    EXPECT_EQ(
        choices(named<FormPicker>(u"Every"_s)),
        (QStringList{u"5 minutes"_s, u"10 minutes"_s, u"15 minutes"_s, u"30 minutes"_s}));
    EXPECT_EQ(
        choices(named<FormPicker>(u"Menu bar shows"_s)),
        (QStringList{u"Habit progress"_s, u"Focus %"_s, u"Chores due"_s, u"Nothing"_s}));
}

TEST_F(SettingsViewTest, TheNoteTakesNoMarkupFromTheEndpoint) {
    preferences.set(u"endpointURL"_s, u" <b>https://a</b>&amp;`b` "_s);
    show();
    EXPECT_TRUE(textBeginning(u"The token"_s)
                    ->text()
                    .contains(u"header to <b>https://a</b>&amp;`b`. Set"_s));
    EXPECT_EQ(textBeginning(u"The token"_s)->textFormat(), Qt::PlainText);
    endpoint()->setText(u"   "_s);
    EXPECT_TRUE(textBeginning(u"The token"_s)->text().contains(u"to the endpoint above. Set"_s));
}

TEST_F(SettingsViewTest, ControlsHaveNamesRolesAndMnemonics) {
    show();
    const auto roleOf = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->role();
    };
    EXPECT_EQ(roleOf(endpoint()), QAccessible::EditableText);
    EXPECT_EQ(roleOf(token()), QAccessible::EditableText);
    EXPECT_EQ(roleOf(saveButton()), QAccessible::Button);
    EXPECT_EQ(roleOf(named<FormPicker>(u"Every"_s)), QAccessible::ComboBox);
    EXPECT_EQ(roleOf(named<FormSwitch>(u"Launch at login"_s)), QAccessible::CheckBox);
    EXPECT_EQ(
        roleOf(named<FormSwitch>(u"Notify 5 minutes before meetings"_s)), QAccessible::CheckBox);

    QTest::keyClick(&*window, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(token()->hasFocus());
    QTest::keyClick(&*window, Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(endpoint()->hasFocus());
}

TEST_F(SettingsViewTest, MnemonicsAreUnderlinedWhileAltIsHeld) {
    show();
    token()->setFocus();
    const QImage calm = painted(*saveButton());
    QTest::keyPress(window->windowHandle(), Qt::Key_Alt);
    EXPECT_NE(painted(*saveButton()), calm);
    QTest::keyRelease(window->windowHandle(), Qt::Key_Alt);
    EXPECT_EQ(painted(*saveButton()), calm);
}

TEST_F(SettingsViewTest, TabGoesThroughTheFormFromTopToBottom) {
    show();
    QStringList names;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : &*window, Qt::Key_Tab);
        names += spokenName(window->focusWidget());
    }
    EXPECT_EQ(
        names,
        (QStringList{
            u"Endpoint URL"_s, u"API token"_s, u"Save token"_s, u"Test connection"_s, u"Every"_s,
            u"Launch at login"_s, u"Notify 5 minutes before meetings"_s, u"Menu bar shows"_s}));
}

TEST_F(SettingsViewTest, TheKeyboardStartsInWhatIsMissing) {
    preferences.set(u"endpointURL"_s, QString());
    show();
    EXPECT_EQ(window->focusWidget(), endpoint());
    endpoint()->setText(u"https://a"_s);
    EXPECT_TRUE(keychain.deleteToken());
    reopen();
    EXPECT_EQ(window->focusWidget(), token());
    EXPECT_TRUE(keychain.setToken(u"t"_s));
    reopen();
    EXPECT_NE(window->focusWidget(), token());
    EXPECT_NE(window->focusWidget(), endpoint());
}

// Bindings

TEST_F(SettingsViewTest, EveryKeystrokeOfTheEndpointIsStored) {
    show();
    endpoint()->clear();
    QTest::keyClicks(endpoint(), u"https://b"_s);
    EXPECT_EQ(preferences.value(u"endpointURL"_s), u"https://b"_s);
    QTest::keyClick(endpoint(), Qt::Key_Backspace);
    EXPECT_EQ(preferences.value(u"endpointURL"_s), u"https://"_s);
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsViewTest, LookingStoresNothing) {
    FakePreferences& all = preferences;
    const QStringList keys{u"refreshMinutes"_s, u"menuBarAmbient"_s, u"notifyBeforeMeetings"_s};
    all.set(u"refreshMinutes"_s, u"7"_s);
    all.set(u"menuBarAmbient"_s, u"weather"_s);
    all.set(u"notifyBeforeMeetings"_s, u"perhaps"_s);
    show();
    reopen();
    EXPECT_EQ(all.value(u"refreshMinutes"_s), u"7"_s);
    EXPECT_EQ(all.value(u"menuBarAmbient"_s), u"weather"_s);
    EXPECT_EQ(all.value(u"notifyBeforeMeetings"_s), u"perhaps"_s);
    EXPECT_EQ(loginItems.calls, QStringList());
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsViewTest, AnIntervalThatIsNotOfferedIsShownAllTheSame) {
    preferences.set(u"refreshMinutes"_s, u"7"_s);
    show();
    auto* const every = named<FormPicker>(u"Every"_s);
    EXPECT_EQ(every->shownText(), u"7 minutes"_s);
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(every)->text(QAccessible::Description),
        u"7 minutes"_s);
    preferences.set(u"refreshMinutes"_s, u"-5"_s);
    EXPECT_EQ(every->shownText(), u"1 minute"_s);
    QTest::keyClick(every, Qt::Key_Down);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), u"5"_s);
    EXPECT_EQ(every->shownText(), u"5 minutes"_s);
}

TEST_F(SettingsViewTest, PickersWriteTheirChoice) {
    show();
    QTest::keyClick(named<FormPicker>(u"Every"_s), Qt::Key_Down);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), u"15"_s);
    EXPECT_EQ(newRequests(), 1U);
    QTest::keyClick(named<FormPicker>(u"Menu bar shows"_s), Qt::Key_End);
    EXPECT_EQ(preferences.value(u"menuBarAmbient"_s), u"none"_s);
}

TEST_F(SettingsViewTest, TheWheelChoosesNothing) {
    show();
    auto* const every = named<FormPicker>(u"Every"_s);
    QWheelEvent wheel(
        every->rect().center(), every->mapToGlobal(every->rect().center()), {}, {0, -120},
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(every, &wheel);
    EXPECT_EQ(every->shownText(), u"10 minutes"_s);
}

TEST_F(SettingsViewTest, SwitchesMoveWithAClickAnywhereInTheirRow) {
    show();
    auto* const notify = named<FormSwitch>(u"Notify 5 minutes before meetings"_s);
    EXPECT_TRUE(notify->isChecked());
    QTest::mouseClick(notify, Qt::LeftButton, {}, {notify->width() - 5, notify->height() / 2});
    EXPECT_EQ(preferences.value(u"notifyBeforeMeetings"_s), u"false"_s);
    EXPECT_EQ(reminders.authorizationRequests, 1);
    auto* const launch = named<FormSwitch>(u"Launch at login"_s);
    QTest::mouseClick(launch, Qt::LeftButton, {}, {launch->width() / 2, launch->height() / 2});
    EXPECT_EQ(loginItems.current, LoginItemStatus::Enabled);
    QTest::keyClick(launch, Qt::Key_Space);
    EXPECT_EQ(loginItems.current, LoginItemStatus::NotRegistered);
}

TEST_F(SettingsViewTest, AFailedSwitchGoesBack) {
    loginItems.current = LoginItemStatus::NotFound;
    loginItems.registerError = u"/a/b: No space left on device"_s;
    loginItems.unregisterError = loginItems.registerError;
    show();
    auto* const launch = named<FormSwitch>(u"Launch at login"_s);
    EXPECT_FALSE(launch->isChecked());
    EXPECT_NE(textBeginning(u"Move Lumora to /Applications for this to stick"_s), nullptr);
    launch->click();
    EXPECT_FALSE(launch->isChecked());
    const FormText* const message = textBeginning(u"/a/b: No space left on device"_s);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->color(), ColorRole::Orange);
}

TEST_F(SettingsViewTest, ChangesFromElsewhereShowAtOnce) {
    show();
    preferences.set(u"endpointURL"_s, u"https://elsewhere"_s);
    preferences.set(u"refreshMinutes"_s, u"30"_s);
    preferences.set(u"notifyBeforeMeetings"_s, u"false"_s);
    preferences.set(u"menuBarAmbient"_s, u"chores"_s);
    EXPECT_EQ(endpoint()->text(), u"https://elsewhere"_s);
    EXPECT_EQ(named<FormPicker>(u"Every"_s)->shownText(), u"30 minutes"_s);
    EXPECT_FALSE(named<FormSwitch>(u"Notify 5 minutes before meetings"_s)->isChecked());
    EXPECT_EQ(named<FormPicker>(u"Menu bar shows"_s)->shownText(), u"Chores due"_s);
    EXPECT_TRUE(textBeginning(u"The token"_s)->text().contains(u"https://elsewhere"_s));
}

// Results

TEST_F(SettingsViewTest, TheButtonsFollowTheTokenAndTheTest) {
    show();
    EXPECT_TRUE(saveButton()->isEnabled());
    token()->clear();
    EXPECT_FALSE(saveButton()->isEnabled());
    QTest::keyClicks(token(), u" "_s);
    EXPECT_TRUE(saveButton()->isEnabled());

    const int width = testButton()->width();
    testButton()->click();
    EXPECT_EQ(testButton()->text(), u"Testing…"_s);
    EXPECT_FALSE(testButton()->isEnabled());
    EXPECT_EQ(testButton()->width(), width);
    EXPECT_TRUE(saveButton()->isEnabled());
}

TEST_F(SettingsViewTest, ReturnInTheTokenFieldSaves) {
    show();
    typeToken(u"another"_s);
    QTest::keyClick(token(), Qt::Key_Return);
    EXPECT_EQ(keychain.getToken(), u"another"_s);
    EXPECT_NE(textBeginning(u"✓ Saved"_s), nullptr);
    token()->clear();
    QTest::keyClick(token(), Qt::Key_Return);
    EXPECT_EQ(keychain.getToken(), std::nullopt);
}

TEST_F(SettingsViewTest, GoodNewsIsGreenAndBadNewsOrange) {
    show();
    finishTest(FakeHttpTransport::answer(401));
    ASSERT_NE(textBeginning(u"✗ Token rejected (401)"_s), nullptr);
    EXPECT_EQ(textBeginning(u"✗"_s)->color(), ColorRole::Orange);
    finishTest(FakeHttpTransport::answer(200, bodyWithEvents(0)));
    ASSERT_NE(textBeginning(u"✓ 0 events today"_s), nullptr);
    EXPECT_EQ(textBeginning(u"✓"_s)->color(), ColorRole::Green);
}

TEST_F(SettingsViewTest, ResultsCanBeReadOnTheirCard) {
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const Theme theme = plainTheme(scheme);
        for (const auto role : {ColorRole::Green, ColorRole::Orange, ColorRole::Secondary})
            EXPECT_GE(contrastRatio(theme.color(role), Form::cardColor(theme)), 4.5);
        EXPECT_GE(contrastRatio(theme.color(ColorRole::Primary), Form::windowColor(theme)), 4.5);
    }
}

TEST_F(SettingsViewTest, LongMessagesGoBelowTheButtons) {
    setTextSize(10.5);
    show();
    const int height = window->height();
    const QString words = u"The service is closed for the season and will be back soon "_s;
    for (const QString& message :
         {words.repeated(3), QString(250, u'x'), u"one\nline\nafter\nthe\nother\n!"_s,
          u"<b>"_s + QString(200, u'W') + u"</b>"_s}) {
        QByteArray body = R"({"error":")" + message.toUtf8() + R"("})";
        finishTest(FakeHttpTransport::answer(403, body.replace('\n', "\\n")));
        const FormText* const result = textBeginning(u"✗ "_s);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->text(), u"✗ "_s + message);
        EXPECT_EQ(window->width(), 420);
        EXPECT_GT(window->height(), height);
        EXPECT_EQ(inWindow(result).left(), inWindow(saveButton()).left());
        EXPECT_GT(inWindow(result).top(), inWindow(testButton()).bottom());
        EXPECT_LE(inWindow(result).right(), 420 - 34);
        EXPECT_EQ(result->height(), result->heightForWidth(result->width()));
        EXPECT_EQ(inWindow(testButton()).top(), inWindow(saveButton()).top());
    }
    finishTest(FakeHttpTransport::answer(200, bodyWithEvents(1)));
    EXPECT_EQ(window->height(), height);
    const QRect result = inWindow(textBeginning(u"✓"_s));
    EXPECT_GT(result.left(), inWindow(testButton()).right());
    EXPECT_EQ(result.right(), inWindow(endpoint()).right());
}

TEST_F(SettingsViewTest, AMessageTurnsNothing) {
    show();
    finishTest(FakeHttpTransport::answer(403, R"({"error":"No\u001b such\u202e habit"})"));
    EXPECT_EQ(textBeginning(u"✗ "_s)->text(), u"✗ No  such habit"_s);
}

TEST_F(SettingsViewTest, AnEndlessMessageIsCut) {
    show();
    finishTest(
        FakeHttpTransport::answer(403, R"({"error":")" + QByteArray(100'000, 'x') + R"("})"));
    EXPECT_LT(textBeginning(u"✗ "_s)->text().size(), 700);
    EXPECT_TRUE(textBeginning(u"✗ "_s)->text().endsWith(u"…"_s));
}
