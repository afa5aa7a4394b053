#include "pictures/Picture.h"
#include "support/SettingsHarness.h"
#include "support/ViewHarness.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormField.h"
#include "ui/settings/FormPainting.h"
#include "ui/settings/FormPicker.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/SettingsWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

/// The settings window over fakes, in one look.
class SettingsStage : public SettingsHarness {
public:
    explicit SettingsStage(const Look& look)
        : themes(adopt(look))
        , m_look(look) {}

    ~SettingsStage() {
        if (window)
            letGo(*window);
    }

    /// Opens the window on what was set up.
    void show() {
        window.emplace(SettingsHarness::open(), themes);
        placeOnScreen(*window, m_look);
        window->open({});
        settle();
        if (!QTest::qWaitForWindowActive(&*window))
            qFatal("The settings do not become active");
    }

    /// The control of this type at `index`, from top to bottom.
    template <typename Control>
    Control& control(qsizetype index) {
        return *shown<Control>(*window).at(index);
    }

    FormButton& save() { return button(u"&Save token"_s); }

    FormButton& test() { return button(u"&Test connection"_s); }

    FormField& endpoint() { return control<FormField>(0); }

    FormPicker& interval() { return control<FormPicker>(0); }

    FormSwitch& launch() { return control<FormSwitch>(0); }

    FormSwitch& notify() { return control<FormSwitch>(1); }

    void finishTest(const HttpOutcome& outcome) {
        test().click();
        settle();
        const auto answerLast = [&] {
            transport.complete(transport.requests().size() - 1, outcome);
            settle();
        };
        const std::size_t before = transport.requests().size();
        answerLast();
        if (transport.requests().size() > before)
            answerLast(); // the refresh after a success
    }

    /// Draws `part` of the window and a little around it; without it all of the window.
    QImage picture(QWidget* part = nullptr) {
        if (!part)
            return drawn(*window, window->rect(), Qt::magenta);
        constexpr QMargins around(14, 14, 14, 14);
        const QRect place(part->mapTo(&*window, QPoint()), part->size());
        return drawn(*window, place.marginsAdded(around) & window->rect(), Qt::magenta);
    }

    /// Draws the menu or list that has popped up, and closes it.
    QImage pictureOfPopup() {
        lumora::tests::settle();
        QWidget* const popup = QApplication::activePopupWidget();
        if (!popup)
            qFatal("Nothing has popped up");
        const QImage picture = drawn(*popup, popup->rect(), Qt::magenta);
        popup->close();
        return picture;
    }

    ThemeSource themes;
    std::optional<SettingsWindow> window;

private:
    FormButton& button(const QString& text) {
        for (FormButton* found : shown<FormButton>(*window))
            if (found->text() == text)
                return *found;
        qFatal("No button says %s", qUtf8Printable(text));
    }

    Look m_look;
};

/// A picture of what `draw(stage)` returns.
template <typename Draw>
PictureState state(const std::string& name, Looks looks, Draw draw) {
    return {
        .name = name,
        .draw =
            [draw](const Look& look) {
                SettingsStage stage(look);
                return draw(stage);
            },
        .looks = looks,
    };
}

/// A picture of the window after `prepare(stage)`, which opens it.
template <typename Prepare>
PictureState settings(const std::string& name, Prepare prepare) {
    return state("settings_" + name, Looks::Three, [prepare](SettingsStage& stage) {
        prepare(stage);
        return stage.picture();
    });
}

/// A picture of the control that `work(stage)` does something to and returns.
template <typename Work>
PictureState part(const std::string& name, Work work) {
    return state("form_" + name, Looks::Two, [work](SettingsStage& stage) {
        stage.show();
        QWidget& control = work(stage);
        return stage.picture(&control);
    });
}

