#include "ui/access/SpokenWidgets.h"

#include "support/PanelFixture.h"
#include "support/WrittenTexts.h"
#include "texts/PanelTexts.h"
#include "ui/access/ReadingOrder.h"
#include "ui/panel/SpendingFigures.h"
#include "ui/panel/SpendingSection.h"

#include <QSignalSpy>
#include <QVBoxLayout>

#include <algorithm>

using namespace lumora;
using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

QAccessibleInterface* spoken(QObject* object) {
    return QAccessible::queryAccessibleInterface(object);
}

QString nameOf(QAccessibleInterface* interface) {
    return interface->text(QAccessible::Name);
}

/// What is below `interface` and has a name, in order.
QList<QAccessibleInterface*> namedBelow(QAccessibleInterface* interface) {
    QList<QAccessibleInterface*> found;
    for (int i = 0; i < interface->childCount(); ++i) {
        QAccessibleInterface* child = interface->child(i);
        EXPECT_EQ(interface->indexOfChild(child), i);
        EXPECT_EQ(child->parent(), interface);
        if (!nameOf(child).isEmpty())
            found += child;
        found += namedBelow(child);
    }
    return found;
}

/// A widget that nobody has heard of, with a part that is seen, one that is not, and one without a
/// name, the last one made first.
class Newcomer : public QWidget, public SpokenAs<SpokenRole::Group> {
public:
    explicit Newcomer(const ThemeSource& themes) {
        auto* layout = new QVBoxLayout(this);
        for (const QString& name : {u"second"_s, QString(), u"first"_s}) {
            auto* part = new PaintedRow(themes, {}, this);
            part->setAccessibleName(name);
            layout->insertWidget(0, part);
        }
        auto* hidden = new PaintedRow(themes, {}, this);
        hidden->setAccessibleName(u"hidden"_s);
        layout->addWidget(hidden);
        hidden->hide();
    }
};

template <SpokenRole role>
class Declared : public QWidget, public SpokenAs<role> {};

class Derived final : public Declared<SpokenRole::Alert> {};

/// The panel, as a screen reader goes through it.
class SpokenWidgetsTest : public PanelTest {
protected:
    QList<QAccessibleInterface*> all() const { return namedBelow(spoken(&m_panel.view)); }

    QStringList names() const {
        QStringList found;
        for (QAccessibleInterface* interface : all())
            found += nameOf(interface);
        return found;
    }

    QAccessibleInterface* named(const QString& name) const {
        for (QAccessibleInterface* interface : all())
            if (nameOf(interface) == name)
                return interface;
        return nullptr;
    }
};

} // namespace

TEST_F(SpokenWidgetsTest, ThePanelIsReadInTheOrderInWhichItIsSeen) {
    m_panel.show(fullDay());
    Briefing other = fullDay();
    other.eventsToday.insert(
        other.eventsToday.begin(),
        makeEvent({.title = u"Early"_s, .start = {}, .end = {}, .allDay = true}));
    other.habits.items.insert(other.habits.items.begin(), {u"run"_s, u"Run"_s, false, 0, 1, 0});
    std::ranges::reverse(other.chores.top);
    m_panel.show(other);
    EXPECT_EQ(
        names(),
        (QStringList{
            u"Today"_s,
            u"Next up"_s,
            u"all-day, Early"_s,
            PanelTexts::eventAccessibleName(
                other.eventsToday.at(1),
                PanelTexts::timeLabel(
                    other.eventsToday.at(1), QTimeZone::systemTimeZone(), QLocale::system())),
            u"Join Standup"_s,
            PanelTexts::eventAccessibleName(
                other.eventsToday.at(2),
                PanelTexts::timeLabel(
                    other.eventsToday.at(2), QTimeZone::systemTimeZone(), QLocale::system())),
            u"Habits"_s,
            u"Run, not done"_s,
            u"Read, not done, streak 4"_s,
            u"Chores due"_s,
            u"Sweep, never done"_s,
            u"Water plants, 3 days overdue"_s,
            u"Spending"_s,
            u"Show month-to-date"_s,
            u"2/5 done"_s,
            u"Capture a thought"_s,
            u"Refresh"_s,
            u"Open lumo"_s,
            u"Settings"_s,
            u"Quit Lumora"_s,
        }))
        << names().join(u'\n').toStdString();
}

