#include "ui/settings/FormPainting.h"
#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/SettingsWindowFixture.h"
#include "ui/theme/PopupStyle.h"
#include "ui/theme/SpinnerMotion.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <cstdlib>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

using SettingsLooksTest = SettingsWindowTest;

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

// Looks

TEST_F(SettingsLooksTest, EveryControlShowsThePointerAndThePress) {
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

TEST_F(SettingsLooksTest, APickerIsHeldDownWhileItsMenuIsOpen) {
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

TEST_F(SettingsLooksTest, ATestUnderWayTurnsASpinner) {
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

TEST_F(SettingsLooksTest, AMenuOffersThePickersChoices) {
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

TEST_F(SettingsLooksTest, MenusOfTheFieldsAreInTheTheme) {
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

TEST_F(SettingsLooksTest, SelectedTextsCanBeRead) {
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

TEST_F(SettingsLooksTest, StandsTheOtherWayRoundWhereThingsAreReadFromTheRight) {
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

TEST_F(SettingsLooksTest, TextsAboutAnotherSystemSayWhatTheyMeanHere) {
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

TEST_F(SettingsLooksTest, WhatIsCutOffSaysItselfWhole) {
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

TEST(FormControl, EveryEmphasisCanBeTakenForNoOtherAndRead) {
    using Form::Emphasis;
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const Theme theme(scheme, QFont());
        const QColor card = Form::cardColor(theme);
        double last = 1;
        for (const auto emphasis : {Emphasis::None, Emphasis::Hover, Emphasis::Pressed}) {
            const QColor ground = laidOver(Form::controlColor(theme, emphasis), card);
            EXPECT_GT(contrastRatio(ground, card), last + 0.03);
            EXPECT_GE(contrastRatio(theme.color(ColorRole::Primary), ground), 4.5);
            last = contrastRatio(ground, card);
        }
    }
}
