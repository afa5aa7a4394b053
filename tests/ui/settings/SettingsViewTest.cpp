#include "ui/settings/SettingsView.h"

#include "ui/settings/FormPainting.h"
#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/SettingsWindowFixture.h"
#include "ui/theme/PopupStyle.h"
#include "ui/theme/SpinnerMotion.h"

#include <QContextMenuEvent>
#include <QMenu>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using SettingsViewTest = SettingsWindowTest;

/// Whether two pictures show the same, be it half a pixel apart.
bool looksLike(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            different +=
                std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))) > 96 ||
                std::abs(a.pixelColor(x, y).lightness() - b.pixelColor(x, y).lightness()) > 96;
    return a.size() == b.size() && different * 50 < a.width() * a.height();
}

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
    preferences.setValue(u"endpointURL"_s, u" <b>https://a</b>&amp;`b` "_s);
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
    preferences.setValue(u"endpointURL"_s, QString());
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
    MemoryPreferences& all = preferences;
    const QStringList keys{u"refreshMinutes"_s, u"menuBarAmbient"_s, u"notifyBeforeMeetings"_s};
    all.setValue(u"refreshMinutes"_s, u"7"_s);
    all.setValue(u"menuBarAmbient"_s, u"weather"_s);
    all.setValue(u"notifyBeforeMeetings"_s, u"perhaps"_s);
    show();
    reopen();
    EXPECT_EQ(all.value(u"refreshMinutes"_s), u"7"_s);
    EXPECT_EQ(all.value(u"menuBarAmbient"_s), u"weather"_s);
    EXPECT_EQ(all.value(u"notifyBeforeMeetings"_s), u"perhaps"_s);
    EXPECT_EQ(loginItems.calls, QStringList());
    EXPECT_EQ(newRequests(), 0U);
}

TEST_F(SettingsViewTest, AnIntervalThatIsNotOfferedIsShownAllTheSame) {
    preferences.setValue(u"refreshMinutes"_s, u"7"_s);
    show();
    auto* const every = named<FormPicker>(u"Every"_s);
    EXPECT_EQ(every->shownText(), u"7 minutes"_s);
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(every)->text(QAccessible::Description),
        u"7 minutes"_s);
    preferences.setValue(u"refreshMinutes"_s, u"-5"_s);
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
    preferences.setValue(u"endpointURL"_s, u"https://elsewhere"_s);
    preferences.setValue(u"refreshMinutes"_s, u"30"_s);
    preferences.setValue(u"notifyBeforeMeetings"_s, u"false"_s);
    preferences.setValue(u"menuBarAmbient"_s, u"chores"_s);
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

TEST_F(SettingsViewTest, AnEndlessMessageIsCut) {
    show();
    finishTest(
        FakeHttpTransport::answer(403, R"({"error":")" + QByteArray(100'000, 'x') + R"("})"));
    EXPECT_LT(textBeginning(u"✗ "_s)->text().size(), 700);
    EXPECT_TRUE(textBeginning(u"✗ "_s)->text().endsWith(u"…"_s));
}

// Looks

TEST_F(SettingsViewTest, EveryControlShowsThePointerAndThePress) {
    show();
    window->setFocus();
    const auto look = [this](QWidget* control, bool isUnder) {
        control->setAttribute(Qt::WA_UnderMouse, isUnder);
        return painted(*control);
    };
    for (QWidget* control : shownControls()) {
        if (qobject_cast<QLabel*>(control))
            continue;
        const QImage calm = look(control, false);
        const QImage hovered = look(control, true);
        const char* const name = control->metaObject()->className();
        EXPECT_NE(hovered, calm) << name;
        EXPECT_TRUE(control->testAttribute(Qt::WA_Hover)) << name;
        if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
            button->setDown(true);
            EXPECT_NE(painted(*button), hovered) << name;
            EXPECT_NE(painted(*button), calm) << name;
            button->setDown(false);
        }
        look(control, false);
    }
}

TEST_F(SettingsViewTest, APickerIsHeldDownWhileItsMenuIsOpen) {
    show();
    auto* const every = named<FormPicker>(u"Every"_s);
    window->setFocus();
    const QImage calm = painted(*every);
    QTest::mouseClick(every, Qt::LeftButton);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    every->clearFocus();
    EXPECT_NE(painted(*every), calm);
    menu->close();
    settle();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(SettingsViewTest, ATestUnderWayTurnsASpinner) {
    show();
    const QImage idle = painted(*testButton());
    testButton()->click();
    settle();
    const QImage busy = painted(*testButton());
    EXPECT_NE(busy, idle);
    auto* const turning = testButton()->findChild<SpinnerMotion*>();
    EXPECT_EQ(turning->state(), QAbstractAnimation::Running);
    turning->setCurrentTime(turning->duration() / 2);
    EXPECT_NE(painted(*testButton()), busy);
    transport.complete(transport.requests().size() - 1, FakeHttpTransport::answer(401));
    settle();
    EXPECT_EQ(turning->state(), QAbstractAnimation::Stopped);
}

TEST_F(SettingsViewTest, AMenuOffersThePickersChoices) {
    show();
    auto* const every = named<FormPicker>(u"Every"_s);
    QTest::keyClick(every, Qt::Key_Space);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const QAction* choice : menu->actions()) {
        texts += choice->text();
        EXPECT_EQ(choice->isChecked(), choice->text() == u"10 minutes");
    }
    EXPECT_EQ(
        texts, (QStringList{u"5 minutes"_s, u"10 minutes"_s, u"15 minutes"_s, u"30 minutes"_s}));
    EXPECT_EQ(menu->activeAction(), menu->actions().at(1));
    EXPECT_GE(menu->width(), every->width());
    EXPECT_GE(menu->y(), every->mapToGlobal(QPoint(0, every->height())).y());
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(preferences.value(u"refreshMinutes"_s), u"15"_s);
    EXPECT_EQ(every->shownText(), u"15 minutes"_s);
    EXPECT_EQ(newRequests(), 1U);
}

