#include "ui/access/SpokenWidgets.h"

#include "ui/access/ReadingOrder.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/SpokenRole.h"

#include <QAccessibleWidget>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

/// Something with a name and no parts.
class SpokenLeaf : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return 0; }

    QAccessibleInterface* child(int) const override { return nullptr; }

    /// What the arrow keys stop at although Tab does not can take the keyboard too.
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = widget()->isEnabled();
        return state;
    }

    /// A tooltip that only repeats the name is not read out twice.
    QString text(QAccessible::Text kind) const override {
        const QString text = QAccessibleWidget::text(kind);
        const bool repeats = kind == QAccessible::Description && text == widget()->accessibleName();
        return repeats ? QString() : text;
    }
};

class SpokenButton final : public SpokenLeaf {
public:
    explicit SpokenButton(RowButton* button)
        : SpokenLeaf(button, QAccessible::Button)
        , m_button(button) {}

    QAccessible::State state() const override {
        QAccessible::State state = SpokenLeaf::state();
        state.busy = m_button->isBusy();
        if (const auto expanded = m_button->expanded()) {
            state.expandable = true;
            state.expanded = *expanded;
            state.collapsed = !*expanded;
        }
        return state;
    }

    QStringList actionNames() const override {
        QStringList names = SpokenLeaf::actionNames();
        if (m_button->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString& action) override {
        if (action == pressAction())
            m_button->click();
        else
            SpokenLeaf::doAction(action);
    }

    QStringList keyBindingsForAction(const QString& action) const override {
        return action == pressAction() ? QStringList{u"Space"_s}
                                       : SpokenLeaf::keyBindingsForAction(action);
    }

private:
    RowButton* m_button; ///< ends after its interface
};

/// Some widgets that belong together; those that cannot be seen or say nothing are left out.
class SpokenGroup final : public QAccessibleWidget {
public:
    explicit SpokenGroup(QWidget* group)
        : QAccessibleWidget(group) {}

    /// A group that hands the keyboard on to one of its parts never has it itself.
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focused = false;
        return state;
    }

    int childCount() const override { return int(spokenParts().size()); }

    QAccessibleInterface* child(int index) const override {
        QWidget* part = spokenParts().value(index);
        return part ? QAccessible::queryAccessibleInterface(part) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        return child ? int(spokenParts().indexOf(child->object())) : -1;
    }

private:
    QList<QWidget*> spokenParts() const {
        QList<QWidget*> parts = partsInReadingOrder(*widget());
        parts.removeIf([](const QWidget* part) {
            return part->isHidden() || (!hasParts(*part) && isDecoration(*part));
        });
        return parts;
    }
};

QAccessibleInterface* makeSpoken(const QString&, QObject* object) {
    if (auto* button = qobject_cast<RowButton*>(object))
        return new SpokenButton(button);
    const auto* spoken = dynamic_cast<const Spoken*>(object);
    if (!spoken)
        return nullptr;
    auto* widget = qobject_cast<QWidget*>(object);
    switch (spoken->spokenRole()) {
    case SpokenRole::Text:
        return new SpokenLeaf(widget, QAccessible::StaticText);
    case SpokenRole::Alert:
        return new SpokenLeaf(widget, QAccessible::AlertMessage);
    case SpokenRole::Group:
        return new SpokenGroup(widget);
    case SpokenRole::Window:
        return new QAccessibleWidget(widget, QAccessible::Window);
    }
    Q_UNREACHABLE();
}

} // namespace

void speakWidgets() {
    QAccessible::installFactory(makeSpoken);
}

} // namespace lumora
