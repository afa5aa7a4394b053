#include "ui/settings/SettingsView.h"

#include "platform/PreferenceKeys.h"
#include "texts/SettingsTexts.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormCard.h"
#include "ui/settings/FormField.h"
#include "ui/settings/FormPainting.h"
#include "ui/settings/FormPicker.h"
#include "ui/settings/FormRow.h"
#include "ui/settings/FormSwitch.h"
#include "ui/settings/FormText.h"
#include "ui/settings/SettingsModel.h"
#include "ui/settings/TokenField.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// In points.
constexpr QMargins margins(20, 18, 20, 20);
constexpr int groupGap = 18;
constexpr int headerGap = 6;
constexpr int labelGap = 4;
constexpr int controlGap = 8;
constexpr int fieldGap = 10;

/// In line with what is on the card.
constexpr QMargins headerMargins(FormCard::padding.left(), 0, FormCard::padding.right(), 0);

QStringList intervalTexts() {
    QStringList texts;
    for (const qint64 minutes : offeredRefreshMinutes)
        texts += intervalText(minutes);
    return texts;
}

QStringList ambientTitles() {
    QStringList titles;
    for (const MenuBarAmbient ambient : menuBarAmbientCases)
        titles += title(ambient);
    return titles;
}

template <typename Values, typename Value>
int indexIn(const Values& values, const Value& value) {
    const auto found = std::ranges::find(values, value);
    return found == std::end(values) ? -1 : int(found - std::begin(values));
}

/// Sets a field's text, leaving the cursor alone when it is the same.
void showText(FormField& field, const QString& text) {
    if (field.text() != text)
        field.setText(text);
}

QVBoxLayout* column(const ThemeSource& themes, int gap) {
    auto* const layout = new QVBoxLayout;
    keepSpaced(*layout, themes, {}, gap);
    return layout;
}

} // namespace

// An ampersand is in front of the letter that leads to a control with Alt.
SettingsView::SettingsView(SettingsModel& model, const ThemeSource& themes)
    : m_model(model)
    , m_themes(themes)
    , m_endpoint(new FormField(themes))
    , m_token(new TokenField(themes))
    , m_save(new FormButton(themes, u"&Save token"_s))
    , m_test(new FormButton(themes, u"&Test connection"_s, u"Testing…"_s))
    , m_result(new FormText(themes, ColorRole::Green, FormText::Announced::Yes))
    , m_interval(new FormPicker(themes, intervalTexts()))
    , m_launch(new FormSwitch(themes, u"&Launch at login"_s))
    , m_launchMessage(new FormText(themes, ColorRole::Orange, FormText::Announced::Yes))
    , m_notify(new FormSwitch(themes, u"&Notify 5 minutes before meetings"_s))
    , m_ambient(new FormPicker(themes, ambientTitles()))
    , m_note(new FormText(themes, ColorRole::Secondary)) {
    m_endpoint->setPlaceholderText(u"https://dashboard.example.com/api/briefing"_s);
    m_endpoint->setInputMethodHints(
        Qt::ImhUrlCharactersOnly | Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);

    auto* const groups = new QVBoxLayout(this);
    keepSpaced(*groups, themes, margins, groupGap);
    addGroup(*groups, u"Connection"_s, makeConnection());
    addGroup(*groups, u"Refresh"_s, makeRefresh());
    addGroup(*groups, u"General"_s, makeGeneral());
    addGroup(*groups, {}, makeNote());
    connectControls();
}

void SettingsView::addGroup(QVBoxLayout& groups, const QString& header, FormCard* card) {
    QVBoxLayout* const group = column(m_themes, headerGap);
    if (!header.isEmpty()) {
        auto* const row = new QHBoxLayout;
        keepSpaced(*row, m_themes, headerMargins, 0);
        row->addWidget(new FormLabel(m_themes, header, {TextRole::Callout, QFont::DemiBold}));
        group->addLayout(row);
        card->setAccessibleName(header);
    }
    group->addWidget(card);
    groups.addLayout(group);
}

FormCard* SettingsView::makeConnection() {
    auto* const result = new FormRow(m_themes, controlGap);
    result->addWidget(m_save);
    result->addWidget(m_test);
    result->addWidget(m_result);

    auto* const fields = column(m_themes, fieldGap);
    QLayout* const endpoint = labelled(u"&Endpoint URL"_s, m_endpoint);
    endpoint->addWidget(unstoredLine(PreferenceKeys::endpointURL.name));
    fields->addLayout(endpoint);
    fields->addLayout(labelled(u"&API token"_s, m_token));
    fields->addLayout(result);

    auto* const card = new FormCard(m_themes);
    card->addRow(fields);
    return card;
}

FormCard* SettingsView::makeRefresh() {
    auto* const interval = column(m_themes, 0);
    interval->addLayout(labelled(u"E&very"_s, m_interval));
    interval->addWidget(unstoredLine(PreferenceKeys::refreshMinutes.name));
    auto* const card = new FormCard(m_themes);
    card->addRow(interval);
    return card;
}