TEST_F(SettingsViewTest, MenusOfTheFieldsAreInTheTheme) {
    Theme theme = plainTheme(ColorScheme::Dark);
    theme.setRoundsWindows(true);
    themes.setTheme(theme);
    show();
    for (FormField* field : {endpoint(), token()}) {
        QContextMenuEvent press(
            QContextMenuEvent::Mouse, QPoint(5, 5), field->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(field, &press);
        QWidget* const menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        EXPECT_TRUE(qobject_cast<PopupStyle*>(menu->style()));
        EXPECT_LT(painted(*menu).pixelColor(menu->width() / 2, 3).lightnessF(), 0.3);
        menu->close();
        settle();
    }
}

TEST_F(SettingsViewTest, SelectedTextsCanBeRead) {
    show();
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        themes.setTheme(plainTheme(scheme));
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QPalette colors = endpoint()->palette();
            EXPECT_GE(
                contrastRatio(
                    colors.color(group, QPalette::HighlightedText),
                    colors.color(group, QPalette::Highlight)),
                4.5);
        }
    }
}

TEST_F(SettingsViewTest, StandsTheOtherWayRoundWhereThingsAreReadFromTheRight) {
    show();
    setTextSize(10.5);
    const auto middleOf = [this](const QWidget* widget) { return inWindow(widget).center().x(); };
    auto* const every = named<FormPicker>(u"Every"_s);
    auto* const notify = named<FormSwitch>(u"Notify 5 minutes before meetings"_s);
    const QImage on = painted(*notify);
    notify->setChecked(false);
    const QImage off = painted(*notify);
    const QImage picker = painted(*every);
    window->setLayoutDirection(Qt::RightToLeft);
    lumora::tests::settle();

    EXPECT_GT(middleOf(saveButton()), middleOf(testButton()));
    EXPECT_GT(middleOf(labelReading(u"E&very"_s)), middleOf(every));
    EXPECT_EQ(
        inkOf(labelReading(u"&Endpoint URL"_s)).right() / 4, inWindow(endpoint()).right() / 4);
    EXPECT_EQ(inkOf(textBeginning(u"When no"_s)).right() / 4, inWindow(endpoint()).right() / 4);
    // Tracks are painted alike, only at the other side and with the knob at the other end.
    const QRect track(0, 0, points(36), notify->height());
    const QRect before(notify->width() - track.width(), 0, track.width(), track.height());
    EXPECT_TRUE(looksLike(painted(*notify).copy(track), off.copy(before).mirrored(true, false)));
    EXPECT_FALSE(looksLike(painted(*notify).copy(track), off.copy(before)));
    notify->setChecked(true);
    EXPECT_TRUE(looksLike(painted(*notify).copy(track), on.copy(before).mirrored(true, false)));
    // So are chevrons.
    const QRect chevron(0, 0, points(25), every->height());
    const QRect opposite(every->width() - chevron.width(), 0, chevron.width(), chevron.height());
    EXPECT_TRUE(
        looksLike(painted(*every).copy(chevron), picker.copy(opposite).mirrored(true, false)));
}

// Tool tips

TEST_F(SettingsViewTest, TextsAboutAnotherSystemSayWhatTheyMeanHere) {
    secrets.setKeeper(u"GNOME Keyring"_s);
    loginItems.current = LoginItemStatus::NotFound;
    show();
    FormText* const note = textBeginning(u"The token"_s);
    EXPECT_EQ(toolTipOf(*note), keychainExplanation(u"GNOME Keyring"_s));
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(note)->text(QAccessible::Description),
        keychainExplanation(u"GNOME Keyring"_s));
    FormText* const hint = textBeginning(u"Move Lumora"_s);
    EXPECT_EQ(
        toolTipOf(*hint), loginItemExplanation(LoginItemStatus::NotFound, u"~/items/lumora"_s, {}));
    EXPECT_EQ(
        QAccessible::queryAccessibleInterface(hint)->text(QAccessible::Description),
        loginItemExplanation(LoginItemStatus::NotFound, u"~/items/lumora"_s, {}));

    // An error speaks for itself.
    loginItems.registerError = u"No space left on device"_s;
    loginItems.unregisterError = loginItems.registerError;
    named<FormSwitch>(u"Launch at login"_s)->click();
    EXPECT_EQ(toolTipOf(*textBeginning(u"No space"_s)), QString());
}

TEST_F(SettingsViewTest, WhatIsCutOffSaysItselfWhole) {
    show();
    EXPECT_EQ(toolTipOf(*endpoint()), QString());
    const QString address = u"https://a.example/"_s + QString(120, u'b');
    endpoint()->setText(address);
    EXPECT_EQ(toolTipOf(*endpoint()), address);
    token()->setText(address);
    EXPECT_EQ(toolTipOf(*token()), QString());

    auto* const every = named<FormPicker>(u"Every"_s);
    for (QWidget* control :
         std::initializer_list<QWidget*>{saveButton(), every, labelReading(u"E&very"_s)}) {
        EXPECT_EQ(toolTipOf(*control), QString());
        control->resize(30, 30);
        EXPECT_NE(toolTipOf(*control), QString());
    }
    EXPECT_EQ(toolTipOf(*saveButton()), u"Save token"_s);
    EXPECT_EQ(toolTipOf(*every), u"10 minutes"_s);
}
