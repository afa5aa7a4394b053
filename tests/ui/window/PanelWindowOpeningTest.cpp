#include "ui/window/PanelWindowFixture.h"

#include <QDialog>
#include <QMenu>
#include <QSignalSpy>
#include <QToolTip>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace lumora::tests {

TEST_F(PanelWindowTest, GivesTheFocusToTheContentAndNotToAField) {
    open();
    EXPECT_EQ(QApplication::activeWindow(), window.get());
    EXPECT_EQ(QApplication::focusWidget(), content);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), content->button);
}

TEST_F(PanelWindowTest, DoesNotReturnTheFocusToTheFieldThatHadIt) {
    open();
    content->field->setFocus();
    ASSERT_EQ(QApplication::focusWidget(), content->field);
    QTest::keyClicks(content->field, u"half a th"_s);
    close();
    open();
    EXPECT_EQ(QApplication::focusWidget(), content);
    EXPECT_EQ(content->field->text(), u"half a th"_s);
}

TEST_F(PanelWindowTest, EscapeCloses) {
    open();
    const QSignalSpy hidden(window.get(), &PanelWindow::hidden);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(hidden.count(), 1);
}

TEST_F(PanelWindowTest, EscapeInAFieldCloses) {
    open();
    content->field->setFocus();
    QTest::keyClick(content->field, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PanelWindowTest, TurningToAnotherWindowCloses) {
    open();
    const QSignalSpy hidden(window.get(), &PanelWindow::hidden);
    turnElsewhere();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(hidden.count(), 1);
}

TEST_F(PanelWindowTest, ItsOwnMenusAndToolTipsDoNotCloseIt) {
    open();
    QToolTip::showText(window->panelGeometry().center(), u"A tip"_s, content);
    EXPECT_TRUE(window->isVisible());
    QMenu menu(content->field);
    menu.addAction(u"Paste"_s);
    menu.popup(window->panelGeometry().center());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    EXPECT_TRUE(window->isVisible());
    menu.close();
    QToolTip::hideText();
}

TEST_F(PanelWindowTest, ItsOwnDialogsDoNotCloseIt) {
    open();
    QWidget dialog(content, Qt::Dialog);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, APressInTheShadowClosesAndOneInThePanelDoesNot) {
    compositing.setActive(true);
    open();
    const QRect panel = window->panelRect();
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, panel.center());
    EXPECT_TRUE(window->isVisible());
    const QPoint shadow = panel.topLeft() - QPoint(8, -50);
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, shadow);
    EXPECT_TRUE(window->isVisible()) << "a double click of which only the second press came here";
    clock.advance(std::chrono::milliseconds(QApplication::doubleClickInterval()));
    QTest::mouseClick(window.get(), Qt::LeftButton, {}, shadow);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PanelWindowTest, ThePressOnTheItemOpensAndCloses) {
    window->toggle(topItem);
    EXPECT_TRUE(window->isVisible());
    window->toggle(topItem);
    EXPECT_FALSE(window->isVisible());
    window->toggle(topItem);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, TheSecondPressOfADoubleClickDoesNotClose) {
    AnchorEvidence press = topItem;
    press.activation = press.pointer;
    const std::chrono::milliseconds doubleClick(QApplication::doubleClickInterval());
    window->toggle(press);
    clock.advance(doubleClick - 1ms);
    window->toggle(press);
    EXPECT_TRUE(window->isVisible());
    clock.advance(1ms);
    window->toggle(press);
    EXPECT_FALSE(window->isVisible());
    // A key is no mouse.
    window->toggle(topItem);
    window->toggle(topItem);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(PanelWindowTest, IsPreparedBeforeEachShowing) {
    int prepared = 0;
    PanelWindow another(
        new Content, {.themes = themes,
                      .compositing = compositing,
                      .clock = clock,
                      .prepare = [&](const QWidget& panel) {
                          EXPECT_TRUE(panel.internalWinId());
                          EXPECT_FALSE(panel.isVisible());
                          ++prepared;
                      }});
    another.showAt(topItem);
    another.showAt(topItem);
    EXPECT_EQ(prepared, 1);
    another.hide();
    another.showAt(topItem);
    EXPECT_EQ(prepared, 2);
}

TEST_F(PanelWindowTest, ThePressThatTookTheFocusDoesNotOpenItAgain) {
    open();
    turnElsewhere();
    clock.advance(299ms);
    window->toggle(topItem);
    EXPECT_FALSE(window->isVisible());
    clock.advance(1ms);
    window->toggle(topItem);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, APressRightAfterEscapeOpens) {
    open();
    turnElsewhere();
    open();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    window->toggle(topItem);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, ShowingIsNeverIgnored) {
    open();
    turnElsewhere();
    window->showAt(topItem);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, AClockThatWasSetBackDoesNotBlockTheItem) {
    open();
    turnElsewhere();
    clock.advance(-1h);
    window->toggle(topItem);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(PanelWindowTest, AnnouncesEachOpeningInTimeForTheContentToChange) {
    QObject::connect(window.get(), &PanelWindow::aboutToShow, window.get(), [this] {
        EXPECT_FALSE(window->isVisible());
        content->setTotalHeight(444);
    });
    const QSignalSpy aboutToShow(window.get(), &PanelWindow::aboutToShow);
    window->showAt(topItem);
    EXPECT_EQ(window->panelGeometry().height(), 446);
    window->showAt(topItem);
    EXPECT_EQ(aboutToShow.count(), 1) << "it was open already";
    window->hide();
    window->showAt(topItem);
    EXPECT_EQ(aboutToShow.count(), 2);
}

TEST_F(PanelWindowTest, TheActivationTokenIsGoneOnceItIsUsed) {
    window->showAt(topItem, "token-1");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

} // namespace lumora::tests
