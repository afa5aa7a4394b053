#include "support/ViewHarness.h"
#include "ui/panel/ActionRows.h"
#include "ui/panel/CollapsibleSection.h"

#include <QVariantAnimation>

#include <gtest/gtest.h>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

class PanelMotionTest : public testing::Test {
protected:
    PanelMotionTest() {
        m_window.resize(320, 200);
        m_section.resize(320, 100);
        m_row.move(0, 150);
        m_window.show();
        settle();
    }

    void allowMotion(bool allowed) {
        Theme theme = m_themes.theme();
        theme.setAllowsMotion(allowed);
        m_themes.setTheme(theme);
    }

    bool isTurning() const {
        const auto* spinner = m_row.findChild<SpinnerMotion*>();
        return spinner->state() == QAbstractAnimation::Running;
    }

    ThemeSource m_themes{plainTheme()};
    QWidget m_window;
    CollapsibleSection m_section{
        m_themes,
        {.title = u"Habits"_s, .systemImage = u"flame"_s, .badge = std::nullopt},
        new QWidget,
        &m_window};
    ActionRow m_row{m_themes, &m_window};
};

} // namespace

TEST_F(PanelMotionTest, ThingsMoveUnlessTheDesktopAsksThemNotTo) {
    EXPECT_TRUE(motionAllowed(m_themes.theme()));
    m_section.setCollapsed(true);
    EXPECT_GT(m_section.fold()->openness(), 0);
    m_row.setPending(true);
    EXPECT_TRUE(isTurning());
}

TEST_F(PanelMotionTest, NothingMovesWhereTheDesktopAsksForThat) {
    allowMotion(false);
    m_section.setCollapsed(true);
    EXPECT_DOUBLE_EQ(m_section.fold()->openness(), 0);
    EXPECT_DOUBLE_EQ(m_section.header()->content().items.back().rotation, -90);
    m_row.setPending(true);
    EXPECT_FALSE(isTurning());
    EXPECT_TRUE(hasSpinner(m_row.content()));
}

TEST_F(PanelMotionTest, WhatMovesComesToRestWhenTheWishChanges) {
    m_section.setCollapsed(true);
    m_row.setPending(true);
    allowMotion(false);
    EXPECT_DOUBLE_EQ(m_section.fold()->openness(), 0);
    EXPECT_DOUBLE_EQ(m_section.header()->content().items.back().rotation, -90);
    EXPECT_FALSE(isTurning());

    allowMotion(true);
    EXPECT_TRUE(isTurning()) << "it is still under way";
    m_row.setPending(false);
    EXPECT_FALSE(isTurning());
    allowMotion(false);
    allowMotion(true);
    EXPECT_FALSE(isTurning());
}

TEST_F(PanelMotionTest, WhatIsUnderThePointerChangesAtOnce) {
    m_row.setRow({.items = {RowItem::text(u"Read"_s, {})}});
    m_row.resize(200, m_row.sizeHint().height());
    const QImage before = painted(m_row);
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QCoreApplication::sendEvent(&m_row, &enter);
    EXPECT_NE(painted(m_row), before);
    EXPECT_TRUE(m_row.findChildren<QVariantAnimation*>().isEmpty());
}
