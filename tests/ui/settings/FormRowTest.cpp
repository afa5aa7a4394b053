#include "ui/settings/FormRow.h"

#include "support/ViewHarness.h"
#include "ui/settings/FormText.h"

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Something 100 wide and 30 high.
class Block : public QWidget {
public:
    QSize sizeHint() const override { return {100, 30}; }
};

class FormRowTest : public testing::Test {
protected:
    FormRowTest() {
        auto* const row = new FormRow(themes, 10);
        for (QWidget* widget : std::initializer_list<QWidget*>{first, second, text})
            row->addWidget(widget);
        holder.setLayout(row);
    }

    /// Lays the row out in `width` and shows `words` at its end.
    void layOut(int width, const QString& words) {
        text->setVisible(!words.isEmpty());
        text->setRuns({{words}});
        holder.resize(width, holder.heightForWidth(width));
        holder.show();
        settle();
    }

    ThemeSource themes{stillTheme(10.5)};
    QWidget holder;
    Block* first = new Block;
    Block* second = new Block;
    FormText* text = new FormText(themes, ColorRole::Green);
};

} // namespace

TEST_F(FormRowTest, TheLastStandsAtTheEnd) {
    layOut(400, u"Saved"_s);
    EXPECT_EQ(first->geometry(), QRect(0, 0, 100, 30));
    EXPECT_EQ(second->geometry(), QRect(110, 0, 100, 30));
    EXPECT_EQ(text->geometry().right(), 399);
    EXPECT_EQ(text->width(), text->sizeHint().width());
    EXPECT_EQ(holder.height(), 30);
}

TEST_F(FormRowTest, WhatIsHiddenLeavesTheOthersWhereTheyAre) {
    layOut(400, {});
    EXPECT_EQ(second->geometry(), QRect(110, 0, 100, 30));
    EXPECT_EQ(holder.height(), 30);
}

TEST_F(FormRowTest, ATextWrapsBesideTheControlsUpToTheirHeight) {
    layOut(400, u"some words that need two lines here, no more"_s);
    EXPECT_EQ(text->x(), 220);
    EXPECT_GT(text->height(), text->fontMetrics().height());
    EXPECT_EQ(holder.height(), 30);
}

TEST_F(FormRowTest, AnyMoreOfATextGoesBelowThem) {
    layOut(400, u"some words that need two lines "_s.repeated(4));
    EXPECT_EQ(text->pos(), QPoint(0, 40));
    EXPECT_EQ(text->height(), text->heightForWidth(text->width()));
    EXPECT_EQ(holder.height(), 40 + text->height());
}

TEST_F(FormRowTest, ControlsGoBelowEachOtherWhereTheyMust) {
    layOut(150, u"Saved"_s);
    EXPECT_EQ(first->geometry(), QRect(0, 0, 100, 30));
    EXPECT_EQ(second->geometry(), QRect(0, 40, 100, 30));
    layOut(60, {});
    EXPECT_EQ(first->width(), 60);
}

TEST_F(FormRowTest, IsReadFromTheRightWhereTheFormIs) {
    holder.setLayoutDirection(Qt::RightToLeft);
    layOut(400, u"Saved"_s);
    EXPECT_EQ(first->geometry(), QRect(300, 0, 100, 30));
    EXPECT_EQ(second->geometry(), QRect(190, 0, 100, 30));
    EXPECT_EQ(text->x(), 0);
}

TEST_F(FormRowTest, GapsFollowTheTextSize) {
    themes.setTheme(stillTheme(22));
    layOut(600, {});
    EXPECT_EQ(second->x(), 100 + themes.theme().pixels(10));
    EXPECT_GT(second->x(), 115);
}