FormCard* SettingsView::makeGeneral() {
    auto* const launch = column(m_themes, 0);
    launch->addWidget(m_launch);
    launch->addWidget(m_launchMessage);

    auto* const notify = column(m_themes, 0);
    notify->addWidget(m_notify);
    notify->addWidget(unstoredLine(PreferenceKeys::notifyBeforeMeetings.name));

    auto* const help = new FormText(m_themes, ColorRole::Secondary);
    help->setRuns({{u"When no meeting is soon. An upcoming or in-progress meeting always takes "
                    "over the menu bar."_s}});
    auto* const ambient = column(m_themes, labelGap);
    ambient->addLayout(labelled(u"&Menu bar shows"_s, m_ambient));
    ambient->addWidget(unstoredLine(PreferenceKeys::menuBarAmbient.name));
    ambient->addWidget(help);

    auto* const card = new FormCard(m_themes);
    card->addRow(launch);
    card->addRow(notify);
    card->addRow(ambient);
    return card;
}

FormCard* SettingsView::makeNote() {
    auto* const note = column(m_themes, 0);
    note->addWidget(m_note);
    auto* const card = new FormCard(m_themes);
    card->addRow(note);
    return card;
}

FormText* SettingsView::unstoredLine(const QString& key) {
    auto* const line = new FormText(m_themes, ColorRole::Orange, FormText::Announced::Yes);
    m_unstored.insert(key, line);
    return line;
}

QLayout* SettingsView::labelled(const QString& label, FormField* field) {
    auto* const name =
        new FormLabel(m_themes, label, {TextRole::Callout, QFont::Normal, ColorRole::Secondary});
    name->setBuddy(field);
    auto* const layout = column(m_themes, labelGap);
    layout->addWidget(name);
    layout->addWidget(field);
    return layout;
}

QLayout* SettingsView::labelled(const QString& label, FormPicker* picker) {
    auto* const name = new FormLabel(m_themes, label, {});
    name->setBuddy(picker);
    auto* const layout = new FormRow(m_themes, controlGap);
    layout->addWidget(name);
    layout->addWidget(picker);
    return layout;
}

void SettingsView::connectControls() {
    connect(&m_model, &SettingsModel::changed, this, &SettingsView::render);
    connect(m_endpoint, &QLineEdit::textChanged, &m_model, &SettingsModel::setEndpointURL);
    connect(m_token, &QLineEdit::textChanged, &m_model, &SettingsModel::setToken);
    connect(m_token, &QLineEdit::returnPressed, &m_model, &SettingsModel::saveToken);
    connect(m_save, &QAbstractButton::clicked, &m_model, &SettingsModel::saveToken);
    connect(m_test, &QAbstractButton::clicked, &m_model, &SettingsModel::testConnection);
    connect(m_launch, &QAbstractButton::toggled, &m_model, &SettingsModel::setLaunchAtLogin);
    connect(m_notify, &QAbstractButton::toggled, &m_model, &SettingsModel::setNotifyBeforeMeetings);
    connect(m_interval, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            m_model.setRefreshMinutes(offeredRefreshMinutes.at(std::size_t(index)));
    });
    connect(m_ambient, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0)
            m_model.setMenuBarAmbient(menuBarAmbientCases.at(std::size_t(index)));
    });
}

void SettingsView::render() {
    renderConnection();
    const qint64 minutes = std::max<qint64>(1, m_model.refreshMinutes());
    m_interval->setChosen(indexIn(offeredRefreshMinutes, minutes), intervalText(minutes));
    renderGeneral();
    renderUnstored();
    m_note->setRuns(tokenNote(m_model.endpointURL()));
    setToolTipText(*m_note, m_model.keychainExplanation());
}

void SettingsView::renderConnection() {
    showText(*m_endpoint, m_model.endpointURL());
    showText(*m_token, m_model.token());
    m_save->setEnabled(m_model.canSaveToken());
    m_test->setBusy(m_model.isTesting());

    const QString result = m_model.testResult().value_or(QString());
    m_result->setColor(isGoodNews(result) ? ColorRole::Green : ColorRole::Orange);
    m_result->setRuns({{result}});
    m_result->setVisible(!result.isEmpty());
}

void SettingsView::renderGeneral() {
    m_launch->setChecked(m_model.launchAtLogin());
    const QString message = m_model.loginItemMessage().value_or(QString());
    m_launchMessage->setRuns({{message}});
    setToolTipText(*m_launchMessage, m_model.loginItemExplanation().value_or(QString()));
    m_launchMessage->setVisible(!message.isEmpty());
    m_notify->setChecked(m_model.notifyBeforeMeetings());
    m_ambient->setChosen(indexIn(menuBarAmbientCases, m_model.menuBarAmbient()), {});
}

void SettingsView::renderUnstored() {
    for (auto line = m_unstored.cbegin(); line != m_unstored.cend(); ++line) {
        const auto message = m_model.unstoredMessage(line.key());
        line.value()->setRuns({{message.value_or(QString())}});
        line.value()->setVisible(message.has_value());
    }
}

void SettingsView::focusFirstGap() {
    for (FormField* field : std::initializer_list<FormField*>{m_endpoint, m_token}) {
        if (field->text().trimmed().isEmpty()) {
            field->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

} // namespace lumora
