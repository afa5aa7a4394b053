#pragma once

#include "platform/Clock.h"
#include "ui/panel/ThoughtEdit.h"
#include "ui/rows/PaintedRow.h"
#include "ui/rows/SpokenRole.h"
#include "ui/theme/SpinnerMotion.h"

#include <QPointer>

namespace lumora {

class RowButton;

/// The entry at the bottom of the panel: a thought goes to the inbox with Return. It keeps what
/// was typed until the thought has arrived.
class CaptureField : public QWidget, public SpokenAs<SpokenRole::Group> {
    Q_OBJECT

public:
    /// `themes` and `clock` must outlive the field.
    CaptureField(const ThemeSource& themes, Clock& clock, QWidget* parent = nullptr);

    /// While a thought is under way, the field takes no typing and shows a spinner.
    void setPending(bool pending);

    /// The thought has arrived: clears the text and shows a check for 1.5 seconds.
    void showSaved();

    ThoughtEdit* edit() const { return m_edit; }

    RowButton* sendButton() const { return m_send; }

    bool isJustSaved() const { return m_justSaved; }

Q_SIGNALS:
    /// A thought, trimmed and not empty, is to be sent.
    void submitted(const QString& thought);

private:
    void send();
    void renderTrailing();

    Clock& m_clock;
    PaintedRow* m_icon;
    ThoughtEdit* m_edit;
    PaintedRow* m_state;
    RowButton* m_send;
    SpinnerMotion m_spinner;
    bool m_pending = false;
    QPointer<QWidget> m_focusRefuge; ///< who got the keyboard when the field had to give it up
    bool m_justSaved = false;
};

} // namespace lumora
