#include "ui/panel/CaptureField.h"

#include "support/ViewHarness.h"

#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class CaptureFieldTest : public testing::Test {
protected:
    CaptureFieldTest() {
        auto* layout = new QVBoxLayout(&m_window);
        layout->setContentsMargins({});
        layout->addWidget(m_field);
        layout->addWidget(m_other);
        m_window.setFixedWidth(320);
        m_window.show();
        type(QString());
    }

    void type(const QString& text) {
        m_field->edit()->setPlainText(text);
        settle();
        m_window.resize(320, m_window.sizeHint().height());
        settle();
    }

    /// The height at which `lines` lines are seen without scrolling.
    int heightOf(int lines) const {
        return lines * m_field->edit()->fontMetrics().lineSpacing() + 1;
    }

    bool offersSending() const { return m_field->sendButton()->isVisible(); }

    /// What stands at the end of the field: a symbol's name, "spinner" or nothing.
    QString trailing() const {
        for (const auto* row : shown<PaintedRow>(*m_field)) {
            if (hasSpinner(row->content()))
                return u"spinner"_s;
            const QStringList symbols = symbolsOf(row->content());
            if (symbols != QStringList{u"tray.and.arrow.down"_s})
                return symbols.join(u' ');
        }
        return offersSending() ? symbolsOf(m_field->sendButton()->content()).join(u' ') : QString();
    }

    QStringList sent() const {
        QStringList thoughts;
        for (const QVariantList& call : m_submitted)
            thoughts += call.front().toString();
        return thoughts;
    }

    FakeClock m_clock;
    ThemeSource m_themes{stillTheme()};
    QWidget m_window;
    CaptureField* m_field = new CaptureField(m_themes, m_clock);
    RowButton* m_other = new RowButton(m_themes, QMargins());
    QSignalSpy m_submitted{m_field, &CaptureField::submitted};
};

} // namespace

TEST_F(CaptureFieldTest, IsPaddedTwelveByEightWithItemsSixApart) {
    const auto* icon = shown<PaintedRow>(*m_field).front();
    EXPECT_EQ(symbolsOf(icon->content()), QStringList{u"tray.and.arrow.down"_s});
    EXPECT_EQ(icon->content().items.front().style.role, TextRole::Caption);
    EXPECT_EQ(icon->content().items.front().style.color, ColorRole::Secondary);
    EXPECT_EQ(icon->x(), 12);
    EXPECT_EQ(m_field->edit()->x() - (icon->geometry().right() + 1), 6);
    EXPECT_EQ(m_field->edit()->y(), 8);
    EXPECT_EQ(m_field->height() - (m_field->edit()->geometry().bottom() + 1), 8);
    EXPECT_NEAR(icon->geometry().center().y(), m_field->edit()->geometry().center().y(), 1);

    type(u"x"_s);
    const RowButton* send = m_field->sendButton();
    const QRect face = send->contentsRect().translated(send->pos());
    EXPECT_EQ(face.right() + 1, 320 - 12);
    EXPECT_EQ(send->x() - (m_field->edit()->geometry().right() + 1), 6);
}

TEST_F(CaptureFieldTest, InvitesInTheCalloutSize) {
    EXPECT_EQ(m_field->edit()->placeholderText(), u"Capture a thought…"_s);
    EXPECT_EQ(
        m_field->edit()->font().pointSizeF(),
        m_themes.theme().font(TextRole::Callout).pointSizeF());
    EXPECT_EQ(m_field->edit()->frameShape(), QFrame::NoFrame);
    EXPECT_FALSE(m_field->edit()->accessibleName().isEmpty());
}

TEST_F(CaptureFieldTest, GrowsToFourLinesAndNoFurther) {
    EXPECT_EQ(m_field->edit()->height(), heightOf(1));
    const QString word = u"thoughtful "_s;
    QList<int> heights;
    for (int words = 1; words <= 60; ++words) {
        type(word.repeated(words));
        if (heights.isEmpty() || heights.back() != m_field->edit()->height())
            heights += m_field->edit()->height();
    }
    EXPECT_EQ(heights, (QList{heightOf(1), heightOf(2), heightOf(3), heightOf(4)}));
    EXPECT_EQ(m_field->height(), heightOf(4) + 8 + 8);
    EXPECT_GT(m_field->edit()->verticalScrollBar()->maximum(), 0);

    type(QString());
    EXPECT_EQ(m_field->edit()->height(), heightOf(1));
}

