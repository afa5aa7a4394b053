#include "briefing/ActionKeys.h"
#include "pictures/PanelStage.h"
#include "support/ViewHarness.h"
#include "ui/panel/CaptureField.h"
#include "ui/panel/CollapsibleSection.h"
#include "ui/panel/PanelFooter.h"
#include "ui/panel/RowContents.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString habitName = u"Read, not done, streak 12"_s;
const QString doneHabitName = u"Go for a run, done, streak 4"_s;

/// A picture of one control among its neighbours, after `work(stage, control)`.
template <typename Work>
PictureState control(const std::string& name, const QString& button, Work work) {
    return {
        .name = "control_" + name,
        .draw =
            [button, work](const Look& look) {
                PanelStage stage(look);
                stage.open(pictureDay());
                QWidget& target = stage.button(button);
                stage.narrow(*target.parentWidget());
                work(stage, target);
                return stage.picture();
            },
        .looks = Looks::Two,
    };
}

PictureState hovered(const std::string& name, const QString& button) {
    return control(name + "_hovered", button, [](PanelStage&, QWidget& it) { pointAt(it); });
}

PictureState pressed(const std::string& name, const QString& button) {
    return control(name + "_pressed", button, [](PanelStage&, QWidget& it) { pressAt(it); });
}

PictureState focused(const std::string& name, const QString& button) {
    return control(
        name + "_focused", button, [](PanelStage& stage, QWidget& it) { stage.focus(it); });
}

/// A picture of the field for thoughts, after `work(stage, field)`.
template <typename Work>
PictureState capture(const std::string& name, Work work) {
    return {
        .name = "capture_" + name,
        .draw =
            [work](const Look& look) {
                PanelStage stage(look);
                stage.open(pictureDay());
                CaptureField& field = *stage.view->capture();
                work(stage, field);
                settle();
                stage.narrow(field);
                return stage.picture();
            },
        .looks = Looks::Two,
    };
}

std::vector<PictureState> captureStates() {
    return {
        capture("focused", [](PanelStage&, CaptureField& field) { field.edit()->setFocus(); }),
        capture(
            "typed_and_selected",
            [](PanelStage&, CaptureField& field) {
                field.edit()->setFocus();
                QTest::keyClicks(field.edit(), u"Call the plumber"_s);
                QTest::keyClick(
                    field.edit(), Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
            }),
        capture(
            "many_lines",
            [](PanelStage&, CaptureField& field) {
                field.edit()->setPlainText(
                    u"A thought that goes on for longer than the field is wide, and on\n\nand on, "
                    u"until "
                    "there are more lines in it than the field will ever show at once"_s);
            }),
        capture(
            "sending",
            [](PanelStage& stage, CaptureField& field) {
                field.edit()->setPlainText(u"Call the plumber"_s);
                stage.pending = {ActionKeys::capture};
                stage.open();
            }),
        capture("captured", [](PanelStage&, CaptureField& field) { field.showSaved(); }),
        capture(
            "send_hovered",
            [](PanelStage&, CaptureField& field) {
                field.edit()->setPlainText(u"Call the plumber"_s);
                settle();
                pointAt(*field.sendButton());
            }),
    };
}

/// A section with a number on its header, which none of the panel's has.
PictureState badge() {
    return {
        .name = "section_with_badge",
        .draw =
            [](const Look& look) {
                ThemeSource themes(adopt(look));
                auto* row = new PaintedRow(themes, {});
                row->setContent(captionRow(u"What is in the section"_s));
                CollapsibleSection section(
                    themes, {.title = u"Next up"_s, .systemImage = u"calendar"_s, .badge = 12},
                    row);
                section.setFixedWidth(section.sizeHint().width() + 40);
                section.setPalette(themes.theme().color(ColorRole::Background));
                placeOnScreen(section, look);
                section.show();
                return drawn(section, section.rect(), Qt::magenta);
            },
        .looks = Looks::Two,
    };
}

} // namespace

std::vector<PictureState> panelControlStates() {
    std::vector<PictureState> states = {
        hovered("habit", habitName),
        pressed("habit", habitName),
        focused("habit", habitName),
        hovered("done_habit", doneHabitName),
        hovered("section", u"Habits"_s),
        pressed("section", u"Habits"_s),
        focused("section", u"Habits"_s),
        hovered("join", u"Join Design review"_s),
        pressed("join", u"Join Design review"_s),
        focused("join", u"Join Design review"_s),
        hovered("reveal", u"Show month-to-date"_s),
        pressed("reveal", u"Show month-to-date"_s),
        focused("reveal", u"Show month-to-date"_s),
        hovered("refresh", u"Refresh"_s),
        pressed("settings", u"Settings"_s),
        focused("quit", u"Quit Lumora"_s),
        badge(),
    };
    const auto more = captureStates();
    states.insert(states.end(), more.begin(), more.end());
    return states;
}

} // namespace lumora::tests
