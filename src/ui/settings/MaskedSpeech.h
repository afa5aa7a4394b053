#pragma once

#include <memory>

class QAccessibleEvent;

namespace lumora {

/// From now on, assistive programs hear of a change in a field whose text is masked as everybody
/// sees it: as so many masked characters. The toolkit by itself tells them the text.
void maskSpokenText();

/// What to tell them instead of `event`; null when it gives nothing away.
std::unique_ptr<QAccessibleEvent> maskedEvent(QAccessibleEvent& event);

} // namespace lumora