std::vector<PictureState> settingsWindowStates() {
    PictureState normal = settings("normal", [](SettingsStage& stage) { stage.show(); });
    normal.looks = Looks::All;
    return {
        normal,
        settings(
            "not_configured",
            [](SettingsStage& stage) {
                stage.preferences.set(u"endpointURL"_s, QString());
                EXPECT_TRUE(stage.keychain.setToken({}));
                stage.show();
            }),
        settings(
            "saved",
            [](SettingsStage& stage) {
                stage.show();
                stage.save().click();
            }),
        settings(
            "testing",
            [](SettingsStage& stage) {
                stage.show();
                stage.test().click();
            }),
        settings(
            "test_succeeded",
            [](SettingsStage& stage) {
                stage.show();
                stage.finishTest(FakeHttpTransport::answer(200, SettingsStage::bodyWithEvents(3)));
            }),
        settings(
            "test_failed",
            [](SettingsStage& stage) {
                stage.show();
                stage.finishTest(FakeHttpTransport::answer(
                    403, R"({"error":"This token was made for another dashboard than yours"})"));
            }),
        settings(
            "login_refused",
            [](SettingsStage& stage) {
                const QString reason = u"~/.config/autostart: no space left on the device"_s;
                stage.loginItems.current = LoginItemStatus::NotFound;
                stage.loginItems.registerError = reason;
                stage.loginItems.unregisterError = reason;
                stage.show();
                stage.launch().click();
            }),
        settings(
            "not_stored",
            [](SettingsStage& stage) {
                stage.preferences.storeError = u"~/.config/lumora: No space left on device"_s;
                stage.show();
                stage.endpoint().setText(u"https://dashboard.example.com/api/briefing"_s);
                stage.notify().click();
                settle();
            }),
        settings(
            "long_texts",
            [](SettingsStage& stage) {
                stage.preferences.set(
                    u"endpointURL"_s,
                    u"https://dashboard.a-host-with-a-long-name.example.com/api/v2/briefing/today"_s);
                stage.show();
            }),
        settings(
            "mnemonics",
            [](SettingsStage& stage) {
                stage.show();
                Form::setShowsMnemonics(*stage.window, true);
            }),
    };
}

std::vector<PictureState> formStates() {
    return {
        part(
            "button_hovered",
            [](SettingsStage& stage) -> QWidget& {
                pointAt(stage.test());
                return stage.test();
            }),
        part(
            "button_pressed",
            [](SettingsStage& stage) -> QWidget& {
                pressAt(stage.test());
                return stage.test();
            }),
        part(
            "button_focused",
            [](SettingsStage& stage) -> QWidget& {
                stage.test().setFocus(Qt::TabFocusReason);
                return stage.test();
            }),
        part(
            "field_focused",
            [](SettingsStage& stage) -> QWidget& {
                stage.endpoint().setFocus(Qt::TabFocusReason);
                return stage.endpoint();
            }),
        part(
            "picker_hovered",
            [](SettingsStage& stage) -> QWidget& {
                pointAt(stage.interval());
                return stage.interval();
            }),
        part(
            "picker_focused",
            [](SettingsStage& stage) -> QWidget& {
                stage.interval().setFocus(Qt::TabFocusReason);
                return stage.interval();
            }),
        part(
            "switch_on_focused",
            [](SettingsStage& stage) -> QWidget& {
                stage.launch().setChecked(true);
                stage.launch().setFocus(Qt::TabFocusReason);
                return stage.launch();
            }),
    };
}

std::vector<PictureState> menuStates() {
    const auto menuOfPicker = [](SettingsStage& stage) {
        stage.show();
        stage.interval().showPopup();
        return stage.pictureOfPopup();
    };
    const auto menuOfField = [](SettingsStage& stage) {
        stage.show();
        FormField& field = stage.endpoint();
        QContextMenuEvent press(
            QContextMenuEvent::Mouse, QPoint(5, 5), field.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&field, &press);
        return stage.pictureOfPopup();
    };
    return {
        state("menu_of_picker", Looks::Two, menuOfPicker),
        state("menu_of_field", Looks::Two, menuOfField),
    };
}

} // namespace

std::vector<PictureState> settingsStates() {
    std::vector<PictureState> states;
    for (auto&& some : {settingsWindowStates(), formStates(), menuStates()})
        states.insert(states.end(), some.begin(), some.end());
    return states;
}

} // namespace lumora::tests