TEST_F(SpokenWidgetsTest, EverythingHasTheRoleOfWhatItIs) {
    m_panel.actionError = u"No such habit"_s;
    m_panel.show(fullDay());
    for (const auto& [name, role] :
         {std::pair(u"Today"_s, QAccessible::StaticText),
          {u"No such habit"_s, QAccessible::AlertMessage},
          {u"Next up"_s, QAccessible::Button},
          {u"Join Standup"_s, QAccessible::Button},
          {u"Read, not done, streak 4"_s, QAccessible::Button},
          {u"Water plants, 3 days overdue"_s, QAccessible::Button},
          {u"2/5 done"_s, QAccessible::StaticText},
          {u"Capture a thought"_s, QAccessible::EditableText},
          {u"Quit Lumora"_s, QAccessible::Button}}) {
        ASSERT_NE(named(name), nullptr) << name.toStdString();
        EXPECT_EQ(named(name)->role(), role) << name.toStdString();
    }
}

TEST_F(SpokenWidgetsTest, AWidgetHasTheRoleThatItDeclares) {
    Declared<SpokenRole::Text> text;
    EXPECT_EQ(spoken(&text)->role(), QAccessible::StaticText);
    Declared<SpokenRole::Window> window;
    EXPECT_EQ(spoken(&window)->role(), QAccessible::Window);
    Derived derived;
    EXPECT_EQ(spoken(&derived)->role(), QAccessible::AlertMessage);
    Newcomer group(m_panel.themes);
    group.show();
    QStringList found;
    for (QAccessibleInterface* interface : namedBelow(spoken(&group)))
        found += nameOf(interface);
    EXPECT_EQ(found, (QStringList{u"first"_s, u"second"_s}));
}

TEST_F(SpokenWidgetsTest, EverythingInThePanelDeclaresWhatItIs) {
    m_panel.actionError = u"No such habit"_s;
    m_panel.show(fullDay());
    QTest::mouseClick(buttonNamed(m_panel.view, u"Show month-to-date"_s), Qt::LeftButton);
    int declared = 0;
    for (const auto* part : shown<QWidget>(m_panel.view)) {
        const bool isToolkits = qobject_cast<const QPlainTextEdit*>(part) ||
                                part->metaObject() == &QWidget::staticMetaObject;
        if (isToolkits || (!part->layout() && isDecoration(*part)))
            continue;
        const bool declares =
            dynamic_cast<const Spoken*>(part) || qobject_cast<const RowButton*>(part);
        EXPECT_TRUE(declares) << part->metaObject()->className();
        ++declared;
    }
    EXPECT_GT(declared, 20);
}

TEST_F(SpokenWidgetsTest, NothingThatCannotBeSeenIsRead) {
    m_panel.show(fullDay());
    fold(u"Habits"_s);
    EXPECT_FALSE(names().contains(u"Read, not done, streak 4"_s));
    for (QAccessibleInterface* interface : all())
        EXPECT_FALSE(interface->state().invisible) << nameOf(interface).toStdString();
}

TEST_F(SpokenWidgetsTest, SectionsTellWhetherTheyAreFoldedAndThenTheirDigest) {
    m_panel.show(fullDay());
    QAccessibleInterface* habits = named(u"Habits"_s);
    EXPECT_TRUE(habits->state().expandable);
    EXPECT_TRUE(habits->state().expanded);
    EXPECT_FALSE(habits->state().collapsed);
    EXPECT_EQ(habits->text(QAccessible::Description), u"Collapse Habits"_s);

    habits->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(habits->state().expandable);
    EXPECT_FALSE(habits->state().expanded);
    EXPECT_TRUE(habits->state().collapsed);
    EXPECT_EQ(habits->text(QAccessible::Description), u"2/5 done"_s);
    EXPECT_FALSE(named(u"Join Standup"_s)->state().expandable);
}

