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
    for (const double size : {8.0, 10.5, 12.0}) {
        setTextSize(size);
        EXPECT_EQ(window->width(), points(420));
        EXPECT_EQ(window->minimumSize(), window->maximumSize());
        EXPECT_EQ(
            window->height(), window->findChild<SettingsView*>()->heightForWidth(points(420)));
    }
    EXPECT_EQ(window->windowType(), Qt::Window);
    EXPECT_FALSE(window->windowFlags() & Qt::FramelessWindowHint);
}

TEST_F(SettingsWindowTest, LeavesItsFrameRoomOnTheScreen) {
    EXPECT_EQ(sizeOnScreen({420, 500}, {800, 600}, {2, 36, 2, 4}), QSize(420, 500));
    EXPECT_EQ(sizeOnScreen({420, 900}, {800, 600}, {2, 36, 2, 4}), QSize(420, 560));
    EXPECT_EQ(sizeOnScreen({900, 900}, {800, 600}, {2, 36, 2, 4}), QSize(796, 560));
    show();
    for (const double size : {16.0, 24.0, 28.0, 40.0}) {
        setTextSize(size);
        const QSize room = window->screen()->availableGeometry().size();
        EXPECT_EQ(window->frameGeometry().size().boundedTo(room), window->frameGeometry().size());
        EXPECT_EQ(window->frameGeometry().height(), room.height());
    }
}

TEST_F(SettingsWindowTest, AllOfItStandsClearInEveryTextSize) {
    loginItems.current = LoginItemStatus::RequiresApproval;
    loginItems.registerError = QString(u"/home/a/.config/autostart: No space left "_s).repeated(4);
    show();
    const QByteArray closed = QByteArray("The service is closed for the season. ").repeated(4);
    const auto expectRoom = [this](const std::string& what) {
        EXPECT_EQ(cutOff(*window->findChild<SettingsView*>()), "") << what;
        const auto controls = shownControls();
        for (const QWidget* control : controls) {
            const QWidget* const card = control->parentWidget();
            EXPECT_TRUE(card->rect().contains(control->geometry())) << what;
            if (!control->hasHeightForWidth()) {
                EXPECT_EQ(control->size().expandedTo(control->sizeHint()), control->size())
                    << what << ' ' << control->metaObject()->className();
            }
            for (const QWidget* other : controls) {
                EXPECT_TRUE(other == control || !inWindow(other).intersects(inWindow(control)))
                    << what << ' ' << control->metaObject()->className() << " on "
                    << other->metaObject()->className();
            }
        }
    };
    for (const double size : {8.0, 10.0, 11.0, 16.0, 24.0, 28.0}) {
        const std::string points = std::to_string(size);
        setTextSize(size);
        expectRoom(points);
        finishTest(FakeHttpTransport::answer(403, R"({"error":")" + closed + R"("})"));
        EXPECT_GE(textBeginning(u"✗"_s)->width(), this->points(140)) << size;
        expectRoom(points + " failed");
        testButton()->click();
        settle();
        expectRoom(points + " testing");
        transport.complete(transport.requests().size() - 1, FakeHttpTransport::answer(401));
        settle();
        named<FormSwitch>(u"Launch at login"_s)->click();
        settle();
        expectRoom(points + " refused");
    }
}

TEST_F(SettingsWindowTest, HeadersStandInLineWithWhatIsOnTheirCard) {
    show();
    for (const bool fromRight : {false, true}) {
        window->setLayoutDirection(fromRight ? Qt::RightToLeft : Qt::LeftToRight);
        for (const double size : {8.0, 11.0, 20.0}) {
            setTextSize(size);
            const QRect header = inkOf(labelReading(u"Connection"_s));
            const QRect label = inkOf(labelReading(u"&Endpoint URL"_s));
            const int slack = points(2); // letters differ
            if (fromRight)
                EXPECT_NEAR(header.right(), label.right(), slack) << size;
            else
                EXPECT_NEAR(header.left(), label.left(), slack) << size;
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
    EXPECT_TRUE(keychain.setToken(QString::fromLatin1(secret)));
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
    EXPECT_TRUE(keychain.setToken(QString::fromLatin1(secret)));
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
