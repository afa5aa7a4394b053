#include "ui/settings/SettingsWindow.h"

#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/FormText.h"
#include "ui/settings/SettingsView.h"
#include "ui/settings/SettingsWindowFixture.h"

#include <QClipboard>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char secret[] = "my-very-secret-token";

} // namespace

TEST_F(SettingsWindowTest, IsExactly420PointsWideAndAsHighAsItsContent) {
    show();
    EXPECT_EQ(window->size().width(), 420);
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_EQ(window->height(), window->findChild<SettingsView*>()->heightForWidth(420));
    EXPECT_EQ(window->windowType(), Qt::Window);
    EXPECT_FALSE(window->windowFlags() & Qt::FramelessWindowHint);
}

TEST_F(SettingsWindowTest, NoTextIsCutOff) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    show();
    finishTest(FakeHttpTransport::answer(401));
    for (const double points : roomyFontSizes) {
        themes.setTheme(stillTheme(points));
        tests::settle();
        EXPECT_EQ(window->width(), 420);
        EXPECT_EQ(cutOff(*window), "") << points;
        for (const auto* widget : shown<QWidget>(*window)) {
            const bool needsItsSize =
                qobject_cast<const FormLabel*>(widget) || qobject_cast<const FormPicker*>(widget) ||
                qobject_cast<const FormButton*>(widget) || qobject_cast<const FormSwitch*>(widget);
            EXPECT_TRUE(
                !needsItsSize || widget->size().expandedTo(widget->sizeHint()) == widget->size())
                << points << ' ' << widget->metaObject()->className();
        }
    }
}

TEST_F(SettingsWindowTest, EscapeCloses) {
    show();
    QTest::keyClick(endpoint(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SettingsWindowTest, KeepsTheResultWhileItIsClosed) {
    show();
    finishTest(FakeHttpTransport::answer(401));
    reopen();
    EXPECT_NE(textBeginning(u"✗ Token rejected (401)"_s), nullptr);
}

TEST_F(SettingsWindowTest, OpeningAnOpenWindowKeepsWhatIsTyped) {
    show();
    typeToken(u"half a tok"_s);
    window->open({});
    EXPECT_EQ(token()->text(), u"half a tok"_s);
}

TEST_F(SettingsWindowTest, IsDrawnDarkToo) {
    themes.setTheme(plainTheme(ColorScheme::Dark));
    show();
    const QImage dark = painted(*window);
    EXPECT_LT(dark.pixelColor(3, 3).lightnessF(), 0.3);
    themes.setTheme(plainTheme());
    tests::settle();
    EXPECT_GT(painted(*window).pixelColor(3, 3).lightnessF(), 0.8);
}

// The token

TEST_F(SettingsWindowTest, TheTokenIsMaskedAndCannotBeCopied) {
    keychain.setToken(QString::fromLatin1(secret));
    show();
    EXPECT_EQ(token()->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(token()->displayText().contains(QString::fromLatin1(secret)));
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText(u"before"_s);
    token()->setFocus();
    token()->selectAll();
    QTest::keyClick(token(), Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(token(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), u"before"_s);
    EXPECT_FALSE(clipboard->text(QClipboard::Selection).contains(QString::fromLatin1(secret)));
}

TEST_F(SettingsWindowTest, UndoBringsNoTokenBack) {
    show();
    typeToken(QString::fromLatin1(secret));
    token()->clear();
    QTest::keyClick(token(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(token()->text().contains(QString::fromLatin1(secret)));
    QTest::keyClick(token(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(token()->text().contains(QString::fromLatin1(secret)));
    typeToken(QString::fromLatin1(secret));
    reopen();
    EXPECT_FALSE(token()->isUndoAvailable());
    QTest::keyClick(token(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(token()->text(), QString::fromLatin1(secret));
}

TEST_F(SettingsWindowTest, AClosedWindowHoldsNoToken) {
    show();
    window->close();
    EXPECT_EQ(token()->text(), QString());
    EXPECT_EQ(model->token(), QString());
    window->open({});
    EXPECT_EQ(token()->text(), u"t0ken"_s);
}

TEST_F(SettingsWindowTest, NobodyElseIsToldTheToken) {
    keychain.setToken(QString::fromLatin1(secret));
    show();
    const auto widgets = window->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        for (const auto part :
             {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
            EXPECT_FALSE(spoken->text(part).contains(QString::fromLatin1(secret)));
        if (QAccessibleTextInterface* text = spoken->textInterface()) {
            EXPECT_FALSE(
                text->text(0, text->characterCount()).contains(QString::fromLatin1(secret)));
        }
    }
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(token())->state().passwordEdit);
    for (const auto query :
         {Qt::ImSurroundingText, Qt::ImCurrentSelection, Qt::ImTextBeforeCursor,
          Qt::ImTextAfterCursor})
        EXPECT_EQ(token()->inputMethodQuery(query).toString(), QString());
}
