#pragma once

#include "ui/theme/ThemeSource.h"

#include <QHash>
#include <QWidget>

class QLayout;
class QVBoxLayout;

namespace lumora {

class FormButton;
class FormCard;
class FormField;
class FormPicker;
class FormSwitch;
class FormText;
class SettingsModel;
class TokenField;

/// The form with all the settings: shows the model, and tells it of every change at once.
class SettingsView : public QWidget {
    Q_OBJECT

public:
    /// `model` and `themes` must outlive the view.
    SettingsView(SettingsModel& model, const ThemeSource& themes);

    /// Shows the model as it is now.
    void render();

    /// Gives the keyboard to the first field that still waits for a text, if there is one.
    void focusFirstGap();

private:
    void addGroup(QVBoxLayout& groups, const QString& header, FormCard* card);
    FormCard* makeConnection();
    FormCard* makeRefresh();
    FormCard* makeGeneral();
    FormCard* makeNote();
    FormText* unstoredLine(const QString& key);
    QLayout* labelled(const QString& label, FormField* field);
    QLayout* labelled(const QString& label, FormPicker* picker);
    void connectControls();
    void renderConnection();
    void renderGeneral();
    void renderUnstored();

    SettingsModel& m_model;
    const ThemeSource& m_themes;
    FormField* m_endpoint;
    TokenField* m_token;
    FormButton* m_save;
    FormButton* m_test;
    FormText* m_result;
    FormPicker* m_interval;
    FormSwitch* m_launch;
    FormText* m_launchMessage;
    FormSwitch* m_notify;
    FormPicker* m_ambient;
    FormText* m_note;
    QHash<QString, FormText*> m_unstored; ///< below its control, by the key of the preference
};

} // namespace lumora
