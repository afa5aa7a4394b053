#include "ui/panel/CaptureField.h"

#include "platform/Spawn.h"
#include "ui/rows/RowButton.h"
#include "ui/rows/WidgetTexts.h"
#include "ui/theme/PanelMetrics.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>

#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

// Without the reach of what stands at the end, be it the button or what takes its place.
constexpr QMargins fieldPadding{12, 8, 12 - PanelMetrics::button.right(), 8};
constexpr int fieldSpacing = 6;
constexpr QMargins trailingPadding{0, 0, PanelMetrics::button.right(), 0};
constexpr auto savedFor = 1500ms;

RowContent captionSymbol(const QString& name, ColorRole color) {
    return {.items = {RowItem::makeSymbol(name, {.role = TextRole::Caption, .color = color})}};
}

RowContent calloutSymbol(const QString& name, ColorRole color) {
    return {.items = {RowItem::makeSymbol(name, {.color = color})}};
}

/// A widget that is exactly as wide as what it shows.
template <typename Row>
Row* fitted(Row* row) {
    row->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return row;
}

} // namespace

CaptureField::CaptureField(const ThemeSource& themes, Clock& clock, QWidget* parent)
    : QWidget(parent)
    , m_clock(clock)
    , m_icon(fitted(new PaintedRow(themes, {}, this)))
    , m_edit(new ThoughtEdit(themes, this))
    , m_state(fitted(new PaintedRow(themes, trailingPadding, this)))
    , m_send(fitted(new RowButton(themes, PanelMetrics::button, this)))
    , m_spinner(themes, this) {
    auto* layout = new QHBoxLayout(this);
    keepSpaced(*layout, themes, fieldPadding, fieldSpacing);
    layout->addWidget(m_icon);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_state);
    layout->addWidget(m_send);

    m_icon->setContent(captionSymbol(u"tray.and.arrow.down"_s, ColorRole::Secondary));
    m_send->setContent(calloutSymbol(u"return"_s, ColorRole::Primary));
    m_send->setToolTip(u"Send to Inbox"_s);
    m_send->setAccessibleName(u"Send to Inbox"_s);
    connect(m_edit, &ThoughtEdit::submitted, this, &CaptureField::send);
    connect(m_send, &QAbstractButton::clicked, this, &CaptureField::send);
    connect(m_edit, &QPlainTextEdit::textChanged, this, &CaptureField::renderTrailing);
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, &CaptureField::renderTrailing);
    renderTrailing();
}

void CaptureField::send() {
    const QString thought = m_edit->toPlainText().trimmed();
    if (!thought.isEmpty())
        Q_EMIT submitted(thought);
}

void CaptureField::setPending(bool pending) {
    if (m_pending == pending)
        return;
    m_pending = pending;
    m_spinner.setRunning(pending);
    renderTrailing(); // the send button is gone before anything could move to it
    // A disabled field loses the keyboard; it gets it back as soon as it can take it, unless the
    // user has moved on from where it went meanwhile.
    const bool hadFocus = window()->focusWidget() == m_edit;
    m_edit->setEnabled(!pending);
    if (pending)
        m_focusRefuge = hadFocus ? window()->focusWidget() : nullptr;
    else if (m_focusRefuge && window()->focusWidget() == m_focusRefuge)
        m_edit->setFocus();
}

void CaptureField::showSaved() {
    m_edit->clear();
    m_justSaved = true;
    renderTrailing();
    spawn(this, m_clock.wait(savedFor), [this] {
        m_justSaved = false;
        renderTrailing();
    });
}

void CaptureField::renderTrailing() {
    if (m_pending)
        m_state->setContent({.items = {RowItem::spinner(m_spinner.rotation())}});
    else if (m_justSaved)
        m_state->setContent(calloutSymbol(u"checkmark.circle.fill"_s, ColorRole::Green));
    setSpokenName(*m_state, m_pending ? u"Sending"_s : u"Sent to Inbox"_s);
    m_state->setVisible(m_pending || m_justSaved);
    m_send->setVisible(!m_pending && !m_justSaved && !m_edit->document()->isEmpty());
}

} // namespace lumora