TEST_F(CaptureFieldTest, FourLinesAreSeenWhole) {
    type(u"1"_s);
    EXPECT_EQ(m_field->edit()->verticalScrollBar()->maximum(), 0);
    type(u"1\n2\n3\n4"_s);
    EXPECT_EQ(m_field->edit()->height(), heightOf(4));
    EXPECT_EQ(m_field->edit()->verticalScrollBar()->maximum(), 0);
    type(u"1\n2\n3\n4\n5"_s);
    EXPECT_EQ(m_field->edit()->height(), heightOf(4));
    EXPECT_EQ(m_field->edit()->verticalScrollBar()->maximum(), 1);
}

TEST_F(CaptureFieldTest, GrowsWithTheFont) {
    const int before = m_field->edit()->height();
    QFont large = QApplication::font();
    large.setPointSizeF(large.pointSizeF() * 2);
    m_themes.setTheme(Theme(ColorScheme::Light, large));
    type(u"x"_s);
    EXPECT_EQ(m_field->edit()->height(), heightOf(1));
    EXPECT_GT(m_field->edit()->height(), before + 5);
}

TEST_F(CaptureFieldTest, SendsTheTrimmedThoughtOnReturn) {
    type(u"  hello \n"_s);
    QTest::keyClick(m_field->edit(), Qt::Key_Return);
    QTest::keyClick(m_field->edit(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(sent(), (QStringList{u"hello"_s, u"hello"_s}));
    EXPECT_EQ(m_field->edit()->toPlainText(), u"  hello \n"_s);
}

TEST_F(CaptureFieldTest, SendsWithTheButton) {
    EXPECT_EQ(trailing(), QString());
    QTest::keyClicks(m_field->edit(), u"hello"_s);
    EXPECT_EQ(trailing(), u"return"_s);
    EXPECT_EQ(m_field->sendButton()->toolTip(), u"Send to Inbox"_s);
    EXPECT_EQ(m_field->sendButton()->accessibleName(), u"Send to Inbox"_s);
    QTest::mouseClick(m_field->sendButton(), Qt::LeftButton);
    EXPECT_EQ(sent(), QStringList{u"hello"_s});
}

TEST_F(CaptureFieldTest, KeepsInnerLineBreaks) {
    type(u"\n one\n\ntwo\t"_s);
    QTest::keyClick(m_field->edit(), Qt::Key_Return);
    EXPECT_EQ(sent(), QStringList{u"one\n\ntwo"_s});
}

TEST_F(CaptureFieldTest, WhiteSpaceOffersSendingButSendsNothing) {
    for (const QString& blank : {u"   "_s, u"\n"_s, u" \t\n "_s, u"\u2003"_s}) {
        type(blank);
        EXPECT_TRUE(offersSending());
        QTest::keyClick(m_field->edit(), Qt::Key_Return);
        QTest::mouseClick(m_field->sendButton(), Qt::LeftButton);
        EXPECT_EQ(m_field->edit()->toPlainText(), blank);
    }
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(CaptureFieldTest, WhilePendingItTurnsAndTakesNoTyping) {
    type(u"hello"_s);
    m_field->setPending(true);
    EXPECT_EQ(trailing(), u"spinner"_s);
    EXPECT_FALSE(offersSending());
    EXPECT_FALSE(m_field->edit()->isEnabled());
    QTest::keyClicks(m_field->edit(), u" there"_s);
    QTest::keyClick(m_field->edit(), Qt::Key_Return);
    EXPECT_EQ(m_field->edit()->toPlainText(), u"hello"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(CaptureFieldTest, AFailureKeepsTheTextAndOffersSendingAgain) {
    type(u"hello"_s);
    m_field->setPending(true);
    m_field->setPending(false);
    EXPECT_EQ(m_field->edit()->toPlainText(), u"hello"_s);
    EXPECT_EQ(trailing(), u"return"_s);
    EXPECT_TRUE(m_field->edit()->isEnabled());
    EXPECT_TRUE(m_clock.waits().empty());
}

TEST_F(CaptureFieldTest, SuccessClearsTheTextAndShowsACheckForOneAndAHalfSeconds) {
    type(u"hello"_s);
    m_field->setPending(true);
    m_field->setPending(false);
    m_field->showSaved();
    EXPECT_EQ(m_field->edit()->toPlainText(), QString());
    EXPECT_EQ(trailing(), u"checkmark.circle.fill"_s);
    for (const auto* row : shown<PaintedRow>(*m_field)) {
        const RowItem& symbol = row->content().items.front();
        const bool isCheck = symbol.symbol == u"checkmark.circle.fill";
        EXPECT_EQ(symbol.style.color, isCheck ? ColorRole::Green : ColorRole::Secondary);
    }
    m_clock.advance(1499ms);
    EXPECT_EQ(trailing(), u"checkmark.circle.fill"_s);
    m_clock.advance(1ms);
    EXPECT_EQ(trailing(), QString());
}

TEST_F(CaptureFieldTest, TypingWhileTheCheckShowsOffersSendingAfterwards) {
    m_field->showSaved();
    m_clock.advance(500ms);
    QTest::keyClicks(m_field->edit(), u"next"_s);
    EXPECT_EQ(trailing(), u"checkmark.circle.fill"_s);
    m_clock.advance(1000ms);
    EXPECT_EQ(trailing(), u"return"_s);
    EXPECT_EQ(m_field->edit()->toPlainText(), u"next"_s);
}

TEST_F(CaptureFieldTest, SendingAgainWhileTheCheckShowsTurns) {
    m_field->showSaved();
    m_field->setPending(true);
    EXPECT_EQ(trailing(), u"spinner"_s);
    m_clock.advance(1500ms);
    EXPECT_EQ(trailing(), u"spinner"_s);
}

TEST_F(CaptureFieldTest, ItMayGoAwayWhileTheCheckShows) {
    m_field->showSaved();
    delete m_field;
    m_clock.advance(2s);
    EXPECT_EQ(m_clock.pendingWaitCount(), 0U);
}

TEST_F(CaptureFieldTest, TheKeyboardComesBackWhenTheFieldTakesTypingAgain) {
    m_field->edit()->setFocus();
    m_field->setPending(true);
    m_field->setPending(false);
    EXPECT_EQ(m_window.focusWidget(), m_field->edit());
}

TEST_F(CaptureFieldTest, TheKeyboardStaysWhereTheUserTookIt) {
    m_field->edit()->setFocus();
    m_field->setPending(true);
    auto* elsewhere = new RowButton(m_themes, QMargins(), &m_window);
    elsewhere->show();
    elsewhere->setFocus();
    m_field->setPending(false);
    EXPECT_EQ(m_window.focusWidget(), elsewhere);
}

TEST_F(CaptureFieldTest, EscapeIsLeftToThePanelAndTabMovesOn) {
    type(u"hello"_s);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(m_field->edit(), &escape);
    EXPECT_FALSE(escape.isAccepted());
    m_field->edit()->setFocus();
    QTest::keyClick(m_field->edit(), Qt::Key_Tab);
    EXPECT_EQ(m_field->edit()->toPlainText(), u"hello"_s);
    EXPECT_EQ(m_window.focusWidget(), m_field->sendButton());
}

TEST_F(CaptureFieldTest, ItsMenuIsInTheTheme) {
    m_themes.setTheme(plainTheme(ColorScheme::Dark));
    type(u"hello"_s);
    QContextMenuEvent press(
        QContextMenuEvent::Mouse, QPoint(3, 3), m_field->edit()->mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(m_field->edit()->viewport(), &press);
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    EXPECT_LT(painted(*menu).pixelColor(menu->width() / 2, 3).lightnessF(), 0.3);
    menu->close();
}

TEST_F(CaptureFieldTest, SelectedTextCanBeRead) {
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        m_themes.setTheme(plainTheme(scheme));
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            const QPalette colors = m_field->edit()->palette();
            EXPECT_GE(
                contrastRatio(
                    colors.color(group, QPalette::HighlightedText),
                    colors.color(group, QPalette::Highlight)),
                4.5);
        }
    }
}

TEST_F(CaptureFieldTest, HoldsAnyAmountOfText) {
    const QString endless = QString(10'240, u'W') + u"\n\"quoted\""_s;
    type(endless);
    EXPECT_EQ(m_field->edit()->height(), heightOf(4));
    QTest::keyClick(m_field->edit(), Qt::Key_Return);
    EXPECT_EQ(sent(), QStringList{endless});
}

TEST_F(CaptureFieldTest, ShiftAndReturnBeginsANewLine) {
    type(u"Buy milk"_s);
    QTest::keyClick(m_field->edit(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(m_submitted.size(), 0);
    EXPECT_TRUE(m_field->edit()->toPlainText().contains(u'\n'));
    QTest::keyClick(m_field->edit(), Qt::Key_Return);
    EXPECT_EQ(m_submitted.size(), 1);
}
