#pragma once

#include "companion/agenda/IcalHandles.h"

#include <QByteArray>

#include <functional>

namespace lumora::companion {

/// Takes an iCalendar text apart one component after the other, so that never more than one of them
/// is in memory: of all that programs write into an event little is kept.
class ComponentReader {
public:
    /// `text` outlives this.
    explicit ComponentReader(const QByteArray& text)
        : m_text(text) {}

    /// Calls `visit` with each component called `name` ("VEVENT") that stands in no other but
    /// calendars, until it answers false. Answers whether the text is a calendar, and whole.
    [[nodiscard]] bool
    forEach(QByteArrayView name, const std::function<bool(icalcomponent&)>& visit) const;

private:
    const QByteArray& m_text;
};

} // namespace lumora::companion
