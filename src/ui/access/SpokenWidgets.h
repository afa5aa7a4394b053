#pragma once

namespace lumora {

/// Lets screen readers see the panel's widgets, those that are made from now on, as what they are:
/// rows of text, buttons that fold or are busy, alerts, and groups of them in reading order.
/// Calling it again changes nothing.
void speakWidgets();

} // namespace lumora
