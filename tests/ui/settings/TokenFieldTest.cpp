#include "ui/settings/TokenField.h"

#include <QAccessible>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

class TokenFieldTest : public testing::Test {
protected:
    TokenFieldTest() { secret.setEchoMode(QLineEdit::Password); }

    QLineEdit open;
    QLineEdit secret;
};

} // namespace

TEST_F(TokenFieldTest, TellsOfMaskedTextsByTheirLengthOnly) {
    QAccessibleTextInsertEvent inserted(&secret, 1, u"abc"_s);
    auto told = maskedEvent(inserted);
    ASSERT_NE(told, nullptr);
    ASSERT_EQ(told->type(), QAccessible::TextInserted);
    EXPECT_EQ(told->object(), &secret);
    EXPECT_EQ(static_cast<QAccessibleTextInsertEvent&>(*told).textInserted(), u"•••"_s);
    EXPECT_EQ(static_cast<QAccessibleTextInsertEvent&>(*told).changePosition(), 1);

    QAccessibleTextRemoveEvent removed(&secret, 2, u"ab"_s);
    told = maskedEvent(removed);
    ASSERT_NE(told, nullptr);
    ASSERT_EQ(told->type(), QAccessible::TextRemoved);
    EXPECT_EQ(static_cast<QAccessibleTextRemoveEvent&>(*told).textRemoved(), u"••"_s);
    EXPECT_EQ(static_cast<QAccessibleTextRemoveEvent&>(*told).changePosition(), 2);

    QAccessibleTextUpdateEvent updated(&secret, 0, u"ab"_s, u"cde"_s);
    told = maskedEvent(updated);
    ASSERT_NE(told, nullptr);
    ASSERT_EQ(told->type(), QAccessible::TextUpdated);
    EXPECT_EQ(static_cast<QAccessibleTextUpdateEvent&>(*told).textRemoved(), u"••"_s);
    EXPECT_EQ(static_cast<QAccessibleTextUpdateEvent&>(*told).textInserted(), u"•••"_s);
}

TEST_F(TokenFieldTest, LeavesEverythingElseAsItIs) {
    QAccessibleTextInsertEvent readable(&open, 0, u"abc"_s);
    EXPECT_EQ(maskedEvent(readable), nullptr);
    QAccessibleEvent focused(&secret, QAccessible::Focus);
    EXPECT_EQ(maskedEvent(focused), nullptr);
}