TEST_F(SpokenWidgetsTest, WhatIsUnderWayIsBusy) {
    m_panel.show(fullDay());
    QAccessibleInterface* row = named(u"Read, not done, streak 4"_s);
    EXPECT_FALSE(row->state().busy);
    m_panel.pending = {u"habit:read"_s};
    m_panel.render();
    EXPECT_TRUE(row->state().busy);
    EXPECT_FALSE(named(u"Sweep, never done"_s)->state().busy);
    m_panel.pending = {};
    m_panel.render();
    EXPECT_FALSE(row->state().busy);
}

TEST_F(SpokenWidgetsTest, TheSpendingButtonIsBusyWhileFiguresAreFetched) {
    m_panel.show(fullDay());
    QTest::mouseClick(buttonNamed(m_panel.view, u"Show month-to-date"_s), Qt::LeftButton);
    m_panel.pending = {u"spending"_s};
    m_panel.render();
    EXPECT_TRUE(named(u"Refresh spending"_s)->state().busy);
    EXPECT_TRUE(named(u"Refresh spending"_s)->state().disabled);
}

TEST_F(SpokenWidgetsTest, AThoughtOnItsWayAndItsArrivalAreRead) {
    m_panel.show(fullDay());
    m_panel.pending = {u"capture"_s};
    m_panel.render();
    EXPECT_NE(named(u"Sending"_s), nullptr);
    m_panel.pending = {};
    m_panel.render();
    EXPECT_EQ(named(u"Sending"_s), nullptr);
    m_panel.view.capture()->showSaved();
    EXPECT_NE(named(u"Sent to Inbox"_s), nullptr);
}

TEST_F(SpokenWidgetsTest, ANameIsNotReadTwice) {
    m_panel.show(fullDay());
    EXPECT_EQ(named(u"Quit Lumora"_s)->text(QAccessible::Description), QString());
    EXPECT_EQ(named(u"Join Standup"_s)->text(QAccessible::Description), QString());
    EXPECT_EQ(
        named(u"Read, not done, streak 4"_s)->text(QAccessible::Description), u"Toggle “Read”"_s);
}

TEST_F(SpokenWidgetsTest, PressingIsAClick) {
    m_panel.show(fullDay());
    QSignalSpy habits(m_panel.view.briefing(), &BriefingView::habitToggled);
    QAccessibleInterface* row = named(u"Read, not done, streak 4"_s);
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_EQ(row->actionInterface()->actionNames().front(), press);
    row->actionInterface()->doAction(press);
    EXPECT_EQ(habits.size(), 1);
    EXPECT_FALSE(named(u"Today"_s)->actionInterface()->actionNames().contains(press));
}

TEST_F(SpokenWidgetsTest, AmountsAreReadOnlyWhileTheyAreRevealed) {
    m_panel.show(fullDay());
    const auto readsAmount = [this] {
        return spokenBy(spoken(&m_panel.view)).join(u'\n').remove(u',').contains(u"1235"_s);
    };
    EXPECT_FALSE(readsAmount());
    QTest::mouseClick(buttonNamed(m_panel.view, u"Show month-to-date"_s), Qt::LeftButton);
    m_panel.render();
    EXPECT_TRUE(readsAmount());
    fold(u"Spending"_s);
    EXPECT_TRUE(readsAmount()) << "in the digest";
    m_panel.pass(std::chrono::seconds(90));
    EXPECT_FALSE(readsAmount());
    EXPECT_EQ(named(u"Spending"_s)->text(QAccessible::Description), u"hidden"_s);
}

TEST_F(SpokenWidgetsTest, AnEndedRevealDoesNotComeBackWithTheClock) {
    m_panel.show(fullDay());
    QTest::mouseClick(buttonNamed(m_panel.view, u"Show month-to-date"_s), Qt::LeftButton);
    m_panel.pass(std::chrono::seconds(90));
    m_panel.pass(std::chrono::seconds(-60));
    EXPECT_EQ(m_panel.view.findChild<SpendingSection*>()->figures(), nullptr);
}
